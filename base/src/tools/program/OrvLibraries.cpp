// OrvLibraries.cpp: the names of the library ids the log levels carry in their high half.
#include "orv/OrvVersion.h"

#include "orv/Logger.h"
#include "orv/XError.h"
#include "orv/XStringStream.h"

#include <QtCore/QHash>

#include <cstdio>

namespace orv {

namespace {

struct LibraryNames {
    QHash<unsigned int, QByteArray> raw;
    QHash<unsigned int, QByteArray> padded;
    bool paddedBuilt = false;
};

LibraryNames &names() {
    // Filled before main by the table below, from any translation unit's static
    // initialisers: created on first use, never destroyed.
    static auto *instance = new LibraryNames();
    return *instance;
}

// This library and its siblings; each further library adds its own row.
bool const libraryTable = [] {
    static struct {
        unsigned int ident;
        char const *name;
    } const rows[] = {{100, "BASE"}, {200, "GEO"}, {300, "GUI"},
                      {400, "NET"},  {500, "APP"}, {1000, "RTEST"}};
    for (auto const &row : rows)
        names().raw.insert(row.ident, row.name);
    return true;
}();

void buildPadded(LibraryNames &n) {
    int maxLen = 0;
    for (QByteArray const &name : n.raw)
        maxLen = qMax(maxLen, name.size());
    for (auto it = n.raw.cbegin(); it != n.raw.cend(); ++it) {
        QByteArray name = it.value();
        if (name.size() < maxLen - 1)
            name = name.leftJustified(maxLen - 1, ' ');
        if (name.size() < maxLen)
            name += '*';
        n.padded.insert(it.key(), name);
    }
    n.paddedBuilt = true;
}

} // namespace

std::function<char const *(unsigned int)> OrvVersion::getOrvLibName = OrvLibraries::libNameByIdent;

void OrvLibraries::addLib(unsigned int ident, char const *libName) {
    ORV_ASSERT_PTR(libName);
    QByteArray const name(libName);
    if (name.size() > 128) {
        Logger::printToCout("OrvLibraries::addLib, libName.length() > 128 bytes !");
        return;
    }
    if (names().raw.contains(ident))
        Logger::printToCout(xprintF("OrvLibraries::addLib '$' already present !", libName));
    names().raw.insert(ident, name);
}

char const *OrvLibraries::libNameByIdent(unsigned int ident) {
    LibraryNames &n = names();
    if (!n.paddedBuilt)
        buildPadded(n);
    auto it = n.padded.constFind(ident);
    if (it != n.padded.cend())
        return it.value().constData();
    static char unknown[32];
    std::snprintf(unknown, sizeof unknown, "UN-KN:%d", static_cast<int>(ident));
    return unknown;
}

char const *getLibraryName(unsigned int logLevelFlags) {
    return OrvVersion::getOrvLibName(logLevelFlags >> 16);
}

} // namespace orv
