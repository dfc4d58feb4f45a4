// CheckSum.h: the MD5, SHA1 or SHA256 digest of a file, read through a memory map so
// that a worker thread can report progress and be cancelled between blocks.
//
//   orv::CheckSum sum(QFileInfo(path), orv::CheckSum::ALGO::SHA256);
//   orv::XAtomic<bool> run;  orv::XAtomic<int> percent;
//   if (sum.calc(run, percent)) ppInfo("$", sum.toString(false));   // run := false cancels
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/XAtomic.h"

#include <QtCore/QByteArray>
#include <QtCore/QFileInfo>
#include <QtCore/QString>

namespace orv {

class ORV_EXPORT CheckSum {
public:
    enum class ALGO { NOT_DEFINED = 0, MD5 = 1, SHA1 = 2, SHA256 = 3 };
    enum class ERR {
        NO_ERROR = 0,
        ALGO_NO_DEFINED = 1,
        STILL_CALCULATING = 2,
        FILE_NOT_EXIST = 3,
        FILE_OPEN = 4,
        CANCELLED = 5,
        CALCULATION = 6
    };

    CheckSum(QFileInfo const &file, ALGO algo);
    virtual ~CheckSum();

    // Prepare a calculation (state STILL_CALCULATING). False, with a log line, for
    // NOT_DEFINED (state ALGO_NO_DEFINED) and while calc runs (nothing changes then).
    // An algorithm outside the three is logged and taken as MD5.
    bool set_file(QFileInfo const &file);
    bool set_file_algo(QFileInfo const &file, ALGO algo);
    bool set_algo(ALGO algo) { return set_file_algo(fileInfo, algo); }
    // Drops the digest and the time; the state goes back to what set_file_algo gave.
    void reset();

    // Digests the file block by block while run stays true. run is set true and
    // percent 0 on entry; percent ends at 100, or -1 when run was cleared (CANCELLED).
    // False on any error, which get_error() names. Only run and percent may be
    // touched by another thread meanwhile.
    bool calc(XAtomic<bool> &run, XAtomic<int> &percent);

    // One-shot, unmapped. On failure the digest is a text that names the trouble
    // ("ALGO-NOT-SUPPORTED", "file-not-exists", "file-open-error", "checksum-calc-error")
    // and get_error() the matching ERR.
    static CheckSum get_checksum(QString const &path, ALGO algo);
    static CheckSum get_checksum(QFileInfo const &file, ALGO algo);

    QFileInfo const &get_file() const { return fileInfo; }
    ALGO get_algo() const { return algo; }
    QString algo_as_string() const { return algo_to_string(algo); }
    // The raw digest bytes.
    QByteArray const &get_checksum() const { return checksum; }
    ERR get_error() const { return err; }
    bool is_error(ERR e) const { return err == e; }
    // Microseconds of the last calculation.
    quint64 get_elapsed_time() const { return elapsed; }
    bool is_cancelled() const { return err == ERR::CANCELLED; }
    bool isValid() const { return err == ERR::NO_ERROR; }
    explicit operator bool() const { return isValid(); }

    // The digest in hex (upper or lower case), or "err:<ERR>".
    QString toString(bool upper) const;
    // " [<file>] = {<hex>} in <seconds> sec", or "err:<ERR>".
    QString toStringFull(bool upper) const;

    static QString algo_to_string(ALGO algo);
    static QString err_to_string(ERR err);

    // Traces each step of calc and slows it down by 200 ms per tenth, so that
    // progress and cancelling can be watched.
    static bool isDebug() { return atomicFlagDebug; }
    static void setDebug(bool on) { atomicFlagDebug = on; }

private:
    CheckSum() = default;

    QFileInfo fileInfo;
    ALGO algo = ALGO::NOT_DEFINED;
    ERR err = ERR::ALGO_NO_DEFINED;
    QByteArray checksum;
    quint64 elapsed = 0;
    XAtomic<bool> calculating{false};

    static XAtomic<bool> atomicFlagDebug;
};

} // namespace orv
