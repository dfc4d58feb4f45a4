// ConsoleCapture.h: stdout of a piece of code, with the "<counter> <time> <thread> "
// trailers of Logger::printToCout taken off, so that tests compare the texts alone.
//
//   EXPECT_EQ(orv::test::coutWithoutTrailers([] { orv::Logger::printToCout("x"); }), "x\n");
#pragma once

#include <gtest/gtest.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QString>

#include <string>

namespace orv::test {

// One trailer as a POSIX extended expression, for the expected output of death tests.
inline std::string const simpleTrailerPattern =
    "<[0-9]{6}> <[0-9]{2}:[0-9]{2}:[0-9]{2},[0-9]{3}> <[0-9]{6,}> ";

inline std::string withoutSimpleTrailers(std::string const &out) {
    static QRegularExpression const trailer(R"(^<\d{6}> <\d\d:\d\d:\d\d,\d{3}> <\d{6,}> )",
                                            QRegularExpression::MultilineOption);
    return QString::fromStdString(out).remove(trailer).toStdString();
}

template <typename Print> std::string coutWithoutTrailers(Print print) {
    testing::internal::CaptureStdout();
    print();
    return withoutSimpleTrailers(testing::internal::GetCapturedStdout());
}

} // namespace orv::test
