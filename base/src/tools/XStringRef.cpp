// XStringRef.cpp: the checked view on a QString.
#include "orv/XStringRef.h"

#include "orv/Log.h"

namespace orv {

XStringRef::XStringRef(QString const &s)
    : str(&s), pos(0), len(static_cast<unsigned int>(s.length())) {}

XStringRef::XStringRef(QString const &s, unsigned int pos, unsigned int len)
    : str(&s), pos(pos), len(len) {
    unsigned int const total = static_cast<unsigned int>(s.length());
    if (len == 0)
        this->len = pos < total ? total - pos : 0;
    if (static_cast<quint64>(pos) + this->len > total) {
        ppError("XStringRef::XStringRef, ((pos + len) > s.length(), $+$ > $", pos, len, total);
        this->len = 0;
    }
}

XStringRef XStringRef::createInvalidStringRef() { return XStringRef(); }

QChar XStringRef::charAt(unsigned int index) const {
    if (static_cast<quint64>(pos) + index >= static_cast<quint64>(pos) + len) {
        ppError("XStringRef::charAt, pos+index >= size(), $+$ >= $, return QChar()", pos, index,
                pos + len);
        return QChar();
    }
    return str->at(static_cast<int>(pos + index));
}

QString XStringRef::toString() const {
    if (!str || len == 0)
        return QString();
    return str->mid(static_cast<int>(pos), static_cast<int>(len));
}

QString XStringRef::toStringInfo() const {
    QString const original = str ? *str : QString();
    return xprintF("pos:$, size:$, <<<$>>> original <<<$>>>, size:$", pos, len, toString(),
                   original, original.length());
}

} // namespace orv
