// KernelEvents.h: the custom Qt events that carry work to the GUI thread, where the
// kernel runs them inside its notify, before the receiver sees them.
//
//   QCoreApplication::postEvent(app, new orv::XLambda_GUI_Event([] { refresh(); }));
//
// Kernel::runInGui builds and posts these; code rarely needs them directly.
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QEvent>

#include <atomic>
#include <functional>

namespace orv {

class ORV_EXPORT KernelEvents : public QEvent {
public:
    static constexpr int EV_TYPE_GENERIC = 9000;
    static constexpr int EV_TYPE_LAMBDA = 9100;

    // Trace lines of construction and delivery.
    static std::atomic<bool> atomicFlagDebug;

    explicit KernelEvents(int type);
    ~KernelEvents() override;
    // Runs on the GUI thread, inside the notification.
    virtual void runMethod() = 0;

    static bool is_kernel_event(QEvent const *event);
    static bool is_event_Generic(QEvent const *event);
    static bool is_event_lambda(QEvent const *event);
    static void setDebug(bool on);
    static bool isDebug();

    // The poster calls publish() after the last change to an event; delivery calls
    // received() before it even reads the event's type. Qt's queue hands events over
    // in code race checkers can't see, so the order is made explicit on one counter.
    static void publish() { handedOver.fetch_add(1, std::memory_order_release); }
    static void received() { handedOver.load(std::memory_order_acquire); }

protected:
    // The log lines of OrvKernelEvent, the same for every kind of data.
    static void logDataFunctionMissing();
    static void logDataDelivered();

private:
    static std::atomic<quint64> handedOver;
};

// Event type 9100: a function for the GUI thread.
class ORV_EXPORT XLambda_GUI_Event : public KernelEvents {
public:
    explicit XLambda_GUI_Event(std::function<void()> f);
    ~XLambda_GUI_Event() override;
    // An empty function is logged at ERROR and skipped.
    void runMethod() override;

    std::function<void()> functionGUI;
    // Nothing sets it yet: the work runs at once.
    quint64 msWait = 0;
};

// Event type 9000: data handed to the GUI thread by move, with the function that
// takes it there. The event owns the data on the way; nothing is copied.
template <typename T> class OrvKernelEvent : public KernelEvents {
public:
    OrvKernelEvent(T &&data, std::function<void(T &&)> f)
        : KernelEvents(EV_TYPE_GENERIC), data(std::move(data)), fuData(std::move(f)) {}

    // An empty function is logged at ERROR and the data dropped with the event.
    void runMethod() override {
        if (!fuData) {
            logDataFunctionMissing();
            return;
        }
        fuData(std::move(data));
        if (isDebug())
            logDataDelivered();
    }

    T data;
    std::function<void(T &&)> fuData;
};

} // namespace orv
