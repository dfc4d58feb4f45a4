// SchedulerFileSystemAction.cpp: a new log file on each calendar boundary.
#include "orv/Appender.h"

#include "orv/Log.h"

#include <QtCore/QDebug>
#include <QtCore/QDir>

namespace orv {

SchedulerFileSystemAction::SchedulerFileSystemAction(Logger *logger, AppenderFile *appender,
                                                     QString const &dir, QString const &file,
                                                     unsigned long long maxLen)
    : logger(logger), appender(appender), dir(dir), file(file), maxLen(maxLen) {}

AppenderFile *SchedulerFileSystemAction::createAppenderFile(SCHEDULE schedule, QString const &dir,
                                                            QString const &file,
                                                            unsigned long long maxLen) {
    if (!QDir().mkpath(dir)) {
        qDebug() << "SchedulerFileSystemAction::createAppenderFile, mkdir failed, NIX";
        return nullptr;
    }
    XCalendarUTC now;
    now.fromNow();
    auto *appender =
        new AppenderFile(dir + '/' + file + '_' + now.asString(schedule) + ".txt", maxLen);
    if (!appender->open("SchedulerFileSystemAction::createAppenderFile, cannot log to file:")) {
        delete appender;
        return nullptr;
    }
    return appender;
}

void SchedulerFileSystemAction::schedule(SCHEDULE unit, XCalendarUTC const &calendar) {
    ppDebug("SchedulerFileSystemAction::schedule, *** schedule:$", static_cast<int>(unit));
    ppDebug("SchedulerFileSystemAction::schedule, *** cal:$", calendar.toString());
    // Out of the list before it is closed: the logger thread may be writing to it
    // right now, and removeAppender waits for that line to end.
    //
    // The stored appender isn't replaced by the new one: from the second rotation on
    // there is nothing to remove, and every new file is added beside the earlier ones.
    if (appender && logger->removeAppender(appender))
        appender->close();
    if (AppenderFile *next = createAppenderFile(unit, dir, file, maxLen))
        logger->addAppender(next);
}

} // namespace orv
