// XRecordParse.cpp: filling a record from a line of text and from the environment.
#include "orv/XRecord.h"

#include "orv/Log.h"
#include "orv/Tokenizer.h"

#include <QtCore/QProcessEnvironment>

namespace orv {

void XRecord::fromString(QString const &text, bool pairs, bool multiLine) {
    if (pairs)
        parseAttributePairs(text, multiLine);
    else
        parseAttributesClassic(text);
}

void XRecord::fromEnvironment() {
    QProcessEnvironment const environment = QProcessEnvironment::systemEnvironment();
    for (QString const &name : environment.keys())
        setString(name, environment.value(name));
}

// Tokens alternate between a key (with its "="), an opening quote, the value and
// the closing quote; the state is the position in that cycle.
void XRecord::parseAttributesClassic(QString const &text) {
    QString const quote = QStringLiteral("\"");
    Tokenizer tokens(text, quote, true);
    QString key;
    QString value;
    int state = 0;
    for (unsigned int i = 0; i < tokens.size(); ++i) {
        QString const token = tokens[i];
        switch (state) {
        case 0: {
            Tokenizer sub(token.trimmed(), QStringLiteral("= \t"), true);
            if (sub.size() == 0) {
                ppWarning("orv::parseAttributesClassic, key, toks_Sub.size() == 0");
                return;
            }
            key = sub[0];
            state = 1;
            break;
        }
        case 1:
            if (token != quote) {
                ppWarning("orv::parseAttributesClassic, '\"' expected,1");
                return;
            }
            state = 2;
            break;
        case 2:
            if (token == quote) {
                setString(key, QString());
                key.clear();
                value.clear();
                state = 0;
            } else {
                value = token;
                state = 3;
            }
            break;
        default:
            if (token != quote) {
                ppWarning("orv::parseAttributesClassic, '\"' expected,2");
                return;
            }
            setString(key, value);
            key.clear();
            value.clear();
            state = 0;
            break;
        }
    }
}

// A segment is `key = "value"` (two pieces around the quotes) or `key=value` (one);
// one that breaks the rule of its shape ends the parse without a word.
void XRecord::parseAttributePairs(QString const &text, bool multiLine) {
    Tokenizer segments(text, multiLine ? QStringLiteral(";\n\r") : QStringLiteral(";"), false);
    for (unsigned int i = 0; i < segments.size(); ++i) {
        Tokenizer parts(segments[i].trimmed(), QStringLiteral("\""), false);
        QString key;
        QString value;
        if (parts.size() == 2) {
            Tokenizer keyPart(parts[0], QStringLiteral("= "), false);
            if (keyPart.size() != 1)
                return;
            key = keyPart[0];
            value = parts[1].trimmed();
        } else if (parts.size() == 1) {
            Tokenizer assignment(parts[0], QStringLiteral("="), true);
            if (assignment.size() != 3 || assignment[1] != QStringLiteral("="))
                return;
            key = assignment[0].trimmed();
            value = assignment[2].trimmed();
        } else {
            continue;
        }
        setString(key, value);
    }
}

} // namespace orv
