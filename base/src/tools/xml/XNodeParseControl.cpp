// XNodeParseControl.cpp: the progress record of one parse and its three texts.
#include "orv/StringFormat.h"
#include "orv/XStringStream.h"
#include "orv/parsing/SaxParser.h"

namespace orv {

void XNode_Parse_Control::reset() {
    cancelled = 0;
    percent = 0;
    timeStart = 0;
    timeLast = 0;
    bytesRead = 0;
    bytesTotal = 0;
    result = nullptr;
    includeProblems.clear();
}

QString XNode_Parse_Control::toString() const {
    QString const bytes = formatBytes(double(bytesRead.load()));
    QString const time = formatMicrosecond_as_Sec(time_consumption());
    if (cancelled)
        return xprintF("XNode parsing Cancelled! Bytes proceed:$, at: $ %, time consumption:$",
                       bytes, percent.load(), time);
    if (percent == 100)
        return xprintF("XNode parsing DONE! bytes:$, time consumption $ sec", bytes, time);
    return xprintF("XNode still parsing...  Bytes proceed:$, at $ % ,time consumption:$", bytes,
                   percent.load(), time);
}

} // namespace orv
