// CapturingAppender.h: an appender that keeps what the logger hands it, so that a
// test can wait for lines and read them back; and a logger started once per process.
//
//   orv::test::CapturingAppender &log = orv::test::startCapturingLogger();
//   orv::ppInfo("x=$", 1);
//   ASSERT_TRUE(log.waitForText("x=1"));
#pragma once

#include "orv/Appender.h"
#include "orv/CommandLine.h"
#include "orv/LogMessage.h"
#include "orv/Logger.h"

#include <QtCore/QString>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace orv::test {

struct CapturedLine {
    unsigned int number;
    unsigned int level;
    unsigned int space;
    unsigned int threadID;
    QString text;
};

class CapturingAppender : public Appender {
public:
    CapturingAppender() : Appender(QStringLiteral("capture")) {}

    void append(LogMessage *msg) override {
        std::lock_guard<std::mutex> lock(mutex);
        lines.push_back({msg->getNumber(), msg->getLogLevel(), msg->getSpace(), msg->getThreadID(),
                         msg->toString()});
        arrived.notify_all();
    }

    // Waits up to ms for a line whose text is exactly text; false when none came.
    bool waitForText(QString const &text, int ms = 10000) {
        // Each wake-up looks only at the lines that came since the last one, so a
        // wait behind hundreds of thousands of lines stays linear.
        size_t scanned = 0;
        return waitUntil(ms, [&] {
            for (; scanned < lines.size(); ++scanned)
                if (lines[scanned].text == text)
                    return true;
            return false;
        });
    }

    // Waits up to ms until count lines have arrived in all.
    bool waitForCount(size_t count, int ms = 10000) {
        return waitUntil(ms, [&] { return lines.size() >= count; });
    }

    std::vector<CapturedLine> taken() const {
        std::lock_guard<std::mutex> lock(mutex);
        return lines;
    }

    // The lines from the one whose text is first on, to the end.
    std::vector<CapturedLine> takenFrom(QString const &first) const {
        std::vector<CapturedLine> all = taken();
        for (size_t i = 0; i < all.size(); ++i)
            if (all[i].text == first)
                return std::vector<CapturedLine>(all.begin() + static_cast<long>(i), all.end());
        return {};
    }

private:
    template <typename Done> bool waitUntil(int ms, Done done) {
        std::unique_lock<std::mutex> lock(mutex);
        return arrived.wait_for(lock, std::chrono::milliseconds(ms), done);
    }

    mutable std::mutex mutex;
    std::condition_variable arrived;
    std::vector<CapturedLine> lines;
};

// Starts the logger with this appender alone (no console) on the first call of the
// process; later calls give the same appender. The logger is never quit here.
inline CapturingAppender &startCapturingLogger() {
    static CapturingAppender *appender = [] {
        auto *capture = new CapturingAppender();
        QList<Appender *> appenders{capture};
        Logger::ini(CommandLine(), &appenders, DEFAULT_LOG_MASK);
        return capture;
    }();
    return *appender;
}

} // namespace orv::test
