// XRam.cpp: one mark's tests and text forms.
#include "orv/XRam.h"

#include "orv/XStringStream.h"

namespace orv::find {

bool XRam::intersects(XLineInfo const &li) const {
    if (!isValid() || li.lengthTotal == 0)
        return false;
    qint64 const first = static_cast<qint64>(li.posMemory);
    qint64 const last = first + li.length;
    auto const inLine = [&](qint64 pos) { return first <= pos && pos <= last; };
    auto const inMark = [&](qint64 pos) { return start <= pos && pos <= end; };
    return inLine(start) || inLine(end) || inMark(first) || inMark(last);
}

QString XRam::toString() const {
    if (!isValid())
        return xprintF("{ id:$, status NOT VALID }", category);
    return xprintF("{  id:$, start:$, end:$, len:$ }", category, start, end, end - start + 1);
}

QString XRam::asShortForm() const {
    if (!isValid())
        return QStringLiteral("{}");
    if (category == SEARCH_RESULT_NOT)
        return xprintF("{ NOT - $/$=$ }", start, end, end - start + 1);
    return xprintF("{ $/$=$ }", start, end, end - start + 1);
}

} // namespace orv::find
