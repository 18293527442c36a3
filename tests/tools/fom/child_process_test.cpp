#include "fom/child_process.h"

#include <chrono>
#include <csignal>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "support/temp_folder.h"
#include "tools/fom/command_run.h"

namespace {

using namespace command;
using namespace testing_support;
using std::chrono::milliseconds;

ChildRequest Shell(const std::string& script) {
    ChildRequest request;
    request.program = "sh";
    request.arguments = {"-c", script};
    return request;
}

std::string Text(const std::vector<std::byte>& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

TEST(ChildProcess, TellsHowItEnded) {
    const ChildResult fine = RunChild(Shell("echo out; echo err >&2"));
    EXPECT_TRUE(fine.Succeeded());
    EXPECT_EQ(Text(fine.output), "out\n");
    EXPECT_EQ(fine.errors, "err\n");

    const ChildResult failed = RunChild(Shell("echo why >&2; echo more >&2; exit 3"));
    EXPECT_FALSE(failed.Succeeded());
    EXPECT_EQ(DescribeEnd(failed), "exit code 3: why");
    const ChildResult crashed = RunChild(Shell("kill -SEGV $$"));
    EXPECT_EQ(crashed.end, ChildResult::End::Crashed);
    EXPECT_EQ(crashed.code, SIGSEGV);

    ChildRequest missing;
    missing.program = "no-such-program-anywhere";
    EXPECT_EQ(DescribeEnd(RunChild(missing)), "does not start: No such file or directory");
}

TEST(ChildProcess, PassesWordsAndInputOnUnchanged) {
    const TempFolder folder;
    WriteText(folder / "in", "a\0b\n");
    ChildRequest request = Shell("cat; printf '<%s>' \"$@\"");
    request.arguments.insert(request.arguments.end(), {"sh", "a b", "", "$HOME;*"});
    request.input = folder / "in";
    EXPECT_EQ(Text(RunChild(request).output), "a<a b><><$HOME;*>");
    request.input = folder / "missing";
    EXPECT_EQ(RunChild(request).end, ChildResult::End::NotStarted);
    EXPECT_EQ(Text(RunChild(Shell("cat")).output), "") << "without input there is nothing to read";
}

TEST(ChildProcess, TakesLargeOutputOfBothKindsAndNoMoreThanAllowed) {
    ChildRequest request = Shell("head -c 3000000 /dev/zero; head -c 2000000 /dev/zero >&2");
    const ChildResult large = RunChild(request);
    EXPECT_TRUE(large.Succeeded());
    EXPECT_EQ(large.output.size(), 3'000'000u);
    EXPECT_EQ(large.errors.size(), 2'000'000u);
    request = Shell("cat /dev/zero");
    request.mostOutput = 1'000'000;
    EXPECT_EQ(RunChild(request).end, ChildResult::End::TooMuchOutput);
}

TEST(ChildProcess, IsKilledInTimeAndLeavesNothingBehind) {
    // Silent, talking, and with its outputs closed.
    for (const char* script : {"exec sleep 60", "while :; do echo y; done", "exec >&- 2>&-; exec sleep 60"}) {
        ChildRequest request = Shell(script);
        request.limit = milliseconds(150);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(RunChild(request).end, ChildResult::End::TimedOut) << script;
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    }
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no child, running or ended, is left";
    EXPECT_EQ(errno, ECHILD);
}

}  // namespace
