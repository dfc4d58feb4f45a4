// SampleTree.h: a small directory tree with what walks and searches trip over (nested
// and hidden folders, hidden, empty and binary files, names with blanks and UTF-8, CRLF
// lines, a file link and a link back to the top), and `find` as the reference for
// which files such a tree holds.
//
//   orv::test::SampleTree tree;                       // in a fresh temporary folder
//   QStringList files = orv::test::findFiles(tree.root(), {"-L"}, false);
#pragma once

#include "support/ExternalTool.h"
#include "support/TempFiles.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <utility>
#include <vector>

namespace orv::test {

class SampleTree {
public:
    // Modification times: "old" files are from 2020, the rest from 2024.
    static QDateTime oldTime() { return QDateTime(QDate(2020, 1, 1), QTime(12, 0)); }
    static QDateTime newTime() { return QDateTime(QDate(2024, 6, 1), QTime(12, 0)); }

    SampleTree() {
        QByteArray const binary("\x7f"
                                "ELF\x00\x01\x02 fox \xff\xfe dog\n",
                                19);
        std::vector<std::pair<char const *, QByteArray>> const files = {
            {"a.txt", "the quick brown fox\njumps over the lazy dog\nfox and dog\n"},
            {"b.md", "Fox in the box\ncat only\n"},
            {"empty.txt", ""},
            {"with space.txt", "a fox with space. Another fox? Yes\n"},
            {"\xc3\xbc"
             "ber.txt",
             "Gr\xc3\xbc\xc3\x9f"
             "e vom fox\nfox fox\n"},
            {"crlf.txt", "fox\r\ndog fox\r\nlast fox without end"},
            {"data.bin", binary},
            {"image.png", QByteArray("\x89PNG\r\n\x1a\n\x00\x00", 10)},
            {".hidden.txt", "fox hidden\n"},
            {".hiddendir/inner.txt", "fox in a hidden folder\n"},
            {"sub/c.txt", "no match here\n"},
            {"sub/deeper/d.log", "dog\nfox dog cat\n"},
            {"sub/deeper/e.TXT", "FOX upper\n"},
            {"sub/empty/.keep", ""},
        };
        for (auto const &[name, bytes] : files) {
            QDir().mkpath(QFileInfo(dir.filePath(QString::fromUtf8(name))).path());
            writeFile(dir, QString::fromUtf8(name), bytes);
            setTime(QString::fromUtf8(name), newTime());
        }
        setTime(QStringLiteral("a.txt"), oldTime());
        setTime(QStringLiteral("sub/deeper/d.log"), oldTime());
        QFile::link(QStringLiteral(".."), dir.filePath(QStringLiteral("sub/loop")));
        QFile::link(QStringLiteral("../a.txt"), dir.filePath(QStringLiteral("sub/link.txt")));
    }

    QString root() const { return dir.path(); }
    QString write(QString const &name, QByteArray const &bytes) {
        return writeFile(dir, name, bytes);
    }
    QString path(QString const &name) const { return dir.filePath(name); }
    void setTime(QString const &name, QDateTime const &time) {
        QFile file(dir.filePath(name));
        if (file.open(QIODevice::ReadWrite))
            file.setFileTime(time, QFileDevice::FileModificationTime);
    }

private:
    QTemporaryDir dir;
};

// find's arguments up to its action: the files below root passing tests, with dot
// files and folders pruned unless hidden.
inline QStringList findFileArguments(QString const &root, QStringList const &options, bool hidden,
                                     QStringList const &tests) {
    QStringList args = options;
    args << root;
    if (!hidden)
        args << "-mindepth"
             << "1"
             << "-name"
             << ".*"
             << "-prune"
             << "-o";
    return args << tests << "-type"
                << "f";
}

// The files `find` lists under root, sorted, with options before the root (like "-L")
// and tests after it (before "-type f"); hidden ones (and all below a hidden folder)
// only when asked.
inline QStringList findFiles(QString const &root, QStringList const &options, bool hidden,
                             QStringList const &tests = {}) {
    QStringList const args = findFileArguments(root, options, hidden, tests) << "-print0";
    QByteArray out;
    if (!runTool(QStringLiteral("find"), args, out))
        return {QStringLiteral("<find is missing>")};
    QStringList files;
    for (QByteArray const &name : out.split('\0'))
        if (!name.isEmpty())
            files << QString::fromUtf8(name);
    files.sort();
    return files;
}

// Blank-separated words as a list, so that a table row can give find's arguments as
// one text.
inline QStringList words(char const *text) {
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace orv::test
