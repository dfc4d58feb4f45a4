// XMem.h: the library's working block of bytes: owning, growing, cheap to move.
//
//   orv::XMem block;
//   block.append_raw_data(header, 16);
//   block.append_string(QStringLiteral("name"));   // 8-byte length, then UTF-8
//   worker.take(std::move(block));                 // no byte is copied
//
// One thread owns a block at a time; blocks cross threads by move.
#pragma once

#include "orv/AbstractMemory.h"
#include "orv/XByteArray.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <string>
#include <vector>

class QFile;

namespace orv {

struct XRamInfo;

class ORV_EXPORT XMem : public AbstractMemory {
public:
    XMem();
    // sz bytes of (char)fill, or of 0 for any negative fill.
    explicit XMem(quint64 sz, int fill = -1);
    // Text blocks hold their terminating 0.
    XMem(char const *text);
    XMem(std::string const &text);
    XMem(QString const &text);
    // Raw bytes, no terminator.
    XMem(QByteArray const &bytes);
    // A new block number and a clean error word: the source's error stays with it.
    XMem(XMem const &other);
    // Takes bytes, number and error word; the source is left empty and clean with
    // its old number.
    XMem(XMem &&other) noexcept;
    ~XMem() override;

    // Copies the bytes, draws a new block number, keeps this error word.
    XMem &operator=(XMem const &other);
    XMem &operator=(XMem &&other) noexcept;
    // These change only the bytes.
    XMem &operator=(char const *text);
    XMem &operator=(std::string const &text);
    XMem &operator=(QString const &text);
    XMem &operator=(QByteArray const &bytes);

    // Bytes as operator=, then error word and block number too.
    void _assign(XMem const &other);
    // A twin that carries this block's number; this block draws a fresh one.
    XMem copy();

    char const *mem() const override { return storage.data(); }
    char *mem() override { return storage.data(); }
    quint64 length() const override { return storage.size(); }
    quint64 size() const { return storage.size(); }
    bool isEmpty() const { return storage.begin() == storage.end(); }
    explicit operator bool() const { return size() != 0 && isOK(); }
    // Keeps `if (block)` off the inherited pointer conversion.
    explicit operator bool() { return size() != 0 && isOK(); }
    unsigned int getCounterMemBlock() const { return counterMemBlock; }

    XByteArray createByteArray() const override;
    // Size and digest of the bytes, as an XNullDevice with digest finds them.
    XRamInfo createRamInfo() const;
    // The length becomes sz, then sz bytes are copied.
    bool setMem(void const *pMem, quint64 sz) override;
    QString toString(quint64 head, quint64 tail, bool asc, bool hex, bool md5) const override;

    // The head up to the old length stays, new bytes are 0; any fill but -1 then
    // overwrites the whole block.
    void reAlloc(quint64 sz, int fill = -1);
    // Room for sz bytes without changing the length; memory not written stays untouched.
    void reserve(quint64 sz) { storage.reserve(sz); }

    using AbstractMemory::setString;
    // Always empties the block first; stores the string and its terminator.
    virtual void setString(char const *text);
    void setString(QString const &text);
    void setString(std::string const &text);

    // A null pMem is fatal.
    virtual void set_raw_data(QByteArray const &bytes);
    virtual void set_raw_data(void const *pMem, quint64 sz);
    void setQByteArray(QByteArray const &bytes) { set_raw_data(bytes); }
    virtual void append_raw_data(QByteArray const &bytes);
    virtual void append_raw_data(void const *ppMem, quint64 sz);

    // Appends one string record: 8-byte length, then the UTF-8 bytes.
    void append_string(QString const &text);
    // The block as UTF-8 without its last byte (the terminator); empty, with an ERROR
    // line, past what a QString holds (about 1 GiB).
    QString get_string() const;
    // The C string length; 0 with a WARN line when the block holds no terminator.
    quint64 stringLen() const;
    // An 8-byte count, then one string record per text.
    void set_string_array(std::vector<QString> const &texts);
    // Reads what set_string_array wrote; stops with an ERROR line at a record that
    // runs past the end.
    std::vector<QString> get_string_array() const;

    // False with ORV_ERROR_NOT_INITIALIZED or ORV_ERROR_OUT_OF_RANGE in the error word.
    bool charAtPos(char &out, quint64 pos);
    bool setCharAtPos(char c, quint64 pos);

    // Clears the error word; keeps the capacity.
    virtual void clear();

    // szPart 0 (or above the file's size) means the whole file. Failures set the
    // error word, except that an empty file gives false alone.
    virtual bool loadFromFile(QString const &path, quint64 szPart);
    // The file and a terminating 0.
    bool loadFromFileAsString(QString const &path);
    // A ":" path is a Qt resource.
    bool loadMem(QString const &path);
    bool saveMem(QString const &path);
    // sz 0 writes all; above the length it fails after the file was emptied.
    bool saveToFile(QString const &path, quint64 sz);

private:
    void resizeStorage(quint64 sz);
    bool readOpenFile(QFile &file, quint64 n);

    std::vector<char> storage;
    unsigned int counterMemBlock;
};

} // namespace orv
