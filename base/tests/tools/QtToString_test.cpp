// QtToString_test.cpp: text forms of Qt values and of QVariant by type.
#include "orv/QtToString.h"

#include <QtCore/QLine>
#include <QtCore/QStringList>

#include <gtest/gtest.h>

using namespace orv;

TEST(QtToString, DatesAndTimes) {
    QDate const date(2024, 1, 31);
    QTime const time(7, 5, 3, 9);
    EXPECT_EQ(qt::toString(date), QLatin1String("2024/01/31"));
    EXPECT_EQ(qt::toString(time), QLatin1String("07:05:03,009"));
    EXPECT_EQ(qt::toString(QDateTime(date, time)), QLatin1String("2024/01/31 07:05:03,009"));
    EXPECT_EQ(qt::toString(QDateTime(date, time), true), QLatin1String("2024/01/31"));
}

TEST(QtToString, Geometry) {
    EXPECT_EQ(qt::toString(QPoint(1, -2)), QLatin1String("1,-2"));
    EXPECT_EQ(qt::toString(QPointF(1.5, 2)), QLatin1String("1.500000,2.000000"));
    EXPECT_EQ(qt::toString(QSize(3, 4)), QLatin1String("3,4"));
    EXPECT_EQ(qt::toString(QRect(1, 2, 3, 4)), QLatin1String("1,2,3,4"));
    EXPECT_EQ(qt::to_string_rect_as_coord(QRect(1, 2, 3, 4)), QLatin1String("1,2,3,5"));
    EXPECT_EQ(qt::to_string_rect_as_coord(QRectF(1, 2, 3, 4)),
              QLatin1String("1.000000,2.000000,4.000000,6.000000"));
    EXPECT_EQ(qt::toString(QMargins(1, 2, 3, 4)), QLatin1String("1,2,3,4"));
}

TEST(QtToString, NullViewsAndArrays) {
    EXPECT_EQ(qt::toString(QStringRef()), QLatin1String("{nullptr}"));
    QString const s = "abc";
    EXPECT_EQ(qt::toString(s.midRef(1)), QLatin1String("bc"));
    EXPECT_EQ(qt::toString(QByteArray()), QLatin1String("nullptr"));
    EXPECT_EQ(qt::asString(QByteArray("")), QString(""));
}

TEST(QtToString, BinaryBytesSurviveAsStringAndBack) {
    QByteArray bytes;
    for (int i = 0; i < 256; ++i)
        bytes.append(static_cast<char>(i));
    EXPECT_EQ(qt::fromString(qt::asString(bytes)), bytes);
}

TEST(QtToString, FileInfoForms) {
    EXPECT_EQ(qt::toString(QFileInfo("/no/such/file")), QLatin1String("fi ??? </no/such/file>"));
    EXPECT_EQ(qt::toString(QFileInfo("/tmp")), QLatin1String("[/tmp]"));
    EXPECT_EQ(qt::toString(QFileInfo("/")), QLatin1String("[/:]"));
    EXPECT_EQ(qt::toString(QDir("/tmp/x")), QLatin1String("/tmp/x"));
    EXPECT_EQ(qt::toString(QUrl("http://host/a/b?q=1")), QLatin1String("/a/b"));
}

TEST(QtToString, VariantTable) {
    struct Row {
        QVariant value;
        char const *text;
        char const *type;
    } const rows[] = {
        {QVariant(true), "true", "bool"},
        {QVariant(-42), "-42", "int"},
        {QVariant(42u), "42", "uint"},
        {QVariant(qlonglong(-5)), "-5", "longlong"},
        {QVariant(qulonglong(5)), "5", "ulonglong"},
        {QVariant(3.5), "3.500000", "double"},
        {QVariant(1.5f), "1.500000", "float"},
        {QVariant(QChar('x')), "x", "char"},
        {QVariant(QString("text")), "text", "string"},
        {QVariant(QRect(1, 2, 3, 4)), "1,2,3,4", "rect"},
        {QVariant(QSize(3, 4)), "3,4", "size"},
        {QVariant(QLine(1, 2, 3, 4)), "1,2,3,4", "line"},
        {QVariant(QPoint(5, 6)), "5,6", "point"},
        {QVariant(), "{nullptr}", "unknown type:0"},
        {QVariant(QStringList{"a"}), "QVARIANT-TYPE-NOT-SUPPORTED", "unknown type:11"},
    };
    for (Row const &r : rows) {
        EXPECT_EQ(qt::toString(r.value), QLatin1String(r.text)) << r.type;
        EXPECT_EQ(qt::variantTypeAsString(r.value), QLatin1String(r.type)) << r.type;
    }
}
