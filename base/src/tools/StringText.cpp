// StringText.cpp: entity and base64/hex coding, wildcard patterns, byte search.
#include "orv/StringText.h"

#include "orv/Log.h"
#include "orv/XDelimiter.h"
#include "orv/XTokenizer.h"

#include <QtCore/QRegularExpression>

#include <cctype>
#include <cstring>

namespace orv {

QString elidedString(QString const &s, unsigned int head, unsigned int tail) {
    if (s.isEmpty())
        return QString();
    if (static_cast<quint64>(head) + tail >= static_cast<quint64>(s.size()))
        return s;
    QString out = s.left(static_cast<int>(head)) + QLatin1String("...");
    if (tail != 0)
        out += s.right(static_cast<int>(tail));
    return out;
}

QString encode_char(QChar c) {
    return QLatin1String("&#") + QString::number(c.unicode()) + QLatin1Char(';');
}

QString encode_entities(QString const &s, QString const &chars) {
    QString out;
    out.reserve(s.size());
    for (QChar const c : s) {
        if (c.unicode() > 128 || chars.contains(c))
            out += encode_char(c);
        else
            out += c;
    }
    return out;
}

QString decode_entities(QString const &s) {
    static QRegularExpression const entity(QStringLiteral("&#([0-9]+);"));
    QString out;
    int last = 0;
    QRegularExpressionMatchIterator it = entity.globalMatch(s);
    while (it.hasNext()) {
        QRegularExpressionMatch const m = it.next();
        out += s.midRef(last, m.capturedStart() - last);
        out += QChar(static_cast<ushort>(m.capturedRef(1).toUInt()));
        last = m.capturedEnd();
    }
    out += s.midRef(last);
    return out;
}

QString ensureStringIsQuoted(QString const &s) {
    QChar const quote = QLatin1Char('"');
    QString out = s;
    if (!s.startsWith(quote))
        out.prepend(quote);
    if (!s.endsWith(quote))
        out.append(quote);
    return out;
}

QString base64_encode(QString const &s) { return QString::fromLatin1(s.toUtf8().toBase64()); }

QString base64_decode(QString const &s) {
    return QString::fromUtf8(QByteArray::fromBase64(s.toUtf8()));
}

QString hex_encode(QString const &s) { return QString::fromLatin1(s.toUtf8().toHex()); }

QString hex_decode(QString const &s) { return QString::fromUtf8(QByteArray::fromHex(s.toUtf8())); }

bool pattern_match_wild_card(QString const &s, QString pattern) {
    if (s.isEmpty() || pattern.isEmpty())
        return false;
    QString const text = s.toLower();
    pattern = pattern.toLower();
    QChar const star = QLatin1Char('*');
    if (!pattern.contains(star))
        return text.endsWith(pattern);

    XTokenizer const tokens(pattern, QString(star), true, false);
    int pos = 0;
    for (size_t i = 0; i < tokens.size(); ++i) {
        QStringRef const &token = tokens[static_cast<unsigned int>(i)];
        if (token == QString(star))
            continue;
        int const at = i == 0 ? (text.startsWith(token) ? 0 : -1) : text.indexOf(token, pos);
        if (at < 0)
            return false;
        pos = at + token.size();
    }
    return tokens.lastToken() == QString(star) || pos == text.size();
}

bool pattern_match_wild_card(QFileInfo const &fileInfo, QString pattern) {
    return pattern_match_wild_card(fileInfo.fileName(), std::move(pattern));
}

char *memSearch(char const *mem, quint64 memSize, char const *what, quint64 lenWhat,
                bool ignoreCase) {
    if (lenWhat == 0) {
        ppError("orv::memSearch, lenSearch == 0");
        return nullptr;
    }
    if (memSize == 0) {
        ppError("orv::memSearch, memSize == 0");
        return nullptr;
    }
    if (memSize < lenWhat) {
        ppError("orv::memSearch, memSize < lenSearch");
        return nullptr;
    }
    int const first = static_cast<unsigned char>(what[0]);
    int const otherCase = std::islower(first) ? std::toupper(first) : std::tolower(first);
    char const *const memEnd = mem + memSize;
    char const *const lastStart = memEnd - lenWhat; // a candidate here or later fails
    char const *from = mem;
    while (from < lastStart) {
        size_t const rest = static_cast<size_t>(memEnd - from);
        auto *candidate = static_cast<char const *>(std::memchr(from, first, rest));
        // The other case only counts when the first byte's own case is absent.
        if (!candidate && ignoreCase && otherCase != first)
            candidate = static_cast<char const *>(std::memchr(from, otherCase, rest));
        if (!candidate || candidate >= lastStart)
            return nullptr;
        bool equal = true;
        if (!ignoreCase) {
            equal = std::memcmp(candidate, what, lenWhat) == 0;
        } else {
            for (quint64 i = 0; i < lenWhat && equal; ++i)
                equal = std::tolower(static_cast<unsigned char>(candidate[i])) ==
                        std::tolower(static_cast<unsigned char>(what[i]));
        }
        if (equal)
            return const_cast<char *>(candidate);
        from = candidate + lenWhat;
    }
    return nullptr;
}

char *memSearch(char const *mem, quint64 memSize, QString const &what, bool ignoreCase) {
    QByteArray const bytes = what.toUtf8();
    return memSearch(mem, memSize, bytes.constData(), static_cast<quint64>(bytes.size()),
                     ignoreCase);
}

char *memSearchWord(char const *mem, quint64 memSize, QString const &what, bool ignoreCase) {
    QByteArray const bytes = what.toUtf8();
    quint64 const len = static_cast<quint64>(bytes.size());
    char const *from = mem;
    quint64 rest = memSize;
    while (true) {
        char *hit = memSearch(from, rest, bytes.constData(), len, ignoreCase);
        if (!hit || XDelimiter::isWord(mem, memSize, hit, len, XDelimiter::pDelimASCII))
            return hit;
        rest -= static_cast<quint64>(hit + len - from);
        from = hit + len;
        if (rest < len || rest == 0)
            return nullptr;
    }
}

void toUpperCase(char *text, quint64 len) {
    for (quint64 i = 0; i < len; ++i)
        if (text[i] >= 'a' && text[i] <= 'z')
            text[i] = static_cast<char>(text[i] - 'a' + 'A');
}

} // namespace orv
