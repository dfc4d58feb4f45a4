// XThreadPool_benchmark.cpp: a round trip of many small tasks through the global pool,
// XThreadPool::start_function_global against QThreadPool::start with a plain runnable.
#include "orv/XThreadPool.h"

#include <benchmark/benchmark.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QRunnable>
#include <QtCore/QThreadPool>

#include <atomic>

namespace {

constexpr int taskCount = 100000;

class CountTask : public QRunnable {
public:
    explicit CountTask(std::atomic<int> &counter) : counter(counter) {}
    void run() override { counter.fetch_add(1, std::memory_order_relaxed); }

private:
    std::atomic<int> &counter;
};

void BM_XThreadPool_StartFunctionGlobal(benchmark::State &state) {
    std::atomic<int> counter{0};
    for (auto _ : state) {
        for (int i = 0; i < taskCount; ++i)
            orv::XThreadPool::start_function_global(
                [&counter] { counter.fetch_add(1, std::memory_order_relaxed); });
        QThreadPool::globalInstance()->waitForDone();
    }
    benchmark::DoNotOptimize(counter.load());
    state.SetItemsProcessed(state.iterations() * taskCount);
}
BENCHMARK(BM_XThreadPool_StartFunctionGlobal)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_QThreadPool_StartRunnable(benchmark::State &state) {
    std::atomic<int> counter{0};
    for (auto _ : state) {
        for (int i = 0; i < taskCount; ++i)
            QThreadPool::globalInstance()->start(new CountTask(counter));
        QThreadPool::globalInstance()->waitForDone();
    }
    benchmark::DoNotOptimize(counter.load());
    state.SetItemsProcessed(state.iterations() * taskCount);
}
BENCHMARK(BM_QThreadPool_StartRunnable)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
