// CommandLine_test.cpp: the three input grammars, typed getters and their
// defaults, key order, short options and the text forms.
#include "orv/CommandLine.h"

#include "support/Test.h"

#include <QtCore/QCoreApplication>

#include <cstdlib>
#include <limits>
#include <string>
#include <tuple>

using orv::CommandLine;

namespace {

// "key=value|key=value" in the table's order.
std::string itemsText(CommandLine const &cmd) {
    QStringList parts;
    for (orv::CommandLineItem const &item : cmd.getItems())
        parts << item.key + QLatin1Char('=') + item.value;
    return parts.join(QLatin1Char('|')).toStdString();
}

CommandLine withValue(char const *value) {
    CommandLine cmd;
    if (value)
        cmd.setString("k", QString::fromUtf8(value));
    return cmd;
}

struct EnvVar {
    EnvVar() { setenv("ORV_CMDLINE_TEST", "abc", 1); }
    ~EnvVar() { unsetenv("ORV_CMDLINE_TEST"); }
};

} // namespace

TEST(CommandLine, FromMainReadsCommandThenKeyValuePairs) {
    // args: the words of argv, split at blanks
    using Row = std::tuple<char const *, std::string, std::string, std::string>;
    Row const rows[] = {
        // clang-format off
        {"", "", "", ""}, {"prog", "prog", "", ""}, {"prog run", "prog", "run", ""},
        {"prog --key 1", "prog", "--key", ""}, {"prog run --x -5", "prog", "run", "x=-5"},
        {"prog run --a --b 7 stray --c", "prog", "run", "a=|b=7|c="},
        {"prog run --k 1 --k", "prog", "run", "k="}, {"prog run --k 1 --k 2", "prog", "run", "k=2"},
        {"prog run -- v", "prog", "run", "="}, {"prog run --k a b", "prog", "run", "k=a"},
        {"prog run --k=v", "prog", "run", "k=v="},
        {"prog run --p $(ORV_CMDLINE_TEST)", "prog", "run", "p=$(ORV_CMDLINE_TEST)"},
        {"prog run --name Gr\u00fc\u00dfe", "prog", "run", "name=Gr\u00fc\u00dfe"},
    }; // clang-format on
    EnvVar env;
    for (auto const &[args, program, command, items] : rows) {
        std::vector<std::string> words;
        for (QString const &word : QString(args).split(' ', Qt::SkipEmptyParts))
            words.push_back(word.toStdString());
        std::vector<char *> argv;
        for (std::string &word : words)
            argv.push_back(word.data());
        CommandLine cmd;
        cmd.setString("old", "gone");
        cmd.fromMain(static_cast<int>(argv.size()), argv.data());
        SCOPED_TRACE(args);
        EXPECT_EQ(cmd.getProgram().toStdString() + '|' + cmd.getCommand().toStdString(),
                  program + '|' + command);
        EXPECT_EQ(itemsText(cmd), items);
    }
}

TEST(CommandLine, FromStringParsesTheOneLineGrammar) {
    std::tuple<char const *, bool, std::string, std::string> const rows[] = {
        // clang-format off
        {"", true, "", ""}, {" \t  ", true, "", ""}, {"run", true, "run", ""},
        {"run --a \"x y\" --b 2", true, "run", "a=x y|b=2"}, {"run\t--a\t1", true, "run", "a=1"},
        {"--a 1", false, "", ""}, {"-", false, "", ""}, {"\"quoted\" run", true, "run", ""},
        {"run --a \"x", false, "", ""}, {"run --a \"x\" --b \"", false, "", ""},
        {"run --a \"\"", true, "run", "a="}, {"run --a --b", true, "run", "a=|b="},
        {"run --k 1 --k 2", true, "run", "k=2"}, {"run --k 1 --k", true, "run", "k="},
        {"run --a -5", true, "run", "a=-5"}, {"run --a \"--b\"", true, "run", "a=--b"},
        {"run stray -x --a 1", true, "run", "a=1"}, {"run --a \"x\"y \"z\"", true, "run", "a=x"},
        {"run \"\" --a 1", true, "run", "a=1"}, {"run --a 'x y'", true, "run", "a='x"},
        {"run --\"a b\" 1", true, "run", "="},
        {"run --p $(ORV_CMDLINE_TEST) --q \"$(ORV_CMDLINE_TEST) x\"", true, "run", "p=abc|q=abc x"},
        {"$(ORV_CMDLINE_TEST) --$(ORV_CMDLINE_TEST) 1", true, "$(ORV_CMDLINE_TEST)",
         "$(ORV_CMDLINE_TEST)=1"}};
    // clang-format on
    EnvVar env;
    for (auto const &[input, ok, command, items] : rows) {
        CommandLine cmd;
        cmd.setProgram("prog");
        cmd.setString("old", "gone");
        cmd.addMustHaveKeys("must");
        SCOPED_TRACE(input);
        EXPECT_EQ(cmd.fromString(QString::fromUtf8(input)), ok);
        EXPECT_EQ(cmd.getProgram().toStdString() + '|' + cmd.getCommand().toStdString(),
                  "prog|" + command);
        EXPECT_EQ(itemsText(cmd), items);
        EXPECT_EQ(cmd.buildCommandLineExample(true).toStdString(),
                  command + (command.empty() ? "" : " "));
    }
}

