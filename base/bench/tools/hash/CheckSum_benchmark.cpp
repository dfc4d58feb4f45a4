// CheckSum_benchmark.cpp: the mapped MD5 of a 64 MiB file beside QCryptographicHash
// reading the same file through QFile, as md5sum would.
#include "orv/CheckSum.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

QString const &bigFile() {
    static QTemporaryDir dir;
    static QString const path = [] {
        QString const name = dir.filePath("big.bin");
        QByteArray bytes(64 * 1024 * 1024, Qt::Uninitialized);
        quint32 x = 7;
        for (char &c : bytes) {
            x = x * 1664525u + 1013904223u;
            c = static_cast<char>(x >> 24);
        }
        QFile file(name);
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes);
        return name;
    }();
    return path;
}

void BM_CheckSum_CalcMd5(benchmark::State &state) {
    QFileInfo const file(bigFile());
    orv::XAtomic<bool> run;
    orv::XAtomic<int> percent;
    for (auto _ : state) {
        orv::CheckSum sum(file, orv::CheckSum::ALGO::MD5);
        sum.calc(run, percent);
        benchmark::DoNotOptimize(sum.get_checksum());
    }
    state.SetBytesProcessed(state.iterations() * file.size());
}

void BM_CheckSum_GetChecksumMd5(benchmark::State &state) {
    QString const &path = bigFile();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            orv::CheckSum::get_checksum(path, orv::CheckSum::ALGO::MD5).get_checksum());
    state.SetBytesProcessed(state.iterations() * QFileInfo(path).size());
}

void BM_QCryptographicHash_Md5File(benchmark::State &state) {
    QString const &path = bigFile();
    for (auto _ : state) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        QCryptographicHash hash(QCryptographicHash::Md5);
        hash.addData(&file);
        benchmark::DoNotOptimize(hash.result());
    }
    state.SetBytesProcessed(state.iterations() * QFileInfo(path).size());
}

} // namespace

BENCHMARK(BM_CheckSum_CalcMd5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CheckSum_GetChecksumMd5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QCryptographicHash_Md5File)->Unit(benchmark::kMillisecond);
