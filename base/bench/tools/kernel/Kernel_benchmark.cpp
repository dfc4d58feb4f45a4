// Kernel_benchmark.cpp: handing small functions from a worker to the GUI thread and
// running them there, Kernel::runInGui against a queued QMetaObject::invokeMethod.
#include "orv/Kernel.h"

#include <benchmark/benchmark.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaObject>

#include <thread>

namespace {

constexpr int callCount = 10000;

// Posts callCount functions from one worker with post, then turns the main loop until
// all of them have run.
template <typename Post> void handOver(benchmark::State &state, Post post) {
    int ran = 0;
    for (auto _ : state) {
        ran = 0;
        std::thread worker([&] {
            for (int i = 0; i < callCount; ++i)
                post([&ran] { ++ran; });
        });
        worker.join();
        while (ran < callCount)
            QCoreApplication::processEvents();
    }
    benchmark::DoNotOptimize(ran);
    state.SetItemsProcessed(state.iterations() * callCount);
}

void BM_Kernel_RunInGuiFromWorker(benchmark::State &state) {
    handOver(state, [](std::function<void()> f) { orv::Kernel::runInGui(std::move(f), 0); });
}
BENCHMARK(BM_Kernel_RunInGuiFromWorker)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_QMetaObject_InvokeMethodQueued(benchmark::State &state) {
    handOver(state, [](std::function<void()> f) {
        QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(f), Qt::QueuedConnection);
    });
}
BENCHMARK(BM_QMetaObject_InvokeMethodQueued)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv) {
    orv::KernelTerminal kernel(argc, argv, nullptr, false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
