#pragma once
#include <benchmark/benchmark.h>
#include <map>
#include <string>

namespace liaowu {

/// Prints the usual table and then, for each pair "name/raw..." and "name/layer...", how many times the limit the
/// layer takes, by the medians of the run.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    std::map<std::string, double> medians; ///< nanoseconds by name
};

} // namespace liaowu
