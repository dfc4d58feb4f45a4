// XRecordLists.cpp: lists, byte blocks and Base64 texts kept in one attribute, and String64.
#include "orv/XRecord.h"

#include "orv/Log.h"
#include "orv/StringText.h"
#include "orv/Tokenizer.h"
#include "orv/XMem.h"
#include "tools/xmem/LongBlocks.h"

#include <QtCore/QStringList>

namespace orv {

String64::~String64() = default;

String64 &String64::operator=(QString const &text) {
    fromString(text);
    return *this;
}

void String64::fromString(QString const &text) { stored = base64_encode(text); }

QString String64::toString() const { return base64_decode(stored); }

bool XRecord::getArrayFloat(QString const &key, float *out, unsigned int n) const {
    auto const it = attributes.find(key);
    if (!out || it == attributes.end())
        return false;
    Tokenizer tokens(it->second, QStringLiteral(", \t"), false);
    if (tokens.size() > n)
        ppWarning("XRecord::getArrayFloat, too many tokens, expected $ but we have $, "
                  "truncate....",
                  n, tokens.size());
    else if (tokens.size() < n)
        ppWarning("XRecord::getArrayFloat, too less tokens, expected $ but we have $, fill up "
                  "with '0'",
                  n, tokens.size());
    for (unsigned int i = 0; i < n; ++i)
        out[i] = i < tokens.size() ? tokens[i].toFloat() : 0.0f;
    return true;
}

void XRecord::setArrayFloat(QString const &key, float const *ar, unsigned int n) {
    if (!ar) {
        ppError("XRecord::setArrayFloat, ar == nullptr");
        return;
    }
    QStringList numbers;
    for (unsigned int i = 0; i < n; ++i)
        numbers << QString::number(static_cast<double>(ar[i]), 'g', 6);
    setString(key, numbers.join(QLatin1Char(',')));
}

std::vector<QString> XRecord::getArrayString(QString const &key) const {
    std::vector<QString> result;
    auto const it = attributes.find(key);
    if (it == attributes.end())
        return result;
    Tokenizer tokens(it->second, QStringLiteral(", \t"), false);
    for (unsigned int i = 0; i < tokens.size(); ++i)
        result.push_back(tokens[i].trimmed());
    return result;
}

bool XRecord::hasArray(QString const &key) const {
    auto const it = attributes.find(key);
    return it != attributes.end() && it->second.contains(QLatin1Char(','));
}

QByteArray XRecord::getQByteArray(QString const &key) const {
    Tokenizer tokens(getBase64String(key, QString()), QStringLiteral(", "), false);
    QByteArray bytes;
    bytes.reserve(static_cast<int>(tokens.size()));
    for (unsigned int i = 0; i < tokens.size(); ++i)
        bytes.append(static_cast<char>(tokens.intAt(i, 0)));
    return bytes;
}

// Files carry the Base64 of the decimal list, so the detour stays.
void XRecord::setQByteArray(QString const &key, QByteArray const &bytes) {
    QStringList numbers;
    for (char c : bytes)
        numbers << QString::number(static_cast<unsigned char>(c));
    setBase64String(key, numbers.join(QStringLiteral(", ")));
}

XMem XRecord::get_mem(QString const &key) const {
    QString const value = getString(key, QString());
    if (value.isEmpty())
        return XMem();
    return XMem(QByteArray::fromBase64(value.toLatin1()));
}

void XRecord::set_mem(QString const &key, XMem const &block) {
    // Base64 makes four characters of three bytes, and they must fit a QString.
    if (!xmem::fitsQString(block.length() / 3 * 4 + 4, "XRecord::set_mem"))
        return;
    QByteArray const bytes =
        QByteArray::fromRawData(block.mem(), static_cast<int>(block.length())).toBase64();
    setString(key, QString::fromLatin1(bytes));
}

std::vector<QString> XRecord::get_string_array(QString const &key) const {
    return get_mem(key).get_string_array();
}

void XRecord::set_string_array(QString const &key, std::vector<QString> const &texts) {
    XMem block;
    block.set_string_array(texts);
    set_mem(key, block);
}

QString XRecord::getBase64String(QString const &key, QString const &def) const {
    auto const it = attributes.find(key);
    return it == attributes.end() ? def : base64_decode(it->second);
}

void XRecord::setBase64String(QString const &key, QString const &text) {
    setString(key, base64_encode(text));
}

void XRecord::setString64(QString const &key, String64 const &text) {
    setString(key, text.toString());
}

StringEnum XRecord::getStringEnum(QString const &key, StringEnum const &def) const {
    if (!hasAttribute(key))
        return def;
    QString const value = getString(key, QString());
    if (value.split(QLatin1Char(',')).size() < 2) {
        ppWarning("XRecord::getStringEnum, key:$, value:'$' ?", key, value);
        return def;
    }
    return StringEnum(value);
}

void XRecord::setStringEnum(QString const &key, StringEnum const &value) {
    setString(key, value.toString());
}

} // namespace orv
