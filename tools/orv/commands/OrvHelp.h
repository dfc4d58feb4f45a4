// OrvHelp.h: the text "orv --help" shows: the program frame's options and every
// command's usage.
#pragma once

namespace orvtool {

char const *helpText();

} // namespace orvtool
