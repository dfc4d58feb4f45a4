// OrvResource.cpp: the "orv" tree above the program, and files read from it.
#include "orv/OrvResource.h"

#include "orv/Log.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>

namespace orv {

namespace {

// The directory above the program whose path ends in "orv"; false at the root.
bool findOrvDir(QDir &dir) {
    dir = QDir(QCoreApplication::applicationDirPath());
    while (!dir.absolutePath().endsWith(QLatin1String("orv")))
        if (!dir.cdUp()) {
            ppError("OrvResource::getOrvSourceDataPath - 'orv' path not found !");
            return false;
        }
    return true;
}

// QDir("") is the current directory, so a missing tree lands there.
QString under(QString const &base, QString const &relPath) {
    return QFile(QDir(base).absolutePath() + QLatin1Char('/') + relPath).fileName();
}

QString loadText(QString const &absPath, char const *failure) {
    QFile file(absPath);
    if (!file.open(QIODevice::ReadOnly)) {
        ppDebug(failure, absPath);
        return QString();
    }
    QByteArray const bytes = file.readAll();
    int const end = bytes.indexOf('\0');
    return QString::fromLatin1(end < 0 ? bytes : bytes.left(end));
}

} // namespace

QString OrvResource::getOrvSourcePath() {
    QDir dir;
    return findOrvDir(dir) ? dir.absolutePath() : QString();
}

QString OrvResource::getOrvSourceDataPath() {
    QDir dir;
    if (!findOrvDir(dir))
        return QString();
    if (!dir.cd(QStringLiteral("data")))
        ppError("OrvResource::getOrvSourceDataPath - 'orv/data' path not found !");
    return dir.absolutePath();
}

QString OrvResource::buildOrvPath(QString const &relPath) {
    return under(getOrvSourcePath(), relPath);
}

QString OrvResource::buildOrvDataPath(QString const &relPath) {
    return under(getOrvSourceDataPath(), relPath);
}

QString OrvResource::load(QString const &relPath) {
    ppDebug("::OrvResource::load_thumb, relPath '$'", relPath);
    QString const absPath = buildOrvPath(relPath);
    ppDebug("::OrvResource::load_thumb, absPath '$'", absPath);
    return loadText(absPath, "::OrvResource::load_thumb,  problems reading strFile '$'");
}

QString OrvResource::loadOrvData(QString const &relPath) {
    ppDebug("::OrvResource::loadOrvData, relPath '$'", relPath);
    QString const absPath = buildOrvDataPath(relPath);
    ppDebug("::OrvResource::loadOrvData, absPath '$'", absPath);
    return loadText(absPath, "::OrvResource::loadOrvData,  problems reading strFile '$'");
}

} // namespace orv
