#include "Typloom/Formats/DesignspaceReader.h"

#include "Typloom/Formats/FamilyOpener.h"
#include "Typloom/Formats/FileTransaction.h"

Result<std::shared_ptr<TLFont>> TLOpenFamily(std::filesystem::path const& path)
{
    std::error_code problem;
    bool const isLink = std::filesystem::is_symlink(path, problem);
    auto const target = isLink ? std::filesystem::canonical(path, problem) : path;
    auto const recovery = problem ? FamilyRecovery {} : recoverFamily(target);
    auto opened = openFamily(path, std::make_shared<FamilyFiles>());
    if (!opened && isLink && !problem) {
        // The UFOs usually lie beside the link; here they may lie beside the file itself.
        opened = openFamily(target, std::make_shared<FamilyFiles>());
    }
    if (opened && !recovery.sentence.empty()) {
        (*opened)->addToReport(recovery.sentence);
    }
    return opened;
}
