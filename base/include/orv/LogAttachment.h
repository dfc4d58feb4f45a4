// LogAttachment.h: a block of memory that rides along with a log message.
//
//   auto *msg = new orv::LogMessageString("frame");
//   msg->attach(new orv::LogAttachment(QByteArray(raw, size)));
//
// The console shows "{mem:1}" for a block with bytes and no error, "{mem:0}" else.
#pragma once

#include "orv/XMem.h"

namespace orv {

// An owning block; the message that holds it deletes it.
class ORV_EXPORT LogAttachment : public XMem {
public:
    using XMem::XMem;
    ~LogAttachment() override;
};

} // namespace orv
