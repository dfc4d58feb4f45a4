// uncompress_fuzz.cpp: feeds arbitrary bytes to XByteArray::unCompress, once as they
// are (the digest check) and once behind a digest that matches (the zlib stream),
// and checks the round trip of compress.
#include "FuzzCheck.h"
#include "orv/MD5.h"
#include "orv/XByteArray.h"

#include <QtCore/QtGlobal>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

// qUncompress warns on every broken stream; the fuzzer's output stays readable.
void quiet(QtMsgType, QMessageLogContext const &, QString const &) {}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    qInstallMessageHandler(quiet);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size) {
    QByteArray const input(reinterpret_cast<char const *>(data), static_cast<int>(size));
    orv::XByteArray const raw = orv::XByteArray::unCompress(orv::XByteArray(input));
    // Only a matching digest lets anything out.
    if (!raw.isEmpty())
        check(input.size() >= 16 && orv::MD5::md5_16(input.mid(16)) == input.left(16));

    orv::XByteArray const signedInput(orv::MD5::md5_16(input) + input);
    orv::XByteArray const unpacked = orv::XByteArray::unCompress(signedInput);
    check(unpacked.isEmpty() || QByteArray(unpacked) == qUncompress(input));

    orv::XByteArray const packed = orv::XByteArray::compress(orv::XByteArray(input));
    check(QByteArray(orv::XByteArray::unCompress(packed)) == input);
    return 0;
}
