#pragma once

#include "Typloom/TyploomCore/TLFont.h"

#include <functional>

class QAction;
class QWidget;
class TLDocumentCommands;

/// Saves copies of a family for the user of its window, who says where. The window stays on the family
/// itself.
class TLDocumentCopying {
public:
    TLDocumentCopying(std::shared_ptr<TLFont> font, QWidget& window, TLDocumentCommands const& commands);
    TLDocumentCopying(TLDocumentCopying const&) = delete;

    QAction* action() const { return m_action; }
    /// Asks where. Nobody waits for the answer.
    void choose();
    /// Called with the designspace of a copy that the user wants to see.
    void setOpenHandler(std::function<void(std::filesystem::path const&)> handler);

private:
    void copyTo(std::filesystem::path const& folder);
    void tellOfSuccess(std::filesystem::path const& designspace, std::vector<std::string> const& notes);
    void tellOfFailure(std::string const& sentence);

    std::shared_ptr<TLFont> m_font;
    QWidget& m_window;
    TLDocumentCommands const& m_commands;
    QAction* m_action;
    std::function<void(std::filesystem::path const&)> m_open;
};
