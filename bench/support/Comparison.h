#ifndef VTRUTILS_BENCH_SUPPORT_COMPARISON_H
#define VTRUTILS_BENCH_SUPPORT_COMPARISON_H

#include <benchmark/benchmark.h>
#include <functional>
#include <string>

/// Measures works for our library and for its peers, and prints a table that compares them.

namespace bench {

/// The contender that all others are compared with.
inline constexpr char ours[] = "ours";

using Body = std::function<void(benchmark::State&)>;

/// Adds a measurement. Works, the sizes of a work and its peers appear in the order in which they
/// are first named; the first size of a work is its smallest. No name holds a "/".
void Measure(const std::string& work, const std::string& size, const std::string& contender,
             Body body);

/// The same for processor time, of all threads of this process and in the kernel for them.
void MeasureProcessorTime(const std::string& work, const std::string& size,
                          const std::string& contender, Body iteration);

/// What is to be reached: the peer takes at least `ratio` times as long as ours.
void ToReach(const std::string& work, const std::string& peer, double ratio);

/// Why ours cannot be as fast as the peer: printed below the table where it is not.
void Explain(const std::string& work, const std::string& peer, const std::string& reason);

/// What is to be reached: ours at the last size takes at most `most` times as long as at the first.
void GrowthToReach(const std::string& work, double most);

/// "No more than 1.1 times the peer", as a ratio.
inline constexpr double asFast = 0.91;

/// Measures what the arguments (those of Google Benchmark) leave and prints one line for each work,
/// size and peer: cells separated by tabs, in the columns of bench/table.awk, and one with "why"
/// and a text for each reason that applies. Times are medians of repetitions; the repetitions of
/// all contenders are shuffled, so that a slow spell of the machine meets all alike. Returns the
/// program's exit code: 1 when a measurement failed.
int Run(int argc, char** argv);

} // namespace bench

#endif
