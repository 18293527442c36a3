#include "fom/run.h"

#include <exception>
#include <string>

#include "fom/options.h"
#include "fom/path_text.h"
#include "fom/startup.h"

namespace command {
namespace {

/// The library, started as long as this lives.
class Library {
public:
    Library() : m_started(FOMInitialize(0, 0) != 0) {}
    ~Library() {
        if (m_started) FOMShutdown();
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    bool IsStarted() const noexcept { return m_started; }

private:
    bool m_started;
};

int RunTask(const Task& task, Console& console, HeapGauge gauge) {
    const Output output(task.output);
    if (const std::string obstacle = output.Obstacle(task.force); !obstacle.empty()) {
        console.Fail({.what = PathText(task.output), .offset = 0, .line = 0, .reason = obstacle});
        return kFailure;
    }
    const Library library;
    if (!library.IsStarted()) {
        console.Fail({.what = {}, .offset = 0, .line = 0, .reason = "the library does not start"});
        return kFailure;
    }
    return task.run(output, console, gauge);
}

}  // namespace

int Run(int argc, const char* const* argv, Console& console, HeapGauge gauge) {
    try {
        int exitCode = kSuccess;
        const std::optional<Task> task = ParseOptions(argc, argv, console.Out(), console.Err(), exitCode);
        if (!task) return exitCode == kSuccess && !console.Deliver() ? kFailure : exitCode;
        return RunTask(*task, console, gauge);
    } catch (const std::bad_alloc&) {
        console.Fail({.what = {}, .offset = 0, .line = 0, .reason = "not enough memory"});
    } catch (const std::exception& failure) {
        console.Fail({.what = {}, .offset = 0, .line = 0, .reason = failure.what()});
    }
    return kFailure;
}

}  // namespace command
