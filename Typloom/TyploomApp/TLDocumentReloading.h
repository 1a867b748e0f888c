#pragma once

#include "Typloom/TyploomApp/TLFileFollower.h"
#include "Typloom/TyploomCore/TLFont.h"

/// Has a family's document follow its files, where it has no changes of its own.
class TLDocumentReloading {
public:
    explicit TLDocumentReloading(std::shared_ptr<TLFont> font);
    TLDocumentReloading(TLDocumentReloading const&) = delete;

    /// Glyphs may have been read since, and changes undone that kept the document from following.
    void update();
    /// The files are now as the document has written them.
    void didSave();
    void check() { m_follower.check(); }
    /// Called after reading files again, with what there is to know about it.
    void setReloadHandler(std::function<void(std::vector<std::string> const& notes)> handler);

private:
    void follow();
    void reload();

    std::shared_ptr<TLFont> m_font;
    TLFileFollower m_follower;
    std::size_t m_countOfGlyphs { 0 };
    bool m_waits { false }; ///< Files were changed where the document has changes too.
    std::function<void(std::vector<std::string> const&)> m_didReload;
};
