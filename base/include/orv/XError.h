// XError.h: the error word objects carry, the table of error texts, and the fatal handlers.
//
//   if (!readBlock())
//       error.setOrvEOF();                        // later: error.errAsString() == "orv,eof"
//   ORV_ASSERT_PTR(buffer);                      // null: "nullptr:buffer == NULL", exit(1)
//   return XError::printStringErrno("open", -1); // logs the errno text, returns -1
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QString>

#include <map>

namespace orv {

// Texts of library error codes, shared by all libraries of the process. The library's
// own codes are there from the first use on; addError belongs to start-up (no lock).
class ORV_EXPORT XErrorMap {
public:
    static void addError(unsigned int code, QString const &text);
    static bool containsError(unsigned int code);
    // The text of code, or "ORV_ERROR_* {code} NOT DEFINED".
    static QString getError(unsigned int code);
    static quint64 size();
    static void showErrorMap(unsigned int space);
    // Registers the library's own texts, once.
    static void checkMap();
    static std::map<unsigned int, QString> &mapErr();

protected:
    virtual ~XErrorMap();
};

// Both end the process: they print where, wait five seconds and exit(1). Any thread.
[[noreturn]] ORV_EXPORT void boolExpressionHandling(char const *file, int line);
[[noreturn]] ORV_EXPORT void nullPointerHandling(char const *file, int line,
                                                 QString const &message);

// The system's error as text: "errno:<n> => <text>".
ORV_EXPORT QString get_last_error_message();
// The last socket error as text: "WSAGetLastError:<n>", or "ERRNO == 0".
ORV_EXPORT QString getLastErrorMessage();

} // namespace orv

#define ORV_ASSERT(condition)                                                                      \
    do {                                                                                           \
        if (!(condition))                                                                          \
            ::orv::boolExpressionHandling(__FILE__, __LINE__);                                     \
    } while (false)

#define ORV_ASSERT_PTR(pointer)                                                                    \
    do {                                                                                           \
        if ((pointer) == nullptr)                                                                  \
            ::orv::nullPointerHandling(__FILE__, __LINE__, QStringLiteral(#pointer " == NULL"));   \
    } while (false)
