// Runs a fuzz target's entry code over files, without libFuzzer, so that the committed
// seeds and the inputs of past findings are replayed by every ordinary test run.
// Usage: NAME_replay DIR_OR_FILE...   (a directory that does not exist counts as empty)
// A failing input aborts through the target's own checks or a sanitizer; the name of
// the input is printed before it runs.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size);

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> Inputs(const fs::path& given)
{
    std::vector<fs::path> files;
    if (fs::is_regular_file(given)) {
        files.push_back(given);
    } else if (fs::is_directory(given)) {
        for (const auto& entry : fs::directory_iterator(given)) {
            if (entry.is_regular_file())
                files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

int main(int argc, char** argv)
{
    std::size_t replayed = 0;
    for (int i = 1; i < argc; ++i) {
        for (const fs::path& file : Inputs(argv[i])) {
            std::printf("%s\n", file.c_str());
            std::fflush(stdout);
            std::ifstream in(file, std::ios::binary);
            const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
            ++replayed;
        }
    }
    std::printf("%zu inputs replayed\n", replayed);
    return 0;
}
