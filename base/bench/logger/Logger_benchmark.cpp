// Logger_benchmark.cpp: messages per second through the logger, from 1 and from 4
// threads, into a file flushed per line and into an appender that only counts (the
// cost of the message and the queue), beside spdlog's async logger with the same
// text, a file sink flushed per message and a counting null sink.
//
// One iteration logs a batch from all threads and lasts until the last message has
// gone through the appender, so the writing is counted, not only the hand-over.
#include "orv/Appender.h"
#include "orv/CommandLine.h"
#include "orv/Log.h"
#include "orv/LogMessage.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTemporaryDir>

#include <benchmark/benchmark.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#ifdef ORV_HAVE_SPDLOG
#include <spdlog/async.h>
#include <spdlog/async_logger.h>
#include <spdlog/details/file_helper.h>
#include <spdlog/sinks/base_sink.h>
#endif

namespace {

constexpr int batch = 20000;

std::atomic<long long> appended{0};

QTemporaryDir &tempDir() {
    static QTemporaryDir dir;
    return dir;
}

class CountingFileAppender : public orv::AppenderFile {
public:
    explicit CountingFileAppender(QString const &path) : AppenderFile(path, 0) {
        open("cannot open");
    }
    void append(orv::LogMessage *msg) override {
        AppenderFile::append(msg);
        appended.fetch_add(1, std::memory_order_release);
    }
};

class CountingAppender : public orv::Appender {
public:
    CountingAppender() : Appender("count") {}
    void append(orv::LogMessage *) override { appended.fetch_add(1, std::memory_order_release); }
};

// Spreads one batch over the threads, then waits until the appender has seen it all.
template <typename LogOne> void runBatches(benchmark::State &state, LogOne logOne) {
    int const threads = static_cast<int>(state.range(0));
    for (auto _ : state) {
        long long const target = appended.load() + batch;
        auto const start = std::chrono::steady_clock::now();
        std::vector<std::thread> writers;
        for (int t = 0; t < threads; ++t)
            writers.emplace_back([&, t] {
                for (int i = t; i < batch; i += threads)
                    logOne(i);
            });
        for (std::thread &writer : writers)
            writer.join();
        while (appended.load(std::memory_order_acquire) < target)
            std::this_thread::sleep_for(std::chrono::microseconds(50));
        std::chrono::duration<double> const elapsed = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(elapsed.count());
    }
    state.SetItemsProcessed(state.iterations() * batch);
}

void startLogger() {
    static bool const started = [] {
        QList<orv::Appender *> none;
        orv::Logger::atomicFlagDeleteMessage.store(true);
        return orv::Logger::ini(orv::CommandLine(), &none, orv::DEFAULT_LOG_MASK);
    }();
    (void)started;
}

void logOrv(int i) { orv::ppInfo("request $ served by $ in $ us", i, "worker-pool", 125); }

void BM_Logger_File(benchmark::State &state) {
    startLogger();
    CountingFileAppender file(tempDir().filePath("orv.txt"));
    orv::Logger::getLogger().addAppender(&file);
    runBatches(state, logOrv);
    orv::Logger::getLogger().removeAppender(&file);
}
BENCHMARK(BM_Logger_File)->Arg(1)->Arg(4)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_Logger_NoAppender(benchmark::State &state) {
    startLogger();
    CountingAppender count;
    orv::Logger::getLogger().addAppender(&count);
    runBatches(state, logOrv);
    orv::Logger::getLogger().removeAppender(&count);
}
BENCHMARK(BM_Logger_NoAppender)->Arg(1)->Arg(4)->UseManualTime()->Unit(benchmark::kMillisecond);

#ifdef ORV_HAVE_SPDLOG

// What spdlog's basic_file_sink_mt does (it is final), plus the count.
class CountingFileSink : public spdlog::sinks::base_sink<std::mutex> {
public:
    explicit CountingFileSink(std::string const &path) { file.open(path, true); }

protected:
    void sink_it_(spdlog::details::log_msg const &msg) override {
        spdlog::memory_buf_t line;
        formatter_->format(msg, line);
        file.write(line);
        appended.fetch_add(1, std::memory_order_release);
    }
    void flush_() override { file.flush(); }

private:
    spdlog::details::file_helper file;
};

class CountingNullSink : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
protected:
    void sink_it_(spdlog::details::log_msg const &) override {
        appended.fetch_add(1, std::memory_order_release);
    }
    void flush_() override {}
};

// spdlog's default async set-up (queue of 8192, one worker, blocking when full),
// flushed after every message like the file appender.
std::shared_ptr<spdlog::async_logger> asyncLogger(spdlog::sink_ptr sink) {
    static auto pool = std::make_shared<spdlog::details::thread_pool>(8192, 1);
    auto logger = std::make_shared<spdlog::async_logger>("bench", std::move(sink), pool,
                                                         spdlog::async_overflow_policy::block);
    logger->set_pattern("[%L] [%H:%M:%S,%f] [%t] %v");
    logger->flush_on(spdlog::level::trace);
    return logger;
}

void BM_spdlog_File(benchmark::State &state) {
    auto logger = asyncLogger(
        std::make_shared<CountingFileSink>(tempDir().filePath("spd.txt").toStdString()));
    runBatches(state, [&](int i) {
        logger->info("request {} served by {} in {} us", i, "worker-pool", 125);
    });
}
BENCHMARK(BM_spdlog_File)->Arg(1)->Arg(4)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_spdlog_NoSink(benchmark::State &state) {
    auto logger = asyncLogger(std::make_shared<CountingNullSink>());
    runBatches(state, [&](int i) {
        logger->info("request {} served by {} in {} us", i, "worker-pool", 125);
    });
}
BENCHMARK(BM_spdlog_NoSink)->Arg(1)->Arg(4)->UseManualTime()->Unit(benchmark::kMillisecond);

#endif

} // namespace

int main(int argc, char **argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
