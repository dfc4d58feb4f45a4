// FindCommands.cpp: commands of the find subsystem: a content search over one file
// (grep) and the line table of a file (lines).
#include "commands/SearchArguments.h"

#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/StringFormat.h"
#include "orv/TestContext.h"
#include "orv/XContentFilter.h"
#include "orv/XLineReaderDA.h"
#include "orv/XProgram.h"
#include "orv/XSearchRun.h"
#include "orv/XStopwatch.h"
#include "orv/XUTF8_Detector.h"

#include <QtCore/QFileInfo>

namespace {

using namespace orv;
using find::XContentFilter;

// Lines longer than this are wrapped into pieces in the table; a search sees whole lines.
constexpr quint64 wrapLimit = 1 << 20;
// Enough of the head to judge the encoding of any file.
constexpr quint64 detectBytes = 1 << 20;

// Opens the file named by --file; 0, or the status to end with.
int openNamedFile(Kernel &kernel, char const *command, XLineReaderDA &reader, bool &empty) {
    if (!kernel.hasKey(QStringLiteral("file"))) {
        ppError("$: missing --file", command);
        return EXIT_ORV_ARGUMENT;
    }
    QString const file = kernel.getString(QStringLiteral("file"), QString());
    QFileInfo const info(file);
    if (!info.isFile()) {
        ppError("$: file '$' not found", command, file);
        return EXIT_ORV_FILE_NOT_FOUND;
    }
    if (!info.isReadable()) {
        ppError("$: file '$' cannot be read", command, file);
        return EXIT_ORV_IO;
    }
    empty = info.size() == 0;
    // An empty file can't be mapped; it simply has no lines.
    if (!empty && !reader.openFile(file, wrapLimit, true)) {
        ppError("$: file '$' cannot be read", command, file);
        return EXIT_ORV_IO;
    }
    return EXIT_ORV_OK;
}

int grepCommand(Kernel &kernel) {
    XContentFilter filter;
    if (int const status = orvtool::readContentFilter(kernel, "grep", filter, false))
        return status;
    XLineReaderDA reader;
    bool empty = false;
    if (int const status = openNamedFile(kernel, "grep", reader, empty))
        return status;
    QString const file = kernel.getString(QStringLiteral("file"), QString());
    XStopwatch watch;
    watch.start();
    find::XRamLayer const hits = empty ? find::XRamLayer() : filter.search(reader);
    for (find::XHitLine const &hit : find::hitLines(reader, hits))
        ppInfo(hit.toString(file));
    ppInfo("grep: $ hits in '$', scope $, $ lines, $ ms", static_cast<qint64>(hits.size()), file,
           filter.scope_as_string(), reader.countLines(), watch.delta_now_milliSeconds());
    return EXIT_ORV_OK;
}

int linesCommand(Kernel &kernel) {
    XLineReaderDA reader;
    bool empty = false;
    if (int const status = openNamedFile(kernel, "lines", reader, empty))
        return status;
    QString const file = kernel.getString(QStringLiteral("file"), QString());
    XUTF8_Detector const detector = empty ? XUTF8_Detector() : reader.detect_UTF8(detectBytes);
    quint64 fileLines = 0, wrapped = 0;
    for (XLineInfo const &li : reader) {
        fileLines += li.hasLineEnd;
        wrapped += li.wrapIndex > 0;
    }
    ppInfo("lines: '$'", file);
    ppInfo("encoding: $$, $", XUTF8_Detector::utfTypeToString(detector.getTheMostSignifcantType()),
           detector.is_urf8_bom() ? QStringLiteral(" with BOM") : QString(), detector.toString());
    ppInfo("lines: $, wrapped pieces: $, table entries: $, longest: $ bytes, binary: $",
           format1000(qint64(fileLines)), format1000(qint64(wrapped)),
           format1000(qint64(reader.countLines())), format1000(qint64(reader.longestLine())),
           reader.isBinaryFile());
    return EXIT_ORV_OK;
}

ModuleTests const findCommands{
    {TestContext::FnKernel(grepCommand), QStringLiteral("grep"),
     QStringLiteral("search a file: --file F --expr E [--scope file|paragraph|sentence] [--regex]"),
     true},
    {TestContext::FnKernel(linesCommand), QStringLiteral("lines"),
     QStringLiteral("encoding and line table of a file: --file F"), true},
};

} // namespace
