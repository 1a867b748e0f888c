#include "Typloom/TyploomApp/TLApplicationController.h"

#include "Platform/Foundation/NSMainQueue.h"
#include "Typloom/Formats/DesignspaceReader.h"
#include "Typloom/TyploomApp/TLDocumentWindow.h"
#include "Typloom/TyploomApp/TLMainWindow.h"
#include "Typloom/TyploomApp/TLRecentMenu.h"
#include "Typloom/TyploomApp/TLRecoveryKeeper.h"
#include "Typloom/TyploomApp/TLUserState.h"
#include "Typloom/TyploomCore/TLFont.h"

#include <QWidget>

#include <algorithm>

namespace {

/// The same for every way of naming a file.
std::filesystem::path canonicalPath(std::filesystem::path const& path)
{
    std::error_code error;
    auto canonical = std::filesystem::weakly_canonical(path, error);
    return error ? path : canonical;
}

void raise(TLDocumentWindow const& window)
{
    window.widget()->show();
    window.widget()->raise();
    window.widget()->activateWindow();
}

} // namespace

struct TLApplicationController::Impl {
    struct Entry {
        std::shared_ptr<TLDocumentWindow> window;
        std::filesystem::path path; ///< Canonical; empty while there is no family.
        std::shared_ptr<TLRecoveryKeeper> recovery {}; ///< Null where nothing is kept.
    };
    std::unique_ptr<TLUserState> userState; ///< Null: nothing is remembered.
    std::vector<Entry> entries;
    std::vector<std::string> report;

    TLDocumentWindow* add(std::shared_ptr<TLFont> font, std::filesystem::path path)
    {
        auto const window = std::make_shared<TLDocumentWindow>(std::move(font));
        std::for_each(
            report.begin(), report.end(), [&](auto const& sentence) { window->addToReport(sentence); });
        entries.push_back({ window, std::move(path) });
        auto const take = [this, raw = window.get()](std::filesystem::path const& chosen) {
            if (auto const outcome = open(chosen, raw); !outcome.window) {
                raw->showError(outcome.error);
            }
        };
        window->setOpenHandler(take);
        if (userState) {
            static_cast<TLMainWindow*>(window->widget())->willShowRecent
                = [this, take](QMenu& menu) { TLFillRecentMenu(menu, *userState, take); };
        }
        window->setCloseHandler([this, raw = window.get()] { release(raw); });
        place(*window);
        window->setQuitHandler([this] { quit(); });
        raise(*window);
        return window.get();
    }

    /// Where the last one was, beside one that is there.
    void place(TLDocumentWindow const& window) const
    {
        auto const others = static_cast<int>(entries.size()) - 1;
        if (userState && userState->restoreWindow(*window.widget()) && others > 0) {
            constexpr int step = 28;
            window.widget()->move(window.widget()->pos() + QPoint(step * others, step * others));
        }
    }

    /// Later: the window's own event is still being handled.
    void release(TLDocumentWindow const* window)
    {
        auto const closed = std::find_if(entries.begin(), entries.end(),
            [window](Entry const& entry) { return entry.window.get() == window; });
        if (closed == entries.end()) {
            return;
        }
        if (userState && !closed->path.empty()) {
            userState->keepWindow(*window->widget());
            closed->recovery->discard();
        }
        NSMainQueue::async([dying = closed->window] {});
        entries.erase(closed);
    }

    /// Asks for one window after the other. Only when all may close does any.
    void quit()
    {
        auto const asked = std::find_if(
            entries.rbegin(), entries.rend(), [](Entry const& entry) { return !entry.window->mayClose(); });
        if (asked == entries.rend()) {
            return closeAll();
        }
        asked->window->askBeforeClosing([this](bool mayClose) {
            if (mayClose) {
                return quit();
            }
            std::for_each(entries.begin(), entries.end(), [](auto& entry) { entry.window->forgetAnswer(); });
        });
    }

    void closeAll()
    {
        for (auto const& entry : std::vector(entries)) {
            entry.window->close();
        }
    }

    Outcome open(std::filesystem::path const& path, TLDocumentWindow* preferred)
    {
        auto const canonical = canonicalPath(path);
        for (auto const& entry : entries) {
            if (!entry.path.empty() && entry.path == canonical) {
                raise(*entry.window);
                if (userState) {
                    userState->addRecentFamily(canonical);
                }
                return { entry.window.get(), {} };
            }
        }
        auto font = TLOpenFamily(path);
        if (!font) {
            return { nullptr, font.error().sentence() };
        }
        auto* const window = show(*font, canonical, preferred);
        remember(*window, canonical);
        return { window, {} };
    }

    void remember(TLDocumentWindow& window, std::filesystem::path const& path)
    {
        if (!userState) {
            return;
        }
        userState->addRecentFamily(path);
        auto const entry = std::find_if(entries.begin(), entries.end(),
            [&window](Entry const& each) { return each.window.get() == &window; });
        entry->recovery
            = std::make_shared<TLRecoveryKeeper>(window.font(), *window.widget(), userState->recoveryFolder(),
                [&window](std::string const& sentence) { window.addToReport(sentence); });
    }

    TLDocumentWindow* show(
        std::shared_ptr<TLFont> const& font, std::filesystem::path const& path, TLDocumentWindow* preferred)
    {
        auto const isFree = [](Entry const& entry) { return entry.path.empty(); };
        auto free = std::find_if(entries.begin(), entries.end(),
            [&](Entry const& entry) { return isFree(entry) && entry.window.get() == preferred; });
        if (free == entries.end()) {
            free = std::find_if(entries.begin(), entries.end(), isFree);
        }
        if (free == entries.end()) {
            return add(font, path);
        }
        free->path = path;
        free->window->setFont(font);
        if (userState) {
            userState->restoreColumns(*free->window->widget());
        }
        raise(*free->window);
        return free->window.get();
    }
};

TLApplicationController::TLApplicationController()
    : m_impl(std::make_unique<Impl>())
{
}

TLApplicationController::~TLApplicationController() = default;

void TLApplicationController::setUserState(std::unique_ptr<TLUserState> state)
{
    m_impl->userState = std::move(state);
}

TLApplicationController::Outcome TLApplicationController::open(std::filesystem::path const& path)
{
    return m_impl->open(path, nullptr);
}

TLDocumentWindow* TLApplicationController::openInvitation()
{
    return m_impl->add(nullptr, {});
}

std::vector<TLDocumentWindow*> TLApplicationController::windows() const
{
    std::vector<TLDocumentWindow*> windows;
    for (auto const& entry : m_impl->entries) {
        windows.push_back(entry.window.get());
    }
    return windows;
}

void TLApplicationController::addToReport(std::string sentence)
{
    m_impl->report.push_back(std::move(sentence));
}
