#pragma once

#include "Tests/Program/ProgramWindow.h"

#include <QImage>

#include <optional>

/// The palette that pictures are drawn with.
enum class Look { light, dark };

/// The program's windows in one look, and the hands that bring them into a state.
class Stage : public ProgramWindows {
public:
    /// Font size in points.
    explicit Stage(Look look, double fontSize = usualFontSize);
    ~Stage();
    Stage(Stage const&) = delete;

    static constexpr double usualFontSize = 10;
    static constexpr QSize usualSize { 1100, 700 };
    /// A window on the sample family with that glyph edited; none: the text is empty.
    ProgramWindow& showGlyph(std::string const& glyph, QSize size = usualSize);
    /// A window on a family made in memory.
    ProgramWindow& showFont(std::shared_ptr<TLFont> font, std::string const& glyph, QSize size = usualSize);
    ProgramWindow& window() { return *m_window; }
    void showAlone(QWidget& widget) { m_shown = &widget; }

    /// The program's window with what stands over it, in points of the window.
    QImage picture() const;
    /// The part of it that references keep.
    QImage keptPicture() const { return kept ? picture().copy(*kept) : picture(); }
    /// Another palette, as when the desktop changes its own.
    static void setLook(Look look);
    /// Place of a view or a widget in the picture, with some space around it.
    QRect place(NSView const& view, int space = 0) const { return place(*qtWidget(view), space); }
    QRect place(QWidget const& widget, int space = 0) const;

    /// The part of the picture that is kept as a reference; all of it where a state names none.
    std::optional<QRect> kept;

private:
    ProgramWindow& take(TLDocumentWindow& document, QSize size);

    std::unique_ptr<TLDocumentWindow> m_ownDocument;
    std::unique_ptr<ProgramWindow> m_window;
    QWidget* m_shown { nullptr };
};

/// Something that a window shows, and how it gets there.
struct PictureState {
    std::string name;
    std::function<void(Stage&)> enter;
    bool isCompared { true };
};

inline std::string nameOf(PictureState const& state, Look look)
{
    return state.name + (look == Look::dark ? "-dark" : "-light");
}

std::vector<PictureState> sidebarStates();
std::vector<PictureState> editingStates();
std::vector<PictureState> windowStates();

inline std::vector<PictureState> allPictureStates()
{
    auto all = sidebarStates();
    for (auto const& states : { editingStates(), windowStates() }) {
        all.insert(all.end(), states.begin(), states.end());
    }
    return all;
}
