// XFileMapper.cpp: open, lazy map, unmap and close of one file.
#include "orv/XFileMapper.h"

#include "orv/Log.h"
#include "tools/xmem/LongBlocks.h"

namespace orv {

XFileMapper::XFileMapper() {
    if (isDebug())
        ppDebug("XFileMapper::XFileMapper");
}

XFileMapper::XFileMapper(QString const &fileName, QObject *parent) : file(fileName, parent) {
    if (isDebug())
        ppDebug("XFileMapper::XFileMapper, sFilename:'$'", fileName);
}

XFileMapper::XFileMapper(QFileInfo const &fileInfo, QObject *parent)
    : file(fileInfo.absoluteFilePath(), parent) {
    if (isDebug())
        ppDebug("XFileMapper::XFileMapper, fi:'$'", fileInfo.absoluteFilePath());
}

XFileMapper::~XFileMapper() {
    if (pMap)
        unMap();
    if (isDebug())
        ppDebug("XFileMapper::~XFileMapper");
}

bool XFileMapper::open(QIODevice::OpenMode mode, char const *alreadyMapped) {
    if (pMap) {
        ppError(alreadyMapped);
        return false;
    }
    return file.open(mode);
}

bool XFileMapper::mapReadOnly() {
    return open(QIODevice::ReadOnly, "XFileMapper::mapReadOnly, already mapped !");
}

bool XFileMapper::mapReadWrite() {
    return open(QIODevice::ReadWrite, "XFileMapper::mapReadWrite, already mapped !");
}

char *XFileMapper::mapped() const {
    if (isDebug())
        ppDebug("XFileMapper::mem");
    if (!file.isOpen()) {
        ppError("XFileMapper::mem, forgot to call 'mapReadOnly' ?");
        return nullptr;
    }
    if (!pMap)
        pMap = reinterpret_cast<char *>(file.map(0, file.size()));
    return pMap;
}

char *XFileMapper::lastChar() {
    if (!pMap) {
        ppError("XFileMapper::lastChar, pMap == nullptr");
        return nullptr;
    }
    if (length() == 0) {
        ppError("XFileMapper::lastChar, size() == 0");
        return nullptr;
    }
    return pMap + length() - 1;
}

XByteArray XFileMapper::createByteArray() const {
    if (!pMap) {
        ppError("XFileMapper::createByteArray, NOT mapped - call");
        return XByteArray();
    }
    if (!xmem::fitsQByteArray(length(), "XFileMapper::createByteArray"))
        return XByteArray();
    return XByteArray(pMap, static_cast<int>(length()));
}

bool XFileMapper::unMap() {
    if (!pMap) {
        ppError("XFileMapper::mapReadyOnly, was NOT mapped !");
        return false;
    }
    if (isDebug())
        ppDebug("XFileMapper::mapReadyOnly, unMap !");
    file.unmap(reinterpret_cast<uchar *>(pMap));
    pMap = nullptr;
    file.close();
    return true;
}

} // namespace orv
