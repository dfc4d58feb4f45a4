// TextCommands.cpp: commands of the text subsystem: the command-line grammar and the
// `$` formatter.
#include "orv/CommandLine.h"
#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/TestContext.h"
#include "orv/XProgram.h"
#include "orv/XStringStream.h"

namespace {

using namespace orv;

int cmdlineCommand(Kernel &kernel) {
    if (!kernel.hasKey(QStringLiteral("line"))) {
        ppError("cmdline: missing --line");
        return EXIT_ORV_ARGUMENT;
    }
    QString const line = kernel.getString(QStringLiteral("line"), QString());
    CommandLine cmd;
    if (!cmd.fromString(line)) {
        ppError("cmdline: cannot parse <<<$>>>", line);
        return EXIT_ORV_PARSING;
    }
    ppInfo("command: '$'", cmd.getCommand());
    std::vector<CommandLineItem> const items = cmd.getItems();
    ppInfo("items: $", static_cast<qint64>(items.size()));
    for (CommandLineItem const &item : items)
        ppInfo(4, "$ = '$'", item.key, item.value);
    return EXIT_ORV_OK;
}

// The formatter's own rules, one argument at a time: each argument fills the next
// `$`, a surplus `$` stays and surplus arguments vanish.
QString formatWithList(QByteArray const &text, QStringList const &args) {
    QString out;
    int from = 0;
    for (QString const &arg : args) {
        int const dollar = text.indexOf('$', from);
        if (dollar < 0)
            break;
        format::formatInto(out, text.mid(from, dollar + 1 - from).constData(), arg);
        from = dollar + 1;
    }
    format::appendRest(out, text.mid(from).constData());
    return out;
}

int formatCommand(Kernel &kernel) {
    if (!kernel.hasKey(QStringLiteral("text"))) {
        ppError("format: missing --text");
        return EXIT_ORV_ARGUMENT;
    }
    QString const args = kernel.getString(QStringLiteral("args"), QString());
    QStringList const list = args.isEmpty() ? QStringList() : args.split(QLatin1Char(','));
    // The formatter reads its format as Latin-1.
    QByteArray const text = kernel.getString(QStringLiteral("text"), QString()).toLatin1();
    ppInfo(formatWithList(text, list));
    return EXIT_ORV_OK;
}

ModuleTests const textCommands{
    {TestContext::FnKernel(cmdlineCommand), QStringLiteral("cmdline"),
     QStringLiteral("parse one command line and show its table: --line \"cmd --key value\""), true},
    {TestContext::FnKernel(formatCommand), QStringLiteral("format"),
     QStringLiteral("fill the $ places of a text: --text \"a $ b $\" --args x,y"), true},
};

} // namespace
