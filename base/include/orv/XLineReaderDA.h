// XLineReaderDA.h: random access by line number to a text file of any size. The file
// is mapped read-only and never copied; one scan builds a table of 32-byte XLineInfo
// records, lines longer than a limit are wrapped at word borders, and text is decoded
// only when a line is asked for.
//
//   orv::XLineReaderDA reader;
//   if (reader.openFile(path, 64 * 1024, true))
//       QString last = reader.lineAt(static_cast<unsigned int>(reader.countLines() - 1));
#pragma once

#include "orv/XAtomic.h"
#include "orv/XFileMapper.h"
#include "orv/XLineInfo.h"
#include "orv/XLineReader.h"

#include <QtCore/QFileInfo>
#include <QtCore/QString>

#include <atomic>
#include <vector>

namespace orv {

// The interface of a text that can be read by line number.
class ORV_EXPORT XDirectLineAccess {
public:
    virtual QString lineAt(unsigned int index) const = 0;
    virtual QString lineAt(XLineInfo const &li) const = 0;
    virtual QString paragraphAt(unsigned int index) const = 0;
    virtual QString lineAtRamPos(int pos) const = 0;
    virtual XLineInfo lineInfoAtRamPos(int pos) const = 0;
    virtual quint64 countLines() const = 0;
    virtual quint64 longestLine() const = 0;
    virtual quint64 countAllBytes() const = 0;
    virtual QString toString(bool details) const = 0;
    virtual QString midString(unsigned int posStart, unsigned int posEnd) const = 0;

protected:
    ~XDirectLineAccess() = default;
};

// One thread builds the table; lookups on a finished table are safe from any thread,
// except cStringAt, which writes the shared line buffer. The longest-line value and the
// file and binary flags may be read while a scan runs.
class ORV_EXPORT XLineReaderDA : public XDirectLineAccess {
public:
    XLineReaderDA() = default;
    // Reads foreign memory, which must outlive the reader; createInfos builds the
    // table (with wrapping) at once.
    XLineReaderDA(AbstractMemory const &mem, quint64 maxLen, bool createInfos);
    virtual ~XLineReaderDA();
    XLineReaderDA(XLineReaderDA const &) = delete;
    XLineReaderDA &operator=(XLineReaderDA const &) = delete;

    // Maps the file; an empty or unmappable file gives false. A reader whose first
    // open failed stays refused ("already mapped"): take a new one.
    bool openFile(QString const &file, quint64 maxLen, bool createInfos);
    bool openFile(QFileInfo const &file, quint64 maxLen, bool createInfos);
    // Unmaps an own file; the table stays, its text can no longer be read.
    void closeFile();
    bool isOpen() const;
    void setMemory(AbstractMemory const &mem, quint64 maxLen);
    void seekHome();

    // The next line or wrapped piece from the current position; false at the end.
    bool nextLineStruct(XLineInfo &li, bool wrap, unsigned int unused = 0);
    std::vector<XLineInfo> createLineInfos(bool wrap);
    unsigned int create_internal_line_infos();
    // Wraps anew with another limit.
    void re_load(quint64 maxLen);
    void check_if_binary_file();
    // Whether the first 1024 bytes hold a control byte other than BS, TAB, LF and CR.
    static bool looksBinary(char const *data, quint64 size);
    bool isBinaryFile() const { return binary; }
    XUTF8_Detector detect_UTF8(quint64 n) const { return lineReader.detect_UTF8(n); }

    // The own mapping's bytes; null for foreign memory, though reading works there.
    char const *getMemory() const;
    quint64 getMemorySize() const { return lineReader.length(); }
    // The bytes that lines are read from, own or foreign; null when closed.
    char const *data() const { return lineReader.pBegin; }
    quint64 countAllBytes() const override;
    // Table entries: wrapped pieces count one each.
    quint64 countLines() const override { return arLines.size(); }
    quint64 longestLine() const override;

    std::vector<XLineInfo> const &lineInfos() const { return arLines; }
    std::vector<XLineInfo>::const_iterator begin() const { return arLines.begin(); }
    std::vector<XLineInfo>::const_iterator end() const { return arLines.end(); }
    // Out of range: a default record.
    XLineInfo const &lineInfoAt(unsigned int i) const;

    QString lineAt(unsigned int index) const override;
    QString lineAt(XLineInfo const &li) const override;
    // A NUL-terminated copy in the line buffer, cut to the buffer's size.
    char const *cStringAt(XLineInfo const &li) const;
    QString paragraphAt(unsigned int index) const override { return lineAt(index); }
    // Linear searches, for occasional use; positions in the first 2 GiB.
    QString lineAtRamPos(int pos) const override;
    XLineInfo lineInfoAtRamPos(int pos) const override;
    QString midString(unsigned int posStart, unsigned int posEnd) const override {
        return lineReader.midString(posStart, posEnd);
    }
    // The file line (from 0) of table entry index; -1 out of range.
    int file_to_screen(unsigned int index) const;
    bool isWrappedUTF8Extended() const { return wrappedUTF8Extended; }
    QString getFile() const { return fileName; }
    QString toString(bool details) const override;

private:
    bool readableRange(XLineInfo const &li, char const *where, char const *whereEnd) const;

    QString fileName;
    XFileMapper fileMapper;
    XLineReader lineReader;
    std::vector<XLineInfo> arLines;
    mutable std::atomic<quint64> longest{0};
    std::atomic<bool> ownsFile{false};
    std::atomic<bool> binary{false};
    unsigned int lineCount = 0;
    unsigned int wrapCount = 0;
    bool wrappedUTF8Extended = false;
};

} // namespace orv
