#pragma once

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <string_view>

#include "host/base/error.h"

namespace command {

/// Where the command writes: results to one stream, messages and progress to the other.
class Console {
public:
    /// With `progress` a line that shows how far the work is stands below the messages while it lasts.
    Console(std::ostream& out, std::ostream& err, bool progress)
        : m_out(out), m_err(err), m_progress(progress) {}

    std::ostream& Out() noexcept { return m_out; }
    std::ostream& Err() noexcept { return m_err; }
    /// Sees to it that results have left this process. False, after saying so, when some were lost.
    bool Deliver();
    /// One line: the place (file and line, or byte where there are no lines), as far as it is known, and the
    /// reason.
    void Fail(const host::Error& error);
    void ShowProgress(std::string_view what, std::size_t done, std::size_t total);
    void EndProgress();

private:
    std::ostream& m_out;
    std::ostream& m_err;
    bool m_progress;
    bool m_shown = false;
    std::chrono::steady_clock::time_point m_last;
};

/// Whether standard error is a terminal.
bool IsErrorTerminal() noexcept;

}  // namespace command
