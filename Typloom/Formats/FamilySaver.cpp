#include "Typloom/Formats/FamilySaver.h"

#include "Typloom/Formats/FileReading.h"
#include "Typloom/Formats/FileTransaction.h"
#include "Typloom/Formats/SaveCheck.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <algorithm>

namespace {

using Path = std::filesystem::path;
using Pending = FamilyFiles::Pending;
using Outcome = TLSaveOutcome;

Path familyFolder(TLFont const& font)
{
    auto const folder = font.path().lexically_normal().parent_path();
    return folder.empty() ? Path(".") : folder;
}

/// Writes pending texts in an order that leaves a family that opens after each.
class PendingWriter {
public:
    PendingWriter(TLFont const& font, FamilyGlyphSource const& family, FileSystem& fileSystem)
        : m_designspace(font.path())
        , m_folder(familyFolder(font))
        , m_fileSystem(fileSystem)
        , m_transaction(m_designspace, fileSystem)
    {
        for (auto const& source : family.family().sources) {
            m_ufos.insert(source.ufo->folder().lexically_normal());
        }
    }

    /// An error's sentence; empty when all is done.
    std::string write(Pending const& pending)
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

    std::optional<FileStamp> stampOf(Path const& path) const
    {
        auto const [root, relative] = rootOf(path);
        auto const written = m_transaction.stamps().find(root / relative);
        if (written != m_transaction.stamps().end()) {
            return written->second;
        }
        FileStamp stamp;
        return readFile(path, {}, &stamp) ? std::optional(stamp) : std::nullopt;
    }

private:
    /// Files come before the files that name them.
    static int rank(Path const& path)
    {
        std::error_code problem;
        return path.extension() == ".designspace" ? 4
            : path.extension() == ".glif"         ? (std::filesystem::exists(path, problem) ? 3 : 0)
            : path.filename() == "contents.plist" ? 1
                                                  : 2;
    }

    void add(Path const& path, std::optional<std::string> const& text)
    {
        auto const [root, relative] = rootOf(path);
        if (text) {
            makeFolders(root, relative);
            return m_transaction.write(root, relative, *text);
        }
        m_transaction.remove(root, relative);
        if (path.filename() == "contents.plist") {
            m_transaction.removeFolder(root, Path(relative).parent_path().generic_string());
        }
    }

    void makeFolders(Path const& root, std::string const& relative)
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
    std::pair<Path, std::string> rootOf(Path const& path) const
    {
        for (auto const& ufo : m_ufos) {
            auto const ends = std::mismatch(ufo.begin(), ufo.end(), path.begin(), path.end());
            std::error_code problem;
            if (ends.first == ufo.end()
                && (std::filesystem::is_symlink(ufo, problem) || !liesInside(ufo, m_folder))) {
                return { ufo, path.lexically_relative(ufo).generic_string() };
            }
        }
        return { m_folder, path.lexically_relative(m_folder).generic_string() };
    }

    Path m_designspace;
    Path m_folder;
    FileSystem& m_fileSystem;
    FileTransaction m_transaction;
    std::set<Path> m_ufos;
    std::set<Path> m_made;
};

class Save {
public:
    Save(std::shared_ptr<TLFont> font, std::shared_ptr<FamilyGlyphSource> family, FileSystem& fileSystem)
        : m_font(std::move(font))
        , m_family(std::move(family))
        , m_fileSystem(fileSystem)
        , m_folder(familyFolder(*m_font))
    {
    }

    Outcome run(TLSaveOptions const& options)
    try {
        if (auto const missing = missingPart()) {
            return { .kind = Outcome::Kind::failed,
                .sentence = "Nothing was saved. " + inQuotes(shown(*missing)) + " is not there any more." };
        }
        FamilySavePlan plan(*m_font, *m_family, options.overwriteForeignChanges);
        plan.run();
        auto const pending = plan.files().finish();
        auto const changed = changedFiles(pending);
        if (!changed.empty() && !options.overwriteForeignChanges) {
            return question(Outcome::Kind::changedByOthers, changed, "was changed by another program");
        }
        if (auto const outside = outsideFiles(pending); !outside.empty() && !options.writeOutsideFamily) {
            return question(Outcome::Kind::liesOutside, outside, "lies outside the family's folder");
        }
        return write(plan, pending, changed);
    } catch (SaveProblem const& problem) {
        auto const changed = changedFiles(m_family->files()->stamps());
        if (!changed.empty() && !options.overwriteForeignChanges) {
            return question(Outcome::Kind::changedByOthers, changed, "was changed by another program");
        }
        return { .kind = Outcome::Kind::failed, .sentence = "Nothing was saved. " + problem.sentence };
    }

private:
    /// The designspace or the UFO of a source that stays; none when all are there.
    std::optional<Path> missingPart() const
    {
        std::vector<Path> parts { m_font->path().lexically_normal() };
        for (auto const& source : m_family->family().sources) {
            if (source.kind != TLLayerKind::master || m_font->fontMasterForId(source.id)) {
                parts.push_back(source.ufo->folder().lexically_normal());
            }
        }
        auto const missing = std::find_if(parts.begin(), parts.end(), [](Path const& path) {
            std::error_code problem;
            return !std::filesystem::exists(path, problem) && !problem;
        });
        return missing == parts.end() ? std::nullopt : std::optional(*missing);
    }

