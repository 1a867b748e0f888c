#include "Benchmarks/BenchWindow.h"
#include "Benchmarks/FamilyFiles.h"
#include "Benchmarks/Themes.h"

#include "Typloom/Formats/DesignspaceReader.h"
#include "Typloom/Formats/FamilySaver.h"

#include <pugixml.hpp>

#include <cstdarg>
#include <fstream>
#include <sstream>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

static std::size_t filesOpened = 0;

/// Stands before the C library's, so that the files that are opened can be counted.
extern "C" int openat(int folder, char const* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    auto const mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    filesOpened += (flags & O_DIRECTORY) == 0;
    return int(syscall(SYS_openat, folder, path, flags, mode));
}

namespace {

FamilySize const oneMaster { "one", 1, 2, 2, 0 };

std::shared_ptr<TLFont> openedFamily(FamilyFiles const& files)
{
    auto const font = TLOpenFamily(files.designspace());
    return font && (*font)->report().empty() ? *font : nullptr;
}

std::size_t filesOpenedForFirstPicture(FamilyFiles const& files)
{
    auto const before = filesOpened;
    BenchWindow window(openedFamily(files), {});
    window.window().showGlyph("big");
    return window.window().editedOutline() ? filesOpened - before : 0;
}

/// Every file read and parsed, and the numbers of its points: what any reader has to do.
double plainParse(std::filesystem::path const& folder)
{
    double sum = 0;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != ".glif") {
            continue;
        }
        std::ifstream file(entry.path(), std::ios::binary);
        std::string const text(std::istreambuf_iterator<char>(file), {});
        pugi::xml_document document;
        document.load_buffer(text.data(), text.size());
        for (auto const& contour : document.child("glyph").child("outline").children("contour")) {
            std::vector<std::pair<double, double>> points;
            for (auto const& point : contour.children("point")) {
                points.emplace_back(point.attribute("x").as_double(), point.attribute("y").as_double());
            }
            sum += points.empty() ? 0 : points.back().first;
        }
    }
    return sum;
}

void measureOpening(Table& table)
{
    std::size_t opened[2];
    std::size_t const counts[] = { 100, 1000 };
    for (int index = 0; index < 2; ++index) {
        FamilyFiles const files(familySizes[0], counts[index]);
        opened[index] = filesOpenedForFirstPicture(files);
        table.addCount("files opened up to the first picture", std::to_string(counts[index]) + " glyphs",
            double(opened[index]), 300);
    }
    table.addCount("  more of them for ten times the glyphs", "", double(opened[1]) - double(opened[0]), 0);
    FamilyFiles const files(oneMaster, effort().isShort ? 100 : 1000);
    volatile double sink = 0;
    table.addComparison("every glyph read : plain parse", std::to_string(files.countOfFiles()) + " files",
        { [&] {
            auto const font = openedFamily(files);
            for (auto const& name : font->glyphNames()) {
                sink = sink + double(font->glyphForName(name)->layers().size());
            }
        } },
        { [&] { sink = sink + plainParse(files.designspace().parent_path()); } }, 1.5);
}

/// Files whose time or size is another than in the list before.
std::size_t countOfChangedFiles(
    std::filesystem::path const& folder, std::map<std::string, std::string>& stamps)
{
    std::size_t changed = 0;
    std::map<std::string, std::string> now;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(folder)) {
        struct stat status { };
        if (!entry.is_regular_file() || stat(entry.path().c_str(), &status) != 0) {
            continue;
        }
        auto const stamp = std::to_string(status.st_ino) + ' ' + std::to_string(status.st_mtim.tv_nsec);
        auto const known = stamps.find(entry.path().string());
        changed += known == stamps.end() || known->second != stamp;
        now.emplace(entry.path().string(), stamp);
    }
    stamps = std::move(now);
    return changed;
}

void measureSaving(Table& table)
{
    for (std::size_t const glyphs : { 100, 1000 }) {
        FamilyFiles const files(familySizes[0], glyphs);
        auto const font = openedFamily(files);
        std::map<std::string, std::string> stamps;
        auto const folder = files.designspace().parent_path();
        countOfChangedFiles(folder, stamps);
        auto const layer = font->glyphForName("A")->layers().begin()->second;
        auto outline = layer->outline();
        outline.contours.front().points.front().x += 1;
        layer->setOutline(std::move(outline));
        auto const before = filesOpened;
        auto const outcome = TLSaveFamily(font);
        auto const size = std::to_string(glyphs) + " glyphs";
        if (outcome.kind != TLSaveOutcome::Kind::saved) {
            table.add({ "  the family was not saved", size, "", "", "", "", Row::Verdict::missed });
        }
        table.addCount(
            "files written for one changed glyph", size, double(countOfChangedFiles(folder, stamps)), 3);
        table.add({ "  files opened meanwhile", size, numberText(double(filesOpened - before)), {}, {}, {},
            Row::Verdict::shown });
    }
}

} // namespace

void measureFiles(Table& table)
{
    table.heading("Files");
    measureOpening(table);
    measureSaving(table);
}
