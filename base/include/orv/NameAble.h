// NameAble.h: the small base of objects that carry a name for log lines, such as the
// type supporters of the tree.
//
//   struct Codec : orv::NameAble { Codec() { setName(QStringLiteral("codec")); } };
//   ppInfo("using $", codec.toString());   // "using codec"
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

namespace orv {

class ORV_EXPORT NameAble {
public:
    NameAble() = default;
    explicit NameAble(QString const &name) : name(name) {}
    NameAble(NameAble const &) = default;
    NameAble &operator=(NameAble const &) = default;
    virtual ~NameAble();

    // The name.
    virtual QString toString() const { return name; }
    // "NameAble"; subclasses may tell their own kind.
    virtual QString orvType() const { return QStringLiteral("NameAble"); }

    QString const &getName() const { return name; }
    void setName(QString const &text) { name = text; }

private:
    QString name;
};

} // namespace orv
