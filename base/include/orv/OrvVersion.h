// OrvVersion.h: the library's version record, and the lines further libraries add
// to the head of every log.
//
//   orv::OrvVersion::all();                       // "orv 1.40.20 Nov 20 2022 15:17:28"
//   orv::XAdditionalLibInfos::addLibInfo("lib:geo 2.1", true);
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

#include <functional>
#include <vector>

namespace orv {

class LogMessageString;

class ORV_EXPORT OrvVersion {
public:
    // "orv <version> <date> <time>"
    static QString all();
    // The date and time this library was built, as the compiler writes them.
    static QString getTimestamp_Date();
    static QString getTimestamp_Time();
    // The version string, with the suffix behind it when there is one.
    static QString getVersion();
    static double getVersionNumber();
    // The name of a library id as the log shows it; OrvLibraries::libNameByIdent unless
    // a program puts its own resolver here.
    static std::function<char const *(unsigned int)> getOrvLibName;
};

// Names of the libraries whose ids stand in the high half of a log level. Fill it
// during start-up: there is no lock.
class ORV_EXPORT OrvLibraries {
public:
    // A null name is fatal; one over 128 bytes is refused; an id present already is
    // replaced, with a line on stdout.
    static void addLib(unsigned int ident, char const *libName);
    // All names padded to one width, shorter ones ending in "*"; the width is fixed
    // at the first call. An unknown id gives "UN-KN:<id>" in a buffer the next
    // unknown id overwrites.
    static char const *libNameByIdent(unsigned int ident);
};

ORV_EXPORT char const *getLibraryName(unsigned int logLevelFlags);

// Each line is a message at INFO of this library, kept for the life of the process;
// the log header copies the pointers. Fill it during start-up: there is no lock.
class ORV_EXPORT XAdditionalLibInfos {
public:
    static bool addLibInfo(QString text, bool);
    static std::vector<LogMessageString *> &libLogInfos();
};

} // namespace orv