    template <class Files> std::vector<std::string> changedFiles(Files const& files) const
    {
        std::vector<std::string> changed;
        for (auto const& [path, ignored] : files) {
            auto const stamp = m_family->files()->stamps().find(path);
            std::error_code problem;
            bool const hasOther = stamp == m_family->files()->stamps().end()
                ? std::filesystem::exists(path, problem)
                : hasChanged(path, stamp->second);
            if (hasOther) {
                changed.push_back(shown(path));
            }
        }
        return changed;
    }

    std::vector<std::string> outsideFiles(Pending const& pending) const
    {
        std::vector<std::string> outside;
        for (auto const& [path, text] : pending) {
            auto existing = path;
            std::error_code problem;
            while (!existing.empty() && !std::filesystem::exists(existing, problem)) {
                existing = existing.parent_path();
            }
            if (!existing.empty() && !liesInside(existing, m_folder)) {
                outside.push_back(shown(path));
            }
        }
        return outside;
    }

    std::string shown(Path const& path) const { return path.lexically_relative(m_folder).generic_string(); }

    static Outcome question(Outcome::Kind kind, std::vector<std::string> files, std::string const& what)
    {
        auto const more = files.size() > 1 ? " (and " + std::to_string(files.size() - 1) + " more)" : "";
        return { .kind = kind,
            .sentence = inQuotes(files.front()) + more + " " + what + ".",
            .files = std::move(files) };
    }

    Outcome write(FamilySavePlan const& plan, Pending const& pending, std::vector<std::string> const& changed)
    {
        SaveCheck check(*m_font, *m_family, plan);
        {
            PendingReading const asIfWritten(*m_family->files(), pending);
            check.run(pending, !changedFiles(m_family->files()->stamps()).empty());
        }
        PendingWriter writer(*m_font, *m_family, m_fileSystem);
        if (auto sentence = pending.empty() ? std::string {} : writer.write(pending); !sentence.empty()) {
            return { .kind = Outcome::Kind::failed, .sentence = std::move(sentence) };
        }
        adopt(plan, check);
        Outcome outcome { .kind = Outcome::Kind::saved, .notes = plan.notes() };
        for (auto const& [path, text] : pending) {
            outcome.files.push_back(shown(path));
            // What another program changed in a file has not been read yet and is still to be.
            if (std::find(changed.begin(), changed.end(), outcome.files.back()) == changed.end()) {
                m_family->files()->setStamp(path, writer.stampOf(path));
            }
        }
        return outcome;
    }

    void adopt(FamilySavePlan const& plan, SaveCheck const& check)
    {
        if (check.newFamily()) {
            m_family->setFamily(*check.newFamily());
        }
        for (auto const& [glyph, origins] : plan.origins()) {
            m_family->setOrigins(glyph, origins);
        }
        for (auto const& [glyph, layers] : plan.removed()) {
            for (auto const& layer : layers) {
                m_family->rememberRemoved(glyph, layer);
            }
        }
        for (auto const& follower : plan.followers()) {
            m_font->glyphForName(follower.glyph)->layerForId(follower.layerId)->setOutline(follower.outline);
        }
        m_font->history().didSave();
    }

    std::shared_ptr<TLFont> m_font;
    std::shared_ptr<FamilyGlyphSource> m_family;
    FileSystem& m_fileSystem;
    Path m_folder;
};

} // namespace

TLSaveOutcome TLSaveFamily(
    std::shared_ptr<TLFont> const& font, TLSaveOptions const& options, FileSystem& fileSystem)
{
    auto const family = std::dynamic_pointer_cast<FamilyGlyphSource>(font->glyphSource());
    if (!family) {
        return { .kind = Outcome::Kind::failed, .sentence = "The family has no files yet." };
    }
    font->history().endStep();
    if (!font->history().isModified()) {
        return { .kind = Outcome::Kind::nothingToSave };
    }
    return Save(font, family, fileSystem).run(options);
}
