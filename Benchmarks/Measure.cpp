#include "Benchmarks/Measure.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <malloc.h>
#include <new>

/// The time that the processor spent on this thread: other programs may be at work meanwhile.
struct Clock {
    using duration = std::chrono::nanoseconds;
    using time_point = std::chrono::time_point<Clock, duration>;
    static time_point now()
    {
        timespec time {};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return time_point(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
    }
};

static std::size_t allocations = 0;
static std::size_t releases = 0;

#ifndef __SANITIZE_ADDRESS__ // It has operators of its own; nothing is counted then.
void* operator new(std::size_t size)
{
    ++allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    releases += memory != nullptr;
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    operator delete(memory);
}
#endif

std::size_t allocationsOf(std::function<void()> const& run)
{
    auto const before = allocations;
    run();
    return allocations - before;
}

std::size_t liveAllocations()
{
    return allocations - releases;
}

std::size_t bytesInUse()
{
    auto const info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

Effort& effort()
{
    static Effort value;
    return value;
}

static double microsecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

static double timeOf(Work const& work, std::size_t rounds)
{
    if (work.prepare) {
        work.prepare();
    }
    auto const start = Clock::now();
    for (std::size_t round = 0; round < rounds; ++round) {
        work.run();
    }
    return microsecondsSince(start) / double(rounds);
}

double medianMicroseconds(Work const& work, double forSeconds)
{
    if (work.told) {
        return work.told();
    }
    // The clock itself takes half a microsecond.
    auto const first = timeOf(work, 1);
    auto const batch
        = work.prepare ? 1 : std::clamp<std::size_t>(std::size_t(50 / std::max(first, 0.01)), 1, 5000);
    std::vector<double> times;
    auto const start = Clock::now();
    do {
        times.push_back(timeOf(work, batch));
    } while (microsecondsSince(start) < forSeconds * 1e6 && times.size() < 100000);
    return median(std::move(times));
}

std::vector<double> eachMicroseconds(Work const& work, std::size_t rounds)
{
    std::vector<double> times;
    times.reserve(rounds);
    for (std::size_t round = 0; round < rounds; ++round) {
        times.push_back(timeOf(work, 1));
    }
    return times;
}

double percentile(std::vector<double> values, double part)
{
    if (values.empty()) {
        return 0;
    }
    auto const index
        = std::min(values.size() - 1, std::size_t(std::ceil(part * double(values.size())) - 0.5));
    std::nth_element(values.begin(), values.begin() + std::ptrdiff_t(index), values.end());
    return values[index];
}

double median(std::vector<double> values)
{
    return percentile(std::move(values), 0.5);
}

static Comparison compareOnce(Work const& ours, Work const& floor)
{
    std::vector<double> oursTimes, floorTimes, ratios;
    for (std::size_t pair = 0; pair < effort().pairs; ++pair) {
        floorTimes.push_back(medianMicroseconds(floor, effort().secondsPerSample));
        oursTimes.push_back(medianMicroseconds(ours, effort().secondsPerSample));
        ratios.push_back(oursTimes.back() / floorTimes.back());
    }
    auto const middle = median(floorTimes);
    auto const spread = (percentile(floorTimes, 0.75) - percentile(floorTimes, 0.25)) / middle;
    return { median(oursTimes), middle, median(ratios), spread };
}

Comparison compare(Work const& ours, Work const& floor)
{
    auto comparison = compareOnce(ours, floor);
    for (int again = 0; again < 2 && comparison.isVoid() && !effort().isShort; ++again) {
        comparison = compareOnce(ours, floor);
    }
    return comparison;
}

double fittedOrder(std::vector<double> const& sizes, std::vector<double> const& times)
{
    double sumX = 0, sumY = 0, sumXX = 0, sumXY = 0;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        auto const x = std::log(sizes[i]);
        auto const y = std::log(times[i]);
        sumX += x;
        sumY += y;
        sumXX += x * x;
        sumXY += x * y;
    }
    auto const n = double(sizes.size());
    return (n * sumXY - sumX * sumY) / (n * sumXX - sumX * sumX);
}
