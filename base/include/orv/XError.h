// XError.h: the error word objects carry, the table of error texts, and the fatal handlers.
//
//   if (!readBlock())
//       error.setOrvEOF();                        // later: error.errAsString() == "orv,eof"
//   ORV_ASSERT_PTR(buffer);                      // null: "nullptr:buffer == NULL", exit(1)
//   return XError::printStringErrno("open", -1); // logs the errno text, returns -1
#pragma once

#include "orv/AtomicBits.h"
#include "orv/OrvGlobal.h"

#include <QtCore/QString>

#include <map>

namespace orv {

// Low 16 bits: 0, an errno value, or ORV_ERROR_BASE marking a library error whose
// code stands in the high 16 bits. The setters tell the word's info callback (when
// its emit flag is on), so an owner can watch its error state.
class ORV_EXPORT XError {
public:
    static constexpr unsigned short ORV_ERROR_BASE = 0x8000;
    static constexpr unsigned short ORV_ERROR_CANNOT_READ_RESOURCE = 100;
    static constexpr unsigned short ORV_ERROR_TIMEOUT = 110;
    static constexpr unsigned short ORV_ERROR_BUFFER_EMPTY = 120;
    static constexpr unsigned short ORV_ERROR_NOT_INITIALIZED = 130;
    static constexpr unsigned short ORV_ERROR_OUT_OF_RANGE = 140;
    static constexpr unsigned short ORV_ERROR_TRUNCATE = 150;
    static constexpr unsigned short ORV_ERROR_EOF = 160;
    static constexpr unsigned short ORV_ERROR_NUMBER_TOO_BIG = 170;

    virtual ~XError();

    // The whole word becomes the value cut to 16 bits; a library code is wiped.
    void setErrno(int value);
    // Two stores: a reader in between sees the mark with code 0.
    void setOrvError(unsigned short code);
    void setOrvEOF() { setOrvError(ORV_ERROR_EOF); }
    void setOrvErrorTimeout() { setOrvError(ORV_ERROR_TIMEOUT); }
    void setOrvTruncate() { setOrvError(ORV_ERROR_TRUNCATE); }
    // Silent: the callback isn't told.
    void clearError() { bits = 0u; }

    unsigned int getErrno() const { return bits.lowPart(); }
    unsigned int getOrvError() const { return bits.highPart(); }
    bool isOK() const { return bits.isZeroFlags(); }
    bool isError() const { return bits.lowPart() != 0; }
    bool isOrvError() const { return bits.lowPart() == ORV_ERROR_BASE && bits.highPart() != 0; }
    bool isOrvError(unsigned short code) const {
        return bits.lowPart() == ORV_ERROR_BASE && bits.highPart() == code;
    }
    bool isOrvEOF() const { return isOrvError(ORV_ERROR_EOF); }
    bool isOrvTimeout() const { return isOrvError(ORV_ERROR_TIMEOUT); }
    bool isOrvTruncate() const { return isOrvError(ORV_ERROR_TRUNCATE); }
    bool isOrvNumberTooBig() const { return isOrvError(ORV_ERROR_NUMBER_TOO_BIG); }

    // The library text of the code, or for an errno value the text of the calling
    // thread's current errno (not of the stored number).
    QString errAsString() const;

    AtomicBits &bitFlags() { return bits; }
    AtomicBits const &bitFlags() const { return bits; }

    // Logs text with the text of the current errno at ERROR and returns result:
    // `return XError::printStringErrno("open", -1);`
    static int printStringErrno(QString const &text, int result);

private:
    AtomicBits bits;
};

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
