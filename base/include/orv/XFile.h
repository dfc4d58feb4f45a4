// XFile.h: binary files on C streams that threads may share, a plain text writer,
// and the file and directory helpers.
//
//   orv::FileWriter out("data.bin");        // emptied if it was there
//   out.writeUINT(7);
//   out.close();
//   orv::FileReader in("data.bin");
//   unsigned int seven = in.readUINT();      // host byte order: files of one machine
#pragma once

#include "orv/OrvGlobal.h"

#include <QtCore/QByteArray>
#include <QtCore/QMutex>
#include <QtCore/QString>

#include <cstdio>
#include <vector>

namespace orv {

// Exists and is a file; an empty name or a null pointer gives false.
ORV_EXPORT bool fileExists(QString const &fileName);
ORV_EXPORT bool fileExists(char const *fileName);
ORV_EXPORT bool dirExists(QString const &dirName);
// The size in bytes, or -1 when there is no such file (a folder included).
ORV_EXPORT qint64 getFileLength(QString const &fileName);
// isDirectory: path is a directory, made with its parents. Otherwise path names a
// file and its folder is made; a path with no separator after its first character
// logs and gives false.
ORV_EXPORT bool mkDirPath(QString const &path, bool isDirectory);

// The sequential read side of a binary file.
class ORV_EXPORT AbstractReader {
public:
    virtual ~AbstractReader() = default;
    virtual quint64 readBytes(char *values, quint64 n) = 0;
    virtual bool seek(qint64 pos) = 0;
    virtual qint64 readLONG() = 0;
    virtual unsigned int readUINT() = 0;
    virtual qint64 getFileLen() = 0;
    virtual qint64 tell() = 0;
    virtual QString readString() = 0;
    virtual bool readBool() = 0;

    bool canReadMore() { return tell() < getFileLen(); }
};

// The sequential write side of a binary file.
class ORV_EXPORT AbstractWriter {
public:
    virtual ~AbstractWriter() = default;
    virtual void write(char const *values, quint64 n) = 0;
    virtual void writeString(QString const &text) = 0;
    virtual void writeLONG(qint64 value) = 0;
    virtual void writeUINT(unsigned int value) = 0;
    virtual void writeBool(bool value) = 0;
    virtual qint64 tell() = 0;
};

// An open C stream and its name. Every single operation holds the object's mutex,
// so threads may share one file; a sequence such as seek then read is not atomic.
class ORV_EXPORT XAbstractFile {
public:
    XAbstractFile() = default;
    XAbstractFile(XAbstractFile const &) = delete;
    XAbstractFile &operator=(XAbstractFile const &) = delete;
    virtual ~XAbstractFile();

    virtual bool open(QString const &fileName) = 0;
    virtual bool isOpen() const;
    // The stream position; a closed file is fatal.
    virtual qint64 tell();
    virtual void close();

    QString getFileName() const { return fileName; }

protected:
    // Closes the stream; the caller holds the mutex.
    void closeStream();

    std::FILE *fp = nullptr;
    QString fileName;
    mutable QMutex mutex;
};

class ORV_EXPORT FileReader : public XAbstractFile, public AbstractReader {
public:
    FileReader() = default;
    // Opens at once unless the name is empty (or null); failure shows in isOpen().
    explicit FileReader(QString const &fileName);
    explicit FileReader(char const *fileName);

    // False with an ERROR line for a missing or unreadable file and for a directory.
    bool open(QString const &fileName) override;
    // A null pFileName is fatal.
    bool open(char const *pFileName);
    qint64 tell() override { return XAbstractFile::tell(); }
    virtual QString toString() const;

    // A null buffer is fatal. A read that gets no byte at all (past the end, an
    // error, or n == 0) logs and pauses 5 s on purpose, and past the end or on an
    // error it also closes the file: the object is then of no further use.
    quint64 readBytes(char *values, quint64 n) override;
    // From the start; a closed file is fatal, a bad position logs and gives false.
    bool seek(qint64 pos) override;
    qint64 getFileLen() override { return fileLen; }