TEST(CommandLine, FromUrlReadsProgramCommandAndPairsFromTheQuery) {
    // program|command, then the items
    std::tuple<char const *, bool, std::string, std::string> const rows[] = {
        // clang-format off
        {"", false, "|", "pre=1"}, {"x://h", false, "|", "pre=1"}, {"x://h?a;b", true, "a|b", "pre=1"},
        {"app://x?prog;cmd;host=a;title=\"b c\";", true, "prog|cmd", "host=a|pre=1|title=b c"},
        {"x://h?p;c;k=v&", true, "p|c", "k=v&|pre=1"}, {"x://h?p;c;k=v&j=w", true, "p|c", "j=w|k=v&|pre=1"},
        {"x://h?p;c;k=\"a;b\"", true, "p|c", "k=a;b|pre=1"}, {"x://h?p;c;k=a=b", true, "p|c", "k=a=b|pre=1"},
        {"x://h?p;c;flag", true, "p|c", "flag=|pre=1"}, {"x://h?p;c;a b = v ", true, "p|c", "a b =v|pre=1"},
        {"x://h?p;c;ok=1;k=\"open", true, "p|c", "ok=1|pre=1"}, {"x://h?p;c;pre=2", true, "p|c", "pre=2"},
        {"x://h?p;c;k=a%20b", true, "p|c", "k=a b|pre=1"}, {"x://h?p;c;k=a+b", true, "p|c", "k=a+b|pre=1"},
        {"x://h?p;c;k=%zz;j=%2", true, "p|c", "j=%252|k=%25zz|pre=1"},
        {"x://h?p;c;k=a%3Bb", true, "p|c", "k=a%3Bb|pre=1"}, {"x://h?p;c;;", true, "p|c", "=|pre=1"}};
    // clang-format on
    for (auto const &[url, ok, programCommand, items] : rows) {
        CommandLine cmd;
        cmd.setString("pre", "1");
        SCOPED_TRACE(url);
        EXPECT_EQ(cmd.fromURL(QString::fromUtf8(url)), ok);
        EXPECT_EQ(cmd.getProgram().toStdString() + '|' + cmd.getCommand().toStdString(),
                  programCommand);
        EXPECT_EQ(itemsText(cmd), items);
    }
}

TEST(CommandLine, MainCommandLineIsReachableAndFillsUrlGapsCommandIntoProgram) {
    EXPECT_EQ(CommandLine::getCMD().getCommand(), "");
    CommandLine kernel;
    kernel.setProgram("kprog");
    kernel.setCommand("kcmd");
    CommandLine::cmdMain = &kernel;
    EXPECT_EQ(&CommandLine::getCMD(), &kernel);
    CommandLine noProgram, noCommand;
    EXPECT_TRUE(noProgram.fromURL(QStringLiteral("x://h?;c")));
    EXPECT_TRUE(noCommand.fromURL(QStringLiteral("x://h?p")));
    CommandLine::cmdMain = nullptr;
    EXPECT_EQ(noProgram.getProgram() + '|' + noProgram.getCommand(), "kprog|c");
    EXPECT_EQ(noCommand.getProgram() + '|' + noCommand.getCommand(), "kcmd|");
}

TEST(CommandLine, NumericGettersGiveDefaultOnlyForAnAbsentKey) {
    quint64 const big = std::numeric_limits<quint64>::max();
    struct Row {
        char const *value; // null: key absent
        int i;
        unsigned int u;
        quint64 ul;
        double d;
    } const rows[] = {
        // clang-format off
        {nullptr, 5, 6, 7, 8.5}, {"42", 42, 42, 42, 42}, {"abc", 0, 0, 0, 0}, {"", 0, 0, 0, 0},
        {"-3", -3, 0, big - 2, -3}, {"0x10", 0, 0, 0, 0}, {"1.5", 0, 0, 0, 1.5},
        {"4294967295", 0, 4294967295u, 4294967295u, 4294967295.0},
        {"9223372036854775807", 0, 0, 9223372036854775807ull, 9223372036854775807.0},
        {"18446744073709551615", 0, 0, 0, 18446744073709551615.0},
    }; // clang-format on
    for (Row const &row : rows) {
        CommandLine const cmd = withValue(row.value);
        SCOPED_TRACE(row.value ? row.value : "(absent)");
        EXPECT_EQ(cmd.getInt("k", 5), row.i);
        EXPECT_EQ(cmd.getUInt("k", 6), row.u);
        EXPECT_EQ(cmd.getULong("k", 7), row.ul);
        EXPECT_DOUBLE_EQ(cmd.getDouble("k", 8.5), row.d);
        EXPECT_FLOAT_EQ(cmd.getFloat("k", 8.5f), static_cast<float>(row.d));
    }
}

