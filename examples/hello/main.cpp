// main.cpp: a first look at orv base: `$` formatting, console output and the tokenizers.
#include <orv/Logger.h>
#include <orv/Tokenizer.h>
#include <orv/XStringStream.h>
#include <orv/XTokenizer.h>

namespace {

char const *const sampleText =
    "name=orv base; version=0.1; parts=log,thread,xml; note=\"quoted, kept whole\"";

} // namespace

int main() {
    using orv::Logger;
    using orv::xprintF;

    Logger::printToCout(xprintF("hello from orv base: $ + $ = $", 1, 2, 1 + 2));
    Logger::printToCout(xprintF("a real: $, a flag: $, a char: $", 3.25, true, 'x'));
    Logger::printToCout(xprintF("surplus markers stay: $ $ $", "one"));
    Logger::printToCout(xprintF("sample: $", sampleText));

    orv::Tokenizer fields(QString::fromLatin1(sampleText), ";", false);
    Logger::printToCout(xprintF("Tokenizer on ';' gives $ fields", fields.size()));
    while (fields.hasMoreToken())
        Logger::printToCout(xprintF("  field: '$'", fields.nextToken().trimmed()));

    QString const text = QString::fromLatin1(sampleText);
    orv::XTokenizer words(text, " =;,", false, true);
    Logger::printToCout(xprintF("XTokenizer (quote-aware) gives $ words", words.size()));
    for (QStringRef const &word : words)
        Logger::printToCout(xprintF("  word: $", word.toString()));
    return 0;
}
