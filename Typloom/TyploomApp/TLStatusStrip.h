#pragma once

#include <memory>
#include <string>
#include <vector>

class QAction;
class QWidget;

/// The strip below the edit view: where the view stands, and what could not be read.
class TLStatusStrip {
public:
    TLStatusStrip();
    ~TLStatusStrip();
    TLStatusStrip(TLStatusStrip const&) = delete;

    QWidget* widget() const;
    /// The whole text is shown as far as there is room, and in the tool tip.
    void setText(std::string const& text);
    std::string text() const;
    /// Beside the text, lighter.
    void setCoordinates(std::string const& text);
    /// Beside the text a button that does it; none (null) hides it.
    void setOffer(QAction* action);
    /// Puts a control at the end of the strip, before the button of the report.
    void addControl(QWidget* control);
    /// A button tells how many sentences there are, and opens lists of them; hidden when there are none.
    void setReport(std::vector<std::string> problems, std::vector<std::string> notes);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
