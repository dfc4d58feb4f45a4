// FileBytes.cpp: reading or mapping one file for a search.
#include "find/FileBytes.h"

#include "orv/XByteArray.h"
#include "tools/platform/OrvPlatform.h"

#include <climits>
#include <cstdio>

namespace orv::find {

bool FileBytes::load(QString const &path, quint64 size) {
    release();
    if (size > READ_LIMIT) {
        mapping = std::make_unique<XFileMapper>(path);
        data = mapping->mapReadOnly() ? mapping->mem() : nullptr;
        count = data ? mapping->length() : 0;
        return data != nullptr;
    }
    std::FILE *fp = platform::fopenPath(path, "rb");
    if (!fp)
        return false;
    // Unbuffered: the one read goes straight into our buffer.
    std::setvbuf(fp, nullptr, _IONBF, 0);
    // One byte more than the walk saw tells a file that has grown since; it is read
    // up to the limit, not cut at its old size.
    quint64 const want = std::min(size, READ_LIMIT) + 1;
    if (capacity < want) {
        buffer.reset(new char[want]);
        capacity = want;
    }
    quint64 const got = std::fread(buffer.get(), 1, want, fp);
    bool const failed = std::ferror(fp) != 0;
    std::fclose(fp);
    if (failed)
        return false;
    if (got == want) // grown: map it whole instead
        return load(path, READ_LIMIT + 1);
    data = buffer.get();
    count = got;
    return true;
}

void FileBytes::release() {
    mapping.reset();
    data = nullptr;
    count = 0;
}

XByteArray FileBytes::createByteArray() const {
    return count <= quint64(INT_MAX) && data ? XByteArray(data, int(count)) : XByteArray();
}

} // namespace orv::find
