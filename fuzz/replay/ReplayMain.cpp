// ReplayMain.cpp: a main for libFuzzer targets built without libFuzzer, so that ctest
// replays every seed of a corpus with any compiler (and under the sanitizer builds).
//   <name>_replay DIR|FILE ...   runs LLVMFuzzerTestOneInput once per file
// A finding aborts inside the target, which fails the test; a clean pass prints the count.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(uint8_t const *data, size_t size);

namespace {

bool replayFile(std::filesystem::path const &path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "replay: cannot read %s\n", path.c_str());
        return false;
    }
    std::vector<char> const bytes((std::istreambuf_iterator<char>(in)),
                                  std::istreambuf_iterator<char>());
    LLVMFuzzerTestOneInput(reinterpret_cast<uint8_t const *>(bytes.data()), bytes.size());
    return true;
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s DIR|FILE ...\n", argv[0]);
        return 2;
    }
    size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        std::filesystem::path const arg(argv[i]);
        std::vector<std::filesystem::path> files;
        if (std::filesystem::is_directory(arg)) {
            for (auto const &entry : std::filesystem::directory_iterator(arg))
                if (entry.is_regular_file())
                    files.push_back(entry.path());
        } else {
            files.push_back(arg);
        }
        for (auto const &file : files) {
            if (!replayFile(file))
                return 1;
            ++count;
        }
    }
    std::printf("replay: %zu inputs, no finding\n", count);
    return count > 0 ? 0 : 1;
}
