// XStopwatch_test.cpp: spans and their sum, the four text forms, and the warnings
// of reading a watch in the wrong state.
#include "orv/XStopwatch.h"

#include "orv/OrvTime.h"

#include "support/Test.h"

#include <functional>

using orv::XStopwatch;

TEST(XStopwatch, MeasuresSpansAndSumsThemUntilReset) {
    XStopwatch watch;
    watch.start();
    quint64 const first = watch.getTimeFirst();
    orv::xSleep(20);
    watch.stop();
    quint64 const span = watch.elapsed_time_microSeconds();
    EXPECT_GE(span, 15000u);
    EXPECT_EQ(watch.elapsed_time_milliSeconds(), span / 1000);
    EXPECT_EQ(watch.elapsed_time_microSeconds_total(), span);

    orv::xSleep(1);
    watch.start();
    // The stop of the run before still counts until the next stop, and the span wraps.
    EXPECT_TRUE(watch.isStopped());
    EXPECT_EQ(watch.getTimeFirst(), first);
    EXPECT_GT(watch.getTimeStart(), watch.getTimeStop());
    EXPECT_EQ(watch.elapsed_time_microSeconds(), watch.getTimeStop() - watch.getTimeStart());
    orv::xSleep(20);
    watch.stop();
    EXPECT_EQ(watch.elapsed_time_microSeconds_total(), span + watch.elapsed_time_microSeconds());
    EXPECT_EQ(watch.elapsed_time_milliSeconds_total(),
              watch.elapsed_time_microSeconds_total() / 1000);

    watch.reset();
    EXPECT_TRUE(watch.isReset());
}

TEST(XStopwatch, WritesRunningDeltaAndElapsedTexts) {
    XStopwatch watch;
    watch.start();
    struct Row {
        QString text, prefix, suffix;
    };
    std::vector<Row> rows = {
        {watch.toString(false), "XStopwatch-started, not stopped, delta now:", " ms"},
        {watch.toStringMicroseconds(false), "XStopwatch-started, not stopped, delta now:", " sec"},
    };
    watch.stop();
    rows.push_back({watch.toString(true), "delta:", " ms"});
    rows.push_back({watch.toStringMicroseconds(true), "delta:", " sec"});
    rows.push_back({watch.toString(false), "elapsed:", " ms"});
    rows.push_back({watch.toStringMicroseconds(false), "elapsed:", " sec"});
    for (Row const &row : rows) {
        EXPECT_TRUE(row.text.startsWith(row.prefix)) << row.text.toStdString();
        EXPECT_TRUE(row.text.endsWith(row.suffix)) << row.text.toStdString();
    }
    EXPECT_TRUE(rows[4].text.contains(" ms, total elapsed:"));
    EXPECT_TRUE(rows[5].text.contains(" sec, total elapsed:"));
}

TEST(XStopwatch, FreshWatchSaysResetAndWrongStateReadsWarnOrStaySilentAndGiveZero) {
    XStopwatch fresh;
    EXPECT_TRUE(fresh.isReset() && !fresh.isStarted() && !fresh.isStopped());
    EXPECT_EQ(fresh.toString(false), "XStopwatch-RESET");
    EXPECT_EQ(fresh.toStringMicroseconds(true), "XStopwatch-RESET");
    struct Row {
        char const *what;
        std::function<quint64(XStopwatch &)> call;
        char const *warning; // null: silent
    };
    Row const rows[] = {
        {"stop", [](XStopwatch &w) { return w.stop(), w.getTimeStop(); },
         "XStopwatch::stop - not started before"},
        {"ms", [](XStopwatch &w) { return w.elapsed_time_milliSeconds(); },
         "XStopwatch::elapsed_time_milliSeconds - not stopped"},
        {"us total", [](XStopwatch &w) { return w.elapsed_time_microSeconds_total(); },
         "XStopwatch::elapsed_time_microSeconds_total - not stopped"},
        {"now us", [](XStopwatch &w) { return w.delta_now_microSeconds(); },
         "XStopwatch::delta_now_microSeconds - not started"},
        {"now ms", [](XStopwatch &w) { return w.delta_now_milliSeconds(); },
         "XStopwatch::delta_now_milliSeconds - not started"},
        {"us", [](XStopwatch &w) { return w.elapsed_time_microSeconds(); }, nullptr},
        {"ms total", [](XStopwatch &w) { return w.elapsed_time_milliSeconds_total(); }, nullptr},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.what);
        XStopwatch watch;
        quint64 result = 1;
        std::vector<QString> const lines =
            orv::test::linesLoggedBy([&] { result = row.call(watch); }, orv::WARN);
        EXPECT_EQ(result, 0u);
        EXPECT_EQ(lines, row.warning ? std::vector<QString>{row.warning} : std::vector<QString>{});
        EXPECT_TRUE(watch.isReset());
    }
}
