// XStringStream_test.cpp: the `$` formatter's rules and argument forms, and the stream set-up.
#include "orv/XStringStream.h"

#include "support/Test.h"

#include <QtCore/QBuffer>
#include <QtCore/QTextCodec>

#include <climits>
#include <cmath>
#include <cstdio>
#include <limits>

using orv::xprintF;
using orv::XStringStream;

namespace {

// Each row: what the formatter gave next to the UTF-8 text it must be.
void expectRows(std::initializer_list<std::pair<QString, char const *>> rows) {
    int line = 0;
    for (auto const &[got, expected] : rows)
        EXPECT_EQ(got, QString::fromUtf8(expected)) << "row " << line++;
}

// What a plain QTextStream in fixed notation with six decimals writes.
QString qtFixed(double value) {
    QString text;
    QTextStream stream(&text);
    stream.setRealNumberNotation(QTextStream::FixedNotation);
    stream.setRealNumberPrecision(6);
    stream << value;
    stream.flush();
    return text;
}

void expectLibraryDefaults(XStringStream const &stream, char const *which) {
    ASSERT_NE(stream.codec(), nullptr) << which;
    EXPECT_EQ(stream.codec()->name(), "UTF-8") << which;
    EXPECT_EQ(stream.realNumberNotation(), QTextStream::FixedNotation) << which;
    EXPECT_EQ(stream.realNumberPrecision(), 6) << which;
}

// Checks the set-up of a stream on its target and writes through it; the stream's end
// flushes what it holds.
void writeThrough(XStringStream &&stream, char const *which) {
    expectLibraryDefaults(stream, which);
    stream << QString::fromUtf8("\xC3\xA9") << 0.5;
}

} // namespace

TEST(XStringStream, FormatterPlacesArgumentsAndKeepsSurplusMarks) {
    char const *nullFormat = nullptr;
    expectRows({
        // clang-format off
        {xprintF(nullFormat, 1, "a"), ""}, {xprintF(nullFormat), ""}, {xprintF("", 1, 2), ""},
        {xprintF("a $ b"), "a $ b"}, {xprintF("x=$", 1, 2), "x=1"}, {xprintF("$ $ $", "a"), "a $ $"},
        {xprintF("$$", 1, 2), "12"}, {xprintF("no marks", 1), "no marks"},
        {xprintF("[$|$]", "x", "y"), "[x|y]"},
        // Arguments are never expanded again, whatever they hold.
        {xprintF("$-$", QString("$"), 1), "$-1"}, {xprintF("$ $", "a$b", 2), "a$b 2"},
    }); // clang-format on
}

TEST(XStringStream, FormatterWritesEveryArgumentTypeInItsForm) {
    char const *nullText = nullptr;
    short const s = -7;
    unsigned short const us = 65535;
    QString const text = "gr\xC3\xBC\xC3\x9F";
    expectRows({
        // clang-format off
        {xprintF("$", text), "gr\xC3\xBC\xC3\x9F"}, {xprintF("$", text.midRef(2, 2)), "\xC3\xBC\xC3\x9F"},
        {xprintF("$", "abc"), "abc"}, {xprintF("<$>", nullText), "<nullptr>"},
        {xprintF("$", nullptr), "nullptr"}, {xprintF("$ $", true, false), "true false"},
        {xprintF("$", -42), "-42"}, {xprintF("$", INT_MIN), "-2147483648"},
        {xprintF("$ $", s, us), "-7 65535"}, {xprintF("$", -1234567890123L), "-1234567890123"},
        {xprintF("$", LLONG_MIN), "-9223372036854775808"}, {xprintF("$", 4294967295u), "4294967295"},
        {xprintF("$", ULONG_MAX), "18446744073709551615"},
        {xprintF("$", 18446744073709551615ULL), "18446744073709551615"},
        {xprintF("$", 1.5), "1.500000"}, {xprintF("$", 1.5f), "1.500000"},
        {xprintF("$", -2.25), "-2.250000"}, {xprintF("$", 0.1234567), "0.123457"},
        {xprintF("$", 0.0), "0.000000"}, {xprintF("$$", 'x', QChar(0x4E2D)), "x\xE4\xB8\xAD"},
    }); // clang-format on
}

