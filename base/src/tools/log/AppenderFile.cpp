// AppenderFile.cpp: log lines in a Latin-1 file, flushed one by one, up to a size.
#include "orv/Appender.h"

#include "orv/LogMessage.h"
#include "orv/Logger.h"
#include "orv/XFile.h"
#include "orv/XStringStream.h"
#include "tools/platform/OrvPlatform.h"

#include <QtCore/QDebug>

#include <cstdio>
#include <ctime>

namespace orv {

AppenderFile::AppenderFile(QString const &path, unsigned long long maxLen)
    : Appender(QStringLiteral("file")), file(path), maxLen(maxLen) {}

AppenderFile *AppenderFile::createAppenderFile(QString const &dir, QString const &file,
                                               unsigned long long maxLen) {
    if (!dirExists(dir) && !mkDirPath(dir, true)) {
        Logger::printToCout(xprintF("AppenderFile::createAppenderFile, dir '$', file: '$', "
                                    "maxLen:$ - PROBLEM creating directory",
                                    dir, file, maxLen));
        return nullptr;
    }
    auto *appender = new AppenderFile(dir + '/' + file, maxLen);
    if (!appender->open("cannot log to file:")) {
        // Not deleted: who owns a failed appender is left to the caller's design.
        return nullptr;
    }
    return appender;
}

bool AppenderFile::open(char const *complaint) {
    if (file.open(QIODevice::WriteOnly))
        return true;
    qDebug() << complaint << file.fileName();
    return false;
}

void AppenderFile::close() { file.close(); }

void AppenderFile::append(LogMessage *msg) {
    if (full.load()) {
        qDebug() << "AppenderFile::append, file is full";
        return;
    }
    // The size is checked before the write, so the last line may end past maxLen.
    if (maxLen != 0 && static_cast<unsigned long long>(file.size()) >= maxLen) {
        full.store(true);
        return;
    }
    // The "%H:%M:%S" part of the time is the same for all lines of one second; the
    // text equals OrvTime::getTimeString(368).
    unsigned long long const micro = msg->getTime().getMicroseconds();
    long long const second = static_cast<long long>(micro / 1000000);
    if (second != cachedSecond) {
        std::tm local = platform::localTm(second);
        char clock[16];
        size_t length = std::strftime(clock, sizeof clock, "%H:%M:%S", &local);
        cachedClock = QByteArray(clock, static_cast<int>(length));
        cachedSecond = second;
    }
    char head[96];
    int const headLength =
        std::snprintf(head, sizeof head, "[%06u] [%s] [%s,%06u] [%u] ", msg->getNumber(),
                      logLevelToString(msg->getLogLevel()), cachedClock.constData(),
                      static_cast<unsigned int>(micro % 1000000), msg->getThreadID());
    QByteArray line(head, headLength);
    line += msg->toString().toLatin1();
    line += '\n';
    file.write(line);
    file.flush();
}

} // namespace orv
