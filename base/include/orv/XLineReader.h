// XLineReader.h: line by line through a block of memory (usually a read-only file
// mapping) with a bounded line buffer; and the whole-file helper on top.
//
//   orv::XLineReader reader(mappedFile, 4096);
//   while (char const *line = reader.nextLine())      // NUL-terminated, CR LF stripped
//       use(line);                                   // overwritten by the next call
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/XUTF8_Detector.h"

#include <QtCore/QFileInfo>
#include <QtCore/QString>

#include <vector>

namespace orv {

class AbstractMemory;

// Not locked: one thread at a time. The memory is not owned and must outlive the
// reader; several readers may share one read-only memory.
class ORV_EXPORT XLineReader {
public:
    XLineReader() = default;
    XLineReader(AbstractMemory const &mem, quint64 maxLineLength);
    virtual ~XLineReader();
    // A copy reads the same memory from the same place with a line buffer of its own.
    XLineReader(XLineReader const &other);
    XLineReader &operator=(XLineReader const &other);

    // Starts at the head of mem; lines longer than maxLen come out in pieces of
    // maxLen - 1 bytes. A null mem (or null data of a non-empty one) is fatal.
    void setMemory(AbstractMemory const *mem, quint64 maxLen);
    // The next line without its LF (and a CR before it); null at the end.
    char const *nextLine();
    char const *nextLine() const { return const_cast<XLineReader *>(this)->nextLine(); }
    void seekHome();
    // False for sz below 2 or when the buffer can't be had.
    bool setMaxLineLength(quint64 sz);

    quint64 maxLineLength() const { return maxLen; }
    quint64 posMemory() const { return static_cast<quint64>(pCurrent - pBegin); }
    char const *getMemory() const;
    char const *getMemoryLastPosition() const { return pEnd; }
    quint64 getMemorySize() const;
    quint64 length() const { return getMemorySize(); }
    bool isValid() const;
    bool isValidPos(quint64 pos) const;
    // UTF-8 text of the bytes [posStart, posEnd); empty with an ERROR line otherwise.
    QString midString(unsigned int posStart, unsigned int posEnd) const;
    // Counts over the first min(n, size) bytes.
    XUTF8_Detector detect_UTF8(quint64 n) const;

    // Lines of a whole file as text: flags 2 skips empty lines, 1 lines starting with '#'.
    static std::vector<QString> all_lines_from_file(QFileInfo const &file, unsigned int flags,
                                                    quint64 maxLineLength);
    static std::vector<QString> all_lines_from_file(QString const &file, unsigned int flags,
                                                    quint64 maxLineLength);

    // The reader remembers the last memory it was given until another comes; the
    // direct line access takes it back when its own mapping goes away.
    void detachMemory();

private:
    // The direct line access hands lines out through this reader's buffer.
    friend class XLineReaderDA;
    bool allocate(quint64 sz);

    // One spare byte: a last line of maxLen bytes puts its NUL behind them.
    char *pLine = nullptr;
    char const *pBegin = nullptr;
    char const *pCurrent = nullptr;
    char const *pEnd = nullptr;
    AbstractMemory const *memory = nullptr;
    quint64 maxLen = 0;
};

} // namespace orv
