// XMemStrings.cpp: text in a block: terminated strings, string records and string arrays.
//
// A record is an 8-byte signed length of the UTF-8 bytes, then the bytes, no
// terminator; an array is an 8-byte signed count, then the records. Host byte
// order, no padding.
#include "orv/XMem.h"

#include "orv/Log.h"
#include "orv/StringFormat.h"
#include "tools/xmem/LongBlocks.h"

#include <cstring>

namespace orv {

void XMem::setString(char const *text) {
    // Emptied before any test: a null text leaves an empty block, not the old one.
    resizeStorage(0);
    if (!text) {
        ppTest("XMem::setString, pString == null");
        return;
    }
    quint64 const len = std::strlen(text);
    // This guard compares with 0, not with 8 GB, so every non-empty text prints the
    // line and none is refused; callers' logs rely on it as it stands.
    if (len > 0)
        Logger::printToCout(
            xprintF("XMem::setString, len > 8GB, len:$", format1000(static_cast<qint64>(len))));
    resizeStorage(len + 1);
    std::memcpy(storage.data(), text, len + 1);
}

void XMem::setString(QString const &text) { setString(text.toUtf8().constData()); }

void XMem::setString(std::string const &text) { setString(text.c_str()); }

void XMem::append_string(QString const &text) {
    QByteArray const utf8 = text.toUtf8();
    qint64 const len = utf8.size();
    append_raw_data(&len, sizeof(len));
    append_raw_data(utf8.constData(), static_cast<quint64>(utf8.size()));
}

QString XMem::get_string() const {
    if (isEmpty() || !xmem::fitsQString(size() - 1, "XMem::get_string"))
        return QString();
    return QString::fromUtf8(storage.data(), static_cast<int>(size() - 1));
}

quint64 XMem::stringLen() const {
    if (isEmpty())
        return 0;
    // Bounded by the block, so that a block without terminator is never read past its end.
    quint64 const len = strnlen(storage.data(), size());
    if (len == size()) {
        ppWarning("XMem::stringLen - len is string len is bigger than capacity, return 0 now. "
                  "$ > $",
                  len, size());
        return 0;
    }
    return len;
}

void XMem::set_string_array(std::vector<QString> const &texts) {
    resizeStorage(0);
    qint64 const count = static_cast<qint64>(texts.size());
    append_raw_data(&count, sizeof(count));
    for (QString const &text : texts)
        append_string(text);
}

std::vector<QString> XMem::get_string_array() const {
    std::vector<QString> texts;
    if (isEmpty())
        return texts;
    if (size() < sizeof(qint64)) {
        ppError("XMem::get_string_array, byteArray.size() < sizeof (long long)");
        return texts;
    }
    char const *p = storage.data();
    quint64 pos = 0;
    qint64 count = 0;
    std::memcpy(&count, p, sizeof(count));
    pos += sizeof(count);
    for (; count > 0; --count) {
        qint64 len = 0;
        if (size() - pos < sizeof(len)) {
            ppError("XMem::get_string_array, record $ runs past the end", texts.size());
            break;
        }
        std::memcpy(&len, p + pos, sizeof(len));
        pos += sizeof(len);
        if (len < 0 || static_cast<quint64>(len) > size() - pos) {
            ppError("XMem::get_string_array, record $ runs past the end", texts.size());
            break;
        }
        if (!xmem::fitsQString(static_cast<quint64>(len), "XMem::get_string_array"))
            break;
        texts.push_back(QString::fromUtf8(p + pos, static_cast<int>(len)));
        pos += static_cast<quint64>(len);
    }
    return texts;
}

} // namespace orv
