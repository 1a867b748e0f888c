#include "Typloom/TyploomCore/TLAxisValues.h"

#include "Typloom/TyploomCore/TLStringHash.h"

#include <deque>

namespace {

struct KnownIds {
    std::unordered_map<std::string_view, TLAxisKey> keys;
    std::deque<std::string> ids; ///< Never moved: the keys' texts are theirs.
};

} // namespace

static KnownIds& knownIds()
{
    static KnownIds known;
    return known;
}

TLAxisKey TLAxisKeyForId(std::string_view axisId)
{
    auto& known = knownIds();
    if (auto const entry = known.keys.find(axisId); entry != known.keys.end()) {
        return entry->second;
    }
    auto const key = static_cast<TLAxisKey>(known.ids.size());
    known.keys.emplace(known.ids.emplace_back(axisId), key);
    return key;
}

std::optional<TLAxisKey> TLKnownAxisKey(std::string_view axisId)
{
    auto const& known = knownIds();
    auto const entry = known.keys.find(axisId);
    return entry == known.keys.end() ? std::nullopt : std::optional(entry->second);
}

std::string const& TLAxisIdForKey(TLAxisKey key)
{
    return knownIds().ids[static_cast<std::size_t>(key)];
}
