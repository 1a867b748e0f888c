#pragma once

#include "Platform/AppKit/NSTextField.h"
#include "Typloom/TyploomCore/Export.h"

/// Stands in for something empty: a title and, below it, a sentence that says what to do. Centred, wrapping.
class TYPLOOM_API TLPlaceholderView final : public NSView {
public:
    std::string const& title() const { return m_title; }
    void setTitle(std::string title);
    std::string const& body() const { return m_body; }
    void setBody(std::string body);

private:
    void ensureLabels();

    std::string m_title;
    std::string m_body;
    std::shared_ptr<NSTextField> m_titleLabel; ///< Made for the first text that is set.
    std::shared_ptr<NSTextField> m_bodyLabel;
};

/// Makes the host's view classes known to interface descriptions. Called once by the host at start.
TYPLOOM_API void TLRegisterViewClasses();
