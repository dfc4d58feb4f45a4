// commandline_fuzz.cpp: feeds arbitrary bytes, read as UTF-8, to the one-line
// grammar and to the URL form, and checks what must hold for any input.
#include "FuzzCheck.h"
#include "orv/CommandLine.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

// toString doesn't quote, so only texts without blanks, quotes or variables
// read back; a value starting with "--" would read back as a key.
bool readsBack(orv::CommandLine const &cmd) {
    auto const plain = [](QString const &text) {
        for (QChar c : text)
            if (c.isSpace() || c == QLatin1Char('"') || c == QLatin1Char('$'))
                return false;
        return true;
    };
    if (!plain(cmd.getCommand()))
        return false;
    for (orv::CommandLineItem const &item : cmd.getItems())
        if (!plain(item.key) || !plain(item.value) || item.value.startsWith(QLatin1String("--")))
            return false;
    return true;
}

void fuzzOneLine(QString const &text) {
    orv::CommandLine cmd;
    bool const ok = cmd.fromString(text);
    for (int format = 0; format < 3; ++format)
        cmd.toString(static_cast<orv::CommandLine::FORMAT_STR>(format));
    if (!ok) {
        // An open quote is found before anything is stored, and a dash word fails
        // only while no command has been read: either way the object stays empty.
        check(cmd.getCommand().isEmpty() && cmd.getItems().empty());
        return;
    }
    // Words are cut at blanks, tabs and quotes, so neither the command nor a key holds one.
    auto const isWord = [](QString const &text) {
        return !text.contains(QLatin1Char(' ')) && !text.contains(QLatin1Char('\t')) &&
               !text.contains(QLatin1Char('"'));
    };
    check(isWord(cmd.getCommand()) && !cmd.getCommand().startsWith(QLatin1Char('-')));
    for (orv::CommandLineItem const &item : cmd.getItems())
        check(isWord(item.key));
    if (!cmd.hasCommand())
        check(cmd.getItems().empty());
    if (!readsBack(cmd))
        return;
    orv::CommandLine back;
    check(back.fromString(cmd.toString(orv::CommandLine::FORMAT_COMMAND_KEYS)));
    check(back.getCommand() == cmd.getCommand());
    std::vector<orv::CommandLineItem> const a = cmd.getItems(), b = back.getItems();
    check(a.size() == b.size());
    for (size_t i = 0; i < a.size(); ++i)
        check(a[i].key == b[i].key && a[i].value == b[i].value);
}

void fuzzUrl(QString const &text) {
    orv::CommandLine cmd;
    bool const ok = cmd.fromURL(text);
    for (int format = 0; format < 3; ++format)
        cmd.toString(static_cast<orv::CommandLine::FORMAT_STR>(format));
    if (!ok)
        check(cmd.getProgram().isEmpty() && cmd.getCommand().isEmpty() && cmd.getItems().empty());
    for (orv::CommandLineItem const &item : cmd.getItems())
        check(cmd.hasKey(item.key) && cmd.getString(item.key, QString()) == item.value);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size) {
    QString const text =
        QString::fromUtf8(reinterpret_cast<char const *>(data), static_cast<int>(size));
    fuzzOneLine(text);
    fuzzUrl(text);
    return 0;
}
