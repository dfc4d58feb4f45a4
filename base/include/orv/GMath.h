// GMath.h: the library's numeric constants and a thin layer over <cmath> with safe
// domains and one shared idea of "equal".
//
//   float a = orv::GMath::acos(dot);            // never NaN, even for dot = 1.0000001
//   if (orv::GMath::isEqual(a, b)) ...          // |a - b| <= EPSILON
#pragma once

#include "orv/OrvGlobal.h"

#include <cmath>

namespace orv {

struct ORV_EXPORT GMath {
    static constexpr float PI = 3.14159265358979323846f;
    static constexpr float TWO_PI = 6.28318530717958647692f;
    static constexpr float HALF_PI = 1.57079632679489661923f;
    static constexpr float RADIANS_TO_DEGREES =
        57.295776f; // bits 0x42652EE0, one below the nearest
    static constexpr float DEGREES_TO_RADIANS = 0.01745329251994329577f;
    static constexpr float MIN_FLOAT = 1.17549435e-38f; // the smallest normal value
    static constexpr float MAX_FLOAT = 3.40282347e+38f;
    // Float on purpose, and not the double limits: code that needs those must not use these.
    static constexpr float MIN_DOUBLE = 0.0f;
    static constexpr float MAX_DOUBLE = HUGE_VALF;
    static constexpr int MIN_INT = -2147483647 - 1;
    static constexpr int MAX_INT = 2147483647;
    // The 32-bit limits, also in the 64-bit type.
    static constexpr qint64 MIN_GLONG = -2147483648LL;
    static constexpr qint64 MAX_GLONG = 2147483647LL;
    static constexpr float MIN_ONE_ALLOWED = 0.999999f;
    static constexpr float MAX_ONE_ALLOWED = 1.000001f;
    static constexpr float ZERO_TOLERANCE = 1e-6f;

    // Found by halving at start-up, so they are the platform's own.
    static float const EPSILON;
    static double const EPSILON_DOUBLE;
    static float const MIN_ONE; // 1 - EPSILON
    static float const MAX_ONE; // 1 + EPSILON
    static float const PHI;
    static float const INVERSE_PHI;

    // Guards every "not normalized" message of the math classes; meant to be
    // switched off in production. Not synchronised: set it before threads start.
    static bool CHECK_NORMALIZING;

    static float computeMachineEpsilonFloat();
    static double computeMachineEpsilonDouble();

    static float abs(float v) { return std::fabs(v); }
    static float floor(float v) { return std::floor(v); }
    static float log(float v) { return std::log(v); }
    static float exp(float v) { return std::exp(v); }
    static float pow(float b, float e) { return std::pow(b, e); }
    static float sin(float v) { return std::sin(v); }
    static float cos(float v) { return std::cos(v); }
    static float tan(float v) { return std::tan(v); }
    static float asin(float v) { return std::asin(v); }
    static float sqrt(float v) { return std::sqrt(v); }
    // PI at or below -1, 0 at or above 1.
    static float acos(float v) { return v <= -1.0f ? PI : v >= 1.0f ? 0.0f : std::acos(v); }

    static int clamp(int v, int lo, int hi) { return v < lo ? lo : v > hi ? hi : v; }
    static float clamp(float v, float lo, float hi) { return v < lo ? lo : v > hi ? hi : v; }

    static bool isEqual(float a, float b) { return std::fabs(a - b) <= EPSILON; }
    static bool isNearly(float a, float b, float t) { return std::fabs(a - b) <= t; }

    static bool isValid(int v) { return v != MIN_INT && v != MAX_INT; }
    static bool isValid(qint64 v) { return v > MIN_GLONG && v < MAX_GLONG; }
    // Zero and every negative number count as invalid.
    static bool isValid(float v) { return v > MIN_FLOAT && v < MAX_FLOAT; }

    // Half away from zero at the given decimal digit.
    static float round(float v, unsigned int digits);

    static float toDegrees(float radians) { return radians * RADIANS_TO_DEGREES; }
    static float toRadians(float degrees) { return degrees * DEGREES_TO_RADIANS; }

    static float interpolateLinear(float t, float a, float b) { return (1.0f - t) * a + t * b; }
    static float interpolateLinear(float x0, float x1, float x, float y0, float y1) {
        return (y1 - y0) / (x1 - x0) * (x - x0) + y0;
    }

    static float goldenRatioMajor(float v) { return v / PHI; }
    static float goldenRatioMinor(float v) { return v - v / PHI; }

    static void printConstants();
    static void printCounting();
};

} // namespace orv
