// LogFilter.h: tests a reader of the log applies to messages, e.g. a viewer over
// AppenderLimitMemory. The logger itself filters by its level mask only.
//
//   orv::LogFilterList filters;
//   filters.addFilter(std::make_shared<orv::LogFilterString>("socket", true, false));
//   filters.addFilter(std::make_shared<orv::LogFilterString>("retry", false, true));
//   if (filters.matchLogMessage(msg)) show(msg);   // has "socket", any case, and no "retry"
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

#include <memory>
#include <vector>

namespace orv {

class LogMessage;

class ORV_EXPORT LogFilter {
public:
    explicit LogFilter(bool negated = false) : negated(negated) {}
    virtual ~LogFilter();
    virtual bool matchLogMessage(LogMessage const *msg) const = 0;
    virtual QString toString() const;

    bool isNegated() const { return negated; }
    void setNegated(bool on) { negated = on; }

private:
    bool negated;
};

// Whether the message's text holds the filter as a substring; an empty filter is
// everywhere. A null message never matches.
class ORV_EXPORT LogFilterString : public LogFilter {
public:
    LogFilterString() = default;
    LogFilterString(QString const &filter, bool ignoreCase, bool negated);

    bool matchLogMessage(LogMessage const *msg) const override;
    // "isIgnoreCase:<bool>, filter '<filter>'"
    QString toString() const override;

    QString stringFilter() const { return filter; }
    void setStringFilter(QString const &text) { filter = text; }
    bool isIgnoreCase() const { return ignoreCase; }
    void setIgnoreCase(bool on) { ignoreCase = on; }

private:
    QString filter;
    bool ignoreCase = false;
};

// All filters in order must match; an empty list matches everything. The list's
// own negated flag isn't consulted. Null messages and null filters are fatal.
class ORV_EXPORT LogFilterList : public LogFilter {
public:
    LogFilterList() = default;

    bool matchLogMessage(LogMessage const *msg) const override;
    void addFilter(std::shared_ptr<LogFilter> filter);
    // Takes out the first entry holding the same object, if any.
    void removeFilter(std::shared_ptr<LogFilter> filter);
    unsigned long long size() const { return filters.size(); }
    void show(unsigned int space) const;

private:
    std::vector<std::shared_ptr<LogFilter>> filters;
};

} // namespace orv
