// FileReader.cpp: typed binary reads, ASCII lines and whole-file loads on a C stream.
#include "orv/XFile.h"

#include "orv/Log.h"
#include "orv/OrvTime.h"
#include "orv/XError.h"
#include "tools/platform/OrvPlatform.h"
#include "tools/thread/QtMutexLock.h"
#include "tools/xmem/LongBlocks.h"

#include <QtCore/QFile>

#include <cerrno>
#include <memory>
#include <new>

namespace orv {

namespace {

// A failed read pauses on purpose: the log shows it, and a loop that retries
// cannot spin.
quint64 const READ_PAUSE_MS = 5000;

// The one read routine. A read that gets no byte is never silent: it logs, pauses,
// and (past the end or on an error) closes the stream, which leaves fp null.
quint64 readTheArray(QString const &fileName, std::FILE *&fp, char *values, quint64 n) {
    if (!fp) {
        ppError("::readTheArray, fp == NULL");
        xSleep(READ_PAUSE_MS);
        return 0;
    }
    ORV_ASSERT_PTR(values);
    if (n == 0) {
        ppDebug("::readTheArray, within file '$', try to read 0 bytes", fileName);
        xSleep(READ_PAUSE_MS);
        return 0;
    }
    errno = 0;
    size_t const r = std::fread(values, 1, n, fp);
    if (r > 0)
        return r;
    int const error = errno;
    if (error == 0)
        ppDebug("::readTheArray, posMemory:$", platform::tell64(fp));
    if (std::feof(fp))
        ppDebug("::readTheArray, within file '$' EOF, close file now!", fileName);
    else
        ppError("::readTheArray, r:$, within file '$', errno:$, try to close file", r, fileName,
                error);
    xSleep(READ_PAUSE_MS);
    std::fclose(fp);
    fp = nullptr;
    return r;
}

} // namespace

FileReader::FileReader(QString const &fileName) {
    if (!fileName.isEmpty())
        open(fileName);
}

FileReader::FileReader(char const *fileName) {
    if (fileName && *fileName)
        open(fileName);
}

bool FileReader::open(QString const &name) {
    QtMutexLock lock(&mutex);
    closeStream();
    eof = false;
    fileName = name;
    fileLen = getFileLength(name);
    // The C library opens a folder for reading too and fails only at the first read
    // (after the 5 s pause); a folder is refused here instead.
    if (!dirExists(name))
        fp = platform::fopenPath(name, "rb");
    if (!fp) {
        ppError("FileReader::open, file problems with '$'", name);
        return false;
    }
    return true;
}

bool FileReader::open(char const *pFileName) {
    ORV_ASSERT_PTR(pFileName);
    return open(QFile::decodeName(pFileName));
}

QString FileReader::toString() const {
    QtMutexLock lock(&mutex);
    if (!fp)
        return fileName + QStringLiteral(", not open reading");
    return fileName + QStringLiteral(", open") + QStringLiteral(", readPos:") +
           QString::number(platform::tell64(fp));
}

quint64 FileReader::readBytes(char *values, quint64 n) {
    QtMutexLock lock(&mutex);
    return readTheArray(fileName, fp, values, n);
}

bool FileReader::seek(qint64 pos) {
    QtMutexLock lock(&mutex);
    ORV_ASSERT_PTR(fp);
    ppDebug("FileReader::seek, posMemory:$", pos);
    if (!platform::seek64(fp, pos)) {
        ppError("FileBin::seek, problems at posMemory %$, errno:$", pos, errno);
        return false;
    }
    return true;
}

template <typename T> T FileReader::readValue() {
    T value{};
    readBytes(reinterpret_cast<char *>(&value), sizeof(value));
    return value;
}

char FileReader::readChar() { return readValue<char>(); }
unsigned char FileReader::readUChar() { return readValue<unsigned char>(); }
short FileReader::readShort() { return readValue<short>(); }
unsigned short FileReader::readUShort() { return readValue<unsigned short>(); }
int FileReader::readInt() { return readValue<int>(); }
unsigned int FileReader::readUInt() { return readValue<unsigned int>(); }
unsigned int FileReader::readUINT() { return readValue<unsigned int>(); }
qint64 FileReader::readLONG() { return readValue<qint64>(); }
quint64 FileReader::readULONG() { return readValue<quint64>(); }
float FileReader::readFloat() { return readValue<float>(); }
double FileReader::readDouble() { return readValue<double>(); }
bool FileReader::readBool() { return readValue<unsigned char>() == 1; }

QString FileReader::readString() {
    QByteArray bytes;
    char c = 0;
    while (readBytes(&c, 1) == 1 && c != 0)
        bytes.append(c);
    return QString::fromLatin1(bytes);
}

QString FileReader::readAsciiLine(unsigned int maxLen) {
    QtMutexLock lock(&mutex);
    if (!fp) {
        ppError("FileReader::readAsciiLine - file not open");
        return QString();
    }
    if (eof)
        return QString();
    // Below 3 nothing would be read at all, and a caller looping until the end would
    // never get there. Above what a QString holds the line comes in pieces too.
    quint64 const limit = qMin<quint64>(qMax(maxLen, 3u) - 2, xmem::MAX_QSTRING_BYTES);
    // Byte by byte, as fgets with a buffer of maxLen - 1 would read them, but with memory
    // for the line itself rather than for the longest line allowed.
    QByteArray line;
    bool afterZero = false;
    quint64 n = 0;
    int c = 0;
    while (n < limit && (c = std::getc(fp)) != EOF) {
        ++n;
        if (c == 0)
            afterZero = true; // the text ends at the first 0 byte
        else if (!afterZero)
            line.append(static_cast<char>(c));
        if (c == '\n')
            break;
    }
    if (n == 0) {
        eof = true;
        return QString();
    }
    if (line.endsWith('\n'))
        line.chop(1);
    if (line.endsWith('\r'))
        line.chop(1);
    return QString::fromLatin1(line);
}

int FileReader::readAllAsciiLines(std::vector<QString> &lines, unsigned int maxLen, int flags) {
    int added = 0;
    while (!isEOF()) {
        QString line = readAsciiLine(maxLen);
        if (!isOpen() || (isEOF() && line.isEmpty()))
            break; // the empty text of the end is not a line
        if (flags & 2)
            line = line.trimmed();
        if ((flags & 4) && line.isEmpty())
            continue;
        if ((flags & 8) && line.startsWith(QLatin1Char('#')))
            continue;
        lines.push_back(line);
        ++added;
    }
    return added;
}

qint64 FileReader::readLastLONG() {
    if (fileLen < 8) {
        ppError("FileReader::readLastLONG, len < 8");
        return -1;
    }
    seek(fileLen - 8);
    return readLONG();
}

char *FileReader::readBufferFromFile(QString const &fileName, qint64 &len, qint64 maxLen) {
    len = 0;
    if (!fileExists(fileName)) {
        ppDebug("FileReader::readBufferFromFile, '$' does not exist", fileName);
        return nullptr;
    }
    qint64 const lenReal = getFileLength(fileName);
    // A negative length is a file that went away since the check above.
    if (lenReal > maxLen || lenReal < 0) {
        ppError("FileReader::readBufferFromFile, '$ ' problems, lenReal:$, MAX_LEN:$", fileName,
                lenReal, maxLen);
        return nullptr;
    }
    std::unique_ptr<char[]> buffer(new (std::nothrow) char[static_cast<size_t>(lenReal)]);
    if (!buffer) {
        ppError("FileReader::readBufferFromFile, '$', cannot allocate $ bytes", fileName, lenReal);
        return nullptr;
    }
    FileReader reader(fileName);
    // An empty file has nothing to read: a read of 0 bytes would only pause.
    if (!reader.isOpen() ||
        (lenReal > 0 && reader.readBytes(buffer.get(), lenReal) != static_cast<quint64>(lenReal)))
        return nullptr;
    len = lenReal;
    return buffer.release();
}

} // namespace orv
