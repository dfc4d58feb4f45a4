// TestMain.cpp: the test programs' main; the application object comes before any test.
#include <QtCore/QCoreApplication>

#include <gtest/gtest.h>

#include <clocale>

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    QCoreApplication app(argc, argv);
    // QCoreApplication applies the user's locale; numbers in texts stay in C notation.
    std::setlocale(LC_NUMERIC, "C");
    return RUN_ALL_TESTS();
}
