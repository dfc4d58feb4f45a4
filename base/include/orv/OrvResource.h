// OrvResource.h: files of the source tree that travel with a program, found in the
// directory named "orv" above the executable and its "data" child.
//
//   QString schema = orv::OrvResource::loadOrvData(QStringLiteral("xml/schema.xml"));
//   QString icons = orv::OrvResource::buildOrvPath(QStringLiteral("icons"));
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

namespace orv {

// A deployment needs the tree above the executable; without it every path is empty
// and an ERROR line says so.
class ORV_EXPORT OrvResource {
public:
    // The first directory above the program whose path ends in "orv" (any name with
    // that ending will do); "" when there is none.
    static QString getOrvSourcePath();
    // Its "data" child, returned even when that doesn't exist (with an ERROR line).
    static QString getOrvSourceDataPath();
    // relPath under those directories, unchecked; without the tree it lies under the
    // current directory.
    static QString buildOrvPath(QString const &relPath);
    static QString buildOrvDataPath(QString const &relPath);
    // The file's text up to its first NUL byte, as Latin-1; "" when it can't be read.
    static QString load(QString const &relPath);
    static QString loadOrvData(QString const &relPath);
};

} // namespace orv
