#include "Typloom/TyploomCore/TLInterpolation.h"

#include <algorithm>

namespace {

using Transform = std::array<double, 6>;

/// The transform that applies `inner` first.
Transform concatenated(Transform const& outer, Transform const& inner)
{
    auto const& [a, b, c, d, e, f] = outer;
    auto const& [p, q, r, s, t, u] = inner;
    return { a * p + c * q, b * p + d * q, a * r + c * s, b * r + d * s, a * t + c * u + e,
        b * t + d * u + f };
}

TLPoint transformed(TLPoint point, Transform const& transform)
{
    auto const& [a, b, c, d, e, f] = transform;
    double const x = point.x;
    point.x = a * x + c * point.y + e;
    point.y = b * x + d * point.y + f;
    return point;
}

/// Where the glyphs of a component tree stand.
struct TreeLocation {
    TLLocation onFontAxes; ///< By identifier.
    /// By name, as far as glyphs above have said so: what they do not name, a glyph below has at its
    /// own default.
    std::map<std::string, double, std::less<>> onGlyphAxes;

    std::optional<double> onGlyphAxis(std::string_view name) const
    {
        auto const entry = onGlyphAxes.find(name);
        return entry == onGlyphAxes.end() ? std::nullopt : std::optional(entry->second);
    }
};

/// Writes the contours of a component tree. Bounded, since files can nest without end, and can hold
/// a thousand glyphs of two components each that draw more points than there are atoms.
class Decomposition {
public:
    Decomposition(TLFont const& font, std::vector<std::string>& problems)
        : m_font(font)
        , m_problems(problems)
    {
    }

    std::vector<TLContour> contours;

    void add(std::string_view glyphName, TLOutline const& outline, TreeLocation const& location,
        Transform const& transform)
    {
        m_path.emplace_back(glyphName);
        for (auto const& contour : outline.contours) {
            addContour(contour, transform);
        }
        for (auto const& component : outline.components) {
            addComponent(component, location, concatenated(transform, component.transform));
        }
        m_path.pop_back();
    }

private:
    static constexpr std::size_t maximumDepth = 128;
    static constexpr std::size_t maximumComponents = 16'384;
    static constexpr std::size_t maximumPoints = 4'000'000;

    void addContour(TLContour const& contour, Transform const& transform)
    {
        m_countOfPoints += contour.points.size();
        if (m_countOfPoints > maximumPoints) {
            return report("draws too many components");
        }
        auto& added = contours.emplace_back();
        added.points.reserve(contour.points.size());
        for (auto const& point : contour.points) {
            added.points.push_back(transformed(point, transform));
        }
    }

    void addComponent(TLComponent const& component, TreeLocation const& location, Transform const& transform)
    {
        if (++m_countOfComponents > maximumComponents) {
            return report("draws too many components");
        }
        if (std::ranges::find(m_path, component.base) != m_path.end()) {
            return report("contains itself through component '" + component.base + '\'');
        }
        if (m_path.size() >= maximumDepth) {
            return report("nests its components too deep");
        }
        auto const base = m_font.glyphForName(component.base);
        if (!base) {
            return report("has a component '" + component.base + "', which the font does not have");
        }
        auto const below = locationBelow(location, component, *base);
        auto const instance = TLInterpolateGlyph(*base, locationOf(*base, below));
        if (!instance.misfit.empty()) {
            addProblem(instance.misfit);
        }
        add(component.base, instance.outline, below, transform);
    }

    TreeLocation locationBelow(TreeLocation location, TLComponent const& component, TLGlyph const& base) const
    {
        for (auto const& [name, value] : component.location) {
            auto isNamed = [&wanted = name](auto const& axis) { return axis->name() == wanted; };
            auto const& fontAxes = m_font.canonicalAxes();
            auto const fontAxis = std::ranges::find_if(fontAxes, isNamed);
            if (fontAxis == fontAxes.end() || std::ranges::any_of(base.axes(), isNamed)) {
                location.onGlyphAxes[name] = value; // The base's own, or for a glyph further down.
            } else {
                location.onFontAxes[(*fontAxis)->axisId()] = value;
            }
        }
        return location;
    }

    static TLLocation locationOf(TLGlyph const& glyph, TreeLocation const& location)
    {
        auto result = location.onFontAxes;
        for (auto const& axis : glyph.axes()) {
            if (auto const value = location.onGlyphAxis(axis->name())) {
                result[axis->axisId()] = *value;
            }
        }
        return result;
    }

    void report(std::string const& what) { addProblem("Glyph '" + m_path.back() + "' " + what); }

    void addProblem(std::string const& sentence)
    {
        if (std::ranges::find(m_problems, sentence) == m_problems.end()) {
            m_problems.push_back(sentence);
        }
    }

    TLFont const& m_font;
    std::vector<std::string>& m_problems;
    std::vector<std::string> m_path; ///< From the decomposed glyph to the one being added.
    std::size_t m_countOfComponents { 0 };
    std::size_t m_countOfPoints { 0 };
};

} // namespace

std::vector<TLContour> TLDecomposedContours(TLFont const& font, std::string_view glyphName,
    TLOutline const& outline, TLLocation const& location, std::vector<std::string>& problems)
{
    TreeLocation treeLocation { location, {} };
    if (auto const glyph = outline.components.empty() ? nullptr : font.glyphForName(glyphName)) {
        for (auto const& axis : glyph->axes()) {
            if (auto const value = TLLocationNumber(location, axis->axisId())) {
                treeLocation.onGlyphAxes[axis->name()] = *value;
            }
        }
    }
    Decomposition decomposition(font, problems);
    decomposition.add(glyphName, outline, treeLocation, { 1, 0, 0, 1, 0, 0 });
    return std::move(decomposition.contours);
}
