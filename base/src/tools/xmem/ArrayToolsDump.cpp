// ArrayToolsDump.cpp: the text dumps of bytes that every memory class's toString ends in.
//
// Long arrays show their head and tail bytes only, with " .. " in place of the
// middle; the digest, when asked for, is always that of the whole array.
#include "orv/ArrayTools.h"

#include "orv/Log.h"
#include "orv/MD5.h"
#include "orv/StringFormat.h"
#include "tools/xmem/LongBlocks.h"

namespace orv {

namespace {

QString const ELLIPSIS = QStringLiteral(" .. ");

// Calls shown(index) for the bytes the head and tail rule keeps and gap() once where
// the middle is left out.
template <typename Shown, typename Gap>
void forShownBytes(quint64 total, quint64 head, quint64 tail, Shown shown, Gap gap) {
    if (total <= head + tail) {
        for (quint64 i = 0; i < total; ++i)
            shown(i);
        return;
    }
    for (quint64 i = 0; i < head; ++i)
        shown(i);
    gap();
    for (quint64 i = total - tail; i < total; ++i)
        shown(i);
}

QString hexByte(unsigned char c) { return QString::asprintf("%02X", c); }

QChar textChar(unsigned char c) { return c < 32 ? QLatin1Char('.') : QLatin1Char(char(c)); }

QString md5Of(QByteArray const &ar) {
    return xmem::digestOf(ar.constData(), static_cast<quint64>(ar.size())).toString();
}

unsigned char byteAt(QByteArray const &ar, quint64 i) {
    return static_cast<unsigned char>(ar.constData()[i]);
}

} // namespace

QString ArrayTools::qByteArrayToString(QByteArray const &ar, quint64 head, quint64 tail, bool asc,
                                       bool hex, bool md5, quint64 limit, unsigned int group,
                                       QString const &separator) {
    return xmem::dumpBytes(ar.constData(), static_cast<quint64>(ar.size()), head, tail, asc, hex,
                           md5, limit, group, separator);
}

QString xmem::dumpBytes(char const *p, quint64 size, quint64 head, quint64 tail, bool asc, bool hex,
                        bool md5, quint64 limit, unsigned int group, QString const &separator) {
    quint64 const total = limit == 0 || limit >= size ? size : limit;
    QString text, hexText;
    forShownBytes(
        total, head, tail,
        [&](quint64 i) {
            auto const c = static_cast<unsigned char>(p[i]);
            text.append(textChar(c));
            hexText.append(hexByte(c));
            if (i + 1 == total)
                return;
            if (group > 1 && i != 0 && (i + 1) % group == 0)
                hexText.append(separator);
            else
                hexText.append(QLatin1Char(' '));
        },
        [&] {
            text.append(ELLIPSIS);
            hexText.append(ELLIPSIS);
        });
    QString out = xprintF("[$] = ", format1000(static_cast<qint64>(total)));
    if (asc)
        out += xprintF("{$} ", text);
    if (hex)
        out += xprintF("HEX{$} ", hexText);
    if (md5)
        out += xprintF("MD5{$} ", xmem::digestOf(p, size).toString());
    return out;
}

QString ArrayTools::qByteArray_to_hex_string(QByteArray const &ar, quint64 head, quint64 tail,
                                             quint64 limit) {
    quint64 const size = static_cast<quint64>(ar.size());
    quint64 const total = limit == 0 || limit >= size ? size : limit;
    QString hexText;
    forShownBytes(
        total, head, tail,
        [&](quint64 i) {
            hexText.append(hexByte(byteAt(ar, i)));
            if (i + 1 != total)
                hexText.append(QLatin1Char(' '));
        },
        [&] { hexText.append(ELLIPSIS); });
    return hexText;
}

void ArrayTools::show(unsigned int space, unsigned int level, QByteArray const &ar,
                      unsigned int flags, quint64 head, quint64 tail) {
    quint64 const total = static_cast<quint64>(ar.size());
    QString asc, hex, dec, bin;
    forShownBytes(
        total, head, tail,
        [&](quint64 i) {
            unsigned char const c = byteAt(ar, i);
            bool const last = i + 1 == total;
            asc.append(textChar(c));
            hex.append(hexByte(c));
            dec.append(QString::asprintf("%03d", c));
            for (int bit = 0; bit < 8; ++bit)
                bin.append(QLatin1Char((c >> bit) & 1 ? '*' : '.'));
            if (!last) {
                hex.append(QLatin1Char(' '));
                dec.append(QLatin1Char(' '));
                bin.append(QLatin1Char('|'));
            }
        },
        [&] {
            for (QString *stream : {&asc, &hex, &dec, &bin})
                stream->append(ELLIPSIS);
        });
    QString line = xprintF("[$] = ", total);
    if (flags & SHOW_ASC)
        line += xprintF("ASC{$} ", asc);
    if (flags & SHOW_HEX)
        line += xprintF("HEX{$} ", hex);
    if (flags & SHOW_DEC)
        line += xprintF("DEC{$} ", dec);
    if (flags & SHOW_BIN)
        line += xprintF("BIN{$} ", bin);
    if (flags & SHOW_MD5)
        line += xprintF("MD5{$} ", md5Of(ar));
    ppLog(level, space, line);
}

void ArrayTools::show(QByteArray const &ar, unsigned int flags, quint64 head, quint64 tail) {
    show(0, TEST, ar, flags, head, tail);
}

void ArrayTools::show(unsigned int space, QByteArray const &ar, unsigned int flags, quint64 head,
                      quint64 tail) {
    show(space, TEST, ar, flags, head, tail);
}

void ArrayTools::showQByteArray(QByteArray const &ar, quint64 head, quint64 tail, bool asc,
                                bool hex, bool md5, unsigned int group, QString const &separator) {
    showQByteArray(0, ar, head, tail, asc, hex, md5, group, separator);
}

void ArrayTools::showQByteArray(unsigned int space, QByteArray const &ar, quint64 head,
                                quint64 tail, bool asc, bool hex, bool md5, unsigned int group,
                                QString const &separator) {
    ppTest(space, qByteArrayToString(ar, head, tail, asc, hex, md5, 0, group, separator));
}

// Straight from the bytes: a raw block may be longer than a QByteArray holds.
void ArrayTools::showArray(char const *p, quint64 len, quint64 head, quint64 tail, bool asc,
                           bool hex, bool md5, unsigned int group, QString const &separator) {
    ppTest(
        xmem::dumpBytes(p ? p : "", p ? len : 0, head, tail, asc, hex, md5, 0, group, separator));
}

void ArrayTools::showArray(unsigned int space, char const *p, quint64 len, quint64 head,
                           quint64 tail, bool asc, bool hex, bool md5, unsigned int,
                           QString const &) {
    ppTest(space, xmem::dumpBytes(p ? p : "", p ? len : 0, head, tail, asc, hex, md5, 0, 0,
                                  QStringLiteral(",")));
}

void ArrayTools::show_array(char const *p, quint64 len, quint64 head, quint64 tail,
                            unsigned int flags, unsigned int group, QString const &separator) {
    showArray(p, len, head, tail, flags & SHOW_ASC, flags & SHOW_HEX, flags & SHOW_MD5, group,
              separator);
}

void ArrayTools::show_array(unsigned int space, char const *p, quint64 len, quint64 head,
                            quint64 tail, unsigned int flags, unsigned int group,
                            QString const &separator) {
    showArray(space, p, len, head, tail, flags & SHOW_ASC, flags & SHOW_HEX, flags & SHOW_MD5,
              group, separator);
}

} // namespace orv
