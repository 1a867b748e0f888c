#include "Typloom/TyploomCore/TLVariationCache.h"

#include "Typloom/TyploomCore/DocumentRevision.h"
#include "Typloom/TyploomCore/InterpolationCounters.h"

static std::size_t hash(std::span<double const> numbers)
{
    std::size_t result = numbers.size();
    for (double const number : numbers) {
        result = result * 1099511628211u ^ std::hash<double> {}(number);
    }
    return result;
}

GlyphSources& TLVariationCache::sourcesOf(TLGlyph const& glyph)
{
    auto const revision = documentRevision();
    if (m_sweptAt != revision) {
        std::erase_if(m_glyphs, [](auto const& known) { return known.second.glyph.expired(); });
        m_sweptAt = revision;
    }
    auto& entry = m_glyphs[&glyph];
    if (!entry.sources || entry.revision != revision || entry.glyph.expired()) {
        // The old sources hold their model until the new ones have looked for it.
        auto sources = std::make_unique<GlyphSources>(glyph);
        sources->model = modelFor(*sources);
        entry = { glyph.weak_from_this(), revision, std::move(sources) };
    }
    return *entry.sources;
}

std::shared_ptr<SharedModel> TLVariationCache::modelFor(GlyphSources const& sources)
{
    auto const axes = sources.axisValues();
    auto const key = hash(sources.places());
    for (auto [at, end] = m_models.equal_range(key); at != end; ++at) {
        auto const model = at->second.lock();
        if (model && model->slices().axes() == axes && model->slices().places() == sources.places()
            && model->slices().countOfSources() == sources.countOfSources()) {
            return model;
        }
    }
    std::erase_if(m_models, [](auto const& known) { return known.second.expired(); });
    ++interpolationCounters().modelsBuilt;
    auto model
        = std::make_shared<SharedModel>(VariationSlices(axes, sources.countOfSources(), sources.places()));
    m_models.emplace(key, model);
    return model;
}
