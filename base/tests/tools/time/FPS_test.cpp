// FPS_test.cpp: the rate is taken only after more than 1000 ms and reaches the listener.
#include "orv/FPS.h"

#include "support/Test.h"

TEST(FPS, ComputesTheRateOnlyAfterMoreThan1000MsAndTellsAnEnabledListener) {
    orv::FPS fps;
    std::vector<float> fired;
    fps.listener.addListener([&fired](float rate) { fired.push_back(rate); });
    struct Row {
        quint64 nowMs;
        float fps; // the reading after the call
    };
    // Frames count from the first call: 3 in the first 1001 ms, then 2 in 2000 ms.
    Row const rows[] = {
        {5000, 0.0f}, {6000, 0.0f}, {6001, 3.0f / 1.001f}, {7000, 3.0f / 1.001f}, {8001, 1.0f}};
    for (Row const &row : rows) {
        fps.refresh(row.nowMs);
        EXPECT_FLOAT_EQ(fps.fps, row.fps) << row.nowMs;
    }
    ASSERT_EQ(fired.size(), 2u);
    EXPECT_FLOAT_EQ(fired[0], 3.0f / 1.001f);
    EXPECT_FLOAT_EQ(fired[1], 1.0f);
    // A disabled listener stays quiet while the rate updates.
    orv::FPS quiet;
    quiet.listener.addListener([&fired](float rate) { fired.push_back(rate); });
    quiet.listener.enable(false);
    quiet.refresh(1000);
    quiet.refresh(2500);
    EXPECT_FLOAT_EQ(quiet.fps, 2.0f / 1.5f);
    EXPECT_EQ(fired.size(), 2u);
}