TEST(CommandLine, GetBoolAcceptsOnlyFiveSpellingsOfTrue) {
    for (char const *value : {(char const *)nullptr, "true", "TRUE", "on", "ON", "1"})
        EXPECT_TRUE(withValue(value).getBool("k", true)) << (value ? value : "(absent)");
    for (char const *value : {"True", "yes", "", "on ", "0", "false"})
        EXPECT_FALSE(withValue(value).getBool("k", true)) << value;
}

TEST(CommandLine, StringAndFileGettersDistinguishEmptyValueFromAbsentKey) {
    EnvVar env;
    CommandLine cmd;
    cmd.setString("empty", "");
    cmd.setString("quoted", "'a b' $(ORV_CMDLINE_TEST)");
    QFileInfo const def(QStringLiteral("/def"));
    std::pair<QString, char const *> const rows[] = {
        // clang-format off
        {cmd.getString("empty", "d"), ""}, {cmd.getString("none", "d"), "d"},
        {cmd.getArgument("none"), ""}, {cmd.getString("quoted", ""), "'a b' $(ORV_CMDLINE_TEST)"},
        {cmd.getStringExt("quoted", ""), "\"a b\" abc"}, {cmd.getStringExt("none", "'d'"), "'d'"},
        {cmd.getFile("none", def).filePath(), "/def"},
        {cmd.getFile("empty", def).filePath(), "/def"},
        {cmd.getFile("quoted", def).filePath(), "\"a b\" abc"},
    }; // clang-format on
    for (auto const &[got, expected] : rows)
        EXPECT_EQ(got, expected);
    EXPECT_TRUE(cmd.isString("quoted", "\"a b\" abc"));
    EXPECT_TRUE(cmd.isString("none", ""));
    EXPECT_FALSE(cmd.isString("none", "x"));
    EXPECT_TRUE(cmd["empty"] && cmd.hasKey("empty"));
    EXPECT_FALSE(cmd["none"]);
}

TEST(CommandLine, SettersStoreTheDocumentedTextsAndItemsRunInCodeUnitOrder) {
    CommandLine cmd;
    cmd.setBool("b", true);
    cmd.setBool("f", false);
    cmd.setChar("c", 'A');
    cmd.setShort("s", -7);
    cmd.setInt("i", 2147483647);
    cmd.setLONG("l", -9000000000LL);
    cmd.setFloat("x", 1.0f / 3.0f);
    cmd.setDouble("y", 1e20);
    cmd.setString("i", "replaced");
    EXPECT_EQ(itemsText(cmd),
              "b=true|c=65|f=false|i=replaced|l=-9000000000|s=-7|x=0.333333|y=1e+20");
    CommandLine keys;
    for (char const *key : {"b", "a", "_", "B", "10", "9"})
        keys.setString(key, "1");
    EXPECT_EQ(keys.toString(CommandLine::FORMAT_KEYS), "--10 1 --9 1 --B 1 --_ 1 --a 1 --b 1");
}

TEST(CommandLine, ToStringBuildsEachFormatWithoutQuotingSoBlanksDoNotReadBack) {
    // program, command, items as a one-line tail; the three formats
    std::tuple<char const *, char const *, char const *, std::string, std::string,
               std::string> const rows[] = {
        {"", "", "", "", "", ""},
        {"prog", "", "", "prog", "", ""},
        {"prog", "run", "", "prog run", "run", ""},
        {"", "", "--a 1", "--a 1", "--a 1", "--a 1"},
        {"prog", "run", "--a --b 2", "prog run --a  --b 2", "run --a  --b 2", "--a  --b 2"},
        {"prog", "run", "--b \"x y\"", "prog run --b x y", "run --b x y", "--b x y"}};
    for (auto const &[program, command, items, full, commandKeys, keys] : rows) {
        CommandLine cmd;
        cmd.fromString(QStringLiteral("c ") + QString::fromUtf8(items));
        cmd.setProgram(program);
        cmd.setCommand(command);
        SCOPED_TRACE(full);
        EXPECT_EQ(cmd.toString(CommandLine::FORMAT_PROGRAM_COMMAND_KEYS).toStdString(), full);
        EXPECT_EQ(cmd.toString(CommandLine::FORMAT_COMMAND_KEYS).toStdString(), commandKeys);
        EXPECT_EQ(cmd.toString(CommandLine::FORMAT_KEYS).toStdString(), keys);
        EXPECT_EQ(cmd.toString(static_cast<CommandLine::FORMAT_STR>(7)).toStdString(), keys);
        EXPECT_EQ(cmd.toStringURL(CommandLine::FORMAT_PROGRAM_COMMAND_KEYS), "");
    }
    CommandLine back;
    ASSERT_TRUE(back.fromString("run --b x y"));
    EXPECT_EQ(itemsText(back), "b=x");
}

