// frame_fuzz.cpp: feeds arbitrary bytes to the frame decoders, and frames them to check
// that every payload comes back and that no 0 byte stands inside a frame.
#include "FuzzCheck.h"
#include "orv/ArrayTools.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size) {
    using orv::ArrayTools;
    QByteArray const input(reinterpret_cast<char const *>(data), static_cast<int>(size));

    // Decoding never yields more bytes than it was given.
    check(ArrayTools::unFrameQByteArray(input).size() <= input.size());
    QByteArray out = "kept";
    if (!ArrayTools::unFrameQByteArray_MD5(input, out))
        check(out == "kept");
    QByteArray unstuffed;
    check(ArrayTools::unStuffQData(input, unstuffed) <= static_cast<quint64>(input.size()));

    QByteArray const framed = ArrayTools::frameQByteArray(input);
    check(framed.size() >= 3 && framed.front() == '\0' && framed.back() == '\0');
    check(framed.mid(1, framed.size() - 2).count('\0') == 0);
    check(static_cast<quint64>(framed.size()) <= size + size / 254 + 3);
    check(ArrayTools::unFrameQByteArray(framed) == input);

    QByteArray back;
    check(ArrayTools::unFrameQByteArray_MD5(ArrayTools::frameQByteArray_MD5(input), back) ==
          !input.isEmpty());
    check(back == (input.isEmpty() ? QByteArray() : input));
    return 0;
}
