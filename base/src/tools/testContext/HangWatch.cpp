// HangWatch.cpp: a thread that sleeps until the running test passes its deadline.
#include "tools/testContext/HangWatch.h"

namespace orv::regression {

HangWatch::HangWatch(unsigned int seconds, std::function<void(size_t)> onHang)
    : limit(seconds), onHang(std::move(onHang)), thread([this] { watch(); }) {}

HangWatch::~HangWatch() {
    {
        std::lock_guard<std::mutex> lock(mutex);
        stopping = true;
    }
    changed.notify_all();
    thread.join();
}

void HangWatch::started(size_t testIndex) {
    {
        std::lock_guard<std::mutex> lock(mutex);
        running = true;
        index = testIndex;
        deadline = std::chrono::steady_clock::now() + limit;
    }
    changed.notify_all();
}

void HangWatch::ended() {
    {
        std::lock_guard<std::mutex> lock(mutex);
        running = false;
    }
    changed.notify_all();
}

void HangWatch::watch() {
    std::unique_lock<std::mutex> lock(mutex);
    while (!stopping) {
        if (!running) {
            changed.wait(lock);
            continue;
        }
        size_t const watched = index;
        changed.wait_until(lock, deadline);
        // Held through onHang: the run waits in ended() and writes no more results.
        if (!stopping && running && index == watched &&
            std::chrono::steady_clock::now() >= deadline) {
            onHang(watched);
            running = false;
        }
    }
}

} // namespace orv::regression
