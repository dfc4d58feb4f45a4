// XFileMapper_benchmark.cpp: counting the newlines of a 1 GiB file through a memory
// map, beside QFile::readAll and read() in 1 MiB blocks. The file is made once in a
// temporary folder and removed at the end; the page cache is warm for all three.
#include "orv/XFileMapper.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cstring>
#include <fcntl.h>
#include <memory>
#include <unistd.h>
#include <vector>

namespace {

qint64 const FILE_SIZE = qint64(1) << 30;

// Lines of 80 bytes, the last one a newline.
class BigFile {
public:
    BigFile() {
        QFile file(dir.filePath("big.txt"));
        if (!file.open(QIODevice::WriteOnly))
            return;
        QByteArray line(79, 'x');
        line.append('\n');
        QByteArray block;
        while (block.size() + line.size() <= (1 << 20))
            block.append(line);
        block.append(QByteArray((1 << 20) - block.size(), '\n'));
        for (qint64 done = 0; done < FILE_SIZE; done += block.size())
            file.write(block);
    }
    ~BigFile() { QFile::remove(path()); }
    QString path() const { return dir.filePath("big.txt"); }

private:
    QTemporaryDir dir;
};

BigFile &bigFile() {
    static BigFile file;
    return file;
}

size_t countNewlines(char const *p, size_t n) {
    size_t count = 0;
    char const *const end = p + n;
    while ((p = static_cast<char const *>(std::memchr(p, '\n', static_cast<size_t>(end - p))))) {
        ++count;
        ++p;
    }
    return count;
}

void BM_XFileMapper_CountNewlines(benchmark::State &state) {
    QString const path = bigFile().path();
    for (auto _ : state) {
        orv::XFileMapper mapper(path);
        mapper.mapReadOnly();
        char const *bytes = mapper.mem();
        benchmark::DoNotOptimize(countNewlines(bytes, bytes ? mapper.length() : 0));
        mapper.unMap();
    }
    state.SetBytesProcessed(state.iterations() * FILE_SIZE);
}

void BM_QFile_ReadAll_CountNewlines(benchmark::State &state) {
    QString const path = bigFile().path();
    for (auto _ : state) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        QByteArray const bytes = file.readAll();
        benchmark::DoNotOptimize(
            countNewlines(bytes.constData(), static_cast<size_t>(bytes.size())));
    }
    state.SetBytesProcessed(state.iterations() * FILE_SIZE);
}

void BM_Read1MiB_CountNewlines(benchmark::State &state) {
    QByteArray const path = QFile::encodeName(bigFile().path());
    std::vector<char> block(1 << 20);
    for (auto _ : state) {
        int const fd = ::open(path.constData(), O_RDONLY);
        size_t count = 0;
        ssize_t got;
        while ((got = ::read(fd, block.data(), block.size())) > 0)
            count += countNewlines(block.data(), static_cast<size_t>(got));
        ::close(fd);
        benchmark::DoNotOptimize(count);
    }
    state.SetBytesProcessed(state.iterations() * FILE_SIZE);
}

BENCHMARK(BM_XFileMapper_CountNewlines)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QFile_ReadAll_CountNewlines)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Read1MiB_CountNewlines)->Unit(benchmark::kMillisecond);

} // namespace
