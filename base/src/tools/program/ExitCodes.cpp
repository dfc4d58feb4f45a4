// ExitCodes.cpp: the texts of the exit codes and the program's orderly death.
#include "orv/XProgram.h"

#include "orv/Log.h"
#include "orv/OrvTime.h"
#include "tools/platform/OrvPlatform.h"

#include <atomic>
#include <cstdlib>

namespace orv {

QString exitOrvErrorCodeToString(int code) {
    switch (code) {
    case 0: return QStringLiteral("everything OK");
    case 1: return QStringLiteral("general failure");
    case 2: return QStringLiteral("configuration problem");
    case 3: return QStringLiteral("mathematical problem");
    case 4: return QStringLiteral("file not found");
    case 5: return QStringLiteral("io problem");
    case 6: return QStringLiteral("argument problem (missing, range, ... ?)");
    case 7: return QStringLiteral("xml problem");
    case 8: return QStringLiteral("quit gui directly (debug mode)");
    case 9: return QStringLiteral("parsing problem");
    case 10: return QStringLiteral("checksum problem");
    case 30: return QStringLiteral("main helper problem");
    default: return QStringLiteral("unknown errorcode");
    }
}

void exitApp(QString const &message, unsigned int seconds) {
    ppError(message);
    for (unsigned int n = seconds; n >= 1; --n) {
        ppWarning("program end $ sec", n);
        xSleep(1000);
    }
    Logger::quit();
    std::exit(1);
}

void hideWindowsConsole() {
    static std::atomic<bool> released{false};
    if (!released.exchange(true))
        platform::releaseConsole();
}

} // namespace orv
