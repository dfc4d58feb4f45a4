// DirCommands.cpp: the search over a directory tree (find): the file filter from the
// command line, the run on worker threads with a progress line on terminals, then the
// hits in path order and the counters.
#include "commands/SearchArguments.h"

#include "orv/Kernel.h"
#include "orv/Log.h"
#include "orv/Logger.h"
#include "orv/StringFormat.h"
#include "orv/TestContext.h"
#include "orv/XProgram.h"
#include "orv/XSearchRun.h"
#include "orv/XStopwatch.h"

#include <QtCore/QFileInfo>

namespace {

using namespace orv;
using find::XSearchRun;

// Reads the value of key with read; false after printing why it was refused.
template <typename Read> bool readValue(Kernel &kernel, char const *key, Read read) {
    QString const k = QLatin1String(key);
    if (!kernel.hasKey(k))
        return true;
    QString error;
    if (read(kernel.getString(k, QString()), error))
        return true;
    ppError("find: --$: $", key, error);
    return false;
}

// --ext "cpp, .H" as the extension set {cpp, h}.
bool readExtensions(QString const &text, XFileFilter &filter, QString &error) {
    QString list = text;
    list.replace(QLatin1Char(';'), QLatin1Char(',')).replace(QLatin1Char(' '), QLatin1Char(','));
    for (QString ext : list.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        if (ext.startsWith(QLatin1Char('.')))
            ext.remove(0, 1);
        if (!ext.isEmpty())
            filter.textExtensions.insert(ext.toLower());
    }
    if (filter.textExtensions.empty())
        error = QStringLiteral("'%1' names no extension").arg(text);
    return !filter.textExtensions.empty();
}

// --min-size, --max-size, --newer and --older into the filter's areas; each bound alone
// or both together, inclusive as people read them.
int readFileFilter(Kernel &kernel, XFileFilter &filter) {
    quint64 minSize = 0, maxSize = 0;
    qint64 newer = 0, older = 0;
    auto const size = [](quint64 &out) {
        return
            [&out](QString const &t, QString &e) { return XFileFilter::sizeFromText(t, out, &e); };
    };
    auto const time = [](qint64 &out) {
        return
            [&out](QString const &t, QString &e) { return XFileFilter::timeFromText(t, out, &e); };
    };
    if (!readValue(kernel, "min-size", size(minSize)) ||
        !readValue(kernel, "max-size", size(maxSize)) || !readValue(kernel, "newer", time(newer)) ||
        !readValue(kernel, "older", time(older)) ||
        !readValue(kernel, "ext", [&filter](QString const &t, QString &e) {
            return readExtensions(t, filter, e);
        }))
        return EXIT_ORV_ARGUMENT;
    bool const hasMin = kernel.hasKey(QStringLiteral("min-size"));
    bool const hasMax = kernel.hasKey(QStringLiteral("max-size"));
    if (hasMin && hasMax && minSize > maxSize) {
        ppError("find: --min-size is above --max-size");
        return EXIT_ORV_ARGUMENT;
    }
    // AFTER keeps sizes above size1 and BEFORE those below it, so one bound alone moves
    // by a byte; both bounds are BETWEEN, which includes them.
    if (hasMin && hasMax) {
        filter.sizeArea = XFileFilter::BETWEEN;
        filter.size1 = minSize;
        filter.size2 = maxSize;
    } else if (hasMin && minSize > 0) {
        filter.sizeArea = XFileFilter::AFTER;
        filter.size1 = minSize - 1;
    } else if (hasMax && maxSize < ~quint64(0)) {
        filter.sizeArea = XFileFilter::BEFORE;
        filter.size1 = maxSize + 1;
    }
    bool const hasNewer = kernel.hasKey(QStringLiteral("newer"));
    bool const hasOlder = kernel.hasKey(QStringLiteral("older"));
    if (hasNewer && hasOlder && newer > older) {
        ppError("find: --newer is later than --older");
        return EXIT_ORV_ARGUMENT;
    }
    // The time's AFTER and BEFORE let the bound itself pass.
    if (hasNewer || hasOlder) {
        filter.timeArea = hasNewer && hasOlder ? XFileFilter::BETWEEN
                          : hasNewer           ? XFileFilter::AFTER
                                               : XFileFilter::BEFORE;
        filter.time1 = hasNewer ? newer : older;
        filter.time2 = hasNewer && hasOlder ? older : 0;
    }
    filter.setPattern(kernel.getString(QStringLiteral("name"), QString()), false);
    filter.setPattern(kernel.getString(QStringLiteral("not-name"), QString()), true);
    return EXIT_ORV_OK;
}

QString progressText(XSearchRun::Progress const &p) {
    if (p.scanning)
        return QStringLiteral("find: scanning, %1 files").arg(format1000(qint64(p.filesFound)));
    return QStringLiteral("find: %1 of %2 files, %3, %4 hits")
        .arg(format1000(qint64(p.filesDone)), format1000(qint64(p.filesFound)),
             formatBytes(double(p.bytesDone)), format1000(qint64(p.hits)));
}

// The hits in path order; gives the count of matching files and of binary ones.
void printResults(XSearchRun const &search, bool listOnly, bool binaryLines, quint64 &matching,
                  quint64 &binary) {
    for (XSearchRun::FileResult const &file : search.results()) {
        if (listOnly) {
            ppInfo(file.path);
            continue;
        }
        if (file.hits == 0)
            continue;
        ++matching;
        binary += file.binary;
        if (file.binary && !binaryLines) {
            ppInfo("$: binary file matches ($ hits)", file.path, file.hits);
            continue;
        }
        for (find::XHitLine const &hit : file.hitLines)
            ppInfo(hit.toString(file.path));
    }
}

void printSummary(XSearchRun const &search, quint64 matching, quint64 binary, qint64 ms) {
    ppInfo("find: $", search.stats().toString());
    std::vector<QString> files;
    for (XSearchRun::FileResult const &file : search.results())
        if (file.unreadable)
            files.push_back(file.path);
    for (QString const &dir : search.unreadableDirs())
        ppWarning("find: cannot read folder '$'", dir);
    for (QString const &file : files)
        ppWarning("find: cannot read file '$'", file);
    ppInfo("find: $ matching files ($ binary), $ unreadable folders, $ unreadable files, $ ms",
           matching, binary, static_cast<quint64>(search.unreadableDirs().size()),
           static_cast<quint64>(files.size()), ms);
}

int findCommand(Kernel &kernel) {
    if (!kernel.hasKey(QStringLiteral("dir"))) {
        ppError("find: missing --dir");
        return EXIT_ORV_ARGUMENT;
    }
    QString const dir = kernel.getString(QStringLiteral("dir"), QString());
    if (!QFileInfo(dir).isDir()) {
        ppError("find: folder '$' not found", dir);
        return EXIT_ORV_FILE_NOT_FOUND;
    }
    find::XFilter filter;
    if (int const status = orvtool::readContentFilter(kernel, "find", filter.contentFilter, true))
        return status;
    if (int const status = readFileFilter(kernel, filter.fileFilter))
        return status;
    int threads = 0;
    if (kernel.hasKey(QStringLiteral("threads"))) {
        bool ok = false;
        threads = kernel.getString(QStringLiteral("threads"), QString()).toInt(&ok);
        if (!ok || threads < 1 || threads > 1024) {
            ppError("find: --threads must be a number from 1 to 1024");
            return EXIT_ORV_ARGUMENT;
        }
    }
    XSearchRun search(filter);
    search.setThreadCount(threads);
    search.dirInfo().setHiddenFiles(orvtool::isSwitchOn(kernel, "hidden"));
    bool const binaryLines = orvtool::isSwitchOn(kernel, "binary");
    search.setLinesOfBinaryFiles(binaryLines);
    bool const terminal = Logger::isConsoleTerminal();
    if (terminal)
        search.setProgressListener(
            [](XSearchRun::Progress const &p) { Logger::printStatusLine(progressText(p)); }, 250);
    XStopwatch watch;
    watch.start();
    search.run(dir);
    if (terminal)
        Logger::printStatusLine(QString());
    quint64 matching = 0, binary = 0;
    printResults(search, !filter.has_content_filter(), binaryLines, matching, binary);
    printSummary(search, matching, binary, watch.delta_now_milliSeconds());
    return EXIT_ORV_OK;
}

ModuleTests const dirCommands{
    {TestContext::FnKernel(findCommand), QStringLiteral("find"),
     QStringLiteral("search a folder tree: --dir D [--expr E] [--name GLOB] [--ext a,b] "
                    "[--min-size N] [--max-size N] [--newer DATE] [--older DATE]"),
     true},
};

} // namespace
