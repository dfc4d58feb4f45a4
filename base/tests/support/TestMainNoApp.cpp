// TestMainNoApp.cpp: main of the test programs in folders named "...NoApp": no
// application object exists unless a test builds one.
#include <gtest/gtest.h>

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
