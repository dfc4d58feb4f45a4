// NumberParser.h: fast text-to-number parsers on bare `char` pointers.
//
//   double d = orv::FloatParser::stof(" -1.5e2 ");        // -150
//   qint64 i = orv::IntegerParser::stoi("12x");           // IntegerParser::NaN
//   if (d == orv::FloatParser::NaN) { /* not a number */ }
//
// The parsers allocate nothing and take no lock. Text may have blanks and tabs
// around the number, nothing else.
#pragma once

#include "orv/OrvGlobal.h"

namespace orv {

class ORV_EXPORT Parser {
public:
    static bool is_digit(char c) { return c >= '0' && c <= '9'; }
    // Blank and tab only.
    static bool is_white_space(char c) { return c == ' ' || c == '\t'; }
};

class ORV_EXPORT FloatParser : public Parser {
public:
    // The "not a number" result of the parsers: the smallest normal double
    // (bit pattern 0x0010000000000000), so that it compares equal to itself.
    static double const NaN;
    // The IEEE quiet NaN.
    static double const NOT_A_NUMBER;
    // Traces asciiToFloat at DEBUG.
    static bool DEBUG_PARSE;

    // Optional sign, digits with an optional `.` fraction, optional exponent whose
    // digits are capped at 308. No digit or a foreign character gives NaN.
    // A null pointer is fatal.
    static double stof(char const *c_str);
    // The first form of stof: same text rules, plain double arithmetic.
    static double stof_legacy(char const *c_str);
    // As stof on [p, pEnd), with `,` accepted as the decimal point too.
    static double asciiToFloat(char const *p, char const *pEnd);
    static double asciiToFloat(char const *p);
};

class ORV_EXPORT IntegerParser : public Parser {
public:
    // The smallest 64-bit integer, returned for text that is not a number.
    static qint64 const NaN;

    // Optional sign and digits; no digit or a foreign character gives NaN.
    // There is no overflow check: the value wraps modulo 2^64. A null pointer is fatal.
    static qint64 stoi(char const *c_str);
};

} // namespace orv
