// CommandLine.h: a command word plus a sorted table of `--key value` settings,
// read from main's arguments, a one-line command string or a URL query.
//
//   orv::CommandLine cmd;
//   cmd.fromString("copy --from a.txt --to \"my file.txt\" --retries 3");
//   int retries = cmd.getInt("retries", 1);   // 3; an unreadable number gives 0
//
// Items always come out in key order (code unit, case-sensitive), never in input order.
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QFileInfo>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QUrl>

#include <map>
#include <vector>

namespace orv {

struct ORV_EXPORT CommandLineItem {
    QString key;
    QString value;
};

class ORV_EXPORT CommandLine {
public:
    // Any value other than the first two reads like FORMAT_KEYS.
    enum FORMAT_STR { FORMAT_PROGRAM_COMMAND_KEYS = 0, FORMAT_COMMAND_KEYS = 1, FORMAT_KEYS = 2 };

    // The program's own command line: the first kernel sets it, nothing else writes it.
    static CommandLine *cmdMain;

    CommandLine() = default;
    CommandLine(CommandLine const &) = default;
    CommandLine(CommandLine &&) = default;
    CommandLine &operator=(CommandLine const &) = default;
    // Leaves the source with an empty table and empty key lists.
    CommandLine &operator=(CommandLine &&other);
    virtual ~CommandLine();

    // argv[1] is the command whatever it looks like; then `--key [value]` pairs.
    // The declared key lists stay.
    void fromMain(int argc, char **const argv);
    // The one-line form: command first, `"` quotes a value. False on an open
    // quote or a dash word before the command; what was parsed up to there stays.
    bool fromString(QString const &line);
    // `scheme://host?program;command;key=value;...`, added to what the object holds.
    bool fromURL(QString const &url);
    bool fromURL(QUrl const &url);

    // Comma-separated keys, appended as they stand (not trimmed, repeats kept).
    void addMustHaveKeys(QString const &keys);
    void addOptionalKeys(QString const &keys);

    void setCommand(QString const &command);
    void setProgram(QString const &program);
    void setString(QString const &key, QString const &value);
    void setBool(QString const &key, bool value);
    // Stores the character's number, not the character.
    void setChar(QString const &key, char value);
    void setShort(QString const &key, short value);
    void setInt(QString const &key, int value);
    void setLONG(QString const &key, qint64 value);
    void setFloat(QString const &key, float value);
    void setDouble(QString const &key, double value);

    bool hasKey(QString const &key) const;
    bool operator[](QString const &key) const { return hasKey(key); }
    QString getArgument(QString const &key) const;

    // Getters with a default give it only for an absent key: a present key with
    // unreadable text gives the conversion's 0 (false, "").
    QString getString(QString const &key, QString def) const;
    // $(NAME) replaced from the environment, then every ' turned into ".
    QString getStringExt(QString const &key, QString const &def) const;
    bool isString(QString const &key, QString const &s) const;
    // True only for "true", "TRUE", "on", "ON" and "1".
    bool getBool(QString const &key, bool def) const;
    bool isBool(QString const &key, bool def) const { return getBool(key, def); }
    int getInt(QString const &key, int def) const;
    unsigned int getUInt(QString const &key, unsigned int def) const;
    // Read through the signed conversion: a value beyond qint64 gives 0.
    quint64 getULong(QString const &key, quint64 def) const;
    float getFloat(QString const &key, float def) const;
    double getDouble(QString const &key, double def) const;
    QFileInfo getFile(QString const &key, QFileInfo const &def) const;

    QString getCommand() const { return command; }
    QString getProgram() const { return program; }
    bool hasCommand() const { return !command.isEmpty(); }
    QString getProgramName() const;
    std::vector<CommandLineItem> getItems() const;
    QString getFirstMissingKey() const;

    // *cmdMain; with none set it says so on Qt's debug stream first.
    static CommandLine &getCMD();

    // Maps one-letter options of the kernel's raw arguments onto the declared
    // keys; false if a required key is missing or "help" was given.
    bool checkKeys();
    // The same over the given raw words (argv[0] included).
    bool checkKeys(QStringList const &rawWords);
    // Logs the usage line and the example at DEBUG; returns 6, the exit status
    // for an argument problem.
    int showExample(QString const &example, QString const &notes);
    QString buildCommandLineExample(bool withOptional) const;
    void showParsedArgs(int indent) const;
    // Values are not quoted: a value with blanks doesn't read back through fromString.
    QString toString(FORMAT_STR format) const;
    QString toStringURL(FORMAT_STR format) const;

private:
    void addKeys(std::vector<QString> &list, QString const &keys);

    QString program;
    QString command;
    std::map<QString, CommandLineItem> mapItems;
    std::vector<QString> mustHaveKeys;
    std::vector<QString> optionalKeys;
};

} // namespace orv
