#pragma once

#include <benchmark/benchmark.h>
#include <cstdio>
#include <map>
#include <string>
#include <utility>

// The usual console report, then for each benchmark run at two sizes the ratio of the large
// size's time to the small one's, next to its limit: the figure a size target is judged by.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    RatioReporter(std::string small, std::string large, double limit)
        : m_small(std::move(small)), m_large(std::move(large)), m_limit(limit) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& r : runs) {
            const std::string name = r.benchmark_name();
            const auto slash = name.find('/');
            if (slash != std::string::npos && r.iterations > 0)
                m_times[name.substr(0, slash)]
                       [name.substr(slash + 1, name.find('/', slash + 1) - slash - 1)] =
                           r.GetAdjustedRealTime();
        }
    }
    void Finalize() override {
        ConsoleReporter::Finalize();
        for (const auto& [name, bySize] : m_times) {
            const auto small = bySize.find(m_small), large = bySize.find(m_large);
            if (small != bySize.end() && large != bySize.end() && small->second > 0)
                std::printf("%s: %s/%s = %.2fx (limit %gx)\n", name.c_str(), m_large.c_str(),
                            m_small.c_str(), large->second / small->second, m_limit);
        }
    }

private:
    std::string m_small, m_large;
    double m_limit;
    std::map<std::string, std::map<std::string, double>> m_times;
};
