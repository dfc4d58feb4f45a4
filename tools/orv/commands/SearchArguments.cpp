// SearchArguments.cpp: the expression, its kind and its scope from the command line.
#include "commands/SearchArguments.h"

#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/XProgram.h"

namespace orvtool {

using namespace orv;
using find::XContentFilter;

namespace {

bool scopeFromText(QString const &text, XContentFilter::Scope &scope) {
    for (auto s : {XContentFilter::File, XContentFilter::Paragraph, XContentFilter::Sentence})
        if (text.compare(XContentFilter::scope_to_string(s), Qt::CaseInsensitive) == 0) {
            scope = s;
            return true;
        }
    return false;
}

} // namespace

bool isSwitchOn(Kernel &kernel, char const *key) {
    QString const k = QLatin1String(key);
    return kernel.hasKey(k) && kernel.getString(k, QString()) != QLatin1String("false");
}

int readContentFilter(Kernel &kernel, char const *command, XContentFilter &filter, bool optional) {
    if (!kernel.hasKey(QStringLiteral("expr"))) {
        if (optional)
            return EXIT_ORV_OK;
        ppError("$: missing --expr", command);
        return EXIT_ORV_ARGUMENT;
    }
    QString const scopeText =
        kernel.getString(QStringLiteral("scope"), QStringLiteral("paragraph"));
    if (!scopeFromText(scopeText, filter.scope)) {
        ppError("$: --scope must be file, paragraph or sentence, not '$'", command, scopeText);
        return EXIT_ORV_ARGUMENT;
    }
    bool const regEx = isSwitchOn(kernel, "regex");
    QString const expr = kernel.getString(QStringLiteral("expr"), QString());
    if (expr.isEmpty() || !filter.createSymbols(expr, regEx)) {
        if (regEx)
            ppError("$: bad regular expression '$': $", command, expr, filter.errorString());
        else
            ppError("$: bad expression '$'", command, expr);
        return EXIT_ORV_CONFIGURATION;
    }
    return EXIT_ORV_OK;
}

} // namespace orvtool
