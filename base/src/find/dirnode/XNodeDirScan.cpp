// XNodeDirScan.cpp: a directory tree read from disk into XNodeDir and XNodeFile nodes.
#include "find/DirLoopGuard.h"
#include "orv/Log.h"
#include "orv/XNodeDir.h"

#include <QtCore/QDateTime>

#include <QtCore/QDir>

namespace orv {

using find::DirLoopGuard;

namespace {

class Scanner {
public:
    explicit Scanner(XDirScanParameter const &p) : p(p) {
        filters = QDir::AllDirs | QDir::Files | QDir::NoDotAndDotDot;
        if (p.hiddenFiles)
            filters |= QDir::Hidden;
    }

    quint64 run(XNodeDir *root, QDir const &dir) {
        QString const canonical = DirLoopGuard::rootPath(dir);
        guard.enter(canonical);
        return fill(root, dir, canonical, 0);
    }

private:
    // Fills node with the entries of dir, depth levels below the root; gives the bytes kept.
    quint64 fill(XNodeDir *node, QDir const &dir, QString const &canonical, int depth) {
        QFileInfoList const entries = dir.entryInfoList(filters, QDir::DirsFirst | QDir::Name);
        if (entries.isEmpty() && (!dir.exists() || !QFileInfo(dir.path()).isReadable()))
            node->setBool(QStringLiteral("unreadable"), true);
        quint64 bytes = 0;
        for (QFileInfo const &entry : entries) {
            if (p.cancel && *p.cancel)
                break;
            if (entry.isSymLink() && !p.followSymLinks)
                continue;
            if (entry.isDir())
                bytes += addFolder(node, entry, canonical, depth);
            else
                bytes += addFile(node, entry);
        }
        node->setFileSize(bytes);
        return bytes;
    }

    quint64 addFolder(XNodeDir *node, QFileInfo const &entry, QString const &canonical, int depth) {
        if ((p.maxDepth >= 0 && depth >= p.maxDepth) || !p.filter.acceptsFolder(entry.fileName()))
            return 0;
        QString const path = DirLoopGuard::childPath(canonical, entry);
        if (!guard.enter(path))
            return 0;
        auto *child = new XNodeDir();
        child->setLastModified(entry.lastModified().toMSecsSinceEpoch());
        quint64 const bytes = fill(child, QDir(entry.filePath()), path, depth + 1);
        if (!p.keepEmptyFolders && !child->hasChildren()) {
            delete child;
            return 0;
        }
        append(node, child, entry.fileName());
        return bytes;
    }

    quint64 addFile(XNodeDir *node, QFileInfo const &entry) {
        quint64 const size = quint64(entry.size());
        qint64 const modified = entry.lastModified().toMSecsSinceEpoch();
        if (!p.filter.acceptsFile(entry.fileName(), size, modified))
            return 0;
        auto *child = new XNodeFile();
        child->setFileSize(size);
        child->setLastModified(modified);
        append(node, child, entry.fileName());
        return size;
    }

    // The node is named after it is added: the file system keeps names unique in a
    // folder, and an unnamed node is appended without the search for a namesake that
    // would make large folders quadratic.
    static void append(XNodeDir *node, AbstractFile *child, QString const &name) {
        node->addNode(child, false);
        child->setFileName(name);
    }

    XDirScanParameter const &p;
    QDir::Filters filters;
    DirLoopGuard guard;
};

} // namespace

XNodeDir *XNodeDir::scan(XDirScanParameter const &parameter) {
    QFileInfo const rootInfo(parameter.root);
    if (!rootInfo.isDir()) {
        ppError("XNodeDir::scan, '$' is no folder", parameter.root);
        return nullptr;
    }
    QString const absolute = rootInfo.absoluteFilePath();
    auto *root = new XNodeDir();
    root->setRootPath(absolute);
    root->setFileName(rootInfo.fileName());
    root->setLastModified(rootInfo.lastModified().toMSecsSinceEpoch());
    Scanner(parameter).run(root, QDir(absolute));
    return root;
}

} // namespace orv
