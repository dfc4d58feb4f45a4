// XNodeDir.h: a directory tree as XNode elements, <Dir> per folder and <File> per file,
// with sizes and times as typed attributes; made by a scan with parameters and name
// filters, saved and loaded as the library's XML.
//
//   orv::XDirScanParameter scan(QStringLiteral("/data/photos"));
//   scan.maxDepth = 2;
//   scan.filter.addNames(QStringLiteral("*.jpg, *.png"), false, orv::SearchFileName::FILES);
//   std::unique_ptr<orv::XNodeDir> tree(orv::XNodeDir::scan(scan));
//   tree->saveNodeToXml(QStringLiteral("photos.xml"), QString());
//   orv::XDirFileCreator const creator;             // gives <Dir>/<File> their classes back
//   std::unique_ptr<orv::XNode> back(orv::XNode::parseFile(QStringLiteral("photos.xml"), &creator,
//   nullptr));
//
// Design
// - AbstractFile holds what both kinds share: "name" (the entry's name), "size" (bytes;
//   a folder's is the sum of the files kept below it), "modified" (milliseconds since
//   1970). A path is not stored per node but built from the names up to the root, whose
//   "path" is the scanned folder, so subtrees moved between folders stay right.
// - Attribute values are saved unescaped and end at any quote, so a name holding a
//   quote, "<", ">" or "&" goes into "name64" (Base64) in place of "name": every name
//   comes back as it was. Such a node has no XNode name (queries don't find it by name).
// - The scan lists with QDir like XDirInfo. Symbolic links are left out unless followed;
//   followed, a folder reached a second time (a loop) is left out. Folders deeper than
//   maxDepth are left out; folders that cannot be read are kept with "unreadable" true.
//   Files that the SearchFilter refuses are left out; folders left empty by it are kept
//   unless keepEmptyFolders is false. Entries come folders first, then by name.
// - SearchFilter reads XFileFilter's fields (size, time, extension, its patterns) on
//   the nodes' attributes, so a loaded tree is filtered without the disk.
// - A tree has no lock; one thread owns it, like every XNode tree.
#pragma once

#include "orv/XAtomic.h"
#include "orv/XFileFilter.h"
#include "orv/XNode.h"

#include <QtCore/QFileInfo>
#include <QtCore/QString>

#include <vector>

namespace orv {

class XNodeFile;

// What a folder node and a file node share: the name, the size and the time.
class ORV_EXPORT AbstractFile : public XNode {
public:
    virtual bool isDir() const = 0;

    // "name", or "name64" decoded.
    QString fileName() const;
    void setFileName(QString const &name);
    quint64 fileSize() const { return getULong(QStringLiteral("size"), 0); }
    void setFileSize(quint64 bytes) { setULong(QStringLiteral("size"), bytes); }
    // Milliseconds since 1970; 0 when unknown.
    qint64 lastModified() const { return getLong(QStringLiteral("modified"), 0); }
    void setLastModified(qint64 ms) { setLong(QStringLiteral("modified"), ms); }

    // From the root's "path" down through the names, joined with "/".
    QString path() const;
    // The folder a tree stands for, kept at its root.
    void setRootPath(QString const &path);
    // The same from below the root: "" for the root, "a/b.txt" below it.
    QString relativePath() const;
    // The file system's view of path(), read at the call.
    QFileInfo fileInfo() const { return QFileInfo(path()); }

protected:
    AbstractFile() = default;
};

class ORV_EXPORT XNodeFile : public AbstractFile {
public:
    static QString const TYPE; // "File"

    XNodeFile();
    bool isDir() const override { return false; }
    QString realTypeAsString() const override { return QStringLiteral("XNodeFile"); }
    // The text behind the last dot of the name, as a file's suffix.
    QString suffix() const;
};

// One wild-card pattern ("*" only, any letter case; without "*" it tests the ending),
// on file names or on folder names, kept or refused.
class ORV_EXPORT SearchFileName {
public:
    enum Kind { FILES = 0, FOLDERS = 1 };

    SearchFileName() = default;
    SearchFileName(QString pattern, bool negative, Kind kind);
    bool matches(QString const &name) const;

    QString pattern;
    bool negative = false;
    Kind kind = FILES;
};

// Which entries a scan keeps, or which nodes of a tree a query picks.
class ORV_EXPORT SearchFilter {
public:
    // Adds each pattern of a list cut at blanks, commas and semicolons.
    void addNames(QString const &patterns, bool negative, SearchFileName::Kind kind);
    void add(SearchFileName const &name) { names.push_back(name); }

    // A file is kept when one of the positive file patterns holds (if there are any),
    // no negative one holds, and fileFilter matches its name, size and time.
    bool acceptsFile(QString const &name, quint64 size, qint64 modifiedMs) const;
    bool acceptsFile(AbstractFile const &node) const;
    // A folder below the root is entered under the same rule on folder patterns.
    bool acceptsFolder(QString const &name) const;

    std::vector<SearchFileName> names;
    XFileFilter fileFilter;
};

// What a scan walks and keeps.
struct ORV_EXPORT XDirScanParameter {
    XDirScanParameter() = default;
    explicit XDirScanParameter(QString root) : root(std::move(root)) {}

    QString root;
    // Levels of folders below the root: 0 keeps the root's files alone; -1: no limit.
    int maxDepth = -1;
    bool hiddenFiles = false;
    bool followSymLinks = false;
    bool keepEmptyFolders = true;
    SearchFilter filter;
    // Set from another thread to end the scan early; the tree is then incomplete.
    XAtomic<bool> *cancel = nullptr;
};

class ORV_EXPORT XNodeDir : public AbstractFile {
public:
    static QString const TYPE; // "Dir"

    XNodeDir();
    bool isDir() const override { return true; }
    QString realTypeAsString() const override { return QStringLiteral("XNodeDir"); }

    // A new tree of parameter.root (the caller owns it); null, with an ERROR line, when
    // root is no folder.
    static XNodeDir *scan(XDirScanParameter const &parameter);

    std::vector<XNodeDir *> dirs() const;
    std::vector<XNodeFile *> files() const;
    // Every file below, depth first in document order.
    std::vector<XNodeFile *> allFiles() const;
    // The files below that filter accepts, in the same order.
    std::vector<XNodeFile *> filesMatching(SearchFilter const &filter) const;
    // The node at a path relative to this folder ("a/b.txt"), or null.
    AbstractFile *nodeAtPath(QString const &relative) const;
    // Sums the sizes below anew, as after changing the tree by hand; gives this size.
    quint64 updateSizes();
    bool isUnreadable() const { return getBool(QStringLiteral("unreadable"), false); }
};

// Parsing and copying make XNodeDir for <Dir> and XNodeFile for <File>.
class ORV_EXPORT XDirFileCreator : public XmlNodeCreator {
public:
    XNode *create(QString const &type) const override;
    QString toString() const override;
};

} // namespace orv
