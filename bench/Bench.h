// A small frame for speed comparisons. A benchmark measures our way of doing something and a peer's way in the same
// run, on the same data, and states the goal as a ratio: figures of two machines differ, ratios hardly do.
//
//     void FootnotesAgainstDictionary(Table& table) {
//         table.Compare({.name = "...", .goal = 0.5, .runs = 5}, [&] { ours(); }, [&] { peers(); });
//     }
//     const Benchmark registered("footnotes", FootnotesAgainstDictionary);
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace v5::bench {

// One comparison. The ratio is our time divided by the peer's.
struct Comparison {
    std::string name;
    double goal = 1.0;      // the ratio that is not to be exceeded
    int runs = 5;           // of each; the best one counts, since everything else on the machine only adds time
    double operations = 1;  // in one run, for the times in the table
    std::string unit = {};  // of counts and sizes that are compared instead of times
};

// Prints one row for each comparison: name, ours, peer, ratio, goal, ok.
class Table {
  public:
    // Runs both ways in turn and adds their row. Each way is run once beforehand, to warm up.
    void Compare(const Comparison& comparison, const std::function<void()>& ours, const std::function<void()>& peer);

    // Adds a row for what was measured elsewhere: times in seconds, or counts in the comparison's unit.
    void Add(const Comparison& comparison, double ours, double peers);

    // Whether every row is within its goal.
    bool AllOk() const { return mAllOk; }

  private:
    bool mAllOk = true;
};

// The time that `work` takes, in seconds.
template <typename Work>
double Seconds(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// Makes the compiler believe that `value` is used, so that the work that led to it is not optimised away.
template <typename Value>
void Keep(const Value& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

// A benchmark of the program, registered as a static object in the file that holds it.
class Benchmark {
  public:
    Benchmark(const char* name, void (*run)(Table&));
};

}  // namespace v5::bench
