#pragma once

#include "Benchmarks/Measure.h"

/// One line of the table.
struct Row {
    std::string work;
    std::string size;
    std::string ours; ///< Times with their unit, counts, ratios: as they are read.
    std::string floor {};
    std::string ratio {};
    std::string target;
    enum class Verdict { met, missed, isVoid, shown } verdict { Verdict::shown };
};

/// The table that `./bench` prints, row by row while it is measured.
class Table {
public:
    explicit Table(bool asJson)
        : m_asJson(asJson)
    {
    }
    void heading(std::string const& text);
    void add(Row const& row);
    /// A comparison that must not exceed a ratio. One that misses is made once more: both are shown, and
    /// the median of all decides.
    void addComparison(
        std::string const& work, std::string const& size, Work const& ours, Work const& floor, double atMost);
    /// A time in microseconds that must be below another. One that misses is measured once more.
    void addTime(std::string const& work, std::string const& size, Work const& ours, double below);
    /// A number that must not exceed another.
    void addCount(std::string const& work, std::string const& size, double number, double atMost,
        std::string const& unit = {});
    bool hasMissed() const { return m_missed > 0; }
    /// The last line: how many are met, missed and void.
    void finish() const;

private:
    bool m_asJson;
    std::size_t m_met { 0 }, m_missed { 0 }, m_void { 0 };
};

std::string timeText(double microseconds);
std::string numberText(double number);
