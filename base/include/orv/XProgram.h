// XProgram.h: the program frame a console program's main hands over to, the exit
// codes with their texts, and the orderly death of a program.
//
//   int main(int argc, char **argv, char **envp) {
//       return orv::XProgramConsole::runStandard(argc, argv, envp, "acme", "", nullptr);
//   }
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

namespace orv {

// Steers how the console frame builds its kernel.
struct ORV_EXPORT KernelTerminalConfig {
    // true: the first word on the command line names what runs; false: a placeholder
    // goes in and mainMethod is the command.
    static bool flagTesting;
    // false: the console of the process is released at start.
    static bool flagWindowsConsole;
    static QString mainMethod;
};

// True if any of the first argc arguments (argv[0] too) reads "--help" in any case.
ORV_EXPORT bool checkArgsHelp(int argc, char **const argv);
// Releases the process's console, once; where there is no such thing, nothing happens.
ORV_EXPORT void hideWindowsConsole();

class ORV_EXPORT Abstract_ORV_Program {
public:
    // Starts the library (its error texts); the arguments are for derived programs.
    virtual bool init(int argc, char **const argv, char **envv);
    virtual int mainMethod(int argc, char **argv, char **envv) = 0;
    // Prints text under a kernel of its own; nothing for a null text.
    virtual void showProgramHelp(int argc, char **const argv, char **envv, char const *text);

    bool checkHelp(int argc, char **const argv);

protected:
    virtual ~Abstract_ORV_Program();
};

// The console program: its command is a registered test (TestContext.h).
class ORV_EXPORT XProgramConsole : public Abstract_ORV_Program {
public:
    // The whole program: 20 after "--help" (the banner, or helpText when given),
    // 1 if the library can't start, else what the command gave.
    static int runStandard(int argc, char **const argv, char **envv, QString const &companyName,
                           QString const &mainMethod, char const *helpText);
    // The one instance; the first call hands the company name to the kernel.
    static XProgramConsole &getInstance(QString const &companyName);

    using Abstract_ORV_Program::init;
    bool init(int argc, char **const argv, char **envv, QString const &mainMethod);
    int mainMethod(int argc, char **argv, char **envv) override;

    // The banner "--help" shows when the program gives none.
    static char const *defaultBanner();

private:
    XProgramConsole() = default;
    ~XProgramConsole() override;
};

// Error texts of the library, registered once per process.
class ORV_EXPORT XLibBase {
public:
    static bool flagInitialized;
    static void iniLibrary(int argc, char **const argv, char **envv);
};

// Exit codes a command gives back; 0 is success.
enum EXIT_ORV_CODE {
    EXIT_ORV_OK = 0,
    EXIT_ORV_GENERAL = 1,
    EXIT_ORV_CONFIGURATION = 2,
    EXIT_ORV_MATH = 3,
    EXIT_ORV_FILE_NOT_FOUND = 4,
    EXIT_ORV_IO = 5,
    EXIT_ORV_ARGUMENT = 6,
    EXIT_ORV_XML = 7,
    EXIT_ORV_QUIT_GUI = 8,
    EXIT_ORV_PARSING = 9,
    EXIT_ORV_CHECKSUM = 10,
    EXIT_ORV_HELP = 20,
    EXIT_ORV_MAIN_HELPER = 30
};

// The text of an exit code; "unknown errorcode" for one outside the table (20 too).
ORV_EXPORT QString exitOrvErrorCodeToString(int code);

// Logs message at ERROR, counts down seconds at WARN, stops the logger and ends the
// process with status 1.
[[noreturn]] ORV_EXPORT void exitApp(QString const &message, unsigned int seconds);

} // namespace orv
