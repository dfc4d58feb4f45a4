// LogFilter.cpp: substring filters over message texts and their conjunction.
#include "orv/LogFilter.h"

#include "orv/Log.h"
#include "orv/XError.h"

#include <algorithm>

namespace orv {

LogFilter::~LogFilter() = default;

QString LogFilter::toString() const { return QStringLiteral("LogFilter"); }

LogFilterString::LogFilterString(QString const &filter, bool ignoreCase, bool negated)
    : LogFilter(negated), filter(filter), ignoreCase(ignoreCase) {}

bool LogFilterString::matchLogMessage(LogMessage const *msg) const {
    if (msg == nullptr)
        return false;
    QString const text = msg->toString();
    bool const found =
        ignoreCase ? text.toUpper().indexOf(filter.toUpper()) >= 0 : text.indexOf(filter) >= 0;
    return isNegated() ? !found : found;
}

QString LogFilterString::toString() const {
    return xprintF("isIgnoreCase:$, filter '$'", ignoreCase, filter);
}

bool LogFilterList::matchLogMessage(LogMessage const *msg) const {
    if (msg == nullptr)
        nullPointerHandling(__FILE__, __LINE__, QStringLiteral("lm == NULL"));
    return std::all_of(filters.begin(), filters.end(), [msg](std::shared_ptr<LogFilter> const &f) {
        return f->matchLogMessage(msg);
    });
}

void LogFilterList::addFilter(std::shared_ptr<LogFilter> filter) {
    ORV_ASSERT_PTR(filter);
    filters.push_back(std::move(filter));
}

void LogFilterList::removeFilter(std::shared_ptr<LogFilter> filter) {
    ORV_ASSERT_PTR(filter);
    auto it = std::find(filters.begin(), filters.end(), filter);
    if (it != filters.end())
        filters.erase(it);
}

void LogFilterList::show(unsigned int space) const {
    ppDebug(space, "LogFilterList: $ filter", static_cast<unsigned long long>(filters.size()));
    for (size_t i = 0; i < filters.size(); ++i)
        ppDebug(space + 4, "filter[$]: '$'", static_cast<unsigned long long>(i),
                filters[i]->toString());
}

} // namespace orv
