#include "Typloom/TyploomApp/TLGlyphShape.h"

#include <algorithm>

namespace {

/// Font units; a thousand ems in either direction.
constexpr double farthest = 1e6;

NSPoint drawable(TLPoint const& point)
{
    return { std::clamp(point.x, -farthest, farthest), std::clamp(point.y, -farthest, farthest) };
}

NSPoint middle(NSPoint a, NSPoint b)
{
    return { (a.x + b.x) / 2, (a.y + b.y) / 2 };
}

/// Draws the segments of one contour, one on-curve point after the other.
class ContourPen {
public:
    explicit ContourPen(CGPath& path)
        : m_path(path)
    {
    }

    void begin(NSPoint point) { m_path.moveTo(point); }
    void close() { m_path.closeSubpath(); }

    void add(TLPoint const& point)
    {
        if (point.type == TLPointType::offcurve) {
            m_controls.push_back(drawable(point));
            return;
        }
        if (point.type == TLPointType::curve && m_controls.size() == 2) {
            m_path.curveTo(m_controls[0], m_controls[1], drawable(point));
        } else if (m_controls.empty() || point.type == TLPointType::line) {
            m_path.lineTo(drawable(point));
        } else {
            quadraticTo(drawable(point));
        }
        m_controls.clear();
    }

    /// Quadratic curves over all control points met, with the on-curve points that lie between them.
    void quadraticTo(NSPoint end)
    {
        for (std::size_t index = 0; index + 1 < m_controls.size(); ++index) {
            m_path.quadCurveTo(m_controls[index], middle(m_controls[index], m_controls[index + 1]));
        }
        m_path.quadCurveTo(m_controls.back(), end);
    }

private:
    CGPath& m_path;
    std::vector<NSPoint> m_controls;
};

void addContour(CGPath& path, TLContour const& contour)
{
    auto const& points = contour.points;
    if (points.empty()) {
        return;
    }
    ContourPen pen(path);
    if (points.front().type == TLPointType::move) {
        pen.begin(drawable(points.front()));
        std::for_each(points.begin() + 1, points.end(), [&pen](TLPoint const& point) { pen.add(point); });
        return;
    }
    auto const start = std::find_if(points.begin(), points.end(),
        [](TLPoint const& point) { return point.type != TLPointType::offcurve; });
    if (start == points.end()) {
        auto const seam = middle(drawable(points.back()), drawable(points.front()));
        pen.begin(seam);
        std::for_each(points.begin(), points.end(), [&pen](TLPoint const& point) { pen.add(point); });
        pen.quadraticTo(seam);
    } else {
        pen.begin(drawable(*start));
        std::for_each(start + 1, points.end(), [&pen](TLPoint const& point) { pen.add(point); });
        std::for_each(points.begin(), start + 1, [&pen](TLPoint const& point) { pen.add(point); });
    }
    pen.close();
}

} // namespace

CGPath TLPathForContours(std::vector<TLContour> const& contours)
{
    CGPath path;
    for (auto const& contour : contours) {
        addContour(path, contour);
    }
    return path;
}

TLGlyphShapeCache::TLGlyphShapeCache(std::shared_ptr<TLFont> font)
    : m_font(std::move(font))
{
}

TLGlyphShapeCache::Shape TLGlyphShapeCache::interpolated(TLGlyph const& glyph, TLLocation const& place)
{
    // A place with the glyph's own axes (the edited glyph) is kept beside one without (the rest of the line).
    return kept(glyph.name() + '\t' + std::to_string(place.size()), place,
        [&] { return shapeOf(glyph.name(), TLInterpolateGlyph(glyph, place), place); });
}

TLGlyphShapeCache::Shape TLGlyphShapeCache::ofLayer(TLLayer const& layer, TLLocation const& place)
{
    auto const glyph = layer.glyph();
    auto const glyphName = glyph ? glyph->name() : std::string();
    return kept(glyphName + '\n' + layer.layerId(), place, [&] {
        return shapeOf(glyphName, { layer.outline(), std::nullopt }, place);
    });
}

TLGlyphShapeCache::Shape TLGlyphShapeCache::kept(
    std::string key, TLLocation const& place, std::function<Shape()> const& make)
{
    auto& entry = m_entries[std::move(key)];
    if (!entry.shape || entry.place != place) {
        entry = { place, make() };
    }
    return entry.shape;
}

TLGlyphShapeCache::Shape TLGlyphShapeCache::shapeOf(
    std::string const& glyphName, TLInterpolatedOutline outline, TLLocation const& place) const
{
    auto shape = std::make_shared<TLGlyphShape>();
    shape->contours = TLPathForContours(outline.outline.contours);
    if (!outline.outline.components.empty()) {
        TLOutline componentsAlone;
        componentsAlone.advance = outline.outline.advance;
        componentsAlone.components = outline.outline.components;
        std::vector<std::string> problems;
        shape->components
            = TLPathForContours(TLDecomposedContours(*m_font, glyphName, componentsAlone, place, problems));
        for (auto& problem : problems) {
            m_font->addToReport(std::move(problem));
        }
    }
    if (!outline.misfit.empty()) {
        m_font->addToReport(std::move(outline.misfit));
    }
    shape->advance = std::clamp(outline.outline.advance, 0.0, farthest);
    shape->outline = std::move(outline.outline);
    if (outline.problem) {
        shape->problem = { std::move(outline.reason), std::move(outline.nearestSource) };
    }
    return shape;
}
