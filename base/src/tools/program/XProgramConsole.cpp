// XProgramConsole.cpp: the console program frame, from main to the command's result.
#include "orv/XProgram.h"

#include "orv/Kernel.h"
#include "orv/Logger.h"
#include "orv/OrvTestFramework.h"
#include "orv/XError.h"

namespace orv {

bool KernelTerminalConfig::flagTesting = false;
bool KernelTerminalConfig::flagWindowsConsole = true;
QString KernelTerminalConfig::mainMethod;

bool checkArgsHelp(int argc, char **const argv) {
    for (int i = 0; i < argc; ++i) {
        if (argv[i] && QByteArray(argv[i]).toUpper() == "--HELP")
            return true;
    }
    return false;
}

Abstract_ORV_Program::~Abstract_ORV_Program() = default;

bool Abstract_ORV_Program::init(int argc, char **const argv, char **envv) {
    XLibBase::iniLibrary(argc, argv, envv);
    return true;
}

void Abstract_ORV_Program::showProgramHelp(int argc, char **const argv, char **envv,
                                           char const *text) {
    if (text == nullptr)
        return;
    int count = argc;
    KernelTerminal kernel(count, argv, envv, false);
    Logger::printToCout(text);
}

bool Abstract_ORV_Program::checkHelp(int argc, char **const argv) {
    return checkArgsHelp(argc, argv);
}

XProgramConsole::~XProgramConsole() = default;

XProgramConsole &XProgramConsole::getInstance(QString const &companyName) {
    static XProgramConsole *instance = [&companyName] {
        Kernel::setCompanyName(companyName);
        return new XProgramConsole();
    }();
    return *instance;
}

bool XProgramConsole::init(int argc, char **const argv, char **envv, QString const &mainMethod) {
    if (!Abstract_ORV_Program::init(argc, argv, envv)) {
        // The frame's older name stays in the text: scripts look for it.
        Logger::printToCout("XProgramStraight::init, problem");
        return false;
    }
    KernelTerminalConfig::flagTesting = true;
    KernelTerminalConfig::mainMethod = mainMethod;
    KernelTerminalConfig::flagWindowsConsole = true;
    return true;
}

int XProgramConsole::mainMethod(int argc, char **argv, char **envv) {
    return OrvTestFramework::mainTest(argc, argv, envv, !KernelTerminalConfig::flagTesting);
}

int XProgramConsole::runStandard(int argc, char **const argv, char **envv,
                                 QString const &companyName, QString const &mainMethod,
                                 char const *helpText) {
    Abstract_ORV_Program &program = getInstance(companyName);
    if (!program.init(argc, argv, envv)) {
        Logger::printToCout("XProgramStraight::init, problem");
        Logger::printToCout("XProgramConsole::runStandard, cannot init XProgramConsole");
        return 1;
    }
    // Always the mode where the first word names the command: mainMethod stays unused
    // here, a program wanting it sets flagTesting false in its own frame.
    KernelTerminalConfig::flagTesting = true;
    KernelTerminalConfig::mainMethod = mainMethod;
    KernelTerminalConfig::flagWindowsConsole = true;
    if (program.checkHelp(argc, argv)) {
        program.showProgramHelp(argc, argv, envv, helpText ? helpText : defaultBanner());
        return EXIT_ORV_HELP;
    }
    return program.mainMethod(argc, argv, envv);
}

char const *XProgramConsole::defaultBanner() {
    return "orv base - program frame of the orv library\n"
           "usage: <program> <command> --key value ...\n"
           "\n"
           "supported environments variables\n"
           " $ORVTESTING\n"
           "if $ORVTESTING exists program switches to testMode\n"
           "\n"
           "hidden command line arguments\n"
           " --logDir\n"
           " --logFile\n"
           " --logLevel\n"
           " --logTrailler\n"
           " --logRotate (minute | hour | day | month | year)\n"
           "\n"
           "main method 'XMem.simple'\n";
}

bool XLibBase::flagInitialized = false;

void XLibBase::iniLibrary(int, char **const, char **) {
    if (flagInitialized)
        return;
    flagInitialized = true;
    static struct {
        unsigned int code;
        char const *text;
    } const texts[] = {
        {100, "orv,cannot read resource"},   {110, "orv,timeout"},  {120, "orv,buffer empty"},
        {130, "orv,object not initialized"}, {150, "orv,truncate"}, {140, "orv,index out of range"},
        {170, "orv,number too big"},         {160, "orv,eof"}};
    // The error map may have filled these on an earlier lookup; adding one twice
    // would only print a complaint.
    for (auto const &entry : texts) {
        if (!XErrorMap::containsError(entry.code))
            XErrorMap::addError(entry.code, QString::fromLatin1(entry.text));
    }
}

} // namespace orv
