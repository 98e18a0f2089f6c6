// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "fuzz.h"

/// For compilers without a fuzzer: runs the target over each file that is named, or lies in a folder that is.
int main(int count, char** arguments) {
    namespace fs = std::filesystem;
    std::vector<fs::path> files;
    for (int i = 1; i < count; ++i) {
        if (arguments[i][0] == '-') continue;  // an option of the fuzzer
        if (!fs::is_directory(arguments[i])) {
            files.emplace_back(arguments[i]);
            continue;
        }
        for (const auto& entry : fs::directory_iterator(arguments[i])) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    for (const fs::path& path : files) {
        std::ifstream in(path, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(in), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    std::cerr << "Done " << files.size() << " runs\n";
    return files.empty() ? 1 : 0;
}
