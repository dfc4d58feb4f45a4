// MD5_test.cpp: the RFC 1321 vectors, agreement with the system's md5sum, text forms, comparisons.
#include "orv/MD5.h"

#include "support/Test.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>

#include <map>

using orv::MD5;

namespace {

// Feeds bytes in pieces of 1, 5, 63, 64, 65, 200, 4099 bytes, round and round.
QString digestInPieces(QByteArray const &bytes) {
    static int const pieces[] = {1, 5, 63, 64, 65, 200, 4099};
    MD5 md5;
    for (int pos = 0, k = 0, n = 0; pos < bytes.size(); pos += n, ++k) {
        n = qMin(pieces[k % 7], bytes.size() - pos);
        md5.update(bytes.constData() + pos, static_cast<unsigned int>(n));
    }
    return md5.finalize().hexdigest(false, false);
}

// Digests by `md5sum`, keyed by file name.
std::map<QString, QString> systemDigests(QStringList const &paths) {
    QProcess process;
    process.start("md5sum", paths);
    EXPECT_TRUE(process.waitForFinished(60000));
    std::map<QString, QString> sums;
    for (QByteArray const &line : process.readAllStandardOutput().split('\n'))
        if (line.size() > 34)
            sums[QString::fromUtf8(line.mid(34))] = QString::fromLatin1(line.left(32));
    return sums;
}

} // namespace

TEST(MD5, GivesTheRfc1321TestSuiteDigests) {
    struct Row {
        char const *text;
        char const *digest;
    };
    Row const rows[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"a", "0cc175b9c0f1b6a831c399e269772661"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
        {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
         "d174ab98d277d9f5a5611c2c9f419d9f"},
        {"1234567890123456789012345678901234567890123456789012345678901234567890123456789"
         "0",
         "57edf4a22be3c955ac49da2e2107b67a"},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.text);
        QString const expected = QString::fromLatin1(row.digest);
        EXPECT_EQ(MD5(reinterpret_cast<unsigned char const *>(row.text)).hexdigest(false, false),
                  expected);
        EXPECT_EQ(MD5(QString::fromLatin1(row.text)).toString(), expected.toUpper());
        EXPECT_EQ(MD5::md5FromString(QString::fromLatin1(row.text)), expected.toUpper());
    }
}

TEST(MD5, AgreesWithMd5sumOnEveryLengthUpTo300AndOnSomeMebibytes) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    std::map<QString, QByteArray> inputs;
    for (int len = 0; len <= 301; ++len) {
        QByteArray const bytes = orv::test::patternedBytes(len <= 300 ? len : 3 * 1024 * 1024 + 17);
        inputs[orv::test::writeFile(dir, QString::number(len), bytes)] = bytes;
    }
    QStringList paths;
    for (auto const &input : inputs)
        paths << input.first;
    std::map<QString, QString> const sums = systemDigests(paths);
    ASSERT_EQ(sums.size(), inputs.size());
    for (auto const &[path, bytes] : inputs) {
        SCOPED_TRACE(path.toStdString());
        QString const expected = sums.at(path);
        EXPECT_EQ(
            MD5(bytes.constData(), static_cast<unsigned int>(bytes.size())).hexdigest(false, false),
            expected);
        EXPECT_EQ(digestInPieces(bytes), expected);
        EXPECT_EQ(MD5::md5FromFile(path), expected.toUpper());
        // The frame form is 32 characters with a blank at index 2, whatever the input.
        QByteArray const form = MD5::md5FromQByteArray(bytes);
        EXPECT_EQ(form.size(), 32);
        EXPECT_EQ(form.at(2), ' ');
    }
}

TEST(MD5, UnfinishedDigestHasNoTextAndComparesNeitherEqualNorUnequalWhileFinishedOnesCompareBytes) {
    MD5 a, b;
    EXPECT_EQ(a.toString(), "MD5-NOT-FINALIZED");
    EXPECT_EQ(a.hexdigest(false, true), "MD5-NOT-FINALIZED");
    EXPECT_EQ(a.hexDigest(true), "MD5-NOT-FINALIZED");
    EXPECT_FALSE(a == b);
    EXPECT_FALSE(a != b);
    EXPECT_FALSE(a.isSame(b));
    a.setInvalid();
    b.setInvalid();
    EXPECT_TRUE(a == b);
    EXPECT_EQ(a.getDigest(), QByteArray(16, '\0'));
    // Finished digests compare by their bytes; the other side need not be finished.
    MD5 const abc(QString("abc")), abc2(QString("abc")), abd(QString("abd"));
    EXPECT_TRUE(abc == abc2);
    EXPECT_TRUE(abc.isSame(abc2));
    EXPECT_FALSE(abc != abc2);
    EXPECT_FALSE(abc == abd);
    EXPECT_TRUE(abc != abd);
    EXPECT_FALSE(abc == MD5());
}

TEST(MD5, WritesEveryTextForm) {
    MD5 const md5(QString("abc")); // 90 01 50 98 3c d2 4f b0 d6 96 3f 7d 28 e1 7f 72
    EXPECT_EQ(md5.hexdigest(false, false), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(md5.hexdigest(true, true), "90 01 50 98 3C D2 4F B0 D6 96 3F 7D 28 E1 7F 72");
    EXPECT_EQ(md5.hexDigest(false), QByteArray("900150983cd24fb0d6963f7d28e17f72"));
    EXPECT_EQ(md5.getDigest().toHex(), QByteArray("900150983cd24fb0d6963f7d28e17f72"));
    EXPECT_EQ(MD5::md5_16("abc"), md5.getDigest());
    EXPECT_EQ(MD5::bytes16AsHex(md5.getDigest().constData()), "900150983cd24fb0d6963f7d28e17f72");
    auto const *raw = reinterpret_cast<unsigned char const *>("abc");
    EXPECT_EQ(MD5::md5FromBuffer(raw, 3), "900150983CD24FB0D6963F7D28E17F72");
    EXPECT_TRUE(MD5::md5_from_Buffer(raw, 3) == md5);
    // Frames keep this form: bytes 0-9 with a blank behind each, then byte 15.
    EXPECT_EQ(MD5::md5FromQByteArray("abc"), QByteArray("90 01 50 98 3C D2 4F B0 D6 96 72"));
    EXPECT_EQ(MD5::md5FromQByteArray("abc", true), MD5::md5FromQByteArray("abc", false));
}

TEST(MD5, FeedsFilesIgnoresMissingOnesAndInputAfterFinalize) {
    QTemporaryDir dir;
    QString const path = orv::test::writeFile(dir, "f.bin", "message digest");
    QByteArray const name = QFile::encodeName(path);
    EXPECT_EQ(MD5::md5FromFile(name.constData()), "F96B697D7CB7938D525A2F31AAF161D0");

    MD5 running;
    running.update("message ", 8);
    MD5::addMD5FromFile(QFile::encodeName(dir.filePath("missing")).constData(), running);
    running.updateString("digest");
    EXPECT_EQ(running.finalize().toString(), "F96B697D7CB7938D525A2F31AAF161D0");
    running.update("more", 4); // a finished digest ignores further input
    EXPECT_EQ(running.finalize().toString(), "F96B697D7CB7938D525A2F31AAF161D0");

    MD5 twice;
    twice.updateFile(name.constData());
    twice.updateFile(name.constData());
    EXPECT_TRUE(twice.finalize() == MD5(QString("message digestmessage digest")));
    EXPECT_EQ(MD5::md5FromFile(dir.filePath("missing")), MD5(QString()).toString());
}
