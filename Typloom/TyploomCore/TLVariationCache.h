#pragma once

#include "Typloom/TyploomCore/GlyphSources.h"

/// What interpolation keeps from one instance to the next: the sources of each glyph until the
/// document changes, and the models, one for each set of places, which glyphs share.
class TLVariationCache {
public:
    /// The glyph's sources as the document is now, with their model.
    GlyphSources& sourcesOf(TLGlyph const& glyph);
    /// Of how many glyphs something is kept. Those of glyphs that are gone go with the next question after
    /// a change of the document.
    std::size_t countOfGlyphs() const { return m_glyphs.size(); }

private:
    struct Entry {
        std::weak_ptr<NSObject const> glyph; ///< Another glyph may come to lie at a dead one's address.
        std::uint64_t revision { 0 };
        std::unique_ptr<GlyphSources> sources;
    };
    std::shared_ptr<SharedModel> modelFor(GlyphSources const& sources);

    std::unordered_map<TLGlyph const*, Entry> m_glyphs;
    std::uint64_t m_sweptAt { 0 }; ///< The document's revision then.
    std::unordered_multimap<std::size_t, std::weak_ptr<SharedModel>> m_models; ///< By hash of the places.
};
