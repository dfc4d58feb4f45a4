// XFile.cpp: the UTF-8 text writer and temporary file names.
#include "orv/XFile.h"

#include "orv/MersenneTwister.h"
#include "orv/XError.h"
#include "tools/platform/OrvPlatform.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QStandardPaths>

namespace orv {

XFile::XFile(QString const &path, MODE mode) : path(path), mode(mode) {
    // Plain "w": lines end in LF, the convention of this system.
    if (mode == WRITE)
        fp = platform::fopenPath(path, "w");
}

XFile::~XFile() {
    if (fp)
        std::fclose(fp);
}

bool XFile::write(QString const &text, bool newline) {
    ORV_ASSERT_PTR(fp);
    return std::fprintf(fp, newline ? "%s\n" : "%s", text.toUtf8().constData()) >= 0;
}

bool XFile::write_cstring(char const *pData) {
    ORV_ASSERT_PTR(pData);
    ORV_ASSERT_PTR(fp);
    return std::fprintf(fp, "%s", pData) != 0;
}

bool XFile::write_random_line(unsigned int len, unsigned int count, bool numbered) {
    ORV_ASSERT_PTR(fp);
    // Room for the letters and the zero: the generator's length limit never cuts.
    MersenneTwister generator(false, static_cast<quint64>(len) + 2);
    generator.init_genrand(static_cast<unsigned long>(gRand(1, 0x10000)));
    for (unsigned int line = 1; line <= count; ++line) {
        char const *letters = generator.randString(len);
        int const written = numbered ? std::fprintf(fp, "%06u %s\n", line, letters)
                                     : std::fprintf(fp, "%s\n", letters);
        if (written < 0)
            return false;
    }
    return true;
}

QString XFile::createTmpFileName(QString const &name) {
    return QStandardPaths::writableLocation(QStandardPaths::TempLocation) + QLatin1Char('/') + name;
}

QString XFile::createTmpFileName(unsigned int len, bool txt) {
    static char const chars[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    QString name;
    name.reserve(static_cast<int>(len) + 4);
    for (unsigned int i = 0; i < len; ++i)
        name.append(QLatin1Char(chars[QRandomGenerator::global()->bounded(36)]));
    if (txt)
        name.append(QStringLiteral(".txt"));
    return createTmpFileName(name);
}

} // namespace orv
