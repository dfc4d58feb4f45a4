// StringEnum.cpp: the selection and the entries read from the comma-separated text.
#include "orv/StringEnum.h"

#include "orv/Log.h"

#include <QtCore/QStringList>

namespace orv {

namespace {
QString firstToken(QString const &text) { return text.section(QLatin1Char(','), 0, 0); }
} // namespace

StringEnum::StringEnum(std::vector<QString> const &entries) {
    QStringList parts;
    for (QString const &entry : entries)
        parts << entry;
    text = parts.join(QLatin1Char(','));
}

StringEnum::~StringEnum() = default;

bool StringEnum::hasLeadingNumber() const {
    QString const first = firstToken(text);
    return !first.isEmpty() && first.at(0).isDigit();
}

int StringEnum::index() const { return hasLeadingNumber() ? firstToken(text).toInt() : -1; }

std::vector<QString> StringEnum::getVectorStrings() const {
    if (text.isEmpty())
        return {};
    QStringList tokens = text.split(QLatin1Char(','));
    if (hasLeadingNumber())
        tokens.removeFirst();
    return std::vector<QString>(tokens.begin(), tokens.end());
}

QString StringEnum::enumStr() const {
    int const i = index();
    std::vector<QString> const entries = getVectorStrings();
    return i >= 0 && static_cast<size_t>(i) < entries.size() ? entries[static_cast<size_t>(i)]
                                                             : QString();
}

void StringEnum::setIndex(int i) {
    if (i < 0) {
        ppWarning("StringEnum::setIndex, index:$", i);
        return;
    }
    if (!hasLeadingNumber())
        return;
    int const comma = text.indexOf(QLatin1Char(','));
    text = QString::number(i) + (comma < 0 ? QString() : text.mid(comma));
}

void StringEnum::show(unsigned int indent) {
    std::vector<QString> const entries = getVectorStrings();
    ppInfo(indent, "StringEnum, size:$, index:$", entries.size(), index());
    for (QString const &entry : entries)
        ppInfo(indent, "'$'", entry);
}

} // namespace orv
