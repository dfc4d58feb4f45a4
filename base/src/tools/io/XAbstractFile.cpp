// XAbstractFile.cpp: the open stream shared by the binary reader and writer.
#include "orv/XFile.h"

#include "orv/XError.h"
#include "tools/platform/OrvPlatform.h"
#include "tools/thread/QtMutexLock.h"

namespace orv {

XAbstractFile::~XAbstractFile() { closeStream(); }

bool XAbstractFile::isOpen() const {
    QtMutexLock lock(&mutex);
    return fp != nullptr;
}

qint64 XAbstractFile::tell() {
    QtMutexLock lock(&mutex);
    ORV_ASSERT_PTR(fp);
    return platform::tell64(fp);
}

void XAbstractFile::close() {
    QtMutexLock lock(&mutex);
    closeStream();
}

void XAbstractFile::closeStream() {
    if (fp)
        std::fclose(fp);
    fp = nullptr;
}

} // namespace orv
