// ScopedTimeZone.h: sets TZ for one test and puts the old zone back afterwards.
#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

class ScopedTimeZone {
public:
    explicit ScopedTimeZone(char const *zone) {
        if (char const *old = std::getenv("TZ"))
            saved = old;
        ::setenv("TZ", zone, 1);
        ::tzset();
    }
    ~ScopedTimeZone() {
        if (saved)
            ::setenv("TZ", saved->c_str(), 1);
        else
            ::unsetenv("TZ");
        ::tzset();
    }
    ScopedTimeZone(ScopedTimeZone const &) = delete;
    ScopedTimeZone &operator=(ScopedTimeZone const &) = delete;

private:
    std::optional<std::string> saved;
};
