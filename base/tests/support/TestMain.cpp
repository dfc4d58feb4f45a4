// TestMain.cpp: the test programs' main; the kernel's application object comes before
// any test, so work handed to the GUI thread runs when a test turns the event loop.
#include "orv/Kernel.h"

#include <gtest/gtest.h>

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    orv::KernelTerminal app(argc, argv, nullptr, false);
    return RUN_ALL_TESTS();
}
