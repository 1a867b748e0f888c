#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Something to be timed. `prepare` runs before each round and is not timed; may be empty.
struct Work {
    std::function<void()> run;
    std::function<void()> prepare {};
    std::function<double()> told {}; ///< In the place of both: a time that another program tells.
};

/// The median time of one round in microseconds, of rounds that take `forSeconds` in all. Rounds that are
/// too short for the clock are timed in batches, unless they have to be prepared.
double medianMicroseconds(Work const& work, double forSeconds);
/// The time of each of so many rounds, microseconds.
std::vector<double> eachMicroseconds(Work const& work, std::size_t rounds);

double median(std::vector<double> values);
/// The value that so large a part (0 to 1) of the values does not exceed.
double percentile(std::vector<double> values, double part);

/// Two works that took turns.
struct Comparison {
    double ours { 0 }; ///< Medians, microseconds.
    double floor { 0 };
    double ratio { 0 }; ///< The median of the pairs' ratios.
    double floorSpread { 0 }; ///< How far the floor's middle half reaches, as a part of its median.
    bool isVoid() const { return floorSpread > 0.3; }
};

/// How much is measured. The short form is a test: it looks at what can be counted, and at ratios with so
/// much room that no other load on the machine matters.
struct Effort {
    std::size_t pairs { 9 };
    double secondsPerSample { 0.03 };
    bool isShort { false };
    bool looksAtRatios { true };
    std::string onlySize; ///< T, B or X; empty: all.
    double room { 1 }; ///< What a ratio is to reach, times this.
};
Effort& effort();

/// In pairs that alternate. A comparison whose floor was not steady is made again, twice at most.
Comparison compare(Work const& ours, Work const& floor);

/// How often `operator new` was called by this thread's work.
std::size_t allocationsOf(std::function<void()> const& run);
/// How many things made by `operator new` are there.
std::size_t liveAllocations();
/// Bytes that are allocated and not freed, by the C library's count.
std::size_t bytesInUse();

/// The exponent that fits times at growing sizes best: 1 for time in proportion to the size.
double fittedOrder(std::vector<double> const& sizes, std::vector<double> const& times);
