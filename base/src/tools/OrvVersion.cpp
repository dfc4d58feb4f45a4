// OrvVersion.cpp: the version record and the registered header lines of further libraries.
#include "orv/OrvVersion.h"

#include "orv/LogMessage.h"

namespace orv {

namespace {

// The version comes from the build (the CMake project's), so that the library, its
// packages and this record never disagree.
char const *const version = ORV_VERSION;
// Empty in this build; a patched build names itself here.
char const *const versionSuffix = "";

} // namespace

QString OrvVersion::all() {
    return QStringLiteral("orv ") + getVersion() + ' ' + getTimestamp_Date() + ' ' +
           getTimestamp_Time();
}

QString OrvVersion::getTimestamp_Date() { return QStringLiteral(__DATE__); }

QString OrvVersion::getTimestamp_Time() { return QStringLiteral(__TIME__); }

QString OrvVersion::getVersion() { return QLatin1String(version) + QLatin1String(versionSuffix); }

// 1.40.20 reads as 1.402: the minor part in hundredths, the patch in ten-thousandths.
double OrvVersion::getVersionNumber() {
    // One division, so that the result is the double nearest to the decimal.
    return (ORV_VERSION_MAJOR * 10000 + ORV_VERSION_MINOR * 100 + ORV_VERSION_PATCH) / 10000.0;
}

bool XAdditionalLibInfos::addLibInfo(QString text, bool) {
    auto *msg = new LogMessageString(text);
    msg->setLogLevel(INFO);
    libLogInfos().push_back(msg);
    return true;
}

std::vector<LogMessageString *> &XAdditionalLibInfos::libLogInfos() {
    // Never destroyed: the lines live as long as any log header can point at them.
    static auto *arLogMessages = new std::vector<LogMessageString *>();
    return *arLogMessages;
}

} // namespace orv
