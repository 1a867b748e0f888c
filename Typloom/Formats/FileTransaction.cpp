#include "Typloom/Formats/FileTransaction.h"

#include "Typloom/Formats/SaveRun.h"

using Kind = JournalEntry::Kind;

FileTransaction::FileTransaction(std::filesystem::path designspace, FileSystem& files)
    : m_designspace(std::move(designspace))
    , m_files(files)
{
}

void FileTransaction::write(std::filesystem::path const& root, std::string const& path, std::string content)
{
    m_changes.push_back({ Kind::write, root, path, std::move(content) });
}

void FileTransaction::remove(std::filesystem::path const& root, std::string const& path)
{
    m_changes.push_back({ Kind::remove, root, path });
}

void FileTransaction::makeFolder(std::filesystem::path const& root, std::string const& path)
{
    m_changes.push_back({ Kind::makeFolder, root, path });
}

void FileTransaction::removeFolder(std::filesystem::path const& root, std::string const& path)
{
    m_changes.push_back({ Kind::removeFolder, root, path });
}

std::optional<FormatError> FileTransaction::commit()
{
    auto const recovery = recoverFamily(m_designspace, m_files);
    FormatError inTheWay { .file = m_designspace.string(), .reason = {}, .verb = "save" };
    if (recovery.outcome == FamilyRecovery::Outcome::finished) {
        inTheWay.reason = "an earlier save had been broken off and was finished first";
        return inTheWay;
    }
    if (recovery.outcome == FamilyRecovery::Outcome::failed) {
        inTheWay.reason = "an earlier save is in the way: " + recovery.sentence;
        inTheWay.reason.pop_back();
        return inTheWay;
    }
    SaveRun run(m_files, m_designspace, m_changes);
    auto error = run.run();
    m_isPending = run.isPending();
    if (!error) {
        m_stamps = run.takeStamps();
    }
    return error;
}
