// CommandLineParse.cpp: the three ways into a CommandLine: main's arguments, the
// old one-line form with quotes, and the query of a URL.
#include "orv/CommandLine.h"

#include "orv/EnvVariables.h"
#include "orv/Log.h"
#include "orv/Tokenizer.h"

#include <functional>

namespace orv {

namespace {

// `--key` words and the value words that follow them, shared by fromMain and
// fromString. A key always starts with the empty value, so that a repeated key
// loses what it had; a value word with no key waiting is dropped.
class KeyValueReader {
public:
    using Convert = std::function<QString(QString const &)>;

    KeyValueReader(std::map<QString, CommandLineItem> &items, Convert convert)
        : items(items), convert(std::move(convert)) {}

    void word(QString const &word) {
        if (word.startsWith(QLatin1String("--"))) {
            pending.key = word.mid(2);
            items[pending.key] = pending;
        } else {
            value(word);
        }
    }

    void value(QString const &text) {
        if (pending.key.isEmpty())
            return;
        items[pending.key].value = convert(text);
        pending = CommandLineItem();
    }

private:
    std::map<QString, CommandLineItem> &items;
    Convert convert;
    CommandLineItem pending;
};

struct Piece {
    QString text;
    bool quoted;
};

void logCannotParse(QString const &text) {
    ppError("CommandLine::from_String_old, cannot parse <<<$>>>", text);
}

// Cuts the query's Latin-1 bytes into segments ended by `;`, `&` or the last byte,
// with the separator kept; separators inside double quotes don't count. An open
// quote at the end drops the open segment.
std::vector<QString> getKeyValsAsArray(QString const &query) {
    std::vector<QString> segments;
    QByteArray const bytes = query.toLatin1();
    QByteArray segment;
    bool inQuote = false;
    for (int i = 0; i < bytes.size(); ++i) {
        char const c = bytes[i];
        segment += c;
        if (c == '"')
            inQuote = !inQuote;
        if (!inQuote && (c == ';' || c == '&' || i == bytes.size() - 1)) {
            segments.push_back(QString::fromLatin1(segment).trimmed());
            segment.clear();
        }
    }
    if (inQuote)
        ppError("::getKeyValsAsArray, string not closed ! - '\"' missing !");
    return segments;
}

} // namespace

void CommandLine::fromMain(int argc, char **const argv) {
    program.clear();
    command.clear();
    mapItems.clear();
    if (argc < 1)
        return;
    program = QString::fromUtf8(argv[0]);
    if (argc < 2)
        return;
    command = QString::fromUtf8(argv[1]);
    KeyValueReader reader(mapItems, [](QString const &text) { return text; });
    for (int i = 2; i < argc; ++i)
        reader.word(QString::fromUtf8(argv[i]));
}

bool CommandLine::fromString(QString const &line) {
    mapItems.clear();
    command.clear();
    mustHaveKeys.clear();
    optionalKeys.clear();

    std::vector<Piece> pieces;
    Tokenizer quotes(line, QStringLiteral("\""), true);
    bool inQuote = false;
    QString quotedText;
    while (quotes.hasMoreToken()) {
        QString const token = quotes.nextToken();
        if (token == QLatin1String("\"")) {
            inQuote = !inQuote;
            if (inQuote)
                quotedText.clear();
            else
                pieces.push_back(Piece{quotedText, true});
        } else if (inQuote) {
            quotedText = token;
        } else {
            pieces.push_back(Piece{token, false});
        }
    }
    if (inQuote) {
        logCannotParse(line);
        return false;
    }

    KeyValueReader reader(mapItems, [](QString const &text) { return replaceEnv(text); });
    bool seenCommand = false;
    for (Piece const &piece : pieces) {
        if (piece.quoted) {
            reader.value(piece.text);
            continue;
        }
        Tokenizer words(piece.text, QStringLiteral(" \t"), false);
        while (words.hasMoreToken()) {
            QString const word = words.nextToken();
            if (seenCommand) {
                reader.word(word);
            } else if (word.startsWith(QLatin1Char('-'))) {
                logCannotParse(word);
                return false;
            } else {
                command = word;
                seenCommand = true;
            }
        }
    }
    return true;
}

bool CommandLine::fromURL(QString const &url) { return fromURL(QUrl(url, QUrl::TolerantMode)); }

bool CommandLine::fromURL(QUrl const &url) {
    if (!url.isValid()) {
        ppError("CommandLine::fromURL, not valid !");
        return false;
    }
    if (!url.hasQuery()) {
        ppError("CommandLine::fromURL, no query ....?....");
        return false;
    }

    std::vector<QString> const segments = getKeyValsAsArray(url.query());
    for (size_t index = 0; index < segments.size(); ++index) {
        QString segment = segments[index];
        // Only the semicolon terminates a segment's text; a trailing `&` stays in it.
        if (segment.endsWith(QLatin1Char(';')))
            segment.chop(1);
        if (index == 0) {
            program = segment;
        } else if (index == 1) {
            command = segment;
        } else {
            int const equals = segment.indexOf(QLatin1Char('='));
            QString const key = equals < 0 ? segment : segment.left(equals);
            QString value = equals < 0 ? QString() : segment.mid(equals + 1).trimmed();
            if (value.startsWith(QLatin1Char('"')))
                value.remove(0, 1);
            if (value.endsWith(QLatin1Char('"')))
                value.chop(1);
            mapItems[key] = CommandLineItem{key, value};
        }
    }

    // Gaps are filled from the program's own command line; its command lands in
    // `program`, not in `command`, and callers depend on that.
    if (cmdMain) {
        if (program.isEmpty())
            program = cmdMain->program;
        if (command.isEmpty())
            program = cmdMain->command;
    }
    return true;
}

} // namespace orv
