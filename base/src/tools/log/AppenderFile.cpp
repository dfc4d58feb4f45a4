// AppenderFile.cpp: log lines in a Latin-1 file, flushed one by one, up to a size.
#include "orv/Appender.h"

#include "orv/LogMessage.h"
#include "orv/Logger.h"
#include "orv/XFile.h"
#include "orv/XStringStream.h"
#include "tools/platform/OrvPlatform.h"

#include <QtCore/QDebug>

#include <ctime>

namespace orv {

namespace {

// The line is built by hand: printf-style formatting was the larger part of the
// logger thread's own work per line.
void appendDecimal(QByteArray &out, unsigned int value, int minDigits) {
    char digits[10];
    int count = 0;
    do {
        digits[count++] = static_cast<char>('0' + value % 10);
        value /= 10;
    } while (value != 0);
    for (int i = count; i < minDigits; ++i)
        out += '0';
    while (count > 0)
        out += digits[--count];
}

// As QString::toLatin1: a character beyond Latin-1 becomes '?'.
void appendLatin1(QByteArray &out, QString const &text) {
    int const start = out.size();
    out.resize(start + text.size());
    char *to = out.data() + start;
    for (QChar const c : text)
        *to++ = c.unicode() < 256 ? static_cast<char>(c.unicode()) : '?';
}

} // namespace

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
        // Nobody else ever sees a failed appender.
        delete appender;
        return nullptr;
    }
    return appender;
}

bool AppenderFile::open(char const *complaint) {
    // Unbuffered: every line is flushed anyway, so Qt's buffer would only add a copy.
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
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
    QString const text = msg->toString();
    line.resize(0); // keeps the reserved capacity, where clear() would free it
    line.reserve(64 + text.size());
    line += '[';
    appendDecimal(line, msg->getNumber(), 6);
    line += "] [";
    line += logLevelToString(msg->getLogLevel());
    line += "] [";
    line += cachedClock;
    line += ',';
    appendDecimal(line, static_cast<unsigned int>(micro % 1000000), 6);
    line += "] [";
    appendDecimal(line, msg->getThreadID(), 1);
    line += "] ";
    appendLatin1(line, text);
    line += '\n';
    file.write(line);
    file.flush();
}

} // namespace orv
