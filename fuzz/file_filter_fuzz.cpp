// file_filter_fuzz.cpp: file filter values as people type them (sizes, moments, name
// patterns) from any bytes. Input: the text, a 0x01 byte, a file name. Checks: a size
// that is read comes back from its own decimal form, a moment read is whole seconds,
// patterns hold no separator, and matching a name never fails.
#include "FuzzCheck.h"
#include "orv/XFileFilter.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size) {
    using orv::XFileFilter;
    auto const *begin = reinterpret_cast<char const *>(data);
    auto const *end = begin + size;
    auto const *split = static_cast<char const *>(std::memchr(begin, 1, size));
    QString const text = QString::fromUtf8(begin, static_cast<int>((split ? split : end) - begin));
    QString const name = split ? QString::fromUtf8(split + 1, static_cast<int>(end - split - 1))
                               : QStringLiteral("notes.TXT");

    quint64 bytes = 0;
    QString error;
    if (XFileFilter::sizeFromText(text, bytes, &error)) {
        quint64 again = 0;
        check(XFileFilter::sizeFromText(QString::number(bytes), again, nullptr) && again == bytes);
    } else {
        check(!error.isEmpty());
    }
    qint64 ms = 0;
    error.clear();
    if (XFileFilter::timeFromText(text, ms, &error))
        check(ms % 1000 == 0);
    else
        check(!error.isEmpty());

    XFileFilter filter;
    filter.setPattern(text, size % 2 == 0);
    for (QString const &p : filter.has_Pattern() ? filter.patterns : filter.negativePatterns)
        check(!p.isEmpty() && !p.contains(QLatin1Char(' ')) && !p.contains(QLatin1Char(',')) &&
              !p.contains(QLatin1Char(';')));
    filter.textExtensions.insert(text.toLower());
    filter.sizeArea = XFileFilter::Area(size % 7);
    filter.size1 = bytes;
    filter.size2 = bytes * 2;
    filter.timeArea = XFileFilter::Area((size / 7) % 7);
    filter.time1 = ms;
    filter.match(name, quint64(size), ms);
    filter.toString();
    return 0;
}
