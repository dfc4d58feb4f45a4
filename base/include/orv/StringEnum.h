// StringEnum.h: a choice among strings kept as one comma-separated text whose first
// token may be the selected index.
//
//   orv::StringEnum colour("1,red,green,blue");
//   colour.enumStr();    // "green"
//   colour.setIndex(2);  // "2,red,green,blue"
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

#include <vector>

namespace orv {

class ORV_EXPORT StringEnum {
public:
    StringEnum() = default;
    explicit StringEnum(QString const &text) : text(text) {}
    // The entries joined with ","; no selection.
    explicit StringEnum(std::vector<QString> const &entries);
    virtual ~StringEnum();

    virtual bool isEnumString(QString const &s) const { return enumStr() == s; }
    // "StringEnum, size:$, index:$" and one "'entry'" line per entry.
    virtual void show(unsigned int indent);
    // The leading number, or -1 when the first token doesn't begin with a digit.
    virtual int index() const;
    // The selected entry, or "" when the index is out of range.
    virtual QString enumStr() const;
    // Replaces the leading number; a text without one keeps none. Negative: a warning.
    virtual void setIndex(int i);

    std::vector<QString> getVectorStrings() const;
    void fromString(QString const &value) { text = value; }
    QString toString() const { return text; }

private:
    bool hasLeadingNumber() const;

    QString text;
};

} // namespace orv
