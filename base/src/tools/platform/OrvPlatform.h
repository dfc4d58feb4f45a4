// OrvPlatform.h: the few calls that differ between operating systems.
// Each system implements them in its own folder (srcLinux, ...); no other file
// of the library tests the platform.
#pragma once

namespace orv::platform {

// The kernel's id of the calling thread (not a Qt or pthread handle).
unsigned int threadId();

} // namespace orv::platform
