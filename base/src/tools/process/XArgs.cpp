// XArgs.cpp: reading a `--key value` line into the record, and `$(key)` replacement
// from it.
#include "orv/XArgs.h"

#include "orv/Log.h"
#include "orv/Tokenizer.h"
#include "tools/process/Quotes.h"

namespace orv {

namespace {

// Blanks inside quotes are swapped for this character before the split at blanks,
// and back afterwards; it is not expected in command lines.
QChar const PROTECTED_BLANK(999);

} // namespace

QString const XArgs::KEY_ONLY = QStringLiteral("NIX");

void XArgs::fromString(QString const &line) {
    // Both quote characters toggle the same state, so `"it's"` closes at the `'`.
    QString text = line;
    bool quoted = false;
    for (QChar &c : text) {
        if (c == QLatin1Char('"') || c == QLatin1Char('\''))
            quoted = !quoted;
        else if (quoted && (c == QLatin1Char(' ') || c == QLatin1Char('\t')))
            c = PROTECTED_BLANK;
    }
    if (quoted) {
        ppError("***");
        ppError("XArgs::from_String_old, string not closed '$'", line);
        ppError("***");
    }
    Tokenizer tokens;
    tokens.scan(text, QStringLiteral(" \t"), false);
    QString key;
    while (tokens.hasMoreToken()) {
        QString const token = tokens.nextToken();
        if (token.startsWith(QLatin1String("--"))) {
            key = token.mid(2);
            if (key.isEmpty())
                ppError("XArgv::from_String_old, -- without key is not allowed !");
            else
                setKeyOnly(key);
        } else {
            // The key stays current: a second value replaces the first.
            setString(key, process::withoutDoubleQuotes(token).replace(PROTECTED_BLANK,
                                                                       QLatin1Char(' ')));
        }
    }
}

QString XArgs::operator[](QString const &key) { return getString(key, QString()); }

void XArgs::setKeyOnly(QString const &key) { setString(key, KEY_ONLY); }

QString XArgs::replacedEnvironment(QString const &text) {
    enum { PLAIN, AFTER_DOLLAR, IN_NAME } where = PLAIN;
    QString result;
    QString name;
    for (QChar const c : text) {
        switch (where) {
        case PLAIN:
            if (c == QLatin1Char('$'))
                where = AFTER_DOLLAR;
            else
                result += c;
            break;
        case AFTER_DOLLAR:
            if (c == QLatin1Char('(')) {
                where = IN_NAME;
                name.clear();
            }
            break;
        case IN_NAME:
            if (c != QLatin1Char(')')) {
                name += c;
                break;
            }
            result += hasAttribute(name) ? getString(name)
                                         : QStringLiteral("$(") + name + QLatin1Char(')');
            where = PLAIN;
            break;
        }
    }
    return result;
}

QString XArgs::toString() const { return QStringLiteral("XArgs"); }

void XArgs::show(unsigned int space) const { showContents(space, DEBUG, nullptr); }

} // namespace orv
