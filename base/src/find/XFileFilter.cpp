// XFileFilter.cpp: the file filter's tests and text form, the search description
// XFilter and the search counters XFindStats.
#include "orv/XFileFilter.h"

#include "orv/Log.h"
#include "orv/QtToString.h"
#include "orv/StringFormat.h"
#include "orv/StringText.h"
#include "orv/XTokenizer.h"

#include <QtCore/QDateTime>

namespace orv {

namespace {

// What QFileInfo::suffix() gives for a bare name: the text behind the last dot.
QString suffixOf(QString const &fileName) {
    int const dot = fileName.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : fileName.mid(dot + 1);
}

QString timeText(qint64 ms) { return qt::toString(QDateTime::fromMSecsSinceEpoch(ms)); }

// The tests in their fixed order; size and time are asked for only when a test needs
// them, since a file's time costs a conversion.
template <typename Size, typename Time>
bool matchFields(XFileFilter const &f, QString const &fileName, Size sizeOf, Time timeOf) {
    if (f.sizeArea != XFileFilter::NO_AREA && f.sizeArea != XFileFilter::MARK) {
        quint64 const s = sizeOf();
        switch (f.sizeArea) {
        case XFileFilter::BEFORE:
            if (s >= f.size1)
                return false;
            break;
        case XFileFilter::EQUAL:
            if (s != f.size1)
                return false;
            break;
        case XFileFilter::BETWEEN:
            if (s < f.size1 || s > f.size2)
                return false;
            break;
        case XFileFilter::AFTER:
            if (s <= f.size1)
                return false;
            break;
        default: break;
        }
    }
    if (f.timeArea != XFileFilter::NO_AREA && f.timeArea != XFileFilter::MARK) {
        qint64 const t = timeOf();
        switch (f.timeArea) {
        case XFileFilter::BEFORE: // equality passes, unlike the size test
            if (t > f.time1)
                return false;
            break;
        case XFileFilter::EQUAL:
            if (t != f.time1)
                return false;
            break;
        case XFileFilter::BETWEEN:
            if (t < f.time1 || t > f.time2)
                return false;
            break;
        case XFileFilter::AFTER:
            if (t < f.time1) {
                ppDebug("negative");
                return false;
            }
            break;
        default: break;
        }
    }
    if (!f.textExtensions.empty()) {
        QString const suffix = suffixOf(fileName).toLower();
        if (suffix.isEmpty() || f.textExtensions.count(suffix) == 0)
            return false;
    }
    if (!f.patterns.empty()) {
        bool any = false;
        for (QString const &p : f.patterns)
            if ((any = pattern_match_wild_card(fileName, p)))
                break;
        if (!any)
            return false;
    }
    for (QString const &p : f.negativePatterns)
        if (pattern_match_wild_card(fileName, p))
            return false;
    return true;
}

} // namespace

void XFileFilter::setPattern(QString const &text, bool negative) {
    if (text.isEmpty())
        return;
    QString const trimmed = text.trimmed();
    XTokenizer const tokens(trimmed, QStringLiteral(" ,;"), false, false);
    std::vector<QString> &list = negative ? negativePatterns : patterns;
    for (QStringRef const &token : tokens) {
        QString const pattern = token.trimmed().toString();
        if (!pattern.isEmpty())
            list.push_back(pattern);
    }
}

QString XFileFilter::pattern(bool negative) const {
    std::vector<QString> const &list = negative ? negativePatterns : patterns;
    return QStringList(list.begin(), list.end()).join(QLatin1Char(','));
}

bool XFileFilter::isTextFile(QFileInfo const &fileInfo) const {
    QString const suffix = fileInfo.suffix().toLower();
    return !suffix.isEmpty() && textExtensions.count(suffix) != 0;
}

bool XFileFilter::match(QFileInfo const &fileInfo) const {
    return matchFields(
        *this, fileInfo.fileName(), [&] { return quint64(fileInfo.size()); },
        [&] { return fileInfo.lastModified().toMSecsSinceEpoch(); });
}

bool XFileFilter::match(QString const &fileName, quint64 size, qint64 modifiedMs) const {
    return matchFields(
        *this, fileName, [size] { return size; }, [modifiedMs] { return modifiedMs; });
}

QString XFileFilter::toString() const {
    QString s;
    if (has_Pattern())
        s += QLatin1Char('{') + QStringList(patterns.begin(), patterns.end()).join(QString()) +
             QLatin1Char('}');
    if (has_not_Pattern())
        s += QStringLiteral("~{") +
             QStringList(negativePatterns.begin(), negativePatterns.end()).join(QString()) +
             QLatin1Char('}');
    if (has_size_filter()) {
        s += QStringLiteral("SIZE:{");
        if (sizeArea == BETWEEN) {
            s += QStringLiteral(">= ") + format1000(qint64(size1)) + QStringLiteral(" & <=") +
                 format1000(qint64(size2));
        } else {
            s += area_to_String_operator(sizeArea) + QLatin1Char(' ');
            if (size1 != 0)
                s += format1000(qint64(size1));
            if (size2 != 0)
                s += QStringLiteral(", ") + format1000(qint64(size2));
        }
        s += QLatin1Char('}');
    }
    if (has_time_filter()) {
        s += QStringLiteral("TIME:{");
        if (timeArea == BETWEEN) {
            s +=
                QStringLiteral(">= ") + timeText(time1) + QStringLiteral("  <= ") + timeText(time2);
        } else {
            s += area_to_String_operator(timeArea) + QLatin1Char(' ');
            if (time1 != 0)
                s += timeText(time1);
            if (time2 != 0)
                s += QStringLiteral(", ") + timeText(time2);
        }
        s += QLatin1Char('}');
    }
    return s;
}

QString XFileFilter::area_to_String(Area area) {
    switch (area) {
    case NO_AREA: return QStringLiteral("NO_AREA");
    case BEFORE: return QStringLiteral("BEFORE");
    case EQUAL: return QStringLiteral("EQUAL");
    case BETWEEN: return QStringLiteral("BETWEEN");
    case AFTER: return QStringLiteral("AFTER");
    case MARK: return QStringLiteral("MARK");
    }
    return QStringLiteral("UNKNOWN");
}

QString XFileFilter::area_to_String_operator(Area area) {
    switch (area) {
    case NO_AREA: return QStringLiteral("NO_AREA");
    case BEFORE: return QStringLiteral("<");
    case EQUAL: return QStringLiteral("=");
    case BETWEEN:
    case MARK: return QStringLiteral("<.>");
    case AFTER: return QStringLiteral(">");
    }
    return QStringLiteral("UNKNOWN");
}

void XFindStats::reset() {
    filesTotal = 0;
    lines = 0;
    bytes = 0;
    hits = 0;
    files = 0;
}

QString XFindStats::toString() const {
    return QStringLiteral("files total:") + format1000(qint64(filesTotal.load())) +
           QStringLiteral(", files :") + format1000(qint64(files.load())) +
           QStringLiteral(", lines :") + format1000(qint64(lines.load())) +
           QStringLiteral(", bytes :") + formatBytes(double(bytes.load())) +
           QStringLiteral(", hits :") + format1000(qint64(hits.load()));
}

namespace find {

QString XFilter::toString(bool details) const {
    if (contentFilter.isValid())
        return QStringLiteral("file: \"%1\", content: \"%2\"")
            .arg(fileFilter.toString(), contentFilter.toString(details));
    QString const files = fileFilter.toString();
    return files.isEmpty() ? QString() : QStringLiteral("file: \"%1\"").arg(files);
}

} // namespace find
} // namespace orv
