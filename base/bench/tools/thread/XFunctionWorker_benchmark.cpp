// XFunctionWorker_benchmark.cpp: the latency of handing a job to a worker thread that
// sleeps and seeing it done, XFunctionWorker against QThreadPool::start on a pool of one
// thread that never expires, and a std::thread waiting on a condition variable.
//
// Each round lets the worker fall asleep first (outside the timing), then hands over a
// job that only raises a flag, and spins on the caller's side until the flag is up: the
// time is the wake-up, the hand-over and the way back. The program's main is in
// XThreadPool_benchmark.cpp.
#include "orv/XWorker.h"

#include <benchmark/benchmark.h>

#include <QtCore/QThreadPool>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace {

// Long enough for any of the three to have gone back to sleep.
constexpr std::chrono::microseconds settle(300);

template <typename HandOver>
void measure(benchmark::State &state, std::atomic<bool> &done, HandOver handOver) {
    for (auto _ : state) {
        state.PauseTiming();
        std::this_thread::sleep_for(settle);
        done.store(false, std::memory_order_relaxed);
        state.ResumeTiming();
        handOver();
        while (!done.load(std::memory_order_acquire)) {
        }
    }
}

void BM_XFunctionWorker_HandOverToIdle(benchmark::State &state) {
    orv::XFunctionWorker worker;
    worker.startThreadInitial();
    std::atomic<bool> done{false};
    // The job takes itself away, so that the worker goes back to sleep after one call;
    // the flag goes up first, since the hand-over is what is timed.
    std::function<int()> const job = [&] {
        done.store(true, std::memory_order_release);
        worker.setWorker({});
        return 0;
    };
    measure(state, done, [&] { worker.setWorker(job); });
    worker.stopThread();
}
BENCHMARK(BM_XFunctionWorker_HandOverToIdle)->UseRealTime();

void BM_QThreadPool_StartOnIdle(benchmark::State &state) {
    QThreadPool pool;
    pool.setMaxThreadCount(1);
    pool.setExpiryTimeout(-1);
    std::atomic<bool> done{false};
    std::function<void()> const job = [&] { done.store(true, std::memory_order_release); };
    measure(state, done, [&] { pool.start(job); });
    pool.waitForDone();
}
BENCHMARK(BM_QThreadPool_StartOnIdle)->UseRealTime();

// The plain form: one job slot under a mutex, one condition variable.
class ConditionWorker {
public:
    ConditionWorker() : thread([this] { loop(); }) {}
    ~ConditionWorker() {
        {
            std::lock_guard<std::mutex> lock(mutex);
            stopping = true;
        }
        wake.notify_one();
        thread.join();
    }
    void post(std::function<void()> f) {
        {
            std::lock_guard<std::mutex> lock(mutex);
            job = std::move(f);
        }
        wake.notify_one();
    }

private:
    void loop() {
        std::unique_lock<std::mutex> lock(mutex);
        for (;;) {
            wake.wait(lock, [this] { return stopping || job; });
            if (stopping)
                return;
            std::function<void()> f = std::move(job);
            job = nullptr;
            lock.unlock();
            f();
            lock.lock();
        }
    }

    std::mutex mutex;
    std::condition_variable wake;
    std::function<void()> job;
    bool stopping = false;
    std::thread thread;
};

void BM_StdThreadConditionVariable_PostToIdle(benchmark::State &state) {
    ConditionWorker worker;
    std::atomic<bool> done{false};
    std::function<void()> const job = [&] { done.store(true, std::memory_order_release); };
    measure(state, done, [&] { worker.post(job); });
}
BENCHMARK(BM_StdThreadConditionVariable_PostToIdle)->UseRealTime();

} // namespace