    char readChar();
    unsigned char readUChar();
    short readShort();
    unsigned short readUShort();
    int readInt();
    unsigned int readUInt();
    unsigned int readUINT() override;
    qint64 readLONG() override;
    quint64 readULONG();
    float readFloat();
    double readDouble();
    // One byte; only 1 is true.
    bool readBool() override;
    // The bytes before the next 0 byte (which is consumed), as Latin-1.
    QString readString() override;

    // One line without its LF or CRLF, read as at most maxLen - 2 bytes (longer lines
    // come in pieces; maxLen is at least 3, and pieces stay below 1 GiB). The text ends
    // at a 0 byte. Memory goes by the line read, not by maxLen. Empty at the end, which
    // sets isEOF().
    QString readAsciiLine(unsigned int maxLen);
    // Reads lines until the end and returns how many it appended. flags: 2 trims each
    // line, 4 drops empty lines, 8 drops lines that start with "#".
    int readAllAsciiLines(std::vector<QString> &lines, unsigned int maxLen, int flags);
    // The last 8 bytes of the file as a LONG; -1 with an ERROR line for a shorter file.
    qint64 readLastLONG();
    qint64 getReadPos() { return tell(); }
    bool isEOF() const { return eof; }

    // The whole file in a new[] buffer the caller deletes, and its length in len.
    // Null (len 0) for a missing file, one gone since the check, one longer than
    // maxLen, or one whose buffer cannot be had.
    static char *readBufferFromFile(QString const &fileName, qint64 &len, qint64 maxLen);

private:
    template <typename T> T readValue();

    bool eof = false;
    qint64 fileLen = -1; // taken at open
};

class ORV_EXPORT FileWriter : public XAbstractFile, public AbstractWriter {
public:
    FileWriter() = default;
    // Opens at once unless the name is empty; failure shows in isOpen().
    explicit FileWriter(QString const &fileName);

    // Creates the file or empties it; false with an ERROR line when it cannot.
    bool open(QString const &fileName) override;
    qint64 tell() override { return XAbstractFile::tell(); }

    // A closed file or a null buffer is fatal. A failed write logs and closes the file.
    void write(char const *values, quint64 n) override;
    void write(QByteArray const &bytes);
    void writeChar(char value);
    void writeShort(short value);
    void writeInt(int value);
    void writeUINT(unsigned int value) override;
    void writeLONG(qint64 value) override;
    void writeFloat(float value);
    void writeDouble(double value);
    // One byte, 1 or 0.
    void writeBool(bool value) override;
    // The Latin-1 bytes alone: no length and no 0 behind them, so readString can read
    // it back only if the caller writes the 0.
    void writeString(QString const &text) override;
    // The text and one LF, in Latin-1.
    void writeLineAscii(QString const &text);
};

// Writes bytes to file through a FileWriter; false with a WARN line when it cannot.
ORV_EXPORT bool writeByteArrayToFile(QByteArray const &bytes, QString const &file);

// A small UTF-8 text writer for tests and reports. Lines end in LF.
class ORV_EXPORT XFile {
public:
    enum MODE { CLOSED = 0, READ = 1, WRITE = 2 };

    // Only WRITE opens anything: the file is created or emptied.
    XFile(QString const &path, MODE mode);
    XFile(XFile const &) = delete;
    XFile &operator=(XFile const &) = delete;
    virtual ~XFile();

    explicit operator bool() const { return fp != nullptr; }

    // A file not open is fatal. True unless the stream reports an error.
    bool write(QString const &text, bool newline);
    // A null pData or a file not open is fatal. False also when nothing was written.
    bool write_cstring(char const *pData);

    // count lines of len capital letters from a freshly seeded generator, each after
    // its number ("%06d" from 1) and a blank if numbered. False once a write fails.
    bool write_random_line(unsigned int len, unsigned int count, bool numbered);

    // The writable temporary folder, "/" and name.
    static QString createTmpFileName(QString const &name);
    // The same with a random name of len letters and digits, and ".txt" if txt.
    static QString createTmpFileName(unsigned int len, bool txt);

private:
    std::FILE *fp = nullptr;
    QString path;
    MODE mode;
};

} // namespace orv
