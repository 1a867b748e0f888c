#include "Typloom/Formats/FamilyFiles.h"

#include "Typloom/Formats/FileReading.h"

std::optional<std::string> const* FamilyFiles::pendingEntry(Path const& path) const
{
    auto const entry = m_pending.find(path.lexically_normal());
    return entry == m_pending.end() ? nullptr : &entry->second;
}

template <class Read>
Result<std::string> FamilyFiles::read(Path const& path, std::string const& displayName, Read fromDisk)
{
    if (auto const* pending = pendingEntry(path)) {
        return *pending ? Result<std::string>(**pending)
                        : FormatError { displayName, 0, "there is no such file" };
    }
    FileStamp stamp;
    auto text = fromDisk(&stamp);
    if (m_pending.empty()) {
        setStamp(path, text ? std::optional(stamp) : std::nullopt);
        if (text) {
            keepText(path, *text);
        }
    }
    return text;
}

Result<std::string> FamilyFiles::read(Path const& path, std::string const& displayName)
{
    return read(path, displayName, [&](FileStamp* stamp) { return readFile(path, displayName, stamp); });
}

Result<std::string> FamilyFiles::readInside(
    Path const& root, Path const& relativePath, std::string const& displayName)
{
    return read(root / relativePath, displayName,
        [&](FileStamp* stamp) { return readFileInside(root, relativePath, displayName, stamp); });
}

std::optional<std::string> FamilyFiles::keptText(Path const& path) const
{
    auto const known = m_texts.find(path.lexically_normal());
    return known == m_texts.end() ? std::nullopt : std::optional(known->second);
}

void FamilyFiles::keepText(Path const& path, std::string const& text)
{
    bool const holdsMore
        = path.extension() == ".glif" ? text.find("<lib") != text.npos : path.filename() != "contents.plist";
    if (holdsMore) {
        m_texts.insert_or_assign(path.lexically_normal(), text);
    } else {
        m_texts.erase(path.lexically_normal());
    }
}

bool FamilyFiles::exists(Path const& path) const
{
    if (auto const* pending = pendingEntry(path)) {
        return pending->has_value();
    }
    std::error_code problem;
    return std::filesystem::exists(path, problem);
}

void FamilyFiles::setStamp(Path const& path, std::optional<FileStamp> const& stamp)
{
    if (stamp) {
        m_stamps.insert_or_assign(path.lexically_normal(), *stamp);
    } else {
        m_stamps.erase(path.lexically_normal());
    }
}
