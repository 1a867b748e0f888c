#include "Typloom/Formats/NewMaster.h"

#include "Typloom/Formats/PlistEdit.h"

namespace {

using Path = std::filesystem::path;

/// "Family-Bold.ufo" beside "Family-Regular.ufo", if no file has that name in any case.
std::string newUfoName(FamilyDraft const& files, Path const& like, std::string const& styleName)
{
    auto const isUsable = [](char character) {
        auto const byte = static_cast<unsigned char>(character);
        return byte >= 0x80 || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z')
            || (byte >= 'a' && byte <= 'z');
    };
    std::string style;
    std::copy_if(styleName.begin(), styleName.end(), std::back_inserter(style), isUsable);
    auto const stem = like.stem().string();
    auto const start
        = stem.substr(0, stem.find('-')) + "-" + (style.empty() ? "Master" : style.substr(0, 100));
    UsedFileNames used;
    std::error_code problem;
    auto const folder = files.designspacePath().parent_path() / like.parent_path();
    for (auto const& entry : std::filesystem::directory_iterator(folder, problem)) {
        used.insert(lowerCased(entry.path().filename().string()));
    }
    for (std::size_t number = 1;; ++number) {
        auto const name = start + (number > 1 ? std::to_string(number) : "") + ".ufo";
        auto const path = (like.parent_path() / name).generic_string();
        if (!used.contains(lowerCased(name)) && !files.hasUfo(path)) {
            return path;
        }
    }
}

} // namespace

std::string addMasterUfo(FamilyDraft& files, std::string const& likeUfo, std::string const& styleName)
{
    auto const name = newUfoName(files, likeUfo, styleName);
    auto const folder = files.designspacePath().parent_path() / name;
    auto const likeFolder = files.folderOf(likeUfo);
    files.addUfo(name, folder);
    std::error_code problem;
    for (auto const* const file :
        { "fontinfo.plist", "lib.plist", "groups.plist", "kerning.plist", "features.fea" }) {
        bool const isOfOtherMeaning = files.versionOf(likeUfo) < 3
            && (std::string_view(file) == "groups.plist" || std::string_view(file) == "kerning.plist");
        if (!isOfOtherMeaning && std::filesystem::exists(likeFolder / file, problem)) {
            files.create(folder / file, files.textOf(likeFolder / file));
        }
    }
    if (std::filesystem::exists(likeFolder / "fontinfo.plist", problem)) {
        auto& information = files.edit(folder / "fontinfo.plist");
        setPlistEntry(information, plistRoot(information), "styleName", { styleName });
        for (auto const key : { "postscriptFontName", "postscriptFullName", "styleMapStyleName" }) {
            removePlistEntry(information, plistRoot(information), key);
        }
    }
    return name;
}
