// XByteArrayFiles.cpp: the checked compressed form and the file helpers of XByteArray.
//
// Compressed form: bytes 0-15 are the raw MD5 of bytes 16.., which are qCompress's
// output (a 4-byte big-endian length, then a zlib stream). The digest covers the
// compressed bytes; there is no magic and no version.
#include "orv/XByteArray.h"

#include "orv/Log.h"
#include "orv/StringFormat.h"
#include "orv/XFile.h"
#include "tools/xmem/LongBlocks.h"

#include <QtCore/QFile>

#include <cerrno>

namespace orv {

namespace {

int const DIGEST_SIZE = 16;

// Deflate expands at most 1032:1. qUncompress allocates what the length field claims
// before it inflates a byte, so a larger claim, which no compress() output carries,
// would let 20 bytes of junk cost up to 2 GB.
bool isPlausibleLength(QByteArray const &packed) {
    if (packed.size() < 4)
        return true;
    auto const *p = reinterpret_cast<unsigned char const *>(packed.constData());
    quint64 const claimed = quint64(p[0]) << 24 | quint64(p[1]) << 16 | quint64(p[2]) << 8 | p[3];
    return claimed <= quint64(packed.size() - 4) * 1032 + 1024;
}

char const *const CANNOT_READ = "XMem::loadFromFile, cannot open file '$' for reading";

} // namespace

XByteArray XByteArray::compress(XByteArray const &src) {
    QByteArray const packed = qCompress(src, -1);
    XByteArray out(MD5::md5_16(packed));
    out.append(packed);
    return out;
}

XByteArray XByteArray::unCompress(XByteArray const &src) {
    // Too short to carry a digest: the same failure as a wrong one.
    if (src.size() < DIGEST_SIZE) {
        ppError("XByteArray::unCompress, CHECKSUM-ERROR, return empty array!");
        return XByteArray();
    }
    QByteArray const stored = src.left(DIGEST_SIZE);
    QByteArray const packed = src.mid(DIGEST_SIZE);
    QByteArray const computed = MD5::md5_16(packed);
    bool const plausible = isPlausibleLength(packed);
    QByteArray unpacked = plausible ? qUncompress(packed) : QByteArray();
    if (stored.size() != computed.size() || stored != computed) {
        ppError("XByteArray::unCompress, CHECKSUM-ERROR, return empty array!");
        return XByteArray();
    }
    if (!plausible)
        ppError("XByteArray::unCompress, length field too big for $ compressed bytes, return "
                "empty array!",
                packed.size());
    return XByteArray(std::move(unpacked));
}

bool XByteArray::loadFromFile(QString const &path, quint64 szPart) {
    if (path.startsWith(QLatin1Char(':'))) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            ppError("XMem::loadFromFile, INTERNAL, cannot open file '$' for reading", path);
            setOrvError(ORV_ERROR_CANNOT_READ_RESOURCE);
            return false;
        }
        quint64 const fileSize = static_cast<quint64>(file.size());
        quint64 const n = szPart ? szPart : fileSize;
        if (szPart > fileSize || !xmem::fitsQByteArray(n, "XByteArray::loadFromFile")) {
            setOrvError(ORV_ERROR_NUMBER_TOO_BIG);
            return false;
        }
        resize(static_cast<int>(n));
        return n > 0 && file.read(data(), static_cast<qint64>(n)) > 0;
    }
    if (!fileExists(path)) {
        ppError("XMem::loadFromFile, file '$' does not exist", path);
        return false;
    }
    errno = 0;
    FileReader reader(path);
    if (!reader.isOpen()) {
        int const error = errno ? errno : EISDIR;
        ppError(CANNOT_READ, path);
        setErrno(error);
        return false;
    }
    quint64 const len = static_cast<quint64>(qMax<qint64>(reader.getFileLen(), 0));
    if (len == 0) {
        ppError("XMem::loadFromFile, cannot open file '$' for reading, file is empty - 0 bytes",
                path);
        setOrvError(ORV_ERROR_CANNOT_READ_RESOURCE);
        return false;
    }
    quint64 const n = szPart ? szPart : len;
    if (szPart > len || !xmem::fitsQByteArray(n, "XByteArray::loadFromFile")) {
        setOrvError(ORV_ERROR_NUMBER_TOO_BIG);
        return false;
    }
    resize(static_cast<int>(n));
    reader.readBytes(data(), n);
    return true;
}

bool XByteArray::saveToFile(QString const &path, quint64 sz) {
    ppInfo("XByteArray::saveToFile,  '$'  - bytes:$", path, format1000(size()));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        ppError("XMem::saveToFile, cannot open file '$' for writing", path);
        setOrvError(ORV_ERROR_CANNOT_READ_RESOURCE);
        return false;
    }
    qint64 const toWrite = sz ? static_cast<qint64>(sz) : size();
    // The array is all there is to write: a larger sz shows as a short write.
    qint64 const written = file.write(constData(), qMin<qint64>(toWrite, size()));
    if (written < 0) {
        ppError("XByteArray::saveToFile, problems saving '$'", path);
        return false;
    }
    if (written != toWrite) {
        ppError("XByteArray::saveToFile, problems saving '$', ret:$, szToWrite:$", path, written,
                toWrite);
        return false;
    }
    return true;
}

} // namespace orv
