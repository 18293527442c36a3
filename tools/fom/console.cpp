#include "fom/console.h"

#include <ostream>
#include <string>

#ifdef _WIN32
#include <io.h>
#include <stdio.h>
#else
#include <unistd.h>
#endif

namespace command {
namespace {

constexpr std::chrono::milliseconds kBetweenUpdates{100};

/// File names may hold anything; a message is one line.
std::string OneLine(std::string_view text) {
    std::string line(text);
    for (char& c : line)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = '?';
    return line;
}

}  // namespace

bool Console::Deliver() {
    if (m_out.flush().good()) return true;
    Fail({.what = "standard output", .offset = 0, .line = 0, .reason = "cannot be written"});
    return false;
}

void Console::Fail(const host::Error& error) {
    EndProgress();
    m_err << "fom: ";
    if (!error.what.empty()) m_err << OneLine(error.what) << ':';
    if (error.line != 0) m_err << error.line << ':';
    if (!error.what.empty()) m_err << ' ';
    if (error.line == 0 && error.offset != 0) m_err << "byte " << error.offset << ": ";
    m_err << OneLine(error.reason) << '\n';
}

void Console::ShowProgress(std::string_view what, std::size_t done, std::size_t total) {
    if (!m_progress) return;
    const auto now = std::chrono::steady_clock::now();
    if (m_shown && now - m_last < kBetweenUpdates) return;
    m_err << "\r\x1b[K" << what << ' ' << done << " of " << total << std::flush;
    m_shown = true;
    m_last = now;
}

void Console::EndProgress() {
    if (m_shown) m_err << "\r\x1b[K" << std::flush;
    m_shown = false;
}

#ifdef _WIN32
bool IsErrorTerminal() noexcept {
    return _isatty(_fileno(stderr)) != 0;
}
#else
bool IsErrorTerminal() noexcept {
    return isatty(STDERR_FILENO) != 0;
}
#endif

}  // namespace command
