// CheckSum_test.cpp: mapped and one-shot digests against published vectors and
// QCryptographicHash, cancelling from another thread, and every failure the caller sees.
#include "orv/CheckSum.h"

#include "support/Test.h"

#include <QtCore/QCryptographicHash>

#include <chrono>
#include <memory>
#include <thread>

using orv::CheckSum;
using ALGO = CheckSum::ALGO;
using ERR = CheckSum::ERR;

namespace {

QCryptographicHash::Algorithm qtAlgo(ALGO algo) {
    return algo == ALGO::SHA1     ? QCryptographicHash::Sha1
           : algo == ALGO::SHA256 ? QCryptographicHash::Sha256
                                  : QCryptographicHash::Md5;
}

} // namespace

TEST(CheckSum, GivesThePublishedDigestsOfAbc) {
    struct Row {
        ALGO algo;
        char const *hex;
    };
    Row const rows[] = {
        {ALGO::MD5, "900150983cd24fb0d6963f7d28e17f72"},
        {ALGO::SHA1, "a9993e364706816aba3e25717850c26c9cd0d89d"},
        {ALGO::SHA256, "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
    };
    QTemporaryDir dir;
    QString const path = orv::test::writeFile(dir, "abc.txt", "abc");
    for (Row const &row : rows) {
        SCOPED_TRACE(CheckSum::algo_to_string(row.algo).toStdString());
        CheckSum sum(QFileInfo(path), row.algo);
        orv::XAtomic<bool> run;
        orv::XAtomic<int> percent;
        ASSERT_TRUE(sum.calc(run, percent));
        EXPECT_EQ(percent.load(), 100);
        EXPECT_TRUE(sum.isValid());
        EXPECT_EQ(sum.toString(false), row.hex);
        EXPECT_EQ(sum.toString(true), QString(row.hex).toUpper());
        EXPECT_EQ(CheckSum::get_checksum(path, row.algo).toString(false), row.hex);
        QString const full = sum.toStringFull(false);
        EXPECT_TRUE(full.startsWith(QString(" [%1] = {%2} in ").arg(path, row.hex)));
        EXPECT_TRUE(full.endsWith(" sec")) << full.toStdString();
    }
}

TEST(CheckSum, MappedAndOneShotAgreeWithQtOnEmptyBlockSizedAndLongFiles) {
    QTemporaryDir dir;
    for (int len : {0, 1, 0x10000 - 1, 0x10000, 0x10000 + 1, 5 * 0x10000 + 123}) {
        QByteArray const bytes = orv::test::patternedBytes(len);
        QString const path = orv::test::writeFile(dir, QString("f%1").arg(len), bytes);
        for (ALGO algo : {ALGO::MD5, ALGO::SHA1, ALGO::SHA256}) {
            SCOPED_TRACE(testing::Message() << len << " " << static_cast<int>(algo));
            QByteArray const expected = QCryptographicHash::hash(bytes, qtAlgo(algo));
            CheckSum sum(QFileInfo(path), algo);
            orv::XAtomic<bool> run;
            orv::XAtomic<int> percent;
            ASSERT_TRUE(sum.calc(run, percent));
            EXPECT_EQ(sum.get_checksum(), expected);
            EXPECT_EQ(CheckSum::get_checksum(QFileInfo(path), algo).get_checksum(), expected);
        }
    }
}

TEST(CheckSum, NamesAlgorithmsAndErrorsWithFallbackWords) {
    std::pair<int, char const *> const algos[] = {
        {0, "NOT_DEFINED"}, {1, "MD5"}, {2, "SHA1"}, {3, "SHA256"}, {4, "unknown-algo"}};
    for (auto const &[value, text] : algos)
        EXPECT_EQ(CheckSum::algo_to_string(static_cast<ALGO>(value)), text);
    std::pair<int, char const *> const errs[] = {
        {0, "NO_ERROR"},  {1, "ALGO_NO_DEFINED"}, {2, "STILL_CALCULATING"}, {3, "FILE_NOT_EXIST"},
        {4, "FILE_OPEN"}, {5, "CANCELLED"},       {6, "CALCULATION"},       {7, "unknown-err"}};
    for (auto const &[value, text] : errs)
        EXPECT_EQ(CheckSum::err_to_string(static_cast<ERR>(value)), text);
}

TEST(CheckSum, MappedCalculationFailsWithALogLineOnBadFiles) {
    QTemporaryDir dir;
    struct Row {
        QString path;
        ERR err;
    };
    Row const rows[] = {{dir.filePath("missing.bin"), ERR::FILE_NOT_EXIST},
                        {dir.path(), ERR::FILE_OPEN}};
    for (Row const &row : rows) {
        SCOPED_TRACE(row.path.toStdString());
        CheckSum sum(QFileInfo(row.path), ALGO::SHA1);
        orv::XAtomic<bool> run;
        orv::XAtomic<int> percent;
        std::vector<QString> const lines =
            orv::test::linesLoggedBy([&] { EXPECT_FALSE(sum.calc(run, percent)); }, orv::ERROR);
        EXPECT_EQ(lines, std::vector<QString>{"CheckSum::calc, problems mapping file"});
        EXPECT_EQ(sum.get_error(), row.err);
        EXPECT_FALSE(sum);
        EXPECT_EQ(sum.toString(false), "err:" + CheckSum::err_to_string(row.err));
    }
}

TEST(CheckSum, OneShotNamesTheTroubleInPlaceOfTheDigest) {
    QTemporaryDir dir;
    QString const abc = orv::test::writeFile(dir, "abc.txt", "abc");
    QString const missing = dir.filePath("missing.bin");
    struct Row {
        QString path;
        ALGO algo;
        char const *text;
        ERR err;
        QString logged;
    };
    Row const rows[] = {
        {abc, ALGO::NOT_DEFINED, "ALGO-NOT-SUPPORTED", ERR::ALGO_NO_DEFINED, ""},
        {abc, static_cast<ALGO>(9), "ALGO-NOT-SUPPORTED", ERR::ALGO_NO_DEFINED, ""},
        {missing, ALGO::MD5, "file-not-exists", ERR::FILE_NOT_EXIST,
         "CheckSum::get_checksum, problems with File <<<" + missing + ">>> exist ?"},
        {dir.path(), ALGO::MD5, "file-open-error", ERR::FILE_OPEN,
         "CheckSum::get_checksum, problems with open <<<" + dir.path() + ">>>"},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.text);
        CheckSum sum(QFileInfo(), ALGO::MD5);
        std::vector<QString> const lines = orv::test::linesLoggedBy(
            [&] { sum = CheckSum::get_checksum(row.path, row.algo); }, orv::ERROR);
        EXPECT_EQ(sum.get_checksum(), row.text);
        EXPECT_EQ(sum.get_error(), row.err);
        EXPECT_EQ(lines,
                  row.logged.isEmpty() ? std::vector<QString>{} : std::vector<QString>{row.logged});
    }
}

