#include "Typloom/TyploomCore/TLInterpolation.h"

#include <algorithm>
#include <cmath>

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
        // "rotate*1" and "rotate*2" are one axis, "rotate", to whoever sets it.
        for (auto const key : { name, name.substr(0, name.find('*')) }) {
            if (auto const entry = onGlyphAxes.find(key); entry != onGlyphAxes.end()) {
                return entry->second;
            }
        }
        return std::nullopt;
    }
};

bool isNamed(TLAxis const& axis, std::string_view name)
{
    std::string_view const own = axis.name();
    return own == name || own.substr(0, own.find('*')) == name;
}

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
    static constexpr std::size_t maximumWork = 4'000'000; ///< Points and components together.

    void addContour(TLContour const& contour, Transform const& transform)
    {
        m_work += contour.points.size();
        if (m_work > maximumWork) {
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
        m_work += 16; // A component without a point costs time too.
        if (m_work > maximumWork) {
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
        if (instance.problem) {
            addProblem(*instance.problem);
        }
        add(component.base, instance.outline, below, transform);
    }

    TreeLocation locationBelow(TreeLocation location, TLComponent const& component, TLGlyph const& base) const
    {
        for (auto const& [name, value] : component.location) {
            bool isOnOwnAxis = false;
            for (auto const& axis : base.axes()) {
                if (isNamed(*axis, name)) {
                    location.onGlyphAxes[axis->name()] = value;
                    isOnOwnAxis = true;
                }
            }
            bool isOnFontAxis = false;
            for (auto const& axis : m_font.canonicalAxes()) {
                if (!isOnOwnAxis && isNamed(*axis, name)) {
                    location.onFontAxes[axis->axisId()] = value;
                    isOnFontAxis = true;
                }
            }
            if (!isOnOwnAxis && !isOnFontAxis) {
                location.onGlyphAxes[name] = value; // For a glyph further down.
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
    std::size_t m_work { 0 };
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
