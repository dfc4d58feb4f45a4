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
           " find --dir D [--expr E]         search a folder tree on all processors: the hits\n"
           "   [--regex] [--scope S]         as grep prints them, by path, then the counters;\n"
           "                                 without --expr the files that pass the filters\n"
           "   [--name P] [--not-name P]     P: patterns like *.cpp,*.h (\"*\" only, any case;\n"
           "                                 without \"*\" the name's ending)\n"
           "   [--ext a,b]                   extensions, any letter case\n"
           "   [--min-size N] [--max-size N] N like 1500, 10k, 2.5MB, 4KiB (k=1000, Ki=1024)\n"
           "   [--newer T] [--older T]       T like 2024-01-31, \"2024-01-31 13:45\", @seconds\n"
           "   [--hidden] [--binary]         dot files too; the hit lines of binary files too\n"
           "   [--threads N]                 N workers (default: one per processor)\n"
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
