// RawStringHandles.h: what makes a raw "QString" array readable again. In the raw array
// form a string is its 8-byte in-memory handle, which means something only inside the
// process that wrote it, and only while the string lives.
#pragma once

#include <QtCore/QString>
#include <QtCore/QtGlobal>

namespace orv::xtree {

// Keeps the strings whose handles go into a stream alive (the last million or so), so
// that a reader of this process can follow them.
void keepHandles(QString const *strings, quint64 count);
// The string behind a handle this process wrote; false for any other handle (another
// process's file, damaged bytes), which is never followed.
bool stringOfHandle(quintptr handle, QString &out);

} // namespace orv::xtree
