// QtToString_test.cpp: text forms of Qt values and of QVariant by type.
#include "orv/QtToString.h"

#include "support/Test.h"

#include <QtCore/QLine>
#include <QtCore/QStringList>

using namespace orv;

TEST(QtToString, ValuesHaveFixedTextForms) {
    QDate const date(2024, 1, 31);
    QTime const time(7, 5, 3, 9);
    QString const s = "abc";
    std::pair<QString, QString> const rows[] = {
        // clang-format off
        {qt::toString(date), "2024/01/31"}, {qt::toString(time), "07:05:03,009"},
        {qt::toString(QDateTime(date, time)), "2024/01/31 07:05:03,009"},
        {qt::toString(QDateTime(date, time), true), "2024/01/31"},
        {qt::toString(QPoint(1, -2)), "1,-2"}, {qt::toString(QPointF(1.5, 2)), "1.500000,2.000000"},
        {qt::toString(QSize(3, 4)), "3,4"}, {qt::toString(QRect(1, 2, 3, 4)), "1,2,3,4"},
        {qt::to_string_rect_as_coord(QRect(1, 2, 3, 4)), "1,2,3,5"},
        {qt::to_string_rect_as_coord(QRectF(1, 2, 3, 4)), "1.000000,2.000000,4.000000,6.000000"},
        {qt::toString(QMargins(1, 2, 3, 4)), "1,2,3,4"},
        {qt::toString(QStringRef()), "{nullptr}"}, {qt::toString(s.midRef(1)), "bc"},
        {qt::toString(QByteArray()), "nullptr"}, {qt::asString(QByteArray("")), ""},
        {qt::toString(QFileInfo("/no/such/file")), "fi ??? </no/such/file>"},
        {qt::toString(QFileInfo("/tmp")), "[/tmp]"}, {qt::toString(QFileInfo("/")), "[/:]"},
        {qt::toString(QDir("/tmp/x")), "/tmp/x"},
        {qt::toString(QUrl("http://host/a/b?q=1")), "/a/b"},
    }; // clang-format on
    for (auto const &[got, expected] : rows)
        EXPECT_EQ(got, expected);
}

TEST(QtToString, BinaryBytesSurviveAsStringAndBack) {
    QByteArray bytes;
    for (int i = 0; i < 256; ++i)
        bytes.append(static_cast<char>(i));
    EXPECT_EQ(qt::fromString(qt::asString(bytes)), bytes);
}

TEST(QtToString, VariantTable) {
    struct Row {
        QVariant value;
        char const *text;
        char const *type;
    } const rows[] = {
        // clang-format off
        {QVariant(true), "true", "bool"}, {QVariant(-42), "-42", "int"},
        {QVariant(42u), "42", "uint"},
        {QVariant(qlonglong(-5)), "-5", "longlong"}, {QVariant(qulonglong(5)), "5", "ulonglong"},
        {QVariant(3.5), "3.500000", "double"}, {QVariant(1.5f), "1.500000", "float"},
        {QVariant(QChar('x')), "x", "char"}, {QVariant(QString("text")), "text", "string"},
        {QVariant(QRect(1, 2, 3, 4)), "1,2,3,4", "rect"}, {QVariant(QSize(3, 4)), "3,4", "size"},
        {QVariant(QLine(1, 2, 3, 4)), "1,2,3,4", "line"}, {QVariant(QPoint(5, 6)), "5,6", "point"},
        {QVariant(), "{nullptr}", "unknown type:0"},
        {QVariant(QStringList{"a"}), "QVARIANT-TYPE-NOT-SUPPORTED", "unknown type:11"},
    }; // clang-format on
    for (Row const &r : rows) {
        EXPECT_EQ(qt::toString(r.value), QLatin1String(r.text)) << r.type;
        EXPECT_EQ(qt::variantTypeAsString(r.value), QLatin1String(r.type)) << r.type;
    }
}
