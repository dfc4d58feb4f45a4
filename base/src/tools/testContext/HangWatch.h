// HangWatch.h: the time limit of one test in a regression run (private to the library).
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace orv::regression {

// Calls onHang(index) on a thread of its own when the test index has been running for
// longer than the limit. Tests share the process and can't be stopped one by one, so
// onHang is expected to end the process; until it returns, ended() waits, so that the
// run doesn't go on behind it.
class HangWatch {
public:
    HangWatch(unsigned int seconds, std::function<void(size_t index)> onHang);
    // Ends the watching thread.
    ~HangWatch();
    HangWatch(HangWatch const &) = delete;
    HangWatch &operator=(HangWatch const &) = delete;

    void started(size_t index);
    void ended();

private:
    void watch();

    std::chrono::seconds const limit;
    std::function<void(size_t)> const onHang;
    std::mutex mutex;
    std::condition_variable changed;
    bool stopping = false;
    bool running = false;
    size_t index = 0;
    std::chrono::steady_clock::time_point deadline;
    std::thread thread;
};

} // namespace orv::regression
