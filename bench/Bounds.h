// What every benchmark here does with its figures: keep the shortest time of each, and print a ratio beside its bound.
#ifndef NETINFO_BENCH_BOUNDS_H
#define NETINFO_BENCH_BOUNDS_H

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

/// Keeps the shortest time of every benchmark: what disturbs a measurement only ever makes it longer.
class ShortestTimes : public benchmark::ConsoleReporter
{
public:
    ShortestTimes() : benchmark::ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            m_failed = m_failed || run.error_occurred;
            if (run.run_type != Run::RT_Iteration)
                continue;
            const std::string name = run.run_name.function_name + '/' + run.run_name.args;
            const double time = run.GetAdjustedRealTime();
            const auto known = m_times.emplace(name, time).first;
            known->second = std::min(known->second, time);
        }
        ConsoleReporter::ReportRuns(runs);
    }

    /// The time of "function/arguments", in the benchmark's unit.
    double of(const std::string &name) const { return m_times.at(name); }
    bool failed() const { return m_failed; }

private:
    std::map<std::string, double> m_times;
    bool m_failed = false;
};

/// Prints the value beside its bound; false when the bound is exceeded.
inline bool isWithin(const char *what, double value, double bound)
{
    const bool isGood = value <= bound;
    std::printf("%-62s %8.2f   allowed %8.2f   %s\n", what, value, bound, isGood ? "ok" : "EXCEEDED");
    return isGood;
}

#endif
