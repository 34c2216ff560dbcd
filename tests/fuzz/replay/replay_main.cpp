// Runs a fuzz target's entry code over files, without libFuzzer, so that the committed
// seeds and the inputs of past findings are replayed by every ordinary test run.
// Usage: NAME_replay DIR...   (a directory that does not exist counts as empty)
// A failing input aborts through the target's own checks or a sanitizer; the name of
// the input is printed before it runs.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv)
{
    size_t replayed = 0;
    for (int i = 1; i < argc; ++i) {
        std::vector<std::filesystem::path> files;
        if (std::filesystem::is_directory(argv[i]))
            for (const auto& entry : std::filesystem::directory_iterator(argv[i]))
                if (entry.is_regular_file())
                    files.push_back(entry.path());
        std::sort(files.begin(), files.end());
        for (const auto& file : files) {
            std::printf("%s\n", file.c_str());
            std::fflush(stdout);
            std::ifstream in(file, std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(in), {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
            ++replayed;
        }
    }
    std::printf("%zu inputs replayed\n", replayed);
    return 0;
}
