#include "Typloom/Formats/PendingWriter.h"

#include "Typloom/Formats/FileReading.h"

#include <algorithm>

namespace {

using Path = std::filesystem::path;

/// Files are replaced, so that behind a link has to be known.
Path behindLink(Path const& path)
{
    std::error_code problem;
    auto const target
        = std::filesystem::is_symlink(path, problem) ? std::filesystem::canonical(path, problem) : path;
    return problem ? path : target;
}

/// Files come before the files that name them.
int rank(Path const& path)
{
    std::error_code problem;
    return path.extension() == ".designspace" ? 4
        : path.extension() == ".glif"         ? (std::filesystem::exists(path, problem) ? 3 : 0)
        : path.filename() == "contents.plist" ? 1
                                              : 2;
}

} // namespace

PendingWriter::Path PendingWriter::familyFolder(TLFont const& font)
{
    auto const folder = font.path().lexically_normal().parent_path();
    return folder.empty() ? Path(".") : folder;
}

PendingWriter::PendingWriter(TLFont const& font, FamilyGlyphSource const& family, FileSystem& fileSystem)
    : m_designspace(behindLink(font.path()))
    , m_link(font.path().lexically_normal())
    , m_isLink(m_designspace != font.path())
    , m_folder(familyFolder(font))
    , m_fileSystem(fileSystem)
    , m_transaction(m_designspace, fileSystem)
{
    for (auto const& source : family.family().sources) {
        m_ufos.insert(source.ufo->folder().lexically_normal());
    }
}

std::string PendingWriter::write(Pending const& pending)
{
    std::vector<Pending::const_pointer> order;
    for (auto const& entry : pending) {
        order.push_back(&entry);
    }
    std::stable_sort(order.begin(), order.end(),
        [](auto const* one, auto const* other) { return rank(one->first) < rank(other->first); });
    for (auto const* entry : order) {
        add(entry->first, entry->second);
    }
    auto const error = m_transaction.commit();
    bool const isDone = !error
        || (m_transaction.isPending()
            && recoverFamily(m_designspace, m_fileSystem).outcome == FamilyRecovery::Outcome::finished);
    return isDone ? std::string {} : error->sentence();
}

std::optional<FileStamp> PendingWriter::stampOf(Path const& path) const
{
    auto const [root, relative] = rootOf(path);
    auto const written = m_transaction.stamps().find(root / relative);
    if (written != m_transaction.stamps().end()) {
        return written->second;
    }
    FileStamp stamp;
    return readFile(path, {}, &stamp) ? std::optional(stamp) : std::nullopt;
}

void PendingWriter::add(Path const& path, std::optional<std::string> const& text)
{
    auto const [root, relative] = rootOf(path);
    if (text) {
        makeFolders(root, relative);
        return m_transaction.write(root, relative, *text);
    }
    m_transaction.remove(root, relative);
    if (path.filename() == "contents.plist" || path.filename() == "metainfo.plist") {
        m_transaction.removeFolder(root, Path(relative).parent_path().generic_string());
    }
}

void PendingWriter::makeFolders(Path const& root, std::string const& relative)
{
    Path folder;
    for (auto const& name : Path(relative).parent_path()) {
        folder /= name;
        std::error_code problem;
        if (!std::filesystem::exists(root / folder, problem) && m_made.insert(root / folder).second) {
            m_transaction.makeFolder(root, folder.generic_string());
        }
    }
}

/// A UFO that is reached through a link, or lies elsewhere, is a root of its own.
std::pair<PendingWriter::Path, std::string> PendingWriter::rootOf(Path const& path) const
{
    if (m_isLink && path == m_link) {
        return { m_designspace.parent_path(), m_designspace.filename().string() };
    }
    for (auto const& ufo : m_ufos) {
        auto const ends = std::mismatch(ufo.begin(), ufo.end(), path.begin(), path.end());
        std::error_code problem;
        if (ends.first == ufo.end()
            && (m_isLink || std::filesystem::is_symlink(ufo, problem) || !liesInside(ufo, m_folder))) {
            return { ufo, path.lexically_relative(ufo).generic_string() };
        }
    }
    return { m_folder, path.lexically_relative(m_folder).generic_string() };
}
