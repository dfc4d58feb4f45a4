// GRand.cpp: the quick draws over the runtime's rand().
#include "orv/MersenneTwister.h"

#include <cstdlib>
#include <ctime>

namespace orv {

void gRandIni() { std::srand(static_cast<unsigned int>(std::time(nullptr))); }

int gRand(int n) { return std::rand() % n; }

int gRand(int a, int b) { return a + std::rand() % (b - a); }

void gRandBuffer(char *buffer, int n) {
    for (int i = 0; i < n; ++i)
        buffer[i] = static_cast<char>(std::rand() % 255);
}

QString gRandString(int n) {
    QString text;
    if (n <= 0)
        return text;
    text.reserve(n);
    for (int i = 0; i < n; ++i)
        text.append(QLatin1Char(static_cast<char>(std::rand() % 26 + 'A')));
    return text;
}

} // namespace orv
