// OrvHelp.cpp: the help text. "--help" anywhere on the line is answered by the frame
// before a command runs, so every command's usage stands here.
#include "commands/OrvHelp.h"

namespace orvtool {

char const *helpText() {
    return "orv - command-line tools of the orv base library\n"
           "usage: orv <command> --key value ...   (no command: list the commands)\n"
           "\n"
           "commands\n"
           " md5 --file F                    MD5 digest of a file (status 4 if missing)\n"
           " cmdline --line \"cmd --k v\"      parse one command line, show its table\n"
           " format --text \"a $ b\" --args x,y  fill the $ places of a text\n"
           " loginfo [--count N]             log header and N lines at every level\n"
           " tree --file F [--stats]         show a tree file, plain or compressed, or count\n"
           "                                 its values (status 9 damaged, 10 bad digest)\n"
           "\n"
           "logger options, for every command\n"
           " --logLevel debug|test|info|warn|err\n"
           " --logDir D --logFile F          also log to the file D/F\n"
           " --logTrailler false             console lines without number, time, thread\n"
           " --logRotate (minute | hour | day | month | year)\n"
           "\n"
           "exit status: 0 success, 1 listing or failure, 4 file not found,\n"
           "6 argument problem, 9 parsing problem, 20 this help\n";
}

} // namespace orvtool
