// Runs the registered benchmarks (those whose name contains the first argument, or all) and prints their rows. The exit
// code is 1 when a goal is missed.
#include "bench/Bench.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string_view>
#include <vector>

namespace v5::bench {

namespace {

struct Registered {
    const char* name;
    void (*run)(Table&);
};

std::vector<Registered>& Benchmarks() {
    static std::vector<Registered> benchmarks;
    return benchmarks;
}

// A time with three digits and a unit, or a count in the unit that is given.
std::string Readable(double seconds, const std::string& countsUnit) {
    if (!countsUnit.empty()) {
        char count[48];
        std::snprintf(count, sizeof count, "%.4g %s", seconds, countsUnit.c_str());
        return count;
    }
    const struct {
        double seconds;
        const char* unit;
    } units[] = {{1, "s"}, {1e-3, "ms"}, {1e-6, "us"}, {0, "ns"}};
    char text[32];
    for (const auto& unit : units) {
        if (seconds >= unit.seconds) {
            std::snprintf(text, sizeof text, "%.3g %s", seconds / (unit.seconds > 0 ? unit.seconds : 1e-9), unit.unit);
            break;
        }
    }
    return text;
}

}  // namespace

Benchmark::Benchmark(const char* name, void (*run)(Table&)) {
    Benchmarks().push_back({name, run});
}

void Table::Compare(const Comparison& comparison, const std::function<void()>& ours,
                    const std::function<void()>& peer) {
    ours();
    peer();
    double bestOfOurs = Seconds(ours);
    double bestOfPeer = Seconds(peer);
    for (int run = 1; run < comparison.runs; ++run) {
        bestOfOurs = std::min(bestOfOurs, Seconds(ours));
        bestOfPeer = std::min(bestOfPeer, Seconds(peer));
    }
    Add(comparison, bestOfOurs, bestOfPeer);
}

void Table::Add(const Comparison& comparison, double ours, double peers) {
    const double ratio = ours == peers ? 1 : ours / peers;
    const bool ok = ratio <= comparison.goal;
    std::printf("%-72s  %10s  %10s  %7.3f  <=%-5.4g  %s\n", comparison.name.c_str(),
                Readable(ours / comparison.operations, comparison.unit).c_str(),
                Readable(peers / comparison.operations, comparison.unit).c_str(), ratio, comparison.goal,
                ok ? "ok" : "MISSED");
    std::fflush(stdout);
    mAllOk = mAllOk && ok;
}

}  // namespace v5::bench

int main(int argc, char** argv) {
    const std::string_view filter = argc > 1 ? argv[1] : "";
    v5::bench::Table table;
    bool failed = false;
    for (const auto& benchmark : v5::bench::Benchmarks()) {
        if (std::string_view(benchmark.name).find(filter) == std::string_view::npos) {
            continue;
        }
        try {
            benchmark.run(table);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s: %s\n", benchmark.name, error.what());
            failed = true;
        }
    }
    return table.AllOk() && !failed ? 0 : 1;
}
