// XLineReader.cpp: lines found with memchr on the memory, copied into the bounded
// buffer; the whole-file helper maps the file and collects the lines.
#include "orv/XLineReader.h"

#include "orv/AbstractMemory.h"
#include "orv/Log.h"
#include "orv/XError.h"
#include "orv/XFileMapper.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace orv {

XLineReader::XLineReader(AbstractMemory const &mem, quint64 maxLineLength) {
    setMemory(&mem, maxLineLength);
}

XLineReader::~XLineReader() { delete[] pLine; }

XLineReader::XLineReader(XLineReader const &other)
    : pBegin(other.pBegin), pCurrent(other.pCurrent), pEnd(other.pEnd), memory(other.memory) {
    // Two readers sharing one buffer would both free it: the copy gets its own.
    if (other.pLine)
        allocate(other.maxLen);
    maxLen = other.maxLen;
}

XLineReader &XLineReader::operator=(XLineReader const &other) {
    if (this == &other)
        return *this;
    delete[] pLine;
    pLine = nullptr;
    if (other.pLine)
        allocate(other.maxLen);
    maxLen = other.maxLen;
    pBegin = other.pBegin;
    pCurrent = other.pCurrent;
    pEnd = other.pEnd;
    memory = other.memory;
    return *this;
}

bool XLineReader::allocate(quint64 sz) {
    pLine = new (std::nothrow) char[sz + 1];
    return pLine != nullptr;
}

void XLineReader::setMemory(AbstractMemory const *mem, quint64 maxLenIn) {
    if (!mem)
        nullPointerHandling(__FILE__, __LINE__, QStringLiteral("mem == NULL"));
    // A limit below 2 would never move on; it is refused as setMaxLineLength refuses it.
    if (!setMaxLineLength(maxLenIn) && !pLine)
        setMaxLineLength(2);
    if (!pLine)
        nullPointerHandling(__FILE__, __LINE__, QStringLiteral("pLine == NULL"));
    memory = mem;
    char const *data = mem->mem();
    quint64 const size = mem->length();
    // An empty block may have no bytes at all; it simply gives no lines.
    if (!data && size > 0)
        nullPointerHandling(__FILE__, __LINE__, QStringLiteral("pMem == NULL"));
    pBegin = pCurrent = data;
    pEnd = data ? data + size : nullptr;
}

void XLineReader::detachMemory() {
    memory = nullptr;
    pBegin = pCurrent = pEnd = nullptr;
}

char const *XLineReader::nextLine() {
    if (pCurrent >= pEnd || !pLine)
        return nullptr;
    quint64 const rest = static_cast<quint64>(pEnd - pCurrent);
    auto const *lf = static_cast<char const *>(std::memchr(pCurrent, '\n', rest));
    if (lf) {
        quint64 const n = static_cast<quint64>(lf - pCurrent);
        if (n < maxLen) {
            std::memcpy(pLine, pCurrent, n);
            bool const cr = lf != pBegin && lf[-1] == '\r';
            pLine[cr && n > 0 ? n - 1 : n] = '\0';
            pCurrent = lf + 1;
            return pLine;
        }
        std::memcpy(pLine, pCurrent, maxLen - 1);
        pLine[maxLen - 1] = '\0';
        pCurrent += maxLen - 1;
        return pLine;
    }
    quint64 const n = std::min(rest, maxLen);
    std::memcpy(pLine, pCurrent, n);
    pLine[n] = '\0';
    pCurrent += n;
    return pLine;
}

void XLineReader::seekHome() {
    if (!memory) {
        ppError("XLineReader::seekHome, memory == nullptr");
        return;
    }
    pCurrent = pBegin;
}

bool XLineReader::setMaxLineLength(quint64 sz) {
    if (sz < 2) {
        ppError("XLineReader::setMaxLineLength, sz == $", sz);
        return false;
    }
    if (sz == maxLen && pLine)
        return true;
    delete[] pLine;
    pLine = nullptr;
    if (!allocate(sz)) {
        ppError("XLineReader::setMaxLineLength, MEMORY PROBLEM, pLine == nullptr");
        maxLen = 0;
        return false;
    }
    maxLen = sz;
    return true;
}

char const *XLineReader::getMemory() const { return memory ? memory->mem() : nullptr; }

// The size taken at setMemory: the reader reads only that range, and asking a mapped
// file for its size again costs a system call per line.
quint64 XLineReader::getMemorySize() const {
    return memory ? static_cast<quint64>(pEnd - pBegin) : 0;
}

bool XLineReader::isValid() const { return getMemorySize() > 1; }

bool XLineReader::isValidPos(quint64 pos) const { return memory && pos < getMemorySize(); }

QString XLineReader::midString(unsigned int posStart, unsigned int posEnd) const {
    if (!memory)
        nullPointerHandling(__FILE__, __LINE__, QStringLiteral("memory == NULL"));
    if (posEnd <= posStart) {
        ppError("XLineReader::midString, posEnd <= posStart, $ <= $", posEnd, posStart);
        return QString();
    }
    // Clipped to the memory, so that a range past its end reads nothing foreign.
    quint64 const end = std::min<quint64>(posEnd, getMemorySize());
    if (posStart >= end)
        return QString();
    return QString::fromUtf8(pBegin + posStart, static_cast<int>(end - posStart));
}

XUTF8_Detector XLineReader::detect_UTF8(quint64 n) const {
    XUTF8_Detector detector;
    if (!memory) {
        ppError("XLineReader::detect_UTF8, memory == nullptr");
        return detector;
    }
    quint64 const len = std::min(n, getMemorySize());
    if (pBegin && len > 0)
        detector.analyze(pBegin, len);
    return detector;
}

std::vector<QString> XLineReader::all_lines_from_file(QFileInfo const &file, unsigned int flags,
                                                      quint64 maxLineLength) {
    return all_lines_from_file(file.absoluteFilePath(), flags, maxLineLength);
}

std::vector<QString> XLineReader::all_lines_from_file(QString const &file, unsigned int flags,
                                                      quint64 maxLineLength) {
    std::vector<QString> lines;
    XFileMapper mapper(file);
    if (!mapper.mapReadOnly() || !mapper.mem()) {
        ppDebug("XLineReader::all_lines_from_file, problems with '$'", file);
        return lines;
    }
    XLineReader reader(mapper, maxLineLength);
    bool const skipEmpty = flags & 2;
    bool const skipComments = flags & 1;
    while (char const *line = reader.nextLine()) {
        if (skipEmpty && line[0] == '\0')
            continue;
        if (skipComments && line[0] == '#')
            continue;
        lines.push_back(QString::fromUtf8(line));
    }
    return lines;
}

} // namespace orv
