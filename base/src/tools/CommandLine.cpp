// CommandLine.cpp: the key table, its typed setters and getters, the short-option
// check and the text forms. The three input grammars live in CommandLineParse.cpp.
#include "orv/CommandLine.h"

#include "orv/EnvVariables.h"
#include "orv/Log.h"
#include "orv/Tokenizer.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDebug>

namespace orv {

CommandLine *CommandLine::cmdMain = nullptr;

CommandLine &CommandLine::operator=(CommandLine &&other) {
    program = std::move(other.program);
    command = std::move(other.command);
    mapItems = std::move(other.mapItems);
    mustHaveKeys = std::move(other.mustHaveKeys);
    optionalKeys = std::move(other.optionalKeys);
    // A moved-from std container is only "valid"; callers rely on it being empty.
    other.mapItems.clear();
    other.mustHaveKeys.clear();
    other.optionalKeys.clear();
    return *this;
}

CommandLine::~CommandLine() = default;

void CommandLine::addKeys(std::vector<QString> &list, QString const &keys) {
    Tokenizer tok(keys, QStringLiteral(","), false);
    while (tok.hasMoreToken())
        list.push_back(tok.nextToken());
}

void CommandLine::addMustHaveKeys(QString const &keys) { addKeys(mustHaveKeys, keys); }

void CommandLine::addOptionalKeys(QString const &keys) { addKeys(optionalKeys, keys); }

void CommandLine::setCommand(QString const &text) { command = text; }

void CommandLine::setProgram(QString const &text) { program = text; }

void CommandLine::setString(QString const &key, QString const &value) {
    mapItems[key] = CommandLineItem{key, value};
}

void CommandLine::setBool(QString const &key, bool value) {
    setString(key, value ? QStringLiteral("true") : QStringLiteral("false"));
}

void CommandLine::setChar(QString const &key, char value) {
    setString(key, QString::number(static_cast<int>(value)));
}

void CommandLine::setShort(QString const &key, short value) {
    setString(key, QString::number(value));
}

void CommandLine::setInt(QString const &key, int value) { setString(key, QString::number(value)); }

void CommandLine::setLONG(QString const &key, qint64 value) {
    setString(key, QString::number(value));
}

void CommandLine::setFloat(QString const &key, float value) {
    setString(key, QString().setNum(value, 'g', 6));
}

void CommandLine::setDouble(QString const &key, double value) {
    setString(key, QString().setNum(value, 'g', 6));
}

bool CommandLine::hasKey(QString const &key) const { return mapItems.count(key) != 0; }

QString CommandLine::getArgument(QString const &key) const { return getString(key, QString()); }

QString CommandLine::getString(QString const &key, QString def) const {
    auto const it = mapItems.find(key);
    return it == mapItems.end() ? def : it->second.value;
}

QString CommandLine::getStringExt(QString const &key, QString const &def) const {
    auto const it = mapItems.find(key);
    if (it == mapItems.end())
        return def;
    return replaceEnv(it->second.value).replace(QLatin1Char('\''), QLatin1Char('"'));
}

bool CommandLine::isString(QString const &key, QString const &s) const {
    return getStringExt(key, QString()) == s;
}

bool CommandLine::getBool(QString const &key, bool def) const {
    auto const it = mapItems.find(key);
    if (it == mapItems.end())
        return def;
    QString const &v = it->second.value;
    return v == QLatin1String("true") || v == QLatin1String("TRUE") || v == QLatin1String("on") ||
           v == QLatin1String("ON") || v == QLatin1String("1");
}

// The numeric getters ignore the conversion's ok flag on purpose: text that
// doesn't parse reads as 0, and only an absent key gives the default.
int CommandLine::getInt(QString const &key, int def) const {
    auto const it = mapItems.find(key);
    return it == mapItems.end() ? def : it->second.value.toInt(nullptr, 10);
}

unsigned int CommandLine::getUInt(QString const &key, unsigned int def) const {
    auto const it = mapItems.find(key);
    return it == mapItems.end() ? def : it->second.value.toUInt(nullptr, 10);
}

quint64 CommandLine::getULong(QString const &key, quint64 def) const {
    auto const it = mapItems.find(key);
    return it == mapItems.end() ? def
                                : static_cast<quint64>(it->second.value.toLongLong(nullptr, 10));
}

float CommandLine::getFloat(QString const &key, float def) const {
    auto const it = mapItems.find(key);
    return it == mapItems.end() ? def : it->second.value.toFloat();
}

double CommandLine::getDouble(QString const &key, double def) const {
    auto const it = mapItems.find(key);
    return it == mapItems.end() ? def : it->second.value.toDouble();
}

QFileInfo CommandLine::getFile(QString const &key, QFileInfo const &def) const {
    QString const path = getStringExt(key, QString());
    return path.isEmpty() ? def : QFileInfo(path);
}

QString CommandLine::getProgramName() const {
    QString name = QCoreApplication::applicationName();
    if (name.endsWith(QLatin1String(".exe")) || name.endsWith(QLatin1String(".EXE")) ||
        name.endsWith(QLatin1String(".Exe")))
        name.chop(4);
    return name;
}

std::vector<CommandLineItem> CommandLine::getItems() const {
    std::vector<CommandLineItem> items;
    items.reserve(mapItems.size());
    for (auto const &entry : mapItems)
        items.push_back(entry.second);
    return items;
}

QString CommandLine::getFirstMissingKey() const {
    for (QString const &key : mustHaveKeys)
        if (!hasKey(key))
            return key;
    return QString();
}

CommandLine &CommandLine::getCMD() {
    if (cmdMain)
        return *cmdMain;
    qDebug("CommandLine::getCMD(), cmdMain == nullptr");
    // With no kernel yet, callers read an empty command line rather than crash.
    static CommandLine none;
    return none;
}

bool CommandLine::checkKeys() { return checkKeys(QCoreApplication::arguments()); }

bool CommandLine::checkKeys(QStringList const &rawWords) {
    // Letter -> value of every "-x [value]" among the raw words.
    std::map<QString, QString> shortOptions;
    QString pendingLetter;
    for (QString const &word : rawWords) {
        if (!pendingLetter.isEmpty()) {
            shortOptions[pendingLetter] = word.startsWith(QLatin1Char('-')) ? QString() : word;
            pendingLetter.clear();
        }
        if (word.size() == 2 && word.startsWith(QLatin1Char('-')))
            pendingLetter = word.mid(1);
    }
    if (!pendingLetter.isEmpty())
        shortOptions[pendingLetter] = QString();

    // A letter stands for a declared key only when exactly one declared key starts
    // with it; a key declared twice is thereby ambiguous too.
    for (auto const &option : shortOptions) {
        QString const *match = nullptr;
        int count = 0;
        for (auto const *list : {&mustHaveKeys, &optionalKeys})
            for (QString const &key : *list)
                if (key.startsWith(option.first)) {
                    match = &key;
                    ++count;
                }
        if (count == 1)
            setString(*match, option.second);
    }

    if (!getFirstMissingKey().isEmpty())
        return false;
    return !hasKey(QStringLiteral("help"));
}

QString CommandLine::buildCommandLineExample(bool withOptional) const {
    auto const keyList = [](std::vector<QString> const &keys) {
        QStringList entries;
        for (QString const &key : keys)
            entries << QLatin1String("--") + key + QLatin1String(" arg");
        return entries.join(QLatin1Char(' '));
    };
    QString text;
    if (!command.isEmpty())
        text += command + QLatin1Char(' ');
    text += keyList(mustHaveKeys);
    if (withOptional && !optionalKeys.empty())
        text += QLatin1String(" [ ") + keyList(optionalKeys) + QLatin1String(" ]");
    return text;
}

int CommandLine::showExample(QString const &example, QString const &notes) {
    ppDebug(buildCommandLineExample(true));
    if (!hasKey(QStringLiteral("help")))
        ppDebug("missing --$", getFirstMissingKey());
    ppDebug("example:");
    ppDebug("$ $", command, example);
    if (!notes.isEmpty())
        for (QString const &line : notes.split(QLatin1Char('\n')))
            ppDebug(4u, line);
    return 6; // the program's exit status for an argument problem
}

void CommandLine::showParsedArgs(int indent) const {
    ppDebug(indent, "CommandLine::showParsedArgs");
    ppDebug(indent + 4, "CommandLine - program: '$'", program);
    ppDebug(indent + 4, "CommandLine - command: '$'", command);
    ppDebug(indent + 4, "CommandLine - mapItems-size:$", static_cast<qint64>(mapItems.size()));
    for (auto const &entry : mapItems)
        ppDebug(indent + 8, "$: '$'", entry.first, entry.second.value);
    ppDebug(indent, "~CommandLine::showParsedArgs");
}

QString CommandLine::toString(FORMAT_STR format) const {
    QString text;
    if (format == FORMAT_PROGRAM_COMMAND_KEYS) {
        text += program;
        if (!mapItems.empty() || !command.isEmpty())
            text += QLatin1Char(' ');
    }
    if (format == FORMAT_PROGRAM_COMMAND_KEYS || format == FORMAT_COMMAND_KEYS) {
        text += command;
        if (!mapItems.empty())
            text += QLatin1Char(' ');
    }
    for (auto const &entry : mapItems)
        text += QLatin1String("--") + entry.first + QLatin1Char(' ') + entry.second.value +
                QLatin1Char(' ');
    return text.trimmed();
}

QString CommandLine::toStringURL(FORMAT_STR) const { return QString(); }

} // namespace orv