TEST(CommandLine, DeclaredKeysAreSplitAtCommasAndKeptAsTheyStand) {
    CommandLine cmd;
    cmd.setCommand("copy");
    cmd.addMustHaveKeys("from,,to");
    cmd.addOptionalKeys("mode");
    EXPECT_EQ(cmd.buildCommandLineExample(true), "copy --from arg --to arg [ --mode arg ]");
    EXPECT_EQ(cmd.buildCommandLineExample(false), "copy --from arg --to arg");
    EXPECT_EQ(cmd.getFirstMissingKey(), "from");
    cmd.setString("from", "a");
    EXPECT_EQ(cmd.getFirstMissingKey(), "to");
    cmd.setString("to", "b");
    EXPECT_EQ(cmd.getFirstMissingKey(), "");
    cmd.addMustHaveKeys(" pad");
    EXPECT_EQ(cmd.getFirstMissingKey(), " pad");
    EXPECT_EQ(cmd.showExample("--from a --to b", "line 1\n\nline 3"), 6);
}

TEST(CommandLine, CheckKeysMapsUnambiguousShortOptionsOntoDeclaredKeys) {
    // must-have keys, optional keys, the words split at blanks, ok, items
    std::tuple<char const *, char const *, char const *, bool, std::string> const rows[] = {
        // clang-format off
        {"input", "", "prog -i file", true, "input=file"},
        {"input,image", "", "prog -i file", false, ""},
        {"input", "image", "prog -i file", false, ""},
        {"input,input", "", "prog -i file", false, ""},
        {"input", "help", "prog -i file -h", false, "help=|input=file"},
        {"input", "verbose", "prog -i -v", true, "input=|verbose="},
        {"input", "verbose", "prog -v 3 -i", true, "input=|verbose=3"},
        {"input", "", "prog -I file", false, ""}, {"input", "", "prog -x 1 --input", false, ""},
        {"", "-dash", "prog -- v", true, "-dash=v"}, {"", "", "", true, ""},
    }; // clang-format on
    for (auto const &[must, optional, words, ok, items] : rows) {
        CommandLine cmd;
        cmd.addMustHaveKeys(must);
        cmd.addOptionalKeys(optional);
        SCOPED_TRACE(words);
        EXPECT_EQ(cmd.checkKeys(QString(words).split(' ', Qt::SkipEmptyParts)), ok);
        EXPECT_EQ(itemsText(cmd), items);
    }
}

TEST(CommandLine, MoveAssignmentEmptiesSourceTableAndKeyLists) {
    CommandLine source;
    source.fromString("run --a 1");
    source.setProgram("prog");
    source.addMustHaveKeys("a");
    source.addOptionalKeys("b");
    CommandLine const copy(source);
    CommandLine target;
    target = std::move(source);
    EXPECT_EQ(target.toString(CommandLine::FORMAT_PROGRAM_COMMAND_KEYS), "prog run --a 1");
    EXPECT_EQ(target.buildCommandLineExample(true), "run --a arg [ --b arg ]");
    EXPECT_EQ(copy.buildCommandLineExample(true), "run --a arg [ --b arg ]");
    EXPECT_TRUE(source.getItems().empty());
    EXPECT_EQ(source.getFirstMissingKey(), "");
    EXPECT_FALSE(source.buildCommandLineExample(true).contains("arg"));
}

TEST(CommandLine, ProgramNameLosesOnlyThreeSpellingsOfExe) {
    QString const saved = QCoreApplication::applicationName();
    for (auto [name, expected] : {std::pair{"tool.exe", "tool"},
                                  {"tool.EXE", "tool"},
                                  {"tool.Exe", "tool"},
                                  {"tool.eXe", "tool.eXe"},
                                  {"tool", "tool"}}) {
        QCoreApplication::setApplicationName(name);
        EXPECT_EQ(CommandLine().getProgramName(), expected);
    }
    QCoreApplication::setApplicationName(saved);
}