TEST(XStringStream, RealNumbersMatchQTextStreamFixedNotation) {
    using limits = std::numeric_limits<double>;
    double const inf = limits::infinity(), nan = std::nan("");
    // Exact ties at the seventh decimal (0.0078125 and on): Qt rounds them away from zero.
    double const rows[] = {0.1,
                           1e-7,
                           -0.0,
                           123456789.123456789,
                           1e14,
                           1e15,
                           1e20,
                           1e300,
                           inf,
                           -inf,
                           nan,
                           -1e-7,
                           0.5,
                           999999.9999995,
                           -123.4567885,
                           1e15 - 0.5,
                           0.0078125,
                           -0.0234375,
                           64583372166237.7578125,
                           limits::max(),
                           limits::denorm_min()};
    for (double value : rows) {
        QString const expected = qtFixed(value);
        EXPECT_EQ(xprintF("$", value), expected) << value;
        QString streamed;
        XStringStream stream(&streamed);
        stream << value;
        stream.flush();
        EXPECT_EQ(streamed, expected) << value;
    }
    EXPECT_EQ(xprintF("$", 0.1f), qtFixed(0.1f));
    EXPECT_EQ(xprintF("$", 3.4e38f), qtFixed(3.4e38f));
}

TEST(XStringStream, EveryConstructorSetsUtf8AndFixedNotationForItsTarget) {
    expectLibraryDefaults(XStringStream(), "default");
    QByteArray const written("\xC3\xA9"
                             "0.500000");
    QString text, other;
    writeThrough(XStringStream(text), "QString &");
    EXPECT_EQ(text, QString::fromUtf8(written));
    writeThrough(XStringStream(&other), "QString *");
    EXPECT_EQ(other, QString::fromUtf8(written));
    QByteArray bytes;
    writeThrough(XStringStream(&bytes), "QByteArray *");
    EXPECT_EQ(bytes, written);
    QBuffer buffer;
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly));
    writeThrough(XStringStream(&buffer), "QIODevice *");
    EXPECT_EQ(buffer.data(), written);
    std::FILE *file = std::tmpfile();
    ASSERT_NE(file, nullptr);
    writeThrough(XStringStream(file), "FILE *");
    std::rewind(file);
    char read[32] = {};
    size_t const count = std::fread(read, 1, sizeof read - 1, file);
    std::fclose(file);
    EXPECT_EQ(QByteArray(read, static_cast<int>(count)), written);

    XStringStream reader(QByteArray("gr\xC3\xBC\xC3\x9F"));
    expectLibraryDefaults(reader, "const QByteArray &");
    EXPECT_EQ(reader.readAll(), QString::fromUtf8("gr\xC3\xBC\xC3\x9F"));
}

TEST(XStringStream, PrintAndAppendFUseTheFormatterFormsAndToStringGivesAllTheText) {
    XStringStream stream; // a default stream writes into a string of its own
    stream.print(nullptr).print(' ').print(7u).print(' ').print(true);
    stream.appendF(nullptr, 1);
    stream.appendF(" v=$ $;", 2.5, "rest");
    stream.appendF(" $", QString("$"));
    EXPECT_EQ(stream.toString(), "nullptr 7 true v=2.500000 rest; $");

    QString text;
    XStringStream onText(&text);
    onText.print(2, "a").println(QStringLiteral("b")).println(1, 3);
    onText.print(static_cast<char const *>(nullptr));
    EXPECT_EQ(onText.toString(), "  ab\n 3\nnullptr");
    EXPECT_EQ(onText.statusToString(), "Ok");
    onText.setStatus(QTextStream::WriteFailed);
    EXPECT_FALSE(onText.isOK());
    EXPECT_EQ(onText.statusToString(), "WriteFailed");
    EXPECT_EQ(XStringStream(stdout).toString(), "");
}

TEST(XStringStream, PointerStringIsPercentPOrZeroForNull) {
    int value = 0;
    EXPECT_EQ(orv::pointerString(nullptr), "0x0");
    EXPECT_EQ(orv::pointerString(&value), QString::asprintf("%p", static_cast<void *>(&value)));
}
