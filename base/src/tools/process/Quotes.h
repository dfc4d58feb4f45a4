// Quotes.h: the quote trimming shared by XArgs values and XProcess arguments.
#pragma once

#include <QtCore/QString>

namespace orv::process {

// One `"` off the front and one off the back, each where there is one; a `'` stays.
inline QString withoutDoubleQuotes(QString text) {
    if (text.startsWith(QLatin1Char('"')))
        text.remove(0, 1);
    if (text.endsWith(QLatin1Char('"')))
        text.chop(1);
    return text;
}

} // namespace orv::process
