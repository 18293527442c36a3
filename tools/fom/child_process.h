#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace command {

/// A program to run in a process of its own; no shell takes part.
struct ChildRequest {
    /// Looked for along PATH unless it has a "/".
    std::string program;
    std::vector<std::string> arguments;
    /// What it reads on standard input; empty for nothing.
    std::filesystem::path input;
    /// Its messages go where those of this process go, as it writes them.
    bool sharesErrors = false;
    /// From its start; then it is killed. Empty: as long as it takes.
    std::optional<std::chrono::milliseconds> limit;
    /// Bytes of either output; with more it is killed.
    std::size_t mostOutput = std::size_t{256} << 20;
};

struct ChildResult {
    enum class End : unsigned char { Exited, Crashed, TimedOut, TooMuchOutput, NotStarted };

    End end = End::NotStarted;
    /// The exit code, the signal that ended it, or (not started) the system's error number.
    int code = 0;
    std::vector<std::byte> output;
    std::string errors;

    bool Succeeded() const noexcept { return end == End::Exited && code == 0; }
};

/// Runs the program to its end, which it has come to in every case when this returns or throws. Any thread.
/// Throws bad_alloc.
ChildResult RunChild(const ChildRequest& request);

/// How it ended, in a few words: "exit code 1: …" with the first line of its messages, "took too long", …
std::string DescribeEnd(const ChildResult& result);

}  // namespace command
