// ConsoleCapture.h: stdout of a piece of code, as it stands or with the
// "<counter> <time> <thread> " trailers of Logger::printToCout taken off, so that tests
// compare the texts alone.
//
//   EXPECT_EQ(orv::test::coutWithoutTrailers([] { orv::Logger::printToCout("x"); }), "x\n");
#pragma once

#include <gtest/gtest.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QString>

#include <string>

namespace orv::test {

inline std::string withoutSimpleTrailers(std::string const &out) {
    static QRegularExpression const trailer(R"(^<\d{6}> <\d\d:\d\d:\d\d,\d{3}> <\d{6,}> )",
                                            QRegularExpression::MultilineOption);
    return QString::fromStdString(out).remove(trailer).toStdString();
}

// Everything print wrote to stdout, as it stands.
template <typename Print> std::string coutOf(Print print) {
    testing::internal::CaptureStdout();
    print();
    return testing::internal::GetCapturedStdout();
}

template <typename Print> std::string coutWithoutTrailers(Print print) {
    return withoutSimpleTrailers(coutOf(print));
}

} // namespace orv::test
