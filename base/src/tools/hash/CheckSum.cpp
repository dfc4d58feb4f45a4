// CheckSum.cpp: file digests through QCryptographicHash, mapped and cancellable for
// workers, or in one go through QFile.
#include "orv/CheckSum.h"

#include "orv/Log.h"
#include "orv/OrvTime.h"
#include "orv/StringFormat.h"
#include "orv/XFileMapper.h"
#include "orv/XStringStream.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>

namespace orv {

XAtomic<bool> CheckSum::atomicFlagDebug{false};

namespace {

// Big enough that the hash dominates the loop, small enough that a cancel is quick.
constexpr quint64 BLOCK = 0x10000;

QCryptographicHash::Algorithm toQt(CheckSum::ALGO algo) {
    switch (algo) {
    case CheckSum::ALGO::SHA1: return QCryptographicHash::Sha1;
    case CheckSum::ALGO::SHA256: return QCryptographicHash::Sha256;
    default: return QCryptographicHash::Md5;
    }
}

bool isSupported(CheckSum::ALGO algo) {
    return algo == CheckSum::ALGO::MD5 || algo == CheckSum::ALGO::SHA1 ||
           algo == CheckSum::ALGO::SHA256;
}

} // namespace

CheckSum::CheckSum(QFileInfo const &file, ALGO algo) { set_file_algo(file, algo); }

CheckSum::~CheckSum() = default;

bool CheckSum::set_file(QFileInfo const &file) { return set_file_algo(file, algo); }

bool CheckSum::set_file_algo(QFileInfo const &file, ALGO newAlgo) {
    if (calculating) {
        ppError("CheckSum::set_file_algo, <<<$>>> err == ERR::UNFINIHED", file.filePath());
        return false;
    }
    fileInfo = file;
    if (newAlgo != ALGO::NOT_DEFINED && !isSupported(newAlgo)) {
        ppError("CheckSum::map_algo, algo ???? - set to MD5");
        newAlgo = ALGO::MD5;
    }
    algo = newAlgo;
    reset();
    if (algo == ALGO::NOT_DEFINED) {
        ppError("CheckSum::set_file, algo == ALGO::NOT_DEFINED");
        return false;
    }
    return true;
}

void CheckSum::reset() {
    checksum.clear();
    elapsed = 0;
    err = algo == ALGO::NOT_DEFINED ? ERR::ALGO_NO_DEFINED : ERR::STILL_CALCULATING;
}

bool CheckSum::calc(XAtomic<bool> &run, XAtomic<int> &percent) {
    quint64 const start = getMicroseconds();
    run = true;
    percent = 0;
    if (err != ERR::NO_ERROR && err != ERR::STILL_CALCULATING) {
        if (atomicFlagDebug)
            ppDebug("CheckSum::calc, err != ERR::STILL_CALCULATING, err:$", err_to_string(err));
        return false;
    }
    calculating = true;
    checksum.clear();

    XFileMapper mapper(fileInfo);
    quint64 const length = mapper.length();
    // An empty file maps to null, yet has a digest: that of no bytes.
    char const *mem = nullptr;
    if (!mapper.mapReadOnly() || (length > 0 && (mem = mapper.mem()) == nullptr)) {
        ppError("CheckSum::calc, problems mapping file");
        err = fileInfo.exists() ? ERR::FILE_OPEN : ERR::FILE_NOT_EXIST;
        elapsed = getMicroseconds() - start;
        calculating = false;
        return false;
    }

    QCryptographicHash hash(toQt(algo));
    quint64 done = 0;
    unsigned int countBlocks = 0;
    int lastTenth = 0;
    while (run && done < length) {
        quint64 const n = qMin(BLOCK, length - done);
        hash.addData(mem + done, static_cast<int>(n));
        done += n;
        ++countBlocks;
        percent = static_cast<int>(done * 100 / length);
        if (atomicFlagDebug && percent / 10 != lastTenth) {
            lastTenth = percent / 10;
            ppDebug("CheckSum::calc, step:$", static_cast<int>(percent));
            xSleep(200);
        }
    }

    if (run) {
        checksum = hash.result();
        percent = 100;
        err = ERR::NO_ERROR;
    } else {
        if (atomicFlagDebug)
            ppDebug("CheckSum::calc, cancelled, percent == -1");
        percent = -1;
        err = ERR::CANCELLED;
    }
    elapsed = getMicroseconds() - start;
    if (atomicFlagDebug) {
        ppDebug("CheckSum::calc, atomicRun:$", static_cast<bool>(run));
        ppDebug("CheckSum::calc, countBlocks:$", countBlocks);
        ppDebug("CheckSum::calc, crc:$", toString(false));
        ppDebug("CheckSum::~calc, err:$", err_to_string(err));
    }
    calculating = false;
    return err == ERR::NO_ERROR;
}

CheckSum CheckSum::get_checksum(QString const &path, ALGO algo) {
    return get_checksum(QFileInfo(path), algo);
}

CheckSum CheckSum::get_checksum(QFileInfo const &file, ALGO algo) {
    quint64 const start = getMicroseconds();
    CheckSum sum;
    sum.fileInfo = file;
    sum.algo = algo;
    auto fail = [&sum](ERR e, char const *text) {
        sum.err = e;
        sum.checksum = text;
        return sum;
    };
    if (!isSupported(algo))
        return fail(ERR::ALGO_NO_DEFINED, "ALGO-NOT-SUPPORTED");
    QString const path = file.filePath();
    if (!file.exists()) {
        ppError("CheckSum::get_checksum, problems with File <<<$>>> exist ?", path);
        return fail(ERR::FILE_NOT_EXIST, "file-not-exists");
    }
    QFile qfile(path);
    if (!qfile.open(QIODevice::ReadOnly)) {
        ppError("CheckSum::get_checksum, problems with open <<<$>>>", path);
        return fail(ERR::FILE_OPEN, "file-open-error");
    }
    QCryptographicHash hash(toQt(algo));
    if (!hash.addData(&qfile)) {
        ppError("CheckSum::get_checksum, problems with CRC <<<$>>>", path);
        return fail(ERR::CALCULATION, "checksum-calc-error");
    }
    sum.checksum = hash.result();
    sum.err = ERR::NO_ERROR;
    sum.elapsed = getMicroseconds() - start;
    return sum;
}

QString CheckSum::toString(bool upper) const {
    if (err != ERR::NO_ERROR)
        return QStringLiteral("err:") + err_to_string(err);
    QString const hex = QString::fromLatin1(checksum.toHex());
    return upper ? hex.toUpper() : hex;
}

QString CheckSum::toStringFull(bool upper) const {
    if (err != ERR::NO_ERROR)
        return toString(upper);
    return xprintF(" [$] = {$} in $ sec", fileInfo.filePath(), toString(upper),
                   formatMicrosecond_as_Sec(elapsed));
}

QString CheckSum::algo_to_string(ALGO algo) {
    switch (algo) {
    case ALGO::NOT_DEFINED: return QStringLiteral("NOT_DEFINED");
    case ALGO::MD5: return QStringLiteral("MD5");
    case ALGO::SHA1: return QStringLiteral("SHA1");
    case ALGO::SHA256: return QStringLiteral("SHA256");
    }
    return QStringLiteral("unknown-algo");
}

QString CheckSum::err_to_string(ERR err) {
    switch (err) {
    case ERR::NO_ERROR: return QStringLiteral("NO_ERROR");
    case ERR::ALGO_NO_DEFINED: return QStringLiteral("ALGO_NO_DEFINED");
    case ERR::STILL_CALCULATING: return QStringLiteral("STILL_CALCULATING");
    case ERR::FILE_NOT_EXIST: return QStringLiteral("FILE_NOT_EXIST");
    case ERR::FILE_OPEN: return QStringLiteral("FILE_OPEN");
    case ERR::CANCELLED: return QStringLiteral("CANCELLED");
    case ERR::CALCULATION: return QStringLiteral("CALCULATION");
    }
    return QStringLiteral("unknown-err");
}

} // namespace orv
