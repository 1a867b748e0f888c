#include "Benchmarks/Table.h"

#include "Benchmarks/Themes.h"

#include <algorithm>
#include <cstdio>

static char const* word(Row::Verdict verdict)
{
    switch (verdict) {
    case Row::Verdict::met:
        return "met";
    case Row::Verdict::missed:
        return "MISSED";
    case Row::Verdict::isVoid:
        return "void";
    case Row::Verdict::shown:
        break;
    }
    return "";
}

std::string numberText(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, number < 10 ? "%.2f" : number < 100 ? "%.1f" : "%.0f", number);
    return text;
}

std::string timeText(double microseconds)
{
    if (microseconds >= 1e6) {
        return numberText(microseconds / 1e6) + " s";
    }
    return microseconds >= 1000 ? numberText(microseconds / 1000) + " ms" : numberText(microseconds) + " us";
}

void Table::heading(std::string const& text)
{
    if (!m_asJson) {
        std::printf("\n%s\n%-44s %-15s %10s %10s %7s  %-14s\n", text.c_str(), "", "", "ours", "floor",
            "ratio", "to reach");
    }
}

static std::string quoted(std::string const& text)
{
    std::string result = "\"";
    for (char const character : text) {
        if (character == '"' || character == '\\') {
            result += '\\';
        }
        result += character;
    }
    return result + '"';
}

void Table::add(Row const& row)
{
    m_met += row.verdict == Row::Verdict::met;
    m_missed += row.verdict == Row::Verdict::missed;
    m_void += row.verdict == Row::Verdict::isVoid;
    if (m_asJson) {
        std::printf(
            "{\"work\": %s, \"size\": %s, \"ours\": %s, \"floor\": %s, \"ratio\": %s, \"target\": %s, "
            "\"verdict\": %s}\n",
            quoted(row.work).c_str(), quoted(row.size).c_str(), quoted(row.ours).c_str(),
            quoted(row.floor).c_str(), quoted(row.ratio).c_str(), quoted(row.target).c_str(),
            quoted(word(row.verdict)).c_str());
    } else {
        std::printf("%-44s %-15s %10s %10s %7s  %-14s %s\n", row.work.c_str(), row.size.c_str(),
            row.ours.c_str(), row.floor.c_str(), row.ratio.c_str(), row.target.c_str(), word(row.verdict));
    }
    std::fflush(stdout);
}

static Row rowOf(std::string const& work, std::string const& size, Comparison const& result, double atMost)
{
    auto const verdict = result.isVoid() && !effort().isShort ? Row::Verdict::isVoid
        : result.ratio <= atMost                              ? Row::Verdict::met
                                                              : Row::Verdict::missed;
    return { work, size, timeText(result.ours), timeText(result.floor), numberText(result.ratio),
        "<= " + numberText(atMost), verdict };
}

void Table::addComparison(
    std::string const& work, std::string const& size, Work const& ours, Work const& floor, double atMost)
{
    if (!effort().looksAtRatios) {
        return;
    }
    atMost *= effort().room;
    auto const first = compare(ours, floor);
    auto row = rowOf(work, size, first, atMost);
    if (row.verdict == Row::Verdict::missed && !effort().isShort) {
        auto second = compare(ours, floor);
        auto shown = row;
        shown.verdict = Row::Verdict::shown;
        shown.target = "(once more:)";
        add(shown);
        second.ratio = (first.ratio + second.ratio) / 2;
        row = rowOf(work, size, second, atMost);
    }
    add(row);
}

void Table::addTime(std::string const& work, std::string const& size, Work const& ours, double below)
{
    if (effort().isShort) {
        return; // Says more about the machine and its other loads.
    }
    auto time = medianMicroseconds(ours, effort().secondsPerSample * double(effort().pairs));
    if (time >= below) {
        time = std::min(time, medianMicroseconds(ours, effort().secondsPerSample * double(effort().pairs)));
    }
    add({ work, size, timeText(time), {}, {}, "< " + timeText(below),
        time < below ? Row::Verdict::met : Row::Verdict::missed });
}

void Table::addCount(
    std::string const& work, std::string const& size, double number, double atMost, std::string const& unit)
{
    add({ work, size, numberText(number) + unit, {}, {}, "<= " + numberText(atMost) + unit,
        number <= atMost ? Row::Verdict::met : Row::Verdict::missed });
}

void Table::finish() const
{
    if (m_asJson) {
        std::printf("{\"met\": %zu, \"missed\": %zu, \"void\": %zu}\n", m_met, m_missed, m_void);
    } else {
        std::printf("\n%zu met, %zu missed, %zu void (the floor was not steady)\n", m_met, m_missed, m_void);
    }
}

std::vector<FamilySize> measuredSizes()
{
    std::vector<FamilySize> sizes(std::begin(familySizes), std::end(familySizes));
    std::erase_if(sizes, [](FamilySize const& size) {
        return effort().onlySize.empty() ? effort().isShort && size.masters > 100
                                         : effort().onlySize != size.name;
    });
    return sizes;
}
