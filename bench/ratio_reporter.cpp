#include "ratio_reporter.h"
#include <iomanip>
#include <iostream>

namespace liaowu {

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        if (run.aggregate_name != "median") continue;
        const double unit = benchmark::GetTimeUnitMultiplier(run.time_unit) / 1e9;
        medians[run.run_name.function_name + (run.run_name.args.empty() ? "" : "/" + run.run_name.args)] =
            run.GetAdjustedRealTime() / unit;
    }
}

void RatioReporter::Finalize() {
    ConsoleReporter::Finalize();
    std::cout << "\nMedians against the limit of the same run:\n" << std::fixed;
    for (const auto& [name, nanoseconds] : medians) {
        const auto at = name.find("/layer");
        if (at == std::string::npos) continue;
        std::string limit = name;
        // "/layer-own-connection/350" is held against "/raw/350".
        const auto end = name.find('/', at + 1);
        limit.replace(at, end == std::string::npos ? std::string::npos : end - at, "/raw");
        const auto raw = medians.find(limit);
        if (raw == medians.end()) continue;
        std::cout << std::left << std::setw(44) << name << std::right << std::setprecision(1) << std::setw(12)
                  << nanoseconds / 1000 << " us" << std::setw(12) << raw->second / 1000 << " us"
                  << std::setprecision(2) << std::setw(8) << nanoseconds / raw->second << " x\n";
    }
}

} // namespace liaowu
