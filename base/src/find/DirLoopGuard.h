// DirLoopGuard.h: the folders one walk has entered, by canonical path, so that a
// symbolic link back up the tree (or to a folder already walked) is not entered again.
// Not part of the library's interface.
#pragma once

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QString>

#include <unordered_set>

namespace orv::find {

class DirLoopGuard {
public:
    // The canonical path of a walk's start; empty when it does not exist.
    static QString rootPath(QDir const &dir) { return dir.canonicalPath(); }

    // The canonical path of a folder entry listed in the folder whose canonical path is
    // parent. Only a symbolic link needs the file system: below a canonical path a
    // plain entry is canonical already, which spares a path resolution per folder.
    static QString childPath(QString const &parent, QFileInfo const &entry) {
        if (entry.isSymLink())
            return entry.canonicalFilePath();
        return parent.endsWith(QLatin1Char('/')) ? parent + entry.fileName()
                                                 : parent + QLatin1Char('/') + entry.fileName();
    }

    // True the first time a path is entered; an empty path (unresolvable) never is.
    bool enter(QString const &canonical) {
        return !canonical.isEmpty() && visited.insert(canonical).second;
    }

private:
    std::unordered_set<QString> visited;
};

} // namespace orv::find
