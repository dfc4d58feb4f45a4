// FileWriter.cpp: raw binary writes in host byte order, and whole arrays to a file.
#include "orv/XFile.h"

#include "orv/Log.h"
#include "orv/XError.h"
#include "tools/platform/OrvPlatform.h"
#include "tools/thread/QtMutexLock.h"

#include <cerrno>

namespace orv {

FileWriter::FileWriter(QString const &fileName) {
    if (!fileName.isEmpty())
        open(fileName);
}

bool FileWriter::open(QString const &name) {
    QtMutexLock lock(&mutex);
    closeStream();
    fileName = name;
    fp = platform::fopenPath(name, "wb");
    if (!fp) {
        ppError("FileWriter::open, file problems - cannot open '$'", name);
        return false;
    }
    return true;
}

void FileWriter::write(char const *values, quint64 n) {
    QtMutexLock lock(&mutex);
    ORV_ASSERT_PTR(fp);
    ORV_ASSERT_PTR(values);
    // fwrite gives 0 for 0 bytes too; writing nothing is not a failure.
    if (n == 0)
        return;
    if (std::fwrite(values, 1, n, fp) == 0) {
        ppError("::writeBytes, errno:$", errno);
        closeStream();
    }
}

void FileWriter::write(QByteArray const &bytes) {
    write(bytes.constData(), static_cast<quint64>(bytes.size()));
}

void FileWriter::writeChar(char value) { write(&value, sizeof(value)); }

void FileWriter::writeShort(short value) {
    write(reinterpret_cast<char const *>(&value), sizeof(value));
}

void FileWriter::writeInt(int value) {
    write(reinterpret_cast<char const *>(&value), sizeof(value));
}

void FileWriter::writeUINT(unsigned int value) {
    write(reinterpret_cast<char const *>(&value), sizeof(value));
}

void FileWriter::writeLONG(qint64 value) {
    write(reinterpret_cast<char const *>(&value), sizeof(value));
}

void FileWriter::writeFloat(float value) {
    write(reinterpret_cast<char const *>(&value), sizeof(value));
}

void FileWriter::writeDouble(double value) {
    write(reinterpret_cast<char const *>(&value), sizeof(value));
}

void FileWriter::writeBool(bool value) { writeChar(value ? 1 : 0); }

void FileWriter::writeString(QString const &text) { write(text.toLatin1()); }

// One write call, so that a line never interleaves with another thread's.
void FileWriter::writeLineAscii(QString const &text) { write(text.toLatin1() + '\n'); }

bool writeByteArrayToFile(QByteArray const &bytes, QString const &file) {
    FileWriter writer;
    if (!writer.open(file)) {
        ppWarning("orv::writeByteArrayToFile, cannot write to '$'", file);
        return false;
    }
    writer.write(bytes);
    return writer.isOpen();
}

} // namespace orv
