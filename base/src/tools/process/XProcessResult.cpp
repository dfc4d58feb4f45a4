// XProcessResult.cpp: the texts of a finished run.
#include "orv/XProcess.h"

#include "orv/Log.h"
#include "orv/StringFormat.h"
#include "orv/StringText.h"

namespace orv {

namespace {

// Only "\n" is tested: a "\r\n" ending thus loses its "\n" alone, and callers
// have come to expect the "\r".
QString withoutLineEnd(QString text) {
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text;
}

} // namespace

QString XProcessResult::get_out() const { return withoutLineEnd(output); }

QString XProcessResult::get_err_out() const { return withoutLineEnd(outputError); }

QString XProcessResult::get_out_elided(unsigned int head, unsigned int tail) const {
    return elidedString(get_out(), head, tail);
}

QString XProcessResult::format_time() const { return formatMicrosecond_as_Sec(microseconds); }

void XProcessResult::show(unsigned int space, bool withOutput) const {
    if (exitCode != 0) {
        ppDebug(space, "XProcessResult, exit code:$", exitCode);
        return;
    }
    if (withOutput) {
        if (has_output())
            ppDebug(space, output);
        else if (has_output_error())
            ppError(space, outputError);
    }
    ppDebug(space, "XProcessResult DONE");
}

} // namespace orv