TEST(CheckSum, UndefinedAlgorithmIsRefusedAndUnknownOneBecomesMd5) {
    QTemporaryDir dir;
    QFileInfo const file(orv::test::writeFile(dir, "abc.txt", "abc"));
    orv::XAtomic<bool> run;
    orv::XAtomic<int> percent;

    std::unique_ptr<CheckSum> undefined;
    EXPECT_EQ(
        orv::test::linesLoggedBy(
            [&] { undefined = std::make_unique<CheckSum>(file, ALGO::NOT_DEFINED); }, orv::ERROR),
        std::vector<QString>{"CheckSum::set_file, algo == ALGO::NOT_DEFINED"});
    EXPECT_EQ(undefined->get_error(), ERR::ALGO_NO_DEFINED);
    // Refused without a word: its trace is for the debug flag only.
    bool calculated = true;
    EXPECT_EQ(orv::test::linesLoggedBy([&] { calculated = undefined->calc(run, percent); }),
              std::vector<QString>{});
    EXPECT_FALSE(calculated);
    EXPECT_EQ(undefined->get_checksum(), QByteArray());

    std::unique_ptr<CheckSum> unknown;
    EXPECT_EQ(
        orv::test::linesLoggedBy(
            [&] { unknown = std::make_unique<CheckSum>(file, static_cast<ALGO>(42)); }, orv::ERROR),
        std::vector<QString>{"CheckSum::map_algo, algo ???? - set to MD5"});
    EXPECT_EQ(unknown->get_algo(), ALGO::MD5);
    ASSERT_TRUE(unknown->calc(run, percent));
    EXPECT_EQ(unknown->toString(false), "900150983cd24fb0d6963f7d28e17f72");

    // A finished result stays until the caller resets it.
    EXPECT_TRUE(unknown->set_algo(ALGO::SHA1));
    EXPECT_EQ(unknown->get_error(), ERR::STILL_CALCULATING);
    ASSERT_TRUE(unknown->calc(run, percent));
    EXPECT_EQ(unknown->toString(false), "a9993e364706816aba3e25717850c26c9cd0d89d");
}

TEST(CheckSum, ClearingRunFromAnotherThreadCancelsBetweenBlocks) {
    QTemporaryDir dir;
    QString const path =
        orv::test::writeFile(dir, "big.bin", orv::test::patternedBytes(40 * 0x10000));
    CheckSum sum(QFileInfo(path), ALGO::SHA256);
    orv::XAtomic<bool> run;
    orv::XAtomic<int> percent;
    // The debug pause of 200 ms per tenth gives the canceller time to come in.
    CheckSum::setDebug(true);
    std::thread worker([&] { sum.calc(run, percent); });
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (percent.load() < 10 && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
    // Refused while the worker still holds the file.
    EXPECT_FALSE(sum.set_file(QFileInfo(path)));
    run = false;
    worker.join();
    CheckSum::setDebug(false);
    EXPECT_TRUE(sum.is_cancelled());
    EXPECT_EQ(percent.load(), -1);
    EXPECT_EQ(sum.toString(false), "err:CANCELLED");
}
