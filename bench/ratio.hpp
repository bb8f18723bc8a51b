// Benchmarks as ratios: what is measured against a baseline of the same run, so that the machine cancels out.
#pragma once

#include "print_ratio.hpp"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quill1xml::bench {

/// Measures pairs of operations by their processor time: repetitions of all take turns at random, medians are compared.
class Ratios {
public:
    /// Operations that take seconds should be repeated less.
    explicit Ratios(int repetitions = 25) : repetitions_(repetitions) {}

    /// Adds "name", whose subject should cost at most `target` times its baseline; 0 for a ratio without a target.
    /// What needs preparing is done by `prepare`, before each repetition and untimed.
    void add(
        const std::string& name, double target, const std::function<void()>& subject,
        const std::function<void()>& baseline, const std::function<void()>& prepare = [] {}) {
        pairs_.push_back({name, target});
        registerOne(subjectName(name), subject, prepare);
        registerOne(baselineName(name), baseline, prepare);
    }

    /// Runs everything and prints a line per ratio: its name, the ratio, the target.
    void run() {
        std::string program = "ratios";
        std::string interleaved = "--benchmark_enable_random_interleaving=true";
        std::string repetitions = "--benchmark_repetitions=" + std::to_string(repetitions_);
        std::string minimumTime = "--benchmark_min_time=0.02";
        char* arguments[] = {program.data(), interleaved.data(), repetitions.data(), minimumTime.data(), nullptr};
        int count = static_cast<int>(std::size(arguments)) - 1;
        benchmark::Initialize(&count, arguments);
        Reporter reporter;
        benchmark::RunSpecifiedBenchmarks(&reporter);
        for (const auto& [name, target] : pairs_) {
            printRatio(name, target, median(reporter.times[subjectName(name)]),
                       median(reporter.times[baselineName(name)]), "ns");
        }
    }

private:
    class Reporter : public benchmark::BenchmarkReporter {
    public:
        std::map<std::string, std::vector<double>> times;  ///< nanoseconds of each repetition, by name

        bool ReportContext(const Context&) override { return true; }
        void ReportRuns(const std::vector<Run>& runs) override {
            for (const Run& run : runs) {
                if (run.run_type == Run::RT_Iteration) {
                    times[run.run_name.function_name].push_back(run.GetAdjustedCPUTime());
                }
            }
        }
    };

    static std::string subjectName(const std::string& name) { return name + ", subject"; }
    static std::string baselineName(const std::string& name) { return name + ", baseline"; }

    static void registerOne(const std::string& name, const std::function<void()>& operation,
                            const std::function<void()>& prepare) {
        benchmark::RegisterBenchmark(name.c_str(), [operation, prepare](benchmark::State& state) {
            prepare();
            for ([[maybe_unused]] auto _ : state) operation();
        });
    }

    static double median(std::vector<double> values) {
        const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::nth_element(values.begin(), middle, values.end());
        return *middle;
    }

    int repetitions_;
    std::vector<std::pair<std::string, double>> pairs_;
};

}  // namespace quill1xml::bench
