#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

/// The tokens that a list's items have, for the list that follows it. Lists are alike most of the time:
/// a walk over both at once finds nearly every item without hashing any.
template <class Item> class NSItemTokens {
public:
    struct Entry {
        Item const* item { nullptr };
        std::uint64_t token { 0 }; ///< 0 for an item that has none yet.
    };

    /// `before` holds no item twice.
    explicit NSItemTokens(std::vector<Entry> before)
        : m_before(std::move(before))
        , m_isTaken(m_before.size())
    {
    }

    /// Fills in the tokens of `items`. Gives the index of an item that is in that list twice, if one is.
    std::optional<std::size_t> fillIn(std::vector<Entry>& items)
    {
        std::vector<std::size_t> rest;
        std::size_t next = 0;
        for (std::size_t index = 0; index < items.size(); ++index) {
            auto const place = nextEqual(next, *items[index].item);
            if (place == m_before.size()) {
                rest.push_back(index);
            } else {
                take(place, items[index]);
                next = place + 1;
            }
        }
        return rest.size() <= mostByWalking ? fillInByWalking(items, rest) : fillInByHashing(items, rest);
    }

private:
    static constexpr std::size_t lookAhead = 8;
    static constexpr std::size_t mostByWalking = 4;

    std::size_t nextEqual(std::size_t from, Item const& item) const
    {
        auto const end = std::min(from + lookAhead, m_before.size());
        while (from < end && *m_before[from].item != item) {
            ++from;
        }
        return from < end ? from : m_before.size();
    }

    void take(std::size_t place, Entry& entry)
    {
        entry.token = m_before[place].token;
        m_isTaken[place] = true;
    }

    std::optional<std::size_t> fillInByWalking(
        std::vector<Entry>& items, std::vector<std::size_t> const& rest)
    {
        for (std::size_t at = 0; at < rest.size(); ++at) {
            auto& entry = items[rest[at]];
            auto const isSame = [&entry](Entry const& other) { return *other.item == *entry.item; };
            auto const place
                = std::size_t(std::find_if(m_before.begin(), m_before.end(), isSame) - m_before.begin());
            auto const isRepeated = std::any_of(rest.begin(), rest.begin() + std::ptrdiff_t(at),
                [&](std::size_t earlier) { return isSame(items[earlier]); });
            if (isRepeated || (place < m_before.size() && m_isTaken[place])) {
                return rest[at];
            }
            if (place < m_before.size()) {
                take(place, entry);
            }
        }
        return std::nullopt;
    }

    std::optional<std::size_t> fillInByHashing(
        std::vector<Entry>& items, std::vector<std::size_t> const& rest)
    {
        struct Hash {
            std::size_t operator()(Item const* item) const { return std::hash<Item> {}(*item); }
        };
        struct IsSame {
            bool operator()(Item const* left, Item const* right) const { return *left == *right; }
        };
        std::unordered_map<Item const*, std::size_t, Hash, IsSame> places;
        places.reserve(m_before.size() + rest.size());
        for (std::size_t place = 0; place < m_before.size(); ++place) {
            places.emplace(m_before[place].item, place);
        }
        for (auto const index : rest) {
            auto const [known, isNew] = places.emplace(items[index].item, m_before.size());
            bool const wasThere = !isNew && known->second < m_before.size();
            if (!isNew && (!wasThere || m_isTaken[known->second])) {
                return index;
            }
            if (wasThere) {
                take(known->second, items[index]);
            }
        }
        return std::nullopt;
    }

    std::vector<Entry> m_before;
    std::vector<bool> m_isTaken;
};
