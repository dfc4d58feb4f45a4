// XByteArray.cpp: assignment, factories, text access and the big-endian field writers.
#include "orv/XByteArray.h"

#include "orv/Tokenizer.h"
#include "orv/XTokenizer.h"
#include "tools/xmem/LongBlocks.h"

#include <cstring>

namespace orv {

namespace {

// The bytes before the first 0, the view all text members work on.
int textLength(QByteArray const &bytes) {
    return static_cast<int>(strnlen(bytes.constData(), static_cast<size_t>(bytes.size())));
}

} // namespace

XByteArray::~XByteArray() = default;

XByteArray &XByteArray::operator=(QByteArray const &bytes) {
    QByteArray::operator=(bytes);
    return *this;
}

XByteArray &XByteArray::operator=(QByteArray &&bytes) noexcept {
    QByteArray::operator=(std::move(bytes));
    return *this;
}

XByteArray &XByteArray::operator=(XByteArray const &other) {
    QByteArray::operator=(other);
    AbstractMemory::operator=(other);
    return *this;
}

// Sharing makes the copy as cheap as a move, and the source stays whole.
XByteArray &XByteArray::operator=(XByteArray &&other) noexcept { return *this = other; }

XByteArray XByteArray::fromMem(char const *p, quint64 len) {
    if (!xmem::fitsQByteArray(len, "XByteArray::fromMem"))
        return XByteArray();
    return XByteArray(QByteArray::fromRawData(p, static_cast<int>(len)));
}

XByteArray XByteArray::fromStringLines(std::vector<QString> const &lines, bool crlf) {
    XByteArray out;
    for (QString const &line : lines) {
        out.append(line.toUtf8());
        out.append(crlf ? "\r\n" : "\n");
    }
    return out;
}

XByteArray XByteArray::from_QString_UTF8(QString const &text) {
    XByteArray out;
    XTokenizer const tokens(text, QStringLiteral("\n"), true, false);
    for (unsigned int i = 0; i < tokens.size(); ++i)
        out.append(tokens[i].toUtf8());
    return out;
}

XByteArray XByteArray::load(QString const &path) {
    XByteArray out;
    out.loadFromFile(path, 0);
    return out;
}

bool XByteArray::operator==(XByteArray const &other) const {
    char const *pMem = mem();
    char const *pMem2 = other.mem();
    ORV_ASSERT_PTR(pMem);
    ORV_ASSERT_PTR(pMem2);
    return size() == other.size() && std::memcmp(pMem, pMem2, static_cast<size_t>(size())) == 0;
}

XByteArray &XByteArray::operator+=(std::string const &text) {
    appendStdString(text);
    return *this;
}

void XByteArray::appendStdString(std::string const &text) { append(text.c_str()); }

XByteArray &XByteArray::operator+=(QString const &text) {
    append(text.toUtf8());
    return *this;
}

void XByteArray::setMemory(void const *pMem, quint64 sz) {
    ORV_ASSERT_PTR(pMem);
    if (!xmem::fitsQByteArray(sz, "XByteArray::setMemory")) {
        setOrvError(ORV_ERROR_NUMBER_TOO_BIG);
        return;
    }
    clear();
    resize(static_cast<int>(sz));
    if (sz)
        std::memcpy(data(), pMem, sz);
}

size_t XByteArray::find(QString const &pattern) const {
    return toStdString().find(pattern.toStdString());
}

size_t XByteArray::rfind(QString const &pattern) const {
    return toStdString().rfind(pattern.toStdString());
}

size_t XByteArray::find_first_not_of(QString const &set) const {
    return toStdString().find_first_not_of(set.toStdString());
}

std::string XByteArray::substr(int pos, int len) const {
    return toStdString().substr(static_cast<size_t>(pos), static_cast<size_t>(len));
}

std::string XByteArray::toStdString() const { return std::string(constData(), textLength(*this)); }

QString XByteArray::toQString() const {
    return QString::fromLatin1(constData(), textLength(*this));
}

std::vector<XByteArray> XByteArray::splitX(QString const &delims) const {
    std::vector<XByteArray> parts;
    Tokenizer const tokens(toQString(), delims, false);
    for (unsigned int i = 0; i < tokens.size(); ++i)
        parts.emplace_back(tokens[i].toUtf8());
    return parts;
}

QString XByteArray::md5String() const { return QString::fromLatin1(MD5::md5FromQByteArray(*this)); }

void XByteArray::writeUInt8(unsigned char value) { append(static_cast<char>(value)); }

void XByteArray::writeUInt16(unsigned short value) {
    char const bytes[2] = {static_cast<char>(value >> 8), static_cast<char>(value)};
    append(bytes, 2);
}

void XByteArray::writeUInt32(unsigned int value) {
    char const bytes[4] = {static_cast<char>(value >> 24), static_cast<char>(value >> 16),
                           static_cast<char>(value >> 8), static_cast<char>(value)};
    append(bytes, 4);
}

unsigned short XByteArray::readUInt16() const {
    if (size() < 2)
        return 0;
    auto const *p = reinterpret_cast<unsigned char const *>(constData());
    return static_cast<unsigned short>(p[0] << 8 | p[1]);
}

unsigned int XByteArray::readUInt32() const {
    if (size() < 4)
        return 0;
    auto const *p = reinterpret_cast<unsigned char const *>(constData());
    return static_cast<unsigned int>(p[0]) << 24 | static_cast<unsigned int>(p[1]) << 16 |
           static_cast<unsigned int>(p[2]) << 8 | p[3];
}

void XByteArray::writePadBytes(unsigned int n) {
    if (xmem::fitsQByteArray(static_cast<quint64>(size()) + n, "XByteArray::writePadBytes"))
        append(QByteArray(static_cast<int>(n), '\0'));
}

void XByteArray::writeQStringUTF8(QString const &text, bool newline) {
    append(text.toUtf8());
    if (newline)
        append('\n');
}

} // namespace orv
