// OrvPlatformLinux.cpp: Linux bodies of the platform calls.
#include "tools/platform/OrvPlatform.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace orv::platform {

unsigned int threadId() { return static_cast<unsigned int>(::syscall(SYS_gettid)); }

} // namespace orv::platform
