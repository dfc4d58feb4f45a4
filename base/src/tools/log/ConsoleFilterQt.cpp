// ConsoleFilterQt.cpp: a Qt message handler that swallows known noise.
#include "orv/Appender.h"

#include <cstdio>
#include <cstring>
#include <mutex>

namespace orv {

namespace {

// Qt calls a message handler from any thread; the one buffer is taken in turns.
std::mutex &bufferMutex() {
    static std::mutex mutex;
    return mutex;
}

} // namespace

char *ConsoleFilterQt::messageBuffer = nullptr;
QList<QByteArray> ConsoleFilterQt::listPointer;
QStringList ConsoleFilterQt::listFilter;
bool ConsoleFilterQt::flagIni = false;

void ConsoleFilterQt::addFilter(QString const &text) {
    std::lock_guard<std::mutex> lock(bufferMutex());
    listFilter.append(text);
    listPointer.append(text.toLocal8Bit());
}

void ConsoleFilterQt::clearFilters() {
    std::lock_guard<std::mutex> lock(bufferMutex());
    listFilter.clear();
    listPointer.clear();
}

void ConsoleFilterQt::daMessageOut(QtMsgType, QMessageLogContext const &, QString const &message) {
    std::lock_guard<std::mutex> lock(bufferMutex());
    if (!flagIni) {
        messageBuffer = new char[MAX_MSG];
        flagIni = true;
    }
    QByteArray const bytes = message.toLocal8Bit();
    size_t const length = std::min<size_t>(static_cast<size_t>(bytes.size()), MAX_MSG - 1);
    std::memcpy(messageBuffer, bytes.constData(), length);
    messageBuffer[length] = '\0';
    for (QByteArray const &filter : listPointer)
        if (std::strstr(messageBuffer, filter.constData()))
            return;
    std::fprintf(stderr, "%s\n", messageBuffer);
}

} // namespace orv
