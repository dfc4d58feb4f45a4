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
           " triangulate --file F            triangles and area of a polygon, \"x y\" per line\n"
           " xml --file F                    parse an XML document with its includes: counts\n"
           "     [--show] [--query P]        print the tree, or the node at path P\n"
           "     [--schema S] [--save OUT]   list what breaks schema S, write the tree back\n"
           " grep --file F --expr E          search F: path:line:byte-offset:text per hit;\n"
           "   [--scope file|paragraph|sentence] [--regex]   E like: fox{i,w,2} & ~(cat | dog)\n"
           " lines --file F                  encoding, line and wrap counts of F\n"
           " serve --port P [--root DIR] [--cert C --key K] [--address A] [--workers N]\n"
           "       [--timeout MS]            answer GET and HEAD for the files under DIR\n"
           "                                 (default .) until SIGINT or SIGTERM; port 0: any\n"
           " get URL [--out FILE] [--timeout MS]  fetch an http or https URL, print its head\n"
           " tree --file F [--stats]         show a tree file, plain or compressed, or count\n"
           "                                 its values (status 9 damaged, 10 bad digest)\n"
           " regression --file F             run the command lines of F (one a line; lines with\n"
           "   # are skipped, exit ends, $(RELPATH) is F's folder) and sum up; status 1 if one\n"
           "   failed; --filter P runs the commands named like P without arguments instead;\n"
           "   [--testTimeout S]             a test still running after S s (600) ends orv, status "
           "1\n"
           "\n"
           "logger options, for every command\n"
           " --logLevel debug|test|info|warn|err\n"
           " --logDir D --logFile F          also log to the file D/F\n"
           " --logTrailler false             console lines without number, time, thread\n"
           " --logRotate (second | minute | hour | day | month | year)\n"
           "\n"
           "exit status: 0 success, 1 listing or failure, 2 bad search expression,\n"
           "3 math problem (bad polygon), 4 file not found, 5 read error, 6 argument problem,\n"
           "7 XML problem (include, schema), 9 parsing problem, 20 this help\n";
}

} // namespace orvtool
