// XStringStream_test.cpp: the `$` formatter's rules and argument forms, and the stream set-up.
#include "orv/XStringStream.h"

#include "support/QtPrinters.h"

#include <gtest/gtest.h>

#include <QtCore/QBuffer>
#include <QtCore/QTextCodec>

#include <climits>
#include <cmath>
#include <cstdio>
#include <limits>

using orv::xprintF;
using orv::XStringStream;

namespace {

struct FormatRow {
    QString got;
    char const *expected; // UTF-8
};

void expectRows(std::initializer_list<FormatRow> rows) {
    int line = 0;
    for (FormatRow const &row : rows)
        EXPECT_EQ(row.got, QString::fromUtf8(row.expected)) << "row " << line++;
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

} // namespace

TEST(XStringStream, FormatterPlacesArgumentsAndKeepsSurplusMarks) {
    char const *nullFormat = nullptr;
    expectRows({
        {xprintF(nullFormat, 1, "a"), ""},
        {xprintF(nullFormat), ""},
        {xprintF("", 1, 2), ""},
        {xprintF("a $ b"), "a $ b"},
        {xprintF("x=$", 1, 2), "x=1"},
        {xprintF("$ $ $", "a"), "a $ $"},
        {xprintF("$$", 1, 2), "12"},
        {xprintF("no marks", 1), "no marks"},
        {xprintF("$", 1), "1"},
        {xprintF("[$|$]", "x", "y"), "[x|y]"},
        // Arguments are never expanded again, whatever they hold.
        {xprintF("$-$", QString("$"), 1), "$-1"},
        {xprintF("$ $", "a$b", 2), "a$b 2"},
    });
}

TEST(XStringStream, FormatterWritesEveryArgumentTypeInItsForm) {
    char const *nullText = nullptr;
    short const s = -7;
    unsigned short const us = 65535;
    QString const text = "gr\xC3\xBC\xC3\x9F";
    expectRows({
        {xprintF("$", text), "gr\xC3\xBC\xC3\x9F"},
        {xprintF("$", text.midRef(2, 2)), "\xC3\xBC\xC3\x9F"},
        {xprintF("$", "abc"), "abc"},
        {xprintF("<$>", nullText), "<nullptr>"},
        {xprintF("$", nullptr), "nullptr"},
        {xprintF("$ $", true, false), "true false"},
        {xprintF("$", -42), "-42"},
        {xprintF("$", INT_MIN), "-2147483648"},
        {xprintF("$ $", s, us), "-7 65535"},
        {xprintF("$", -1234567890123L), "-1234567890123"},
        {xprintF("$", LLONG_MIN), "-9223372036854775808"},
        {xprintF("$", 4294967295u), "4294967295"},
        {xprintF("$", ULONG_MAX), "18446744073709551615"},
        {xprintF("$", 18446744073709551615ULL), "18446744073709551615"},
        {xprintF("$", 1.5), "1.500000"},
        {xprintF("$", 1.5f), "1.500000"},
        {xprintF("$", -2.25), "-2.250000"},
        {xprintF("$", 0.1234567), "0.123457"},
        {xprintF("$", 0.0), "0.000000"},
        {xprintF("$$", 'x', QChar(0x4E2D)), "x\xE4\xB8\xAD"},
    });
}

TEST(XStringStream, RealNumbersMatchQTextStreamFixedNotation) {
    double const inf = std::numeric_limits<double>::infinity();
    double const rows[] = {
        0.1,
        1e-7,
        -0.0,
        123456789.123456789,
        1e14,
        1e15,
        1e20,
        1e300,
        inf,
        -inf,
        std::nan(""),
        -1e-7,
        0.5,
        999999.9999995,
        -123.4567885,
        1e15 - 0.5,
        // Exact ties at the seventh decimal: Qt rounds them away from zero.
        0.0078125,
        -0.0234375,
        64583372166237.7578125,
        std::numeric_limits<double>::max(),
        std::numeric_limits<double>::denorm_min(),
    };
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

TEST(XStringStream, EveryConstructorSetsUtf8AndFixedNotation) {
    expectLibraryDefaults(XStringStream(), "default");

    QString text;
    XStringStream onRef(text);
    expectLibraryDefaults(onRef, "QString &");
    onRef << 0.25;
    onRef.flush();
    EXPECT_EQ(text, "0.250000");

    QString other;
    XStringStream onPointer(&other);
    expectLibraryDefaults(onPointer, "QString *");

    QByteArray bytes;
    {
        XStringStream onBytes(&bytes);
        expectLibraryDefaults(onBytes, "QByteArray *");
        onBytes << QString::fromUtf8("\xC3\xA9") << 2.0;
    }
    EXPECT_EQ(bytes, QByteArray("\xC3\xA9"
                                "2.000000"));

    XStringStream reader(QByteArray("gr\xC3\xBC\xC3\x9F"));
    expectLibraryDefaults(reader, "const QByteArray &");
    EXPECT_EQ(reader.readAll(), QString::fromUtf8("gr\xC3\xBC\xC3\x9F"));

    QBuffer buffer;
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly));
    {
        XStringStream onDevice(&buffer);
        expectLibraryDefaults(onDevice, "QIODevice *");
        onDevice << QString::fromUtf8("\xE4\xB8\xAD") << 1e-7;
    }
    EXPECT_EQ(buffer.data(), QByteArray("\xE4\xB8\xAD"
                                        "0.000000"));
}

TEST(XStringStream, WritesUtf8IntoACFile) {
    std::FILE *file = std::tmpfile();
    ASSERT_NE(file, nullptr);
    {
        XStringStream onFile(file);
        expectLibraryDefaults(onFile, "FILE *");
        onFile << QString::fromUtf8("\xC3\xA9") << 0.5;
    }
    std::rewind(file);
    char read[32] = {};
    size_t const count = std::fread(read, 1, sizeof read - 1, file);
    std::fclose(file);
    EXPECT_EQ(QByteArray(read, static_cast<int>(count)), QByteArray("\xC3\xA9"
                                                                    "0.500000"));
}

TEST(XStringStream, PrintAndAppendFUseTheFormatterForms) {
    QString text;
    XStringStream stream(&text);
    stream.print(nullptr).print(' ').print(7u).print(' ').print(true);
    stream.appendF(nullptr, 1);
    stream.appendF(" v=$ $;", 2.5, "rest");
    stream.appendF(" $", QString("$"));
    stream.flush();
    EXPECT_EQ(text, "nullptr 7 true v=2.500000 rest; $");
}

TEST(XStringStream, PrintlnIndentsAndToStringGivesAllTheText) {
    QString text;
    XStringStream stream(&text);
    stream.print(2, "a")
        .println(QStringLiteral("b"))
        .println(1, 3)
        .print(static_cast<char const *>(nullptr));
    EXPECT_EQ(stream.toString(), "  ab\n 3\nnullptr");
    EXPECT_TRUE(stream.isOK());
    EXPECT_EQ(stream.statusToString(), "Ok");
    stream.setStatus(QTextStream::WriteFailed);
    EXPECT_FALSE(stream.isOK());
    EXPECT_EQ(stream.statusToString(), "WriteFailed");
    EXPECT_EQ(XStringStream(stdout).toString(), "");
}

TEST(XStringStream, PointerStringIsPercentPOrZeroForNull) {
    int value = 0;
    EXPECT_EQ(orv::pointerString(nullptr), "0x0");
    EXPECT_EQ(orv::pointerString(&value), QString::asprintf("%p", static_cast<void *>(&value)));
    EXPECT_EQ(xprintF("at $", orv::pointerString(nullptr)), "at 0x0");
}
