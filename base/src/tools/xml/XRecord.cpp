// XRecord.cpp: the string table itself, its convenience attributes and printed forms.
#include "orv/XRecord.h"

#include "orv/Log.h"
#include "orv/StringText.h"
#include "orv/XError.h"
#include "orv/XFile.h"
#include "orv/XStringStream.h"

namespace orv {

AbstractXRecord::KeyValueText AbstractXRecord::kvAsString = [](QString const &key,
                                                               QString const &value) {
    return key + QStringLiteral(": '") + value + QLatin1Char('\'');
};

QPoint const XRecord::QPOINT_DEFAULT;
QPointF const XRecord::QPOINT_F_DEFAULT;
QSize const XRecord::QSIZE_DEFAULT;
QSizeF const XRecord::QSIZE_F_DEFAULT;
QRect const XRecord::QRECT_DEFAULT;
QRectF const XRecord::QRECT_F_DEFAULT;
QMargins const XRecord::QMARGINS_DEFAULT;
Res const XRecord::RES_DEFAULT;

XRecord::~XRecord() = default;

void XRecord::setString(QString const &key, QString const &value) {
    if (key.isEmpty()) {
        ppWarning("XRecord::setString, key == ''");
        return;
    }
    // One descent whether the key is new or not, and no default value built first.
    auto const at = attributes.lower_bound(key);
    if (at != attributes.end() && at->first == key)
        at->second = value;
    else
        attributes.emplace_hint(at, key, value);
}

QString XRecord::getString(QString const &key, QString const &def) const {
    auto const it = attributes.find(key);
    return it == attributes.end() ? def : it->second;
}

bool XRecord::isString(QString const &key, QString const &s) const {
    auto const it = attributes.find(key);
    return it != attributes.end() && it->second == s;
}

QString XRecord::getSetString(QString const &key, QString const &def) {
    auto const it = attributes.find(key);
    if (it != attributes.end())
        return it->second;
    setString(key, def);
    return def;
}

QString XRecord::getExistingFile(QString const &key, QString const &def) const {
    auto const it = attributes.find(key);
    return it != attributes.end() && fileExists(it->second) ? it->second : def;
}

QString XRecord::firstKey() const {
    return attributes.empty() ? QString() : attributes.begin()->first;
}

std::vector<QString> XRecord::keys() const {
    std::vector<QString> result;
    result.reserve(attributes.size());
    for (auto const &entry : attributes)
        result.push_back(entry.first);
    return result;
}

void XRecord::copyAttributesTo(XRecord *table) const {
    ORV_ASSERT_PTR(table);
    // The attributes only: an XNode's own clear() would drop its children instead.
    table->XRecord::clear();
    for (auto const &entry : attributes)
        if (entry.first != QLatin1String("name") || !entry.second.isEmpty())
            table->setString(entry.first, entry.second);
}

void XRecord::reset() { ppDebug("XRecord::reset_thumb"); }

QString XRecord::attributesLoop(
    std::function<void(XStringStream &, QString const &, QString const &, bool)> fn) const {
    QString text;
    {
        XStringStream stream(&text);
        size_t left = attributes.size();
        for (auto const &entry : attributes)
            fn(stream, entry.first, entry.second, --left == 0);
    }
    return text;
}

QString XRecord::toStringAttributes() const {
    return attributesLoop(
        [](XStringStream &s, QString const &key, QString const &value, bool isLast) {
            s << key << ":"
              << " '" << value << "'";
            if (!isLast)
                s << ", ";
        });
}

QString XRecord::toStringEnv() const {
    return attributesLoop(
        [](XStringStream &s, QString const &key, QString const &value, bool isLast) {
            s << key << "=" << value;
            if (!isLast)
                s << " ";
        });
}

QString XRecord::toStringCmd() const {
    return attributesLoop(
        [](XStringStream &s, QString const &key, QString const &value, bool isLast) {
            s << "--" << key << " " << value;
            if (!isLast)
                s << " ";
        });
}

QString XRecord::toString() const {
    return xprintF(", attributes:$, {$}", countAttributes(), toStringAttributes());
}

void XRecord::showContents(unsigned int indent, unsigned int level, KeyValueText fn) const {
    KeyValueText const &print = fn ? fn : kvAsString;
    QString line = QLatin1Char('<') + realTypeAsString() + QLatin1Char('>');
    if (hasAttributes()) {
        QStringList parts;
        for (auto const &entry : attributes)
            parts << (entry.first.endsWith(QLatin1String("64"))
                          ? entry.first + QStringLiteral(": '") + base64_decode(entry.second) +
                                QLatin1Char('\'')
                          : print(entry.first, entry.second));
        line += QStringLiteral(" {") + parts.join(QStringLiteral(", ")) + QLatin1Char('}');
    }
    ppLog(level, indent, line);
}

} // namespace orv
