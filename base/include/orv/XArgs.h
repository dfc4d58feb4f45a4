// XArgs.h: one line of `--key value` text read into a record, as process
// environments and helper command lines are written.
//
//   orv::XArgs args;
//   args.fromString("--name \"a b\" --verbose");   // name = "a b", verbose = "NIX"
//   args.replacedEnvironment("$(name).txt");       // "a b.txt"
#pragma once

#include "orv/XRecord.h"

namespace orv {

struct ORV_EXPORT XArgs : XRecord {
    // A key given without a value holds this text.
    static QString const KEY_ONLY;

    using XRecord::fromString;
    // Adds the keys of line. `"` and `'` share one quote state; an unclosed quote
    // and a lone "--" are logged at ERROR and the rest is still read.
    void fromString(QString const &line);
    // The value; "" for a missing key.
    QString operator[](QString const &key);
    explicit operator bool() const { return hasAttributes(); }
    void setKeyOnly(QString const &key);
    // `$(key)` becomes the value of key, an unknown key stays written as it is; the
    // text between a `$` and the next `(` and after an unclosed `$(` is dropped.
    QString replacedEnvironment(QString const &text);
    QString toString() const override;
    void show(unsigned int space) const;
};

} // namespace orv
