#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "fom/run.h"

namespace testing_support {

/// What one call of the command came to.
struct CommandResult {
    int exitCode = -1;
    std::string out, err;
};

/// Calls the command in this process.
inline CommandResult RunCommand(const std::vector<std::string>& words, command::HeapGauge gauge = nullptr) {
    std::vector<const char*> arguments{"fom"};
    for (const std::string& word : words)
        arguments.push_back(word.c_str());
    std::ostringstream out, err;
    command::Console console(out, err, false);
    const int exitCode = command::Run(static_cast<int>(arguments.size()), arguments.data(), console, gauge);
    return {exitCode, out.str(), err.str()};
}

inline void WriteText(const std::filesystem::path& path, std::string_view text) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string ReadText(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// A drawing of one square.
inline std::string Square(std::string_view fill, std::string_view definitions = {}) {
    return "<svg xmlns=\"http://www.w3.org/2000/svg\">" + std::string(definitions) +
           "<rect width=\"10\" height=\"10\" fill=\"" + std::string(fill) + "\"/></svg>";
}

}  // namespace testing_support
