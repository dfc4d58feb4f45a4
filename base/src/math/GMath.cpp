// GMath.cpp: the constants computed at start-up and the logged forms.
#include "orv/GMath.h"

#include "orv/Log.h"

namespace orv {

namespace {

// The last x for which 1 + x / 2 still differs from 1. The volatile store keeps
// the sum in the type's own precision even where the compiler would widen it.
template <typename T> T machineEpsilon() {
    T x = T(0.5);
    for (;;) {
        volatile T sum = T(1) + x / T(2);
        if (sum == T(1))
            return x;
        x /= T(2);
    }
}

} // namespace

float GMath::computeMachineEpsilonFloat() { return machineEpsilon<float>(); }
double GMath::computeMachineEpsilonDouble() { return machineEpsilon<double>(); }

float const GMath::EPSILON = GMath::computeMachineEpsilonFloat();
double const GMath::EPSILON_DOUBLE = GMath::computeMachineEpsilonDouble();
float const GMath::MIN_ONE = 1.0f - GMath::EPSILON;
float const GMath::MAX_ONE = 1.0f + GMath::EPSILON;
float const GMath::PHI = (std::sqrt(5.0f) + 1.0f) / 2.0f;
float const GMath::INVERSE_PHI = 1.0f / GMath::PHI;
bool GMath::CHECK_NORMALIZING = true;

float GMath::round(float v, unsigned int digits) {
    float const scale = std::pow(10.0f, static_cast<float>(digits));
    return std::round(v * scale) / scale;
}

void GMath::printConstants() {
    auto line = [](char const *name, double value) {
        ppDebug(QString::asprintf("    %-18s = %26.24f", name, value));
    };
    ppDebug("Mathematics constants:");
    ppDebug("  Basics:");
    line("PI", PI);
    line("TWO_PI", TWO_PI);
    line("HALF_PI", HALF_PI);
    line("RADIANS_TO_DEGREES", RADIANS_TO_DEGREES);
    line("DEGREES_TO_RADIANS", DEGREES_TO_RADIANS);
    line("MIN_FLOAT", MIN_FLOAT);
    line("MAX_FLOAT", MAX_FLOAT);
    line("MIN_DOUBLE", MIN_DOUBLE);
    line("MAX_DOUBLE", MAX_DOUBLE);
    line("MIN_INT", MIN_INT);
    line("MAX_INT", MAX_INT);
    line("MIN_GLONG", static_cast<double>(MIN_GLONG));
    line("MAX_GLONG", static_cast<double>(MAX_GLONG));
    line("MIN_ONE_ALLOWED", MIN_ONE_ALLOWED);
    line("MAX_ONE_ALLOWED", MAX_ONE_ALLOWED);
    line("ZERO_TOLERANCE", ZERO_TOLERANCE);
    line("EPSILON", EPSILON);
    line("EPSILON_DOUBLE", EPSILON_DOUBLE);
    line("MIN_ONE", MIN_ONE);
    line("MAX_ONE", MAX_ONE);
    line("PHI", PHI);
    line("INVERSE_PHI", INVERSE_PHI);
}

void GMath::printCounting() {
    ppDebug("Counting mathematics objects - implement me - or delete me");
}

} // namespace orv
