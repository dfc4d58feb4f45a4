// FileBytes.h: the bytes of one file for a search: read into a buffer that a worker
// keeps from file to file, or mapped when the file is large. Not part of the library's
// interface.
#pragma once

#include "orv/AbstractMemory.h"
#include "orv/XFileMapper.h"

#include <QtCore/QString>

#include <memory>

namespace orv::find {

class FileBytes : public AbstractMemory {
public:
    // Files up to this size are read. A read costs a copy; a map costs a fault per
    // page and, on unmapping, a TLB flush on every processor the process runs on,
    // which small files pay dearly for.
    static constexpr quint64 READ_LIMIT = quint64(16) << 20;

    // The bytes of path, of which the walk saw size; false when it cannot be read.
    bool load(QString const &path, quint64 size);
    void release();

    char const *mem() const override { return data; }
    char *mem() override { return data; }
    quint64 length() const override { return count; }
    XByteArray createByteArray() const override;

private:
    std::unique_ptr<char[]> buffer;
    quint64 capacity = 0;
    std::unique_ptr<XFileMapper> mapping;
    char *data = nullptr;
    quint64 count = 0;
};

} // namespace orv::find
