// NumberParser.cpp: FloatParser and IntegerParser.
//
// stof reads up to 19 significant digits into a 64-bit integer and applies the
// decimal exponent once, with a correctly rounded power of ten from a table:
// exact for mantissas below 2^53 and exponents up to 22, and within two units
// in the last place elsewhere. Digits past the 19th only shift the exponent.
#include "orv/NumberParser.h"

#include "orv/Log.h"
#include "orv/XError.h"

#include <QtCore/QString>

#include <cstring>
#include <limits>

namespace orv {

double const FloatParser::NaN = std::numeric_limits<double>::min();
double const FloatParser::NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
bool FloatParser::DEBUG_PARSE = false;
qint64 const IntegerParser::NaN = std::numeric_limits<qint64>::min();

namespace {

// The literals are rounded by the compiler, so each entry is the closest double.
double const pow10[309] = {
    1e0,   1e1,   1e2,   1e3,   1e4,   1e5,   1e6,   1e7,   1e8,   1e9,   1e10,  1e11,  1e12,
    1e13,  1e14,  1e15,  1e16,  1e17,  1e18,  1e19,  1e20,  1e21,  1e22,  1e23,  1e24,  1e25,
    1e26,  1e27,  1e28,  1e29,  1e30,  1e31,  1e32,  1e33,  1e34,  1e35,  1e36,  1e37,  1e38,
    1e39,  1e40,  1e41,  1e42,  1e43,  1e44,  1e45,  1e46,  1e47,  1e48,  1e49,  1e50,  1e51,
    1e52,  1e53,  1e54,  1e55,  1e56,  1e57,  1e58,  1e59,  1e60,  1e61,  1e62,  1e63,  1e64,
    1e65,  1e66,  1e67,  1e68,  1e69,  1e70,  1e71,  1e72,  1e73,  1e74,  1e75,  1e76,  1e77,
    1e78,  1e79,  1e80,  1e81,  1e82,  1e83,  1e84,  1e85,  1e86,  1e87,  1e88,  1e89,  1e90,
    1e91,  1e92,  1e93,  1e94,  1e95,  1e96,  1e97,  1e98,  1e99,  1e100, 1e101, 1e102, 1e103,
    1e104, 1e105, 1e106, 1e107, 1e108, 1e109, 1e110, 1e111, 1e112, 1e113, 1e114, 1e115, 1e116,
    1e117, 1e118, 1e119, 1e120, 1e121, 1e122, 1e123, 1e124, 1e125, 1e126, 1e127, 1e128, 1e129,
    1e130, 1e131, 1e132, 1e133, 1e134, 1e135, 1e136, 1e137, 1e138, 1e139, 1e140, 1e141, 1e142,
    1e143, 1e144, 1e145, 1e146, 1e147, 1e148, 1e149, 1e150, 1e151, 1e152, 1e153, 1e154, 1e155,
    1e156, 1e157, 1e158, 1e159, 1e160, 1e161, 1e162, 1e163, 1e164, 1e165, 1e166, 1e167, 1e168,
    1e169, 1e170, 1e171, 1e172, 1e173, 1e174, 1e175, 1e176, 1e177, 1e178, 1e179, 1e180, 1e181,
    1e182, 1e183, 1e184, 1e185, 1e186, 1e187, 1e188, 1e189, 1e190, 1e191, 1e192, 1e193, 1e194,
    1e195, 1e196, 1e197, 1e198, 1e199, 1e200, 1e201, 1e202, 1e203, 1e204, 1e205, 1e206, 1e207,
    1e208, 1e209, 1e210, 1e211, 1e212, 1e213, 1e214, 1e215, 1e216, 1e217, 1e218, 1e219, 1e220,
    1e221, 1e222, 1e223, 1e224, 1e225, 1e226, 1e227, 1e228, 1e229, 1e230, 1e231, 1e232, 1e233,
    1e234, 1e235, 1e236, 1e237, 1e238, 1e239, 1e240, 1e241, 1e242, 1e243, 1e244, 1e245, 1e246,
    1e247, 1e248, 1e249, 1e250, 1e251, 1e252, 1e253, 1e254, 1e255, 1e256, 1e257, 1e258, 1e259,
    1e260, 1e261, 1e262, 1e263, 1e264, 1e265, 1e266, 1e267, 1e268, 1e269, 1e270, 1e271, 1e272,
    1e273, 1e274, 1e275, 1e276, 1e277, 1e278, 1e279, 1e280, 1e281, 1e282, 1e283, 1e284, 1e285,
    1e286, 1e287, 1e288, 1e289, 1e290, 1e291, 1e292, 1e293, 1e294, 1e295, 1e296, 1e297, 1e298,
    1e299, 1e300, 1e301, 1e302, 1e303, 1e304, 1e305, 1e306, 1e307, 1e308};

int const maxExponent = 308;

// A NUL-terminated text.
struct CText {
    char const *p;
    char peek() const { return *p; }
    bool atEnd() const { return *p == 0; }
};

// A text that ends at `end`; a NUL before it ends it as well.
struct BoundedText {
    char const *p;
    char const *end;
    char peek() const { return p < end ? *p : 0; }
    bool atEnd() const { return p >= end; }
};

struct Scan {
    quint64 mantissa = 0;
    int exp10 = 0;
    bool negative = false;
    bool ok = false;
};

inline int digitOf(char c) { return c - '0'; }

template <class Text> Scan scanFloat(Text t, bool commaToo, bool trace) {
    Scan s;
    while (Parser::is_white_space(t.peek()))
        ++t.p;
    char c = t.peek();
    if (c == '-' || c == '+') {
        s.negative = c == '-';
        if (trace)
            ppDebug(s.negative ? "FloatParser::asciiToFloat, found '-'"
                               : "FloatParser::asciiToFloat, found '+'");
        ++t.p;
    }
    bool anyDigit = false;
    int kept = 0; // significant digits in the mantissa; leading zeros don't count
    while (Parser::is_digit(c = t.peek())) {
        anyDigit = true;
        if (kept < 19) {
            s.mantissa = s.mantissa * 10 + static_cast<quint64>(digitOf(c));
            kept += s.mantissa != 0;
        } else {
            ++s.exp10;
        }
        ++t.p;
    }
    if (c == '.' || (commaToo && c == ',')) {
        if (trace)
            ppDebug("FloatParser::asciiToFloat, value before '.' is:$",
                    static_cast<double>(s.mantissa));
        ++t.p;
        while (Parser::is_digit(c = t.peek())) {
            anyDigit = true;
            if (kept < 19) {
                s.mantissa = s.mantissa * 10 + static_cast<quint64>(digitOf(c));
                kept += s.mantissa != 0;
                --s.exp10;
            }
            ++t.p;
        }
    }
    if (!anyDigit)
        return s;
    if (c == 'e' || c == 'E') {
        ++t.p;
        bool negativeExp = false;
        c = t.peek();
        if (c == '-' || c == '+') {
            negativeExp = c == '-';
            ++t.p;
        }
        if (!Parser::is_digit(t.peek()))
            return s;
        int e = 0;
        while (Parser::is_digit(c = t.peek())) {
            if (e < maxExponent)
                e = e * 10 + digitOf(c);
            ++t.p;
        }
        if (e > maxExponent)
            e = maxExponent;
        if (trace)
            ppDebug("FloatParser::asciiToFloat, expon: $", negativeExp ? -e : e);
        s.exp10 += negativeExp ? -e : e;
    }
    while (Parser::is_white_space(t.peek()))
        ++t.p;
    if (!t.atEnd()) {
        if (t.peek() != 0)
            return s;
        ppError("FloatParser::asciiToFloat, pEnd not valid !");
    }
    s.ok = true;
    return s;
}

double compose(Scan const &s) {
    if (!s.ok)
        return FloatParser::NaN;
    double v = static_cast<double>(s.mantissa);
    if (s.mantissa != 0) {
        int e = s.exp10 < 0 ? -s.exp10 : s.exp10;
        double split = 1.0;
        if (e > maxExponent) {
            split = pow10[maxExponent];
            e = qMin(e - maxExponent, maxExponent);
        }
        // Dividing by an exact power keeps more precision than multiplying by 1e-k.
        v = s.exp10 < 0 ? v / split / pow10[e] : v * split * pow10[e];
    }
    return s.negative ? -v : v;
}

// The scale built the first way: steps of 1e50, then 1e8, then 10.
double composeLegacy(Scan const &s) {
    if (!s.ok)
        return FloatParser::NaN;
    int e = s.exp10 < 0 ? -s.exp10 : s.exp10;
    double scale = 1.0;
    for (; e >= 50; e -= 50)
        scale *= 1e50;
    for (; e >= 8; e -= 8)
        scale *= 1e8;
    for (; e > 0; --e)
        scale *= 10.0;
    double const value = static_cast<double>(s.mantissa);
    double const v = s.exp10 < 0 ? value / scale : value * scale;
    return s.negative ? -v : v;
}

} // namespace

double FloatParser::stof(char const *c_str) {
    ORV_ASSERT_PTR(c_str);
    return compose(scanFloat(CText{c_str}, false, false));
}

double FloatParser::stof_legacy(char const *c_str) {
    ORV_ASSERT_PTR(c_str);
    return composeLegacy(scanFloat(CText{c_str}, false, false));
}

double FloatParser::asciiToFloat(char const *p, char const *pEnd) {
    ORV_ASSERT_PTR(p);
    ORV_ASSERT_PTR(pEnd);
    if (pEnd < p) {
        ppError("FloatParser::asciiToFloat, pEnd not valid !");
        return NaN;
    }
    if (DEBUG_PARSE)
        ppDebug("FloatParser - DEBUG '$'", QString::fromLatin1(p, static_cast<int>(pEnd - p)));
    return compose(scanFloat(BoundedText{p, pEnd}, true, DEBUG_PARSE));
}

double FloatParser::asciiToFloat(char const *p) {
    ORV_ASSERT_PTR(p);
    return asciiToFloat(p, p + std::strlen(p));
}

qint64 IntegerParser::stoi(char const *c_str) {
    ORV_ASSERT_PTR(c_str);
    char const *p = c_str;
    while (is_white_space(*p))
        ++p;
    bool const negative = *p == '-';
    if (*p == '-' || *p == '+')
        ++p;
    char const *const firstDigit = p;
    quint64 value = 0; // unsigned, so that overflow wraps instead of being undefined
    for (; is_digit(*p); ++p)
        value = value * 10 + static_cast<quint64>(*p - '0');
    if (p == firstDigit)
        return NaN;
    while (is_white_space(*p))
        ++p;
    if (*p != 0)
        return NaN;
    return static_cast<qint64>(negative ? 0 - value : value);
}

} // namespace orv
