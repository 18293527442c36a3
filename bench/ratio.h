#pragma once

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <iterator>
#include <map>
#include <string>
#include <vector>

/// Side by side: benchmarks of the library and of a rival run interleaved in one process, and a table of
/// ratios closes the run.
namespace bench {

/// One line of the closing table.
struct Row {
    std::string label;
    std::string ours;   ///< name of a benchmark, arguments included: "HitPool/100"
    std::string rival;  ///< the same
    double reach;       ///< the ratio to reach; 0 when none is set
    /// Cost: our time to the rival's, at most `reach`. Throughput: the rival's time to ours, at least
    /// `reach`.
    enum Measure { Cost, Throughput } measure = Cost;
    double operations = 1;       ///< what one iteration does, for the times that are shown
    double rivalOperations = 0;  ///< the same of the rival, where it is another number
};

/// Keeps the times of every benchmark: of the repetitions the fastest decides, which other jobs of the
/// machine disturb least, and the median is shown beside it.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration && !run.error_occurred)
                m_times[run.run_name.str()].push_back(TimeOf(run));
        std::vector<Run> shown;
        std::copy_if(runs.begin(), runs.end(), std::back_inserter(shown),
                     [](const Run& run) { return run.aggregate_name == "median"; });
        ConsoleReporter::ReportRuns(shown);
    }
    void Print(const Row& row) const {
        const Times ours = Of(row.ours, row.operations);
        const Times rival = Of(row.rival, row.rivalOperations != 0 ? row.rivalOperations : row.operations);
        if (ours.least == 0 || rival.least == 0) return;
        const bool isCost = row.measure == Row::Cost;
        const double ratio = isCost ? ours.least / rival.least : rival.least / ours.least;
        const double median = isCost ? ours.median / rival.median : rival.median / ours.median;
        const bool reached = isCost ? ratio <= row.reach : ratio >= row.reach;
        std::printf("%-44s %10.1f ns vs %10.1f ns  ratio %.3f (median %.3f)", row.label.c_str(), ours.least,
                    rival.least, ratio, median);
        if (row.reach != 0) std::printf("  reach %.2f  %s", row.reach, reached ? "reached" : "missed");
        std::printf("\n");
    }

private:
    // Time on the processor, unless the benchmark asked for another: the machine may have other work.
    static double TimeOf(const Run& run) {
        const bool useReal = run.run_name.str().find("_time") != std::string::npos;
        return useReal ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
    }

    struct Times {
        double least = 0;
        double median = 0;
    };
    Times Of(const std::string& name, double operations) const {
        const auto found = m_times.find(name);
        if (found == m_times.end()) return {};
        std::vector<double> times = found->second;
        std::sort(times.begin(), times.end());
        return {times.front() / operations, times[times.size() / 2] / operations};
    }

    std::map<std::string, std::vector<double>> m_times;
};

/// Runs what is registered, repetitions interleaved, and prints the rows whose benchmarks ran. What the
/// command line says takes precedence.
inline int RunAndCompare(int argc, char** argv, const std::vector<Row>& rows) {
    std::vector<std::string> words{argv[0], "--benchmark_repetitions=7", "--benchmark_min_time=0.05",
                                   "--benchmark_enable_random_interleaving=true", "--benchmark_color=false"};
    words.insert(words.end(), argv + 1, argv + argc);
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::printf("\n");
    for (const Row& row : rows)
        reporter.Print(row);
    return 0;
}

}  // namespace bench
