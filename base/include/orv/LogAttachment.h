// LogAttachment.h: a block of memory that rides along with a log message.
//
//   auto *msg = new orv::LogMessageString("frame");
//   msg->attach(new orv::LogAttachment(QByteArray(raw, size)));
//
// The console shows "{mem:1}" for a block with bytes and no error, "{mem:0}" else.
#pragma once

#include "orv/XMemFile.h"

namespace orv {

// An owning block with its MIME type; the message that holds it deletes it.
class ORV_EXPORT LogAttachment : public XMemFile {
public:
    using XMemFile::XMemFile;
    LogAttachment() = default;
    ~LogAttachment() override;

    int getSize() const { return static_cast<int>(size()); }
};

} // namespace orv
