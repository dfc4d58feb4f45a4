// XMemFile.cpp: a block with its MIME type, loaded from files.
#include "orv/XMemFile.h"

#include "orv/FileHelpers.h"
#include "orv/Log.h"
#include "tools/xmem/LongBlocks.h"

#include <QtCore/QFile>

namespace orv {

XMemFile::~XMemFile() = default;

XMemFile &XMemFile::operator=(XMemFile const &other) {
    _assign(other);
    return *this;
}

XMemFile &XMemFile::operator=(XMemFile &&other) noexcept {
    XMem::operator=(std::move(other));
    mimeType = std::move(other.mimeType);
    return *this;
}

void XMemFile::_assign(XMemFile const &other) {
    XMem::_assign(other);
    mimeType = other.mimeType;
}

void XMemFile::setString(char const *text) {
    XMem::setString(text);
    mimeType.clear();
}

void XMemFile::set_raw_data(void const *pMem, quint64 sz) {
    XMem::set_raw_data(pMem, sz);
    mimeType.clear();
}

void XMemFile::clear() {
    XMem::clear();
    mimeType.clear();
}

bool XMemFile::loadFromFile(QString const &path, quint64 szPart) {
    if (szPart == 0) {
        mimeType = XMimeType::fromFileExtension(getFileExtension(path, true));
        mimeType.setURL(path);
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        ppError("XFileMem::loadFromFile, cannot open file '$' for reading", path);
        setOrvError(ORV_ERROR_CANNOT_READ_RESOURCE);
        return false;
    }
    quint64 const fileSize = static_cast<quint64>(file.size());
    quint64 const n = szPart == 0 || szPart > fileSize ? fileSize : szPart;
    reAlloc(n, -1);
    return n > 0 && file.read(mem(), static_cast<qint64>(n)) > 0;
}

QString XMemFile::asString() const {
    if (!xmem::fitsQString(size(), "XMemFile::asString"))
        return QString();
    return QString::fromUtf8(mem(), static_cast<int>(size()));
}

QString XMemFile::fromFile(QString const &path) {
    XMemFile text;
    if (!text.loadFromFileAsString(path)) {
        ppError("XMemFile::load, cannot load_thumb <<<$>>>, return empty QString", path);
        return QString();
    }
    return text.asString();
}

QString XMemFile::fromFile(QFileInfo const &fileInfo) {
    return fromFile(fileInfo.absoluteFilePath());
}

} // namespace orv
