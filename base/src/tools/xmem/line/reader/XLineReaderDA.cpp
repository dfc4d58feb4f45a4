// XLineReaderDA.cpp: opening and closing the mapping, and reading lines by table entry.
#include "orv/XLineReaderDA.h"

#include "orv/Log.h"
#include "orv/StringFormat.h"

#include <algorithm>
#include <cstring>

namespace orv {

XLineReaderDA::XLineReaderDA(AbstractMemory const &mem, quint64 maxLen, bool createInfos) {
    lineReader.setMemory(&mem, maxLen);
    if (createInfos)
        create_internal_line_infos();
}

XLineReaderDA::~XLineReaderDA() { closeFile(); }

bool XLineReaderDA::openFile(QFileInfo const &file, quint64 maxLen, bool createInfos) {
    return openFile(file.absoluteFilePath(), maxLen, createInfos);
}

bool XLineReaderDA::openFile(QString const &file, quint64 maxLen, bool createInfos) {
    if (ownsFile) {
        ppError("XLineReaderDA::openFile, <<<$>>> already mapped", file);
        return false;
    }
    ownsFile = true;
    longest = 0;
    fileName = file;
    fileMapper.setFileName(file);
    if (!fileMapper.mapReadOnly()) {
        ppError("XLineReaderDA::open, problems mapping file <$> !", file);
        return false;
    }
    if (fileMapper.length() == 0 || fileMapper.mem() == nullptr) {
        ppError("XLineReaderDA::open, mem() == nullptr, file <$> !", file);
        return false;
    }
    lineReader.setMemory(&fileMapper, maxLen);
    if (createInfos)
        create_internal_line_infos();
    return true;
}

void XLineReaderDA::closeFile() {
    if (ownsFile && fileMapper.isMapped()) {
        // The table outlives the mapping; its lines must not be read from freed pages.
        lineReader.detachMemory();
        fileMapper.unMap();
    }
}

bool XLineReaderDA::isOpen() const {
    return ownsFile ? fileMapper.isMapped() : lineReader.memory != nullptr;
}

void XLineReaderDA::setMemory(AbstractMemory const &mem, quint64 maxLen) {
    closeFile();
    ownsFile = false;
    longest = 0;
    lineReader.setMemory(&mem, maxLen);
}

void XLineReaderDA::seekHome() {
    lineReader.seekHome();
    lineCount = 0;
    wrappedUTF8Extended = false;
}

char const *XLineReaderDA::getMemory() const {
    return ownsFile && fileMapper.isMapped() ? fileMapper.mem() : nullptr;
}

quint64 XLineReaderDA::countAllBytes() const { return ownsFile ? fileMapper.length() : 0; }

quint64 XLineReaderDA::longestLine() const {
    quint64 value = longest;
    if (value != 0)
        return value;
    for (XLineInfo const &li : arLines)
        value = std::max<quint64>(value, li.length);
    longest = value;
    return value;
}

XLineInfo const &XLineReaderDA::lineInfoAt(unsigned int i) const {
    static XLineInfo const none;
    return i < arLines.size() ? arLines[i] : none;
}

QString XLineReaderDA::lineAt(unsigned int index) const {
    if (index >= arLines.size()) {
        ppError("XLineReaderDA::lineAt, index:$, allowed range:0-$", index,
                static_cast<qint64>(arLines.size()) - 1);
        return QString();
    }
    return lineAt(arLines[index]);
}

bool XLineReaderDA::readableRange(XLineInfo const &li, char const *where,
                                  char const *whereEnd) const {
    if (!lineReader.isValidPos(li.posMemory)) {
        ppError(where, li.posMemory);
        return false;
    }
    quint64 const last = li.posMemory + li.length - 1;
    if (!lineReader.isValidPos(last)) {
        ppError(whereEnd, li.posMemory, last);
        ppError("li:$", li.toString());
        return false;
    }
    return true;
}

QString XLineReaderDA::lineAt(XLineInfo const &li) const {
    if (li.length == 0)
        return QString();
    if (!readableRange(li, "XLineReaderDA::lineAt, !lineReader.isValidPos(li.posMemory), pos:$",
                       "XLineReaderDA::lineAt,B, !lineReader.isValidPos(li.posMemory), pos:$, "
                       "get_max pos:$"))
        return QString();
    return QString::fromUtf8(lineReader.pBegin + li.posMemory, static_cast<int>(li.length));
}

char const *XLineReaderDA::cStringAt(XLineInfo const &li) const {
    if (li.length == 0)
        return "";
    if (!readableRange(li, "XLineReaderDA::cStringAt, !lineReader.isValidPos(li.posMemory), pos:$",
                       "XLineReaderDA::cStringAt,C, !lineReader.isValidPos(li.posMemory), pos:$, "
                       "get_max pos:$"))
        return "";
    // The buffer holds maxLineLength bytes and a terminator; a longer record is cut.
    quint64 const n = std::min<quint64>(li.length, lineReader.maxLen);
    char *buffer = lineReader.pLine;
    std::memcpy(buffer, lineReader.pBegin + li.posMemory, n);
    buffer[n] = '\0';
    return buffer;
}

QString XLineReaderDA::lineAtRamPos(int pos) const {
    XLineInfo const li = lineInfoAtRamPos(pos);
    return li.isValid() ? lineAt(li) : QString();
}

XLineInfo XLineReaderDA::lineInfoAtRamPos(int pos) const {
    if (pos < 0)
        return XLineInfo();
    for (XLineInfo const &li : arLines)
        if (li.isInRange(static_cast<quint64>(pos)))
            return li;
    return XLineInfo();
}

int XLineReaderDA::file_to_screen(unsigned int index) const {
    if (index >= arLines.size()) {
        ppError("XLineReaderDA::file_to_screen, range problem, index >= arLines.size(), $ >=$",
                index, static_cast<qint64>(arLines.size()));
        return -1;
    }
    int ordinal = 0;
    for (unsigned int i = 1; i <= index; ++i)
        if (arLines[i].lineNumber > arLines[i - 1].lineNumber)
            ++ordinal;
    return ordinal;
}

QString XLineReaderDA::toString(bool details) const {
    if (fileName.isEmpty())
        return QStringLiteral("file ???");
    if (ownsFile && !fileMapper.isMapped())
        return QStringLiteral("not open (XLineReaderDA)");
    if (!details)
        return xprintF("lines:$", static_cast<qint64>(arLines.size()));
    quint64 total = 0, inLines = 0;
    for (XLineInfo const &li : arLines) {
        total += li.lengthTotal;
        inLines += li.length;
    }
    return xprintF("lines:$, bytesTotal:$, bytesInLines:$, longestLine:$",
                   static_cast<qint64>(arLines.size()), format1000(qint64(total)),
                   format1000(qint64(inLines)), longestLine());
}

} // namespace orv
