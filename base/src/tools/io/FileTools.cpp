// FileTools.cpp: whether files and folders exist, file sizes, and making folders.
#include "orv/XFile.h"

#include "orv/Log.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace orv {

bool fileExists(QString const &fileName) {
    return !fileName.isEmpty() && QFileInfo(fileName).isFile();
}

bool fileExists(char const *fileName) {
    return fileName && fileExists(QFile::decodeName(fileName));
}

bool dirExists(QString const &dirName) { return !dirName.isEmpty() && QFileInfo(dirName).isDir(); }

// A folder has no length of its own: it counts as no file at all.
qint64 getFileLength(QString const &fileName) {
    QFileInfo const info(fileName);
    return info.isFile() ? info.size() : -1;
}

bool mkDirPath(QString const &path, bool isDirectory) {
    QString dir = path;
    if (!isDirectory) {
        int const cut =
            qMax(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
        dir = cut > 0 ? path.left(cut) : QString();
    }
    if (dir.isEmpty() || !QDir().mkpath(dir)) {
        ppError("mkDirPath '$', flagAll:$, problems", path, isDirectory);
        return false;
    }
    return true;
}

} // namespace orv
