// XTimeSlot.cpp: one measurement of the time statistics, its list line, and the
// handle that stops it at the end of a scope.
#include "orv/XTimeStats.h"

#include "orv/Log.h"
#include "orv/OrvTime.h"
#include "orv/StringFormat.h"
#include "orv/XError.h"
#include "orv/XStringStream.h"
#include "tools/thread/QtMutexLock.h"

#include <QtCore/QStringList>

namespace orv {

XAtomic<bool> XTimeSlot_Impl::atomicFlagDebug{false};

namespace {

// The text the dummy slot carries; a second start on it is expected, not an error.
QString const &dummyMessage() {
    static QString const text = QStringLiteral("DUMMY-LOOP");
    return text;
}

} // namespace

XTimeSlot_Impl::XTimeSlot_Impl(XTimeSlot_Impl const &other) { *this = other; }

XTimeSlot_Impl &XTimeSlot_Impl::operator=(XTimeSlot_Impl const &other) {
    if (&other == this)
        return *this;
    QString begin, end;
    SLOT::SLOT_TYPE type;
    {
        QtMutexLock lock(&other.mutex);
        begin = other.message;
        end = other.messageEndText;
        type = other.slotType;
    }
    {
        QtMutexLock lock(&mutex);
        message = begin;
        messageEndText = end;
        slotType = type;
    }
    flagStarted = other.flagStarted.load();
    flagStopped = other.flagStopped.load();
    stopwatch = other.stopwatch;
    threadID = other.threadID.load();
    number = other.number.load();
    return *this;
}

void XTimeSlot_Impl::start() {
    if (!flagStarted) {
        stopwatch.start();
        flagStarted = true;
        if (atomicFlagDebug)
            ppDebug("XTimeSlot_Impl::start, msg '$'", messageBegin());
        return;
    }
    QString const msg = messageBegin();
    if (XTimeStats::atomicFlagEnabled && msg != dummyMessage())
        ppError("XTimeSlot_Impl::start_global, already started!, msg '$'", msg);
}

void XTimeSlot_Impl::stop() {
    if (flagStopped) {
        ppError("XTimeSlot_Impl::stop, already stopped!");
        return;
    }
    stopwatch.stop();
    flagStopped = true;
    if (atomicFlagDebug)
        ppDebug("XTimeSlot_Impl::stop, msg '$'", messageBegin());
}

void XTimeSlot_Impl::setMessage(QString const &text) {
    QtMutexLock lock(&mutex);
    message = text;
}

void XTimeSlot_Impl::setMessageEnd(QString const &text) {
    {
        QtMutexLock lock(&mutex);
        messageEndText = text;
    }
    if (!flagStopped)
        stop();
}

QString XTimeSlot_Impl::messageBegin() const {
    QtMutexLock lock(&mutex);
    return message;
}

QString XTimeSlot_Impl::messageEnd() const {
    QtMutexLock lock(&mutex);
    return messageEndText;
}

XTimeSlot_Impl::SLOT::SLOT_TYPE XTimeSlot_Impl::getSlotType() const {
    QtMutexLock lock(&mutex);
    return slotType;
}

XTimeSlot_Impl *XTimeSlot_Impl::setSlotType(SLOT::SLOT_TYPE type) {
    QtMutexLock lock(&mutex);
    slotType = type;
    return this;
}

QString XTimeSlot_Impl::toString(quint64 total) const {
    QStringList fields{formatFillZero(3, number), formatFillZero(6, threadID),
                       slotTypeToString(getSlotType())};
    QString const startTime = OrvTime(stopwatch.getTimeStart()).getTimeString(368);
    if (isValid()) {
        QString const share = total == 0
                                  ? QStringLiteral("??,000")
                                  : formatPercent(static_cast<double>(delta()) / total * 100.0, 3);
        fields << startTime << stopwatch.toStringMicroseconds(true) << share + " %";
    } else if (isStartedButNotStopped()) {
        fields << startTime << QStringLiteral("RUNNING") + QString(22, ' ');
    } else {
        fields << QStringLiteral("SLOT-NOT-VALID") + QString(32, ' ');
    }
    QString const begin = messageBegin();
    QString const end = messageEnd();
    fields << (begin.isEmpty() ? QStringLiteral("*") : begin)
           << (end.isEmpty() ? QStringLiteral("~") : end);
    return fields.join(QStringLiteral(", "));
}

void XTimeSlot_Impl::show(unsigned int space) const { ppDebug(space, toString(0)); }

QString XTimeSlot_Impl::slotTypeToString(SLOT::SLOT_TYPE type) {
    QString const word = slot_type_to_string(type);
    if (type < SLOT::STANDARD || type > SLOT::SLEEP)
        return xprintF("UNKNOWN-SLOT:$", static_cast<int>(type));
    return QString(8 - word.size(), '_') + word;
}

QString XTimeSlot_Impl::slot_type_to_string(SLOT::SLOT_TYPE type) {
    static char const *const words[] = {"STANDARD", "READ", "WRITE",  "CALC",    "CREATE", "PARSE",
                                        "CONVERT",  "GUI",  "OPENGL", "TESTING", "SLEEP"};
    if (type < SLOT::STANDARD || type > SLOT::SLEEP)
        return xprintF("SLOT:$ ?", static_cast<int>(type));
    return QString::fromLatin1(words[type]);
}

XTimeSlot::XTimeSlot(XTimeSlot &&other) noexcept : slot(other.slot) { other.slot = nullptr; }

XTimeSlot &XTimeSlot::operator=(XTimeSlot &&other) noexcept {
    if (&other != this) {
        slot = other.slot;
        other.slot = nullptr;
    }
    return *this;
}

XTimeSlot::~XTimeSlot() {
    if (slot && slot->isStartedButNotStopped())
        slot->stop();
}

XTimeSlot_Impl *XTimeSlot::operator->() const {
    ORV_ASSERT_PTR(slot);
    return slot;
}

} // namespace orv
