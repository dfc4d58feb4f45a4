// OrvVersion.cpp: the version record and the registered header lines of further libraries.
#include "orv/OrvVersion.h"

#include "orv/LogMessage.h"

namespace orv {

namespace {

char const *const version = "1.40.20";
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

double OrvVersion::getVersionNumber() { return 1.402; }

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
