// XMemFile.h: a block of bytes that remembers what it holds: its MIME type and
// where it came from.
//
//   orv::XMemFile picture;
//   if (picture.loadFromFile("shot.png", 0))
//       send(picture, picture.getMimeType().toString());   // "image/png {shot.png}"
#pragma once

#include "orv/XMem.h"
#include "orv/XMimeType.h"

#include <QtCore/QFileInfo>

namespace orv {

class ORV_EXPORT XMemFile : public XMem {
public:
    XMemFile() = default;
    explicit XMemFile(quint64 sz, int fill = -1) : XMem(sz, fill) {}
    XMemFile(char const *text) : XMem(text) {}
    XMemFile(std::string const &text) : XMem(text) {}
    XMemFile(QString const &text) : XMem(text) {}
    XMemFile(QByteArray const &bytes) : XMem(bytes) {}
    // As XMem's, and the type comes along.
    XMemFile(XMemFile const &other) : XMem(other), mimeType(other.mimeType) {}
    XMemFile(XMemFile &&other) noexcept
        : XMem(std::move(other)), mimeType(std::move(other.mimeType)) {}
    ~XMemFile() override;

    // Bytes, error word, block number and type.
    XMemFile &operator=(XMemFile const &other);
    XMemFile &operator=(XMemFile &&other) noexcept;
    void _assign(XMemFile const &other);

    // New content: as XMem, and the type no longer holds, so it is cleared.
    using XMem::setString;
    void setString(char const *text) override;
    using XMem::set_raw_data;
    void set_raw_data(void const *pMem, quint64 sz) override;
    void clear() override;

    void setMimeType(XMimeType const &type) { mimeType = type; }
    XMimeType getMimeType() { return mimeType; }
    XMimeType const &getMimeType() const { return mimeType; }
    bool hasMimeType() const { return mimeType.hasType(); }
    bool isMimeType(XMimeType const &type) const { return mimeType == type; }

    // A whole-file load (szPart 0) also takes the type from the extension and the
    // path as its url; a partial load leaves the type as it was.
    bool loadFromFile(QString const &path, quint64 szPart) override;

    // The whole block as UTF-8, no terminator assumed; empty, with an ERROR line, past
    // what a QString holds (about 1 GiB).
    QString asString() const;
    // The file's text with its terminator as a last character 0; "" on failure.
    static QString fromFile(QString const &path);
    static QString fromFile(QFileInfo const &fileInfo);

private:
    XMimeType mimeType;
};

} // namespace orv
