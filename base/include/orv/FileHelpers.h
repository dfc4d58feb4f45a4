// FileHelpers.h: path texts, file times and whole-file reads (existence tests and
// mkDirPath are in XFile.h).
//
//   orv::getAbsPath("/data/main.xml", "inc/a.xml");   // "/data/inc/a.xml"
//   orv::getFileExtension("Photo.JPG", true);          // "jpg"
//   QString text = orv::string_from_file(path);        // "" and an ERROR line on failure
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QString>

namespace orv {

// The suffix, lower-cased on request; empty for names shorter than 2 characters.
ORV_EXPORT QString getFileExtension(QString const &name, bool lower);
ORV_EXPORT QString getFileExtension(QFileInfo const &fileInfo, bool lower);
// Whether Qt's image reader reads files with this extension as it comes (bmp, gif, ico,
// jpeg/jpg, png, the portable any-maps, svg, xbm, xpm), ignoring case on request.
ORV_EXPORT bool is_qt_image_ext(QString const &ext, bool ignoreCase);
ORV_EXPORT QString getPureFilename(QString const &path);
// The text before the last `/` or `\` within the first 2047 characters; "" without one.
ORV_EXPORT QString getDirPath(QString const &path);
// base (or its directory when base doesn't end in a separator), `/`, rel; every `\` becomes `/`.
ORV_EXPORT QString getAbsPath(QString const &base, QString const &rel);
ORV_EXPORT QString getRelPath(QString const &dir, QString const &file);
ORV_EXPORT QString ensureNativePath(QString const &path);
// A path in the temporary directory ($TMPDIR or /tmp); the directory itself for an empty name.
ORV_EXPORT QString getTmpFilename(QString const &name);

// The directory itself unless parent is set or it's a file: then the one containing it.
ORV_EXPORT QDir get_directory(QFileInfo const &fileInfo, bool parent);
// Longer than maxLen: first component, "\...", last component.
ORV_EXPORT QString shortenFilePath(QString const &path, int maxLen);
ORV_EXPORT QString shortenFilePath(QFileInfo const &fileInfo, int maxLen);

// The whole file (Latin-1 / bytes); an ERROR line and "" when it can't be opened.
ORV_EXPORT QString readAsciiFile(QString const &name);
ORV_EXPORT QByteArray readAsciiFileByteArray(QString const &name);
// The whole file as UTF-8; an ERROR line and "" when it can't be read.
ORV_EXPORT QString string_from_file(QString const &name);
ORV_EXPORT QString string_from_file(QFileInfo const &fileInfo);
// The last modification in MILLIseconds since 1970, whatever the name says.
ORV_EXPORT quint64 get_timestamp_micro_sec(QFileInfo const &fileInfo);
ORV_EXPORT QString get_timestamp_string(QFileInfo const &fileInfo, QString const &format);

} // namespace orv
