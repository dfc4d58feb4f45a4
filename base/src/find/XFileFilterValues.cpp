// XFileFilterValues.cpp: sizes and moments as people type them, read into the file
// filter's fields. Such text comes from command lines, so every byte is checked and
// every refusal says why.
#include "orv/XFileFilter.h"

#include <QtCore/QDateTime>

#include <limits>

namespace orv {

namespace {

bool refuse(QString *error, QString const &text) {
    if (error)
        *error = text;
    return false;
}

// The factor of a size unit, 0 for an unknown one.
quint64 unitFactor(QString unit) {
    unit = unit.toLower();
    if (unit.endsWith(QLatin1Char('b')))
        unit.chop(1);
    if (unit.isEmpty())
        return 1;
    bool const binary = unit.size() == 2 && unit.at(1) == QLatin1Char('i');
    if (unit.size() != (binary ? 2 : 1))
        return 0;
    int const power = QStringLiteral("kmgt").indexOf(unit.at(0)) + 1;
    if (power == 0)
        return 0;
    quint64 factor = 1;
    for (int i = 0; i < power; ++i)
        factor *= binary ? 1024 : 1000;
    return factor;
}

} // namespace

bool XFileFilter::sizeFromText(QString const &text, quint64 &bytes, QString *error) {
    QString const t = text.trimmed();
    QString const usage = QStringLiteral("'%1' is no size: use a number of bytes, or one with "
                                         "k, M, G, T (1000) or Ki, Mi, Gi, Ti (1024)")
                              .arg(text);
    // Digits, an optional fraction, then the unit.
    int i = 0;
    unsigned __int128 whole = 0;
    for (; i < t.size() && t.at(i).isDigit() && t.at(i).unicode() < 128; ++i) {
        whole = whole * 10 + unsigned(t.at(i).unicode() - '0');
        if (whole > ~quint64(0))
            return refuse(error, QStringLiteral("'%1' is beyond 64 bits").arg(text));
    }
    if (i == 0)
        return refuse(error, usage);
    unsigned __int128 fraction = 0, scale = 1;
    if (i < t.size() && t.at(i) == QLatin1Char('.')) {
        int const first = ++i;
        for (; i < t.size() && t.at(i).isDigit() && t.at(i).unicode() < 128; ++i)
            // Digits past the 18th change nothing a byte count can show.
            if (scale < quint64(1e18)) {
                fraction = fraction * 10 + unsigned(t.at(i).unicode() - '0');
                scale *= 10;
            }
        if (i == first)
            return refuse(error, usage);
    }
    quint64 const factor = unitFactor(t.mid(i).trimmed());
    if (factor == 0)
        return refuse(error, usage);
    if (factor == 1 && fraction != 0)
        return refuse(error, QStringLiteral("'%1': a number of bytes is whole").arg(text));
    unsigned __int128 const total = whole * factor + fraction * factor / scale;
    if (total > ~quint64(0))
        return refuse(error, QStringLiteral("'%1' is beyond 64 bits").arg(text));
    bytes = quint64(total);
    return true;
}

bool XFileFilter::timeFromText(QString const &text, qint64 &msSinceEpoch, QString *error) {
    QString t = text.trimmed();
    QString const usage =
        QStringLiteral("'%1' is no date: use YYYY-MM-DD, YYYY-MM-DD hh:mm[:ss] or @seconds")
            .arg(text);
    if (t.startsWith(QLatin1Char('@'))) {
        int const first = t.size() > 1 && t.at(1) == QLatin1Char('-') ? 2 : 1;
        bool digits = t.size() > first;
        for (int i = first; i < t.size() && digits; ++i)
            digits = t.at(i) >= QLatin1Char('0') && t.at(i) <= QLatin1Char('9');
        if (!digits)
            return refuse(error, usage);
        bool ok = false;
        qint64 const seconds = t.mid(1).toLongLong(&ok);
        // Beyond this the milliseconds leave 64 bits (and every calendar).
        qint64 const limit = std::numeric_limits<qint64>::max() / 1000;
        if (!ok || seconds > limit || seconds < -limit)
            return refuse(error, QStringLiteral("'%1' is beyond 64 bits").arg(text));
        msSinceEpoch = seconds * 1000;
        return true;
    }
    t.replace(QLatin1Char('/'), QLatin1Char('-')).replace(QLatin1Char('T'), QLatin1Char(' '));
    for (char const *format : {"yyyy-M-d", "yyyy-M-d H:m", "yyyy-M-d H:m:s"}) {
        QDateTime const moment = QDateTime::fromString(t, QLatin1String(format));
        if (moment.isValid()) {
            msSinceEpoch = moment.toMSecsSinceEpoch();
            return true;
        }
    }
    return refuse(error, usage);
}

} // namespace orv
