#pragma once

#include <cstddef>
#include <memory>

class TLLayer;

/// The controller of a view on glyphs, as plug-ins see it.
class TLGlyphViewControllerProtocol {
public:
    virtual ~TLGlyphViewControllerProtocol() = default;
    /// The layer being edited, a preview's layer included; null when none is.
    virtual std::shared_ptr<TLLayer> activeLayer() const = 0;
    /// Index of the current master in the font's masters.
    virtual std::size_t masterIndex() const = 0;
};
