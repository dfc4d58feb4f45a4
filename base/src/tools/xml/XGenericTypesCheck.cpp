// XGenericTypesCheck.cpp: a whole document held against a schema, with every finding
// collected rather than stopping at the first.
#include "orv/XGenericTypes.h"

#include "orv/StringEnum.h"

#include <QtCore/QStringList>

#include <map>

namespace orv {

namespace {

bool isReserved(QString const &key) {
    static QStringList const reserved{QStringLiteral("name"), QStringLiteral("enabled"),
                                      QStringLiteral("visible"), QStringLiteral("NID"),
                                      QStringLiteral("_pointer")};
    return reserved.contains(key);
}

bool isNumeric(QString const &type) {
    static QStringList const numeric{
        QStringLiteral("int"),    QStringLiteral("uint"),  QStringLiteral("short"),
        QStringLiteral("long"),   QStringLiteral("ulong"), QStringLiteral("float"),
        QStringLiteral("double"), QStringLiteral("int64"), QStringLiteral("uint64")};
    return numeric.contains(type);
}

QString bound(unsigned int n) {
    return n == 0xFFFFFFFFu ? QStringLiteral("*") : QString::number(n);
}

class DocumentCheck {
public:
    DocumentCheck(XGenericTypes &schema, std::vector<QString> &findings)
        : schema(schema), findings(findings) {}

    void element(XNode const *n) {
        if (n->isType(QStringLiteral("XGenericTypes")))
            return;
        QString const where = n->getQuery();
        Scheme const scheme = schema.getScheme(n->getType());
        if (!scheme.owner()) {
            findings.push_back(where +
                               QStringLiteral(": type <%1> is not described").arg(n->getType()));
        } else {
            children(n, scheme, where);
            for (auto const &entry : n->getAttributes())
                attribute(scheme, where, entry.first, entry.second);
        }
        for (XNode const *child : n->children())
            element(child);
    }

private:
    void children(XNode const *n, Scheme const &scheme, QString const &where) {
        std::map<QString, unsigned int> counts;
        for (XNode const *child : n->children())
            if (!child->isType(QStringLiteral("XGenericTypes")))
                ++counts[child->getType()];
        for (auto const &entry : counts) {
            bool allowed = false;
            for (Child const *c : scheme.getChildren())
                allowed = allowed || c->getTheType() == entry.first;
            if (!allowed)
                findings.push_back(where +
                                   QStringLiteral(": child <%1> is not allowed").arg(entry.first));
        }
        for (Child const *c : scheme.getChildren()) {
            auto const found = counts.find(c->getTheType());
            unsigned int const count = found == counts.end() ? 0 : found->second;
            if (count < c->countMin() || count > c->countMax())
                findings.push_back(where + QStringLiteral(": <%1> occurs %2 times, allowed %3..%4")
                                               .arg(c->getTheType())
                                               .arg(count)
                                               .arg(bound(c->countMin()), bound(c->countMax())));
        }
    }

    void attribute(Scheme const &scheme, QString const &where, QString const &key,
                   QString const &value) {
        Attr const *attr = nullptr;
        for (Attr const *a : scheme.getAttributes())
            if (a->getName() == key)
                attr = a;
        QString const at = where + QStringLiteral(": attribute '%1'").arg(key);
        if (!attr) {
            if (!isReserved(key))
                findings.push_back(at + QStringLiteral(" is not described"));
            return;
        }
        if (attr->hasCombo()) {
            std::vector<QString> const entries = StringEnum(attr->getCombo()).getVectorStrings();
            if (std::find(entries.begin(), entries.end(), value) == entries.end())
                findings.push_back(
                    at + QStringLiteral(" = '%1' is not one of %2").arg(value, attr->getCombo()));
        }
        if (!isNumeric(attr->getString(QStringLiteral("type"), QString())))
            return;
        bool ok = false;
        double const number = value.toDouble(&ok);
        if (!ok) {
            findings.push_back(at + QStringLiteral(" = '%1' is not a number").arg(value));
            return;
        }
        if (attr->hasMin() && number < attr->getMin().toDouble())
            findings.push_back(at + QStringLiteral(" = %1 is below %2").arg(value, attr->getMin()));
        if (attr->hasMax() && number > attr->getMax().toDouble())
            findings.push_back(at + QStringLiteral(" = %1 is above %2").arg(value, attr->getMax()));
    }

    XGenericTypes &schema;
    std::vector<QString> &findings;
};

} // namespace

std::vector<QString> XGenericTypes::checkDocument(XNode const *document) {
    std::vector<QString> findings;
    if (document)
        DocumentCheck(*this, findings).element(document);
    return findings;
}

} // namespace orv
