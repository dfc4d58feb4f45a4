// xml_fuzz.cpp: feeds arbitrary bytes to the XML parser, also wrapped in deep nesting,
// and checks that a parsed tree, saved and parsed again, saves to the same text.
#include "FuzzCheck.h"
#include "orv/XNode.h"

#include <QtCore/QByteArray>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size) {
    QByteArray bytes(reinterpret_cast<char const *>(data), static_cast<int>(size));
    // An INCLUDE may name a file of the working directory, never one elsewhere (a huge
    // or endless one).
    if (bytes.contains("INCLUDE") &&
        (bytes.contains('/') || bytes.contains('$') || bytes.contains('\\')))
        return 0;
    // Inputs that open with '~' and two bytes n are wrapped in 16 * n opening tags.
    if (size >= 3 && data[0] == '~') {
        int const depth = ((data[1] << 8) | data[2]) * 16;
        bytes = QByteArray("<a>").repeated(depth) + bytes.mid(3) +
                QByteArray("</a>").repeated(depth / 2);
    }
    std::unique_ptr<orv::XNode> root(orv::XNode::parseQByteArray(bytes, nullptr));
    if (!root)
        return 0;
    check(root->getFile() == QStringLiteral(":MEMORY"));
    // "$" values are replaced on every parse, so only other trees must come back whole.
    if (bytes.contains('$'))
        return 0;
    QString const saved = root->allAsString(0);
    std::unique_ptr<orv::XNode> again(orv::XNode::parseString(saved, nullptr));
    check(again != nullptr);
    check(again->allAsString(0) == saved);
    return 0;
}
