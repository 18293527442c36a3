#include "fom/child_process.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

extern char** environ;  // NOLINT(readability-redundant-declaration): not every system declares it

namespace command {
namespace {

using Clock = std::chrono::steady_clock;

/// An open file of this process; not handed on to children.
class Descriptor {
public:
    explicit Descriptor(int number = -1) noexcept : m_number(number) {}
    ~Descriptor() { Close(); }
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other) Close();
        m_number = std::exchange(other.m_number, m_number);
        return *this;
    }

    int Number() const noexcept { return m_number; }
    bool IsOpen() const noexcept { return m_number >= 0; }
    void Close() noexcept {
        if (IsOpen()) close(m_number);
        m_number = -1;
    }

private:
    int m_number;
};

struct Pipe {
    Descriptor read, write;

    /// False, with errno set, when the system has none left.
    bool Open() {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) return false;
        read = Descriptor(ends[0]);
        write = Descriptor(ends[1]);
        return true;
    }
};

/// What the child has open as 0, 1 and 2.
class Redirections {
public:
    Redirections() { posix_spawn_file_actions_init(&m_actions); }
    ~Redirections() { posix_spawn_file_actions_destroy(&m_actions); }
    Redirections(const Redirections&) = delete;
    Redirections& operator=(const Redirections&) = delete;

    void Add(const Descriptor& from, int to) {
        if (posix_spawn_file_actions_adddup2(&m_actions, from.Number(), to) != 0) throw std::bad_alloc();
    }
    const posix_spawn_file_actions_t* Get() const noexcept { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

/// A running child; killed, and waited for, when it is let go of before its end.
class Child {
public:
    explicit Child(pid_t id) noexcept : m_id(id) {}
    ~Child() {
        if (m_id > 0) Kill();
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void Kill() noexcept {
        kill(m_id, SIGKILL);
        Reap(0);
    }
    /// False when it is still running at that time.
    bool WaitUntil(std::optional<Clock::time_point> end) {
        if (!end) return Reap(0);
        // Its outputs are closed, so that it has ended or is about to.
        std::chrono::microseconds pause{100};
        while (!Reap(WNOHANG)) {
            if (Clock::now() >= *end) return false;
            std::this_thread::sleep_for(pause);
            pause = std::min<std::chrono::microseconds>(pause * 2, std::chrono::milliseconds(20));
        }
        return true;
    }
    int Status() const noexcept { return m_status; }

private:
    bool Reap(int options) noexcept {
        pid_t ended = 0;
        do {
            ended = waitpid(m_id, &m_status, options);
        } while (ended < 0 && errno == EINTR);
        if (ended == 0) return false;
        m_id = 0;
        return true;
    }

    pid_t m_id;
    int m_status = 0;
};

/// Takes what is there to read; false at the end.
template <class Buffer>
bool Drain(const Descriptor& from, Buffer& to) {
    std::array<char, 65536> piece{};
    const ssize_t count = read(from.Number(), piece.data(), piece.size());
    if (count < 0) return errno == EINTR || errno == EAGAIN;
    const auto* first = reinterpret_cast<const typename Buffer::value_type*>(piece.data());
    to.insert(to.end(), first, first + count);
    return count > 0;
}

/// Milliseconds for poll, rounded up: it must not turn round and round at the end.
int Remaining(std::optional<Clock::time_point> end) {
    if (!end) return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*end - Clock::now()).count();
    return static_cast<int>(std::clamp<decltype(left)>(left, 0, 1'000'000));
}

/// Reads both outputs to their ends. Exited stands for that.
ChildResult::End Collect(Descriptor& output, Descriptor& errors, std::optional<Clock::time_point> end,
                         std::size_t most, ChildResult& result) {
    while (output.IsOpen() || errors.IsOpen()) {
        // A closed one has the number -1, which poll passes over.
        std::array<pollfd, 2> waiting{{{output.Number(), POLLIN, 0}, {errors.Number(), POLLIN, 0}}};
        const int ready = poll(waiting.data(), waiting.size(), Remaining(end));
        if (end && Clock::now() >= *end) return ChildResult::End::TimedOut;
        if (ready <= 0) continue;
        if (waiting[0].revents != 0 && !Drain(output, result.output)) output.Close();
        if (waiting[1].revents != 0 && !Drain(errors, result.errors)) errors.Close();
        if (result.output.size() > most || result.errors.size() > most)
            return ChildResult::End::TooMuchOutput;
    }
    return ChildResult::End::Exited;
}

ChildResult NotStarted(int reason) {
    ChildResult result;
    result.code = reason;
    return result;
}

}  // namespace

ChildResult RunChild(const ChildRequest& request) {
    const Descriptor input(
        open(request.input.empty() ? "/dev/null" : request.input.c_str(), O_RDONLY | O_CLOEXEC));
    Pipe output, errors;
    if (!input.IsOpen() || !output.Open() || (!request.sharesErrors && !errors.Open()))
        return NotStarted(errno);
    Redirections redirections;
    redirections.Add(input, STDIN_FILENO);
    redirections.Add(output.write, STDOUT_FILENO);
    if (!request.sharesErrors) redirections.Add(errors.write, STDERR_FILENO);
    std::vector<char*> arguments{const_cast<char*>(request.program.c_str())};
    for (const std::string& argument : request.arguments)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);

    std::optional<Clock::time_point> end;
    if (request.limit) end = Clock::now() + *request.limit;
    pid_t id = 0;
    const int failure =
        posix_spawnp(&id, request.program.c_str(), redirections.Get(), nullptr, arguments.data(), environ);
    if (failure != 0) return NotStarted(failure);
    Child child(id);
    output.write.Close();
    errors.write.Close();
    ChildResult result;
    result.end = Collect(output.read, errors.read, end, request.mostOutput, result);
    if (result.end == ChildResult::End::Exited && !child.WaitUntil(end))
        result.end = ChildResult::End::TimedOut;
    if (result.end != ChildResult::End::Exited) {
        child.Kill();
    } else if (WIFSIGNALED(child.Status())) {
        result.end = ChildResult::End::Crashed;
        result.code = WTERMSIG(child.Status());
    } else {
        result.code = WEXITSTATUS(child.Status());
    }
    return result;
}

std::string DescribeEnd(const ChildResult& result) {
    switch (result.end) {
        case ChildResult::End::Exited:
            break;
        case ChildResult::End::Crashed:
            return "ended by signal " + std::to_string(result.code);
        case ChildResult::End::TimedOut:
            return "took too long";
        case ChildResult::End::TooMuchOutput:
            return "wrote too much";
        case ChildResult::End::NotStarted:
            return "does not start: " + std::generic_category().message(result.code);
    }
    std::string text = "exit code " + std::to_string(result.code);
    const std::string line = result.errors.substr(0, result.errors.find('\n'));
    return line.empty() ? text : text + ": " + line;
}

}  // namespace command
