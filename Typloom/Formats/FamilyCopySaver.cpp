#include "Typloom/Formats/FamilyCopySaver.h"

#include "Typloom/Formats/FamilyCopySources.h"
#include "Typloom/Formats/FileDescriptor.h"
#include "Typloom/Formats/FileReading.h"
#include "Typloom/Formats/FileTransaction.h"
#include "Typloom/Formats/SaveCheck.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <algorithm>

#include <fcntl.h>

namespace {

using Path = std::filesystem::path;

/// The folder in which a copy grows, until it gets its name. Gone when it gets none.
class Workshop {
public:
    explicit Workshop(Path const& target)
        : m_target(target)
    {
        std::error_code problem;
        for (std::size_t number = 1; number == 1 || std::filesystem::exists(m_folder, problem); ++number) {
            m_folder
                = target.string() + " (unfinished" + (number > 1 ? " " + std::to_string(number) : "") + ")";
        }
    }
    ~Workshop()
    {
        std::error_code ignored;
        if (!m_isDone) {
            std::filesystem::remove_all(m_folder, ignored);
        }
    }
    Workshop(Workshop const&) = delete;

    Path const& folder() const { return m_folder; }

    /// Not negative when the copy is safe and has its name.
    int finish(FileSystem& files)
    {
        FileDescriptor const outer(
            ::open(m_target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        int result = files.synchronizeDisk(outer.get());
        auto const name = m_target.filename().string();
        result = result < 0 ? result : files.rename(outer.get(), m_folder.filename().string(), name);
        m_isDone = result >= 0;
        // Whether the name lasts shows after a power failure only; the copy does.
        static_cast<void>(m_isDone ? files.synchronize(outer.get()) : 0);
        return result;
    }

private:
    Path m_target, m_folder;
    bool m_isDone { false };
};

class CopySave {
public:
    CopySave(TLFont& font, FamilyGlyphSource& family, Path const& folder, FileSystem& fileSystem)
        : m_font(font)
        , m_family(family)
        , m_folder(folder)
        , m_fileSystem(fileSystem)
        , m_workshop(folder)
        , m_copy(fileSystem, m_workshop.folder())
    {
    }

    TLCopyOutcome run()
    {
        auto const fileName = m_folder.filename().string() + ".designspace";
        FamilyCopySources sources(m_font, m_family, m_copy, m_workshop.folder() / fileName);
        check(m_copy.makeFolders(m_workshop.folder()));
        sources.run();
        auto const family = sources.family();
        FamilySavePlan plan(m_font, m_workshop.folder() / fileName, *family, true);
        plan.run();
        auto const pending = plan.files().finish();
        {
            PendingReading const asIfWritten(*family->files(), pending);
            SaveCheck(m_font, *family, plan).run(pending, sources.hasLostFiles() || hasForeignChanges());
        }
        std::for_each(pending.begin(), pending.end(), [this](auto const& entry) { write(entry); });
        if (int const result = m_workshop.finish(m_fileSystem); result < 0) {
            throw SaveProblem { FormatError {
                .file = m_folder.filename().string(), .reason = reasonOfWriting(-result), .verb = "save" }
                                    .sentence() };
        }
        auto notes = sources.notes();
        notes.insert(notes.end(), plan.notes().begin(), plan.notes().end());
        return { .designspace = m_folder / fileName, .notes = std::move(notes) };
    }

private:
    static void check(std::optional<FormatError> const& error)
    {
        if (error) {
            throw SaveProblem { error->sentence() };
        }
    }

    bool hasForeignChanges() const
    {
        auto const& stamps = m_family.files()->stamps();
        return std::any_of(stamps.begin(), stamps.end(),
            [](auto const& entry) { return hasChanged(entry.first, entry.second); });
    }

    void write(FamilyFiles::Pending::const_reference entry)
    {
        auto const& [path, text] = entry;
        if (text) {
            check(m_copy.makeFolders(path.parent_path()));
            return check(m_copy.write(path, *text));
        }
        std::error_code problem;
        std::filesystem::remove(path, problem);
        if (path.filename() == "contents.plist") {
            std::filesystem::remove(path.parent_path(), problem); // Stays when it holds more.
        }
    }

    TLFont& m_font;
    FamilyGlyphSource& m_family;
    Path const& m_folder;
    FileSystem& m_fileSystem;
    Workshop m_workshop;
    FolderCopy m_copy;
};

/// Why no copy can come there, a sentence; otherwise empty.
std::string whyNotThere(Path const& folder, Family const& family)
{
    auto const name = inQuotes(folder.filename().string());
    std::error_code problem;
    bool const isThere = std::filesystem::exists(std::filesystem::symlink_status(folder, problem));
    bool const isEmptyFolder = std::filesystem::is_directory(std::filesystem::symlink_status(folder, problem))
        && std::filesystem::is_empty(folder, problem);
    if (folder.filename().empty() || folder.filename() == ".." || folder.filename() == ".") {
        return "A copy needs a name.";
    }
    if (!std::filesystem::is_directory(folder.parent_path(), problem)) {
        return inQuotes(folder.parent_path().string()) + " is no folder.";
    }
    if (isThere && !isEmptyFolder) {
        return name + " is there already. A copy is a new folder; give it another name.";
    }
    bool const isInUfo = std::any_of(family.sources.begin(), family.sources.end(),
        [&folder](auto const& source) { return liesInside(folder.parent_path(), source.ufo->folder()); });
    return isInUfo ? name + " would lie inside a UFO of the family; choose another place." : std::string {};
}

} // namespace

TLCopyOutcome TLSaveCopy(
    std::shared_ptr<TLFont> const& font, std::filesystem::path const& chosen, FileSystem& fileSystem)
{
    auto const family = std::dynamic_pointer_cast<FamilyGlyphSource>(font->glyphSource());
    if (!family) {
        return { .sentence = "The family has no files yet." };
    }
    auto folder = std::filesystem::absolute(chosen).lexically_normal();
    folder = folder.filename().empty() ? folder.parent_path() : folder;
    folder = folder.extension() == ".designspace" ? folder.parent_path() / folder.stem() : folder;
    if (auto reason = whyNotThere(folder, family->family()); !reason.empty()) {
        return { .sentence = std::move(reason) };
    }
    font->history().endStep();
    recoverFamily(font->path(), fileSystem); // What is half saved would be copied by halves.
    try {
        return CopySave(*font, *family, folder, fileSystem).run();
    } catch (SaveProblem const& problem) {
        return { .sentence = "No copy was made. " + problem.sentence };
    }
}
