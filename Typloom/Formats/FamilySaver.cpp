#include "Typloom/Formats/FamilySaver.h"

#include "Typloom/Formats/FileReading.h"
#include "Typloom/Formats/PendingWriter.h"
#include "Typloom/Formats/SaveCheck.h"
#include "Typloom/TyploomCore/TLDocumentHistory.h"

#include <algorithm>

namespace {

using Path = std::filesystem::path;
using Pending = FamilyFiles::Pending;
using Outcome = TLSaveOutcome;

class Save {
public:
    Save(std::shared_ptr<TLFont> font, std::shared_ptr<FamilyGlyphSource> family, FileSystem& fileSystem)
        : m_font(std::move(font))
        , m_family(std::move(family))
        , m_fileSystem(fileSystem)
        , m_folder(PendingWriter::familyFolder(*m_font))
    {
    }

    Outcome run(TLSaveOptions const& options)
    try {
        if (auto const missing = missingPart()) {
            return { .kind = Outcome::Kind::failed,
                .sentence = "Nothing was saved. " + inQuotes(shown(*missing)) + " is not there any more." };
        }
        FamilySavePlan plan(*m_font, m_font->path(), *m_family, options.overwriteForeignChanges);
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
            bool const isDesignspace = path == m_font->path().lexically_normal();
            if (!isDesignspace && !existing.empty() && !liesInside(existing, m_folder)) {
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
            if (text) {
                m_family->files()->keepText(path, *text);
            }
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
        for (auto const& ufo : plan.madeUfos()) {
            m_family->rememberMade(ufo);
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
