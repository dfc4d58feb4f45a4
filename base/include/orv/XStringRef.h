// XStringRef.h: a checked view on a stretch of a QString.
//
//   QString const s = "abc";
//   orv::XStringRef r(s, 1, 0);   // "bc": len 0 reaches to the end
//   r.posEnd();                   // 2, inclusive
//
// The string must outlive the view. A view of size 0 is invalid.
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

namespace orv {

class ORV_EXPORT XStringRef {
public:
    explicit XStringRef(QString const &s);
    // A stretch past the end of s logs an ERROR and gives an invalid view.
    XStringRef(QString const &s, unsigned int pos, unsigned int len);

    static XStringRef createInvalidStringRef();

    // Outside the view: an ERROR line and a null QChar.
    QChar charAt(unsigned int index) const;
    QChar operator[](unsigned int index) const { return charAt(index); }

    unsigned int posBegin() const { return pos; }
    unsigned int size() const { return len; }
    // The last position, inclusive.
    unsigned int posEnd() const { return pos + len - 1; }

    bool isValid() const { return len > 0; }
    explicit operator bool() const { return isValid(); }
    void setInvalid() { len = 0; }

    QString toString() const;
    // "pos:$, size:$, <<<view>>> original <<<string>>>, size:$"
    QString toStringInfo() const;

private:
    XStringRef() = default;

    QString const *str = nullptr;
    unsigned int pos = 0;
    unsigned int len = 0;
};

} // namespace orv
