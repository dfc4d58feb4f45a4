// main.cpp: the orv program; its commands are the tests registered under commands/.
#include "commands/OrvHelp.h"

#include "orv/XProgram.h"

int main(int argc, char **argv, char **envp) {
    return orv::XProgramConsole::runStandard(argc, argv, envp, "orv", "", orvtool::helpText());
}
