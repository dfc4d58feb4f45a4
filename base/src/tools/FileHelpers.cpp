// FileHelpers.cpp: path texts, file times and whole-file reads.
#include "orv/FileHelpers.h"

#include "orv/Log.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>

namespace orv {

namespace {

int lastSeparator(QString const &path) {
    return qMax(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
}

bool endsWithSeparator(QString const &path) {
    return path.endsWith(QLatin1Char('/')) || path.endsWith(QLatin1Char('\\'));
}

bool readWhole(QString const &name, QByteArray &bytes) {
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    bytes = file.readAll();
    return file.error() == QFileDevice::NoError;
}

} // namespace

QString getFileExtension(QString const &name, bool lower) {
    return getFileExtension(QFileInfo(name), lower);
}

bool is_qt_image_ext(QString const &ext, bool ignoreCase) {
    static char const *const extensions[] = {"bmp", "gif", "ico", "jpeg", "jpg", "pbm",
                                             "pgm", "png", "ppm", "svg",  "xbm", "xpm"};
    QString const wanted = ignoreCase ? ext.toLower() : ext;
    for (char const *known : extensions)
        if (wanted == QLatin1String(known))
            return true;
    return false;
}

QString getFileExtension(QFileInfo const &fileInfo, bool lower) {
    if (fileInfo.filePath().size() < 2)
        return QString();
    return lower ? fileInfo.suffix().toLower() : fileInfo.suffix();
}

QString getPureFilename(QString const &path) { return QFileInfo(path).fileName(); }

QString getDirPath(QString const &path) {
    QString const head = path.left(2047);
    int const at = lastSeparator(head);
    return at < 0 ? QString() : head.left(at);
}

QString getAbsPath(QString const &base, QString const &rel) {
    QString joined = (endsWithSeparator(base) ? base : getDirPath(base)) + QLatin1Char('/') + rel;
    return joined.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

QString getRelPath(QString const &dir, QString const &file) {
    return QDir(dir).relativeFilePath(file);
}

QString ensureNativePath(QString const &path) { return QDir::toNativeSeparators(path); }

QString getTmpFilename(QString const &name) {
    QString const dir = QDir::tempPath();
    return QDir::toNativeSeparators(name.isEmpty() ? dir : xprintF("$/$", dir, name));
}

QDir get_directory(QFileInfo const &fileInfo, bool parent) {
    if (fileInfo.isDir() && !parent)
        return QDir(fileInfo.absoluteFilePath());
    return fileInfo.absoluteDir();
}

QString shortenFilePath(QString const &path, int maxLen) {
    if (path.size() <= maxLen)
        return path;
    QChar const separator =
        path.indexOf(QLatin1Char('/'), 1) >= 0 ? QLatin1Char('/') : QLatin1Char('\\');
    int const first = path.indexOf(separator, 1);
    if (first < 0)
        return path;
    // The backslash is part of the display text on every system.
    return path.left(first) + QLatin1String("\\...") + path.mid(path.lastIndexOf(separator));
}

QString shortenFilePath(QFileInfo const &fileInfo, int maxLen) {
    return shortenFilePath(fileInfo.filePath(), maxLen);
}

QString readAsciiFile(QString const &name) {
    ppDebug("orv::readAsciiFile, strFile:'$'", name);
    QByteArray bytes;
    if (!readWhole(name, bytes)) {
        ppError("orv::readAsciiFile, '$' open problem", name);
        return QString();
    }
    return QString::fromLatin1(bytes);
}

QByteArray readAsciiFileByteArray(QString const &name) {
    QByteArray bytes;
    if (!readWhole(name, bytes)) {
        ppError("orv::readAsciiFileByteArray, '$' open problem", name);
        return QByteArray();
    }
    return bytes;
}

QString string_from_file(QString const &name) {
    QByteArray bytes;
    if (!readWhole(name, bytes)) {
        ppError("string_from_file, cannot read from '$'", name);
        return QString();
    }
    return QString::fromUtf8(bytes);
}

QString string_from_file(QFileInfo const &fileInfo) {
    return string_from_file(fileInfo.filePath());
}

quint64 get_timestamp_micro_sec(QFileInfo const &fileInfo) {
    return static_cast<quint64>(fileInfo.lastModified().toMSecsSinceEpoch());
}

QString get_timestamp_string(QFileInfo const &fileInfo, QString const &format) {
    return fileInfo.lastModified().toString(format);
}

} // namespace orv
