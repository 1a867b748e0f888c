#include "Typloom/Formats/SaveJournal.h"

#include "Typloom/Formats/FileStamp.h"
#include "Typloom/Formats/RootFolder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <random>

namespace {

constexpr std::string_view heading = "typloom-journal 1 ";
constexpr std::string_view journalSuffix = ".typloom-journal";
constexpr std::string_view hexadecimals = "0123456789abcdef";
constexpr std::array<std::string_view, 4> kinds { "folder", "write", "remove", "clear" };

std::string hexadecimal(std::uint64_t number)
{
    std::string text;
    for (int shift = 60; shift >= 0; shift -= 4) {
        text += hexadecimals[number >> static_cast<unsigned>(shift) & 0xFU];
    }
    return text;
}

std::optional<std::uint64_t> parseHexadecimal(std::string_view text)
{
    std::uint64_t number = 0;
    auto const [rest, problem] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    bool const isWhole = problem == std::errc {} && rest == text.data() + text.size() && text.size() == 16;
    return isWhole ? std::optional(number) : std::nullopt;
}

/// Tabs and line ends set fields apart.
std::string escaped(std::string_view path)
{
    std::string text;
    for (char const character : path) {
        auto const byte = static_cast<unsigned char>(character);
        if (byte <= 0x20 || character == '%') {
            text += { '%', hexadecimals[byte >> 4U], hexadecimals[byte & 0xFU] };
        } else {
            text += character;
        }
    }
    return text;
}

std::string unescaped(std::string_view text)
{
    std::string path;
    for (std::size_t index = 0; index < text.size(); ++index) {
        unsigned byte = 0;
        auto const digits = text.substr(index, 3);
        auto const* const end = digits.data() + digits.size();
        bool const isEscape = digits.size() == 3 && digits.front() == '%'
            && std::from_chars(digits.data() + 1, end, byte, 16).ptr == end;
        path += isEscape ? static_cast<char>(byte) : text[index];
        index += isEscape ? 2 : 0;
    }
    return path;
}

std::vector<std::string_view> split(std::string_view text, char separator)
{
    std::vector<std::string_view> fields;
    for (std::size_t start = 0; start <= text.size();) {
        auto const end = std::min(text.find(separator, start), text.size());
        fields.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return fields;
}

bool isUsableRoot(std::string const& root)
{
    bool const isInside = root == "." || namesInside(root).has_value();
    return isInside || (std::string_view(root).ends_with(".ufo") && root.find('\0') == std::string::npos);
}

std::optional<JournalEntry> readEntry(std::vector<std::string_view> const& fields)
{
    JournalEntry entry;
    auto const kind = std::find(kinds.begin(), kinds.end(), fields.front());
    std::size_t const count = fields.size();
    if (kind == kinds.end() || count != 5) {
        return std::nullopt;
    }
    entry.kind = static_cast<JournalEntry::Kind>(kind - kinds.begin());
    auto const* const end = fields[1].data() + fields[1].size();
    auto const [rest, problem] = std::from_chars(fields[1].data(), end, entry.root);
    auto const newHash = parseHexadecimal(fields[3]);
    entry.path = unescaped(fields[2]);
    entry.newHash = newHash.value_or(0);
    entry.oldHash = parseHexadecimal(fields[4]);
    bool const hasOldHash = entry.oldHash || fields[4] == "-";
    bool const isGood = problem == std::errc {} && rest == end && newHash && hasOldHash;
    return isGood ? std::optional(std::move(entry)) : std::nullopt;
}

std::optional<SaveJournal> parseLines(std::string_view text, std::string_view designspaceName)
{
    SaveJournal journal;
    auto lines = split(text, '\n');
    journal.token = lines.front().substr(heading.size());
    if (!parseHexadecimal(journal.token)) {
        return std::nullopt;
    }
    for (auto const line : std::vector(lines.begin() + 1, lines.end() - 1)) {
        auto const fields = split(line, '\t');
        if (fields.size() == 2 && fields.front() == "root") {
            journal.roots.push_back(unescaped(fields.back()));
            if (!isUsableRoot(journal.roots.back())) {
                return std::nullopt;
            }
            continue;
        }
        auto entry = readEntry(fields);
        if (!entry || !mayChange(journal, *entry, designspaceName)) {
            return std::nullopt;
        }
        journal.entries.push_back(std::move(*entry));
    }
    return journal;
}

} // namespace

std::string SaveJournal::temporaryName(std::size_t entry) const
{
    return ".typloom-" + token + "-" + std::to_string(entry) + ".tmp";
}

std::string SaveJournal::text() const
{
    auto lines = std::string(heading) + token + "\n";
    for (auto const& root : roots) {
        lines += "root\t" + escaped(root) + "\n";
    }
    for (auto const& entry : entries) {
        lines += std::string(kinds[static_cast<std::size_t>(entry.kind)]) + "\t" + std::to_string(entry.root)
            + "\t" + escaped(entry.path) + "\t" + hexadecimal(entry.newHash) + "\t"
            + (entry.oldHash ? hexadecimal(*entry.oldHash) : "-") + "\n";
    }
    return lines + "end\t" + hexadecimal(contentHash(lines)) + "\n";
}

std::string makeJournalToken()
{
    std::random_device random;
    return hexadecimal(std::uint64_t(random()) << 32U | random());
}

std::filesystem::path journalPath(std::filesystem::path const& designspace)
{
    return designspace.parent_path() / ("." + designspace.filename().string() + std::string(journalSuffix));
}

Result<std::optional<SaveJournal>> readJournal(
    std::string_view text, std::filesystem::path const& journalFile)
{
    FormatError const foreign { .file = journalFile.string(),
        .reason
        = "it looks like the record of a save that was broken off, but cannot be trusted; move it away "
          "when the family is as it should be" };
    if (!text.starts_with(heading.substr(0, text.size()))) {
        return foreign;
    }
    constexpr std::size_t endLength = 4 + 16 + 1; // "end", a tab, a hash, a line end.
    auto const end = text.find("\nend\t");
    if (end == std::string_view::npos || text.size() < end + 1 + endLength) {
        return std::optional<SaveJournal> {};
    }
    auto const lines = text.substr(0, end + 1);
    bool const isIntact = text.substr(end + 1, endLength) == "end\t" + hexadecimal(contentHash(lines)) + "\n";
    auto const name = journalFile.filename().string();
    auto const designspaceName = std::string_view(name).substr(1, name.size() - 1 - journalSuffix.size());
    auto journal = isIntact ? parseLines(lines, designspaceName) : std::nullopt;
    if (!journal) {
        return foreign;
    }
    journal->isCommitted = text.substr(end + 1 + endLength) == journalCommitLine;
    return journal;
}

bool mayChange(SaveJournal const& journal, JournalEntry const& entry, std::string_view designspaceName)
{
    if (entry.root >= journal.roots.size() || !namesInside(entry.path)) {
        return false;
    }
    bool const isNew = entry.kind == JournalEntry::Kind::makeFolder
        || (entry.kind == JournalEntry::Kind::write && !entry.oldHash);
    std::string_view const path = entry.path;
    bool const isFeatures = path == "features.fea" || path.ends_with("/features.fea");
    return isNew || entry.kind == JournalEntry::Kind::removeFolder || path.ends_with(".glif")
        || path.ends_with(".plist") || (isFeatures && entry.kind == JournalEntry::Kind::remove)
        || (journal.roots[entry.root] == "." && path == designspaceName);
}
