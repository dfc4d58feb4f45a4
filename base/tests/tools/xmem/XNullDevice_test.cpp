// XNullDevice_test.cpp: the null device counts and digests exactly what a block
// holds after the same writes, and XRamInfo's texts.
#include "orv/XNullDevice.h"

#include "orv/XMem.h"
#include "orv/XMemoryWrapper.h"

#include "support/Test.h"

#include <QtCore/QDataStream>
#include <QtCore/QRegularExpression>

using orv::XNullDevice;
using orv::XRamInfo;

namespace {

void writeSample(QIODevice &device) {
    QDataStream out(&device);
    out << QStringLiteral("name \u00e9") << qint64(-5) << 2.5 << QByteArray(1000, 'z');
    device.write("tail", 4);
}

} // namespace

TEST(XNullDevice, CountsAndDigestsWhatABlockThenHolds) {
    XNullDevice counter(true);
    writeSample(counter);
    counter.finalizeWriting();
    XRamInfo const info = counter.ramInfo();

    orv::XMem block(info.size, 0);
    orv::XMemoryWrapper device(block, QIODevice::WriteOnly);
    writeSample(device);
    EXPECT_EQ(static_cast<quint64>(device.pos()), info.size);
    EXPECT_EQ(device.restSize(), 0);
    EXPECT_TRUE(info.md5 == block.createMD5());
    EXPECT_TRUE(block.createRamInfo().md5 == info.md5);
    EXPECT_EQ(block.createRamInfo().size, info.size);
    EXPECT_EQ(counter.toString(), "1.040 => 1.04 KB"); // 16 + 8 + 8 + 1004 + 4 bytes
}

TEST(XRamInfo, TextGroupsTheSizeAndSpacesTheDigestOrHasOnlyTheSizeWithoutOne) {
    QByteArray const bytes(1234, 'q');
    XRamInfo const info = XRamInfo::ramInfoFromRawMemory(bytes.constData(), 1234);
    EXPECT_EQ(info.size, 1234u);
    EXPECT_EQ(info.toString(false), QStringLiteral("size:1.234, md5-sum:") +
                                        orv::MD5(bytes.constData(), 1234).hexdigest(true, true));
    EXPECT_TRUE(info.toString(true).contains(
        QRegularExpression(QStringLiteral(", delta t:.* sec, .* times / sec$"))));
    XNullDevice zero(false);
    EXPECT_FALSE(zero.ramInfo().md5.isFinalized());
    EXPECT_EQ(zero.ramInfo().toString(false), QStringLiteral("size:0 bytes"));
    zero.write("abc", 3);
    zero.finalizeWriting();
    EXPECT_EQ(zero.ramInfo().toString(false), QStringLiteral("size:3 bytes"));
}
