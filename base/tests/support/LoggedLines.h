// LoggedLines.h: the log lines that one piece of code wrote, fenced by two markers.
#pragma once

#include "orv/Log.h"
#include "support/CapturingAppender.h"

#include <gtest/gtest.h>

#include <vector>

namespace orv::test {

using Lines = std::vector<QString>;

// One counter for all instantiations below, so that no two calls share markers.
inline int nextLoggedRound() {
    static int round = 0;
    return ++round;
}

// Every line that action logged, in order, with its number, level and indentation.
template <typename Action> std::vector<CapturedLine> capturedBy(Action action) {
    int const round = nextLoggedRound();
    CapturingAppender &log = startCapturingLogger();
    QString const start = QStringLiteral("logged-by start %1").arg(round);
    QString const end = QStringLiteral("logged-by end %1").arg(round);
    ppTest(start);
    action();
    ppTest(end);
    EXPECT_TRUE(log.waitForText(end));
    std::vector<CapturedLine> lines;
    for (CapturedLine const &line : log.takenFrom(start))
        if (line.text == end)
            break;
        else if (line.text != start)
            lines.push_back(line);
    return lines;
}

// The texts of every line that action logged at one of the levels in mask, in order.
template <typename Action> Lines linesLoggedBy(Action action, unsigned int mask = ~0u) {
    Lines texts;
    for (CapturedLine const &line : capturedBy(action))
        if ((line.level & mask) != 0)
            texts.push_back(line.text);
    return texts;
}

} // namespace orv::test
