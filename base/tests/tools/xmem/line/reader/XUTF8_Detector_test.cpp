// XUTF8_Detector_test.cpp: the detector's counts and decision on real text in several
// scripts and on broken bytes, and one character's UTF-8 form.
#include "orv/XUTF8_Detector.h"

#include "support/QtPrinters.h"
#include "support/TempFiles.h"

#include <gtest/gtest.h>

#include <QtCore/QVector>

#include <array>

using namespace orv;

namespace {

using Counts = std::array<unsigned int, 4>;

XUTF8_Detector analyzed(QByteArray const &bytes) {
    XUTF8_Detector d;
    d.analyze(bytes.constData(), static_cast<quint64>(bytes.size()));
    return d;
}

Counts countsOf(XUTF8_Detector const &d) {
    return {d.countAscii(), d.count2ByteEncodings(), d.count3ByteEncodings(),
            d.count4ByteEncodings()};
}

} // namespace

// For well-formed files the counts must equal the UTF-8 lengths of the code points
// that Qt's decoder sees (the BOM included, which the decoder drops).
TEST(XUTF8_Detector, CountsEqualTheDecodedCodePointsOfRealText) {
    struct Row {
        char const *file;
        XUTF8_Detector::UTF_TYPE::Utf type;
    } const rows[] = {
        {"ascii.txt", XUTF8_Detector::UTF_TYPE::ASCII_ENCODED},
        {"greek.txt", XUTF8_Detector::UTF_TYPE::BYTE2_ENCODED},
        {"chinese.txt", XUTF8_Detector::UTF_TYPE::BYTE3_ENCODED},
        {"emoji.txt", XUTF8_Detector::UTF_TYPE::BYTE4_ENCODED},
        {"bom.txt", XUTF8_Detector::UTF_TYPE::ASCII_ENCODED},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.file);
        QByteArray const bytes = test::readFile(ORV_TEST_DATA_DIR "/" + QString(row.file));
        Counts expected{};
        for (uint cp : QString::fromUtf8(bytes).toUcs4())
            ++expected[cp < 0x80 ? 0 : cp < 0x800 ? 1 : cp < 0x10000 ? 2 : 3];
        bool const bom = bytes.startsWith("\xEF\xBB\xBF");
        expected[2] += bom;
        XUTF8_Detector const d = analyzed(bytes);
        EXPECT_EQ(countsOf(d), expected);
        EXPECT_EQ(d.getTheMostSignifcantType(), row.type);
        EXPECT_EQ(d.is_urf8_bom(), bom);
        EXPECT_EQ(d.countLineFeeds(), static_cast<unsigned>(bytes.count('\n')));
        EXPECT_EQ(d.countBytes(), static_cast<unsigned>(bytes.size()));
    }
}

TEST(XUTF8_Detector, BrokenAndForeignBytesCountOnlyWellFormedSequences) {
    struct Row {
        QByteArray bytes;
        Counts counts;
        XUTF8_Detector::UTF_TYPE::Utf type;
    } const rows[] = {
        {"abc\n", {4, 0, 0, 0}, XUTF8_Detector::UTF_TYPE::ASCII_ENCODED},
        {"\xE4\xB8\xAD", {0, 0, 1, 0}, XUTF8_Detector::UTF_TYPE::BYTE3_ENCODED},
        {"\xC0\x80", {0, 0, 0, 0}, XUTF8_Detector::UTF_TYPE::UTF_NOT_DETECTED},
        // An ASCII byte inside a sequence neither ends nor disturbs it; a tie goes to ASCII.
        {"\xE4\x41\xB8\xAD", {1, 0, 1, 0}, XUTF8_Detector::UTF_TYPE::ASCII_ENCODED},
        // The second E4 is eaten as a bad continuation; B8 and AD lead nothing.
        {"\xE4\xE4\xB8\xAD", {0, 0, 0, 0}, XUTF8_Detector::UTF_TYPE::UTF_NOT_DETECTED},
        // Above U+10FFFF, let through on purpose.
        {"\xF4\xBF\xBF\xBF", {0, 0, 0, 1}, XUTF8_Detector::UTF_TYPE::BYTE4_ENCODED},
        {"\xED\xA0\x80", {0, 0, 0, 0}, XUTF8_Detector::UTF_TYPE::UTF_NOT_DETECTED},
        {"\xE4\xB8", {0, 0, 0, 0}, XUTF8_Detector::UTF_TYPE::UTF_NOT_DETECTED},
        {test::readFile(ORV_TEST_DATA_DIR "/latin1.txt"),
         {28, 0, 0, 0},
         XUTF8_Detector::UTF_TYPE::ASCII_ENCODED},
        {test::readFile(ORV_TEST_DATA_DIR "/broken.txt"),
         {14, 0, 1, 0},
         XUTF8_Detector::UTF_TYPE::ASCII_ENCODED},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.bytes.toHex(' ').toStdString());
        XUTF8_Detector const d = analyzed(row.bytes);
        EXPECT_EQ(countsOf(d), row.counts);
        EXPECT_EQ(d.getTheMostSignifcantType(), row.type);
        EXPECT_EQ(d.get_factor_for_gui(), row.type == 0 ? 1u : unsigned(row.type));
    }
    // Characters, not bytes, are subtracted.
    EXPECT_EQ(analyzed(test::readFile(ORV_TEST_DATA_DIR "/broken.txt")).count_un_detected_bytes(),
              26u - 15u);
}

TEST(XUTF8_Detector, AnalysisEndsAtTheFirstNulWhileCountBytesKeepsTheLength) {
    char buffer[100] = "abcde";
    XUTF8_Detector d;
    d.analyze(buffer, 100);
    EXPECT_EQ(d.countAscii(), 5u);
    EXPECT_EQ(d.countBytes(), 100u);
    d.analyze("xy", 0); // 0 means "up to the NUL"
    EXPECT_EQ(d.countAscii(), 2u);
}

TEST(XUTF8_Detector, TextFormsAndLeadBytes) {
    EXPECT_EQ(analyzed("abc\n").toString(),
              "4 Characters, LF:1, Type is:ASCII_ENCODED, { 1 }, {1-byte-enc:4, 2-bytes-enc:0, "
              "3-bytes-enc:0, 4-bytes-enc:0 }");
    EXPECT_EQ(XUTF8_Detector::utfTypeToString(static_cast<XUTF8_Detector::UTF_TYPE::Utf>(9)),
              "UTF_MYSTERIOUS");
    for (int c : {0x00, 0x7F, 0xC2, 0xDF, 0xE0, 0xF4})
        EXPECT_TRUE(XUTF8_Detector::matchFirstByteOfSequences(static_cast<unsigned char>(c))) << c;
    for (int c : {0x80, 0xBF, 0xC0, 0xC1, 0xF5, 0xFF})
        EXPECT_FALSE(XUTF8_Detector::matchFirstByteOfSequences(static_cast<unsigned char>(c))) << c;
    XUtf8_Info const zhong(QChar(0x4E2D));
    EXPECT_EQ(zhong.value, 0xE4B8ADu);
    EXPECT_EQ(zhong.toString(), QString::fromUtf8("'中', hex:E4 B8 AD , dec:14.989.485"));
}
