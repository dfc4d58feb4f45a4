// SearchArguments.h: what the search commands (grep, find) read from the command line
// alike: the expression with --regex and --scope.
#pragma once

#include "orv/XContentFilter.h"

namespace orv {
class Kernel;
}

namespace orvtool {

// Whether a switch like --regex is on: given, and not "false".
bool isSwitchOn(orv::Kernel &kernel, char const *key);

// Compiles --expr (missing: an error unless optional) with --regex and --scope into
// filter. 0, or the exit status after the error was printed.
int readContentFilter(orv::Kernel &kernel, char const *command, orv::find::XContentFilter &filter,
                      bool optional);

} // namespace orvtool
