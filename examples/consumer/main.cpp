// main.cpp: prints one `$`-formatted line through the installed library.
#include <orv/Logger.h>
#include <orv/Tokenizer.h>
#include <orv/XStringStream.h>

int main() {
    orv::Tokenizer tokens("a,b,c", ",", false);
    orv::Logger::printToCout(orv::xprintF("consumer: orv base $ tokens, $", tokens.size(), 1.5));
    return 0;
}
