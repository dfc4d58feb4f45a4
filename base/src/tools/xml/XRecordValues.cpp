// XRecordValues.cpp: the scalar and geometry attributes, each in its one written form.
#include "orv/XRecord.h"

#include "orv/XStringStream.h"

namespace orv {

namespace {

// Real numbers in the form of a plain text stream (six significant digits), as
// opposed to the fixed six decimals of setDouble.
QString streamReal(double value) { return QString::number(value, 'g', 6); }

QString joined(std::initializer_list<QString> parts) {
    QString text;
    for (QString const &part : parts) {
        if (!text.isEmpty())
            text += QLatin1Char(',');
        text += part;
    }
    return text;
}

// The numbers of a point, size or rectangle: the value cut at commas and blanks with
// empty pieces dropped, as the tokenizer would, but without copying any piece.
struct Numbers {
    QStringRef parts[4];

    int intAt(unsigned int i) const { return parts[i].toInt(); }
    unsigned int uintAt(unsigned int i) const { return parts[i].toUInt(); }
    double realAt(unsigned int i) const { return parts[i].toDouble(); }
};

// False unless the value of key has exactly count pieces.
bool cutNumbers(std::map<QString, QString> const &attributes, QString const &key,
                unsigned int count, Numbers &numbers) {
    auto const it = attributes.find(key);
    if (it == attributes.end())
        return false;
    QString const &value = it->second;
    unsigned int found = 0;
    int begin = 0;
    for (int i = 0; i <= value.size(); ++i) {
        if (i < value.size() && value[i] != QLatin1Char(',') && value[i] != QLatin1Char(' '))
            continue;
        if (i > begin) {
            if (found == count)
                return false;
            numbers.parts[found++] = value.midRef(begin, i - begin);
        }
        begin = i + 1;
    }
    return found == count;
}

} // namespace

void XRecord::setBool(QString const &key, bool value) {
    setString(key, value ? QStringLiteral("true") : QStringLiteral("false"));
}

void XRecord::setShort(QString const &key, short value) { setString(key, QString::number(value)); }

void XRecord::setInt(QString const &key, int value) { setString(key, QString::number(value)); }

void XRecord::setUInt(QString const &key, unsigned int value) {
    setString(key, QString::number(value));
}

void XRecord::setLong(QString const &key, qint64 value) { setString(key, QString::number(value)); }

void XRecord::setULong(QString const &key, quint64 value) {
    setString(key, QString::number(value));
}

void XRecord::setFloat(QString const &key, float value) {
    setDouble(key, static_cast<double>(value));
}

// The formatter's real form is printf's "%f" (six decimals, no exponent) without
// going through a format string.
void XRecord::setDouble(QString const &key, double value) {
    QString text;
    format::append(text, value);
    setString(key, text);
}

bool XRecord::getBool(QString const &key, bool def) const {
    auto const it = attributes.find(key);
    if (it == attributes.end())
        return def;
    QString const value = it->second.toLower();
    if (value == QLatin1String("true") || value == QLatin1String("on"))
        return true;
    return value.toInt() >= 1;
}

short XRecord::getShort(QString const &key, short def) const {
    return static_cast<short>(getInt(key, def));
}

int XRecord::getInt(QString const &key, int def) const {
    auto const it = attributes.find(key);
    if (it == attributes.end())
        return def;
    bool ok = false;
    int const value = it->second.toInt(&ok, 10);
    return ok ? value : def;
}

unsigned int XRecord::getUInt(QString const &key, unsigned int def) const {
    return static_cast<unsigned int>(getLong(key, def));
}

qint64 XRecord::getLong(QString const &key, qint64 def) const {
    auto const it = attributes.find(key);
    if (it == attributes.end())
        return def;
    bool ok = false;
    qint64 const value = it->second.toLongLong(&ok, 10);
    return ok ? value : def;
}

quint64 XRecord::getULong(QString const &key, quint64 def) const {
    auto const it = attributes.find(key);
    if (it == attributes.end())
        return def;
    bool ok = false;
    quint64 const value = it->second.toULongLong(&ok, 10);
    return ok ? value : def;
}

float XRecord::getFloat(QString const &key, float def) const {
    return static_cast<float>(getDouble(key, static_cast<double>(def)));
}

double XRecord::getDouble(QString const &key, double def) const {
    auto const it = attributes.find(key);
    return it == attributes.end() ? def : it->second.toDouble();
}

QPoint XRecord::getQPoint(QString const &key, QPoint const &def) const {
    Numbers t;
    return cutNumbers(attributes, key, 2, t) ? QPoint(t.intAt(0), t.intAt(1)) : def;
}

QPointF XRecord::getQPointF(QString const &key, QPointF const &def) const {
    Numbers t;
    return cutNumbers(attributes, key, 2, t) ? QPointF(t.realAt(0), t.realAt(1)) : def;
}

QSize XRecord::getQSize(QString const &key, QSize const &def) const {
    Numbers t;
    return cutNumbers(attributes, key, 2, t) ? QSize(t.intAt(0), t.intAt(1)) : def;
}

QSizeF XRecord::getQSizeF(QString const &key, QSizeF const &def) const {
    Numbers t;
    return cutNumbers(attributes, key, 2, t) ? QSizeF(t.realAt(0), t.realAt(1)) : def;
}

Res XRecord::getRes(QString const &key, Res const &def) const {
    Numbers t;
    return cutNumbers(attributes, key, 2, t) ? Res(t.uintAt(0), t.uintAt(1)) : def;
}

QRect XRecord::getQRect(QString const &key, QRect const &def) const {
    Numbers t;
    return cutNumbers(attributes, key, 4, t) ? QRect(t.intAt(0), t.intAt(1), t.intAt(2), t.intAt(3))
                                             : def;
}

QRectF XRecord::getQRectF(QString const &key, QRectF const &def) const {
    Numbers t;
    return cutNumbers(attributes, key, 4, t)
               ? QRectF(t.realAt(0), t.realAt(1), t.realAt(2), t.realAt(3))
               : def;
}

QMargins XRecord::getQMargins(QString const &key, QMargins const &def) const {
    Numbers t;
    return cutNumbers(attributes, key, 4, t)
               ? QMargins(t.intAt(0), t.intAt(1), t.intAt(2), t.intAt(3))
               : def;
}

void XRecord::setQPoint(QString const &key, QPoint const &value) {
    setString(key, xprintF("$,$", value.x(), value.y()));
}

void XRecord::setQPointF(QString const &key, QPointF const &value) {
    setString(key, joined({streamReal(value.x()), streamReal(value.y())}));
}

void XRecord::setQSize(QString const &key, QSize const &value) {
    setString(key, xprintF("$,$", value.width(), value.height()));
}

void XRecord::setQSizeF(QString const &key, QSizeF const &value) {
    setString(key, joined({streamReal(value.width()), streamReal(value.height())}));
}

void XRecord::setRes(QString const &key, Res const &value) {
    setString(key, xprintF("$,$", value.width, value.height));
}

void XRecord::setQRect(QString const &key, QRect const &value) {
    setString(key, xprintF("$,$,$,$", value.x(), value.y(), value.width(), value.height()));
}

void XRecord::setQRectF(QString const &key, QRectF const &value) {
    setString(key, joined({streamReal(value.x()), streamReal(value.y()), streamReal(value.width()),
                           streamReal(value.height())}));
}

void XRecord::setQMargins(QString const &key, QMargins const &value) {
    setString(key, xprintF("$,$,$,$", value.left(), value.top(), value.right(), value.bottom()));
}

} // namespace orv
