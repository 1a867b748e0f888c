#pragma once

#include "Platform/Foundation/NSFatalError.h"

#include <concepts>
#include <functional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

/// The sections and items of a list at one moment, in order. A value.
template <class SectionIdentifier, class ItemIdentifier> class NSDiffableDataSourceSnapshot {
public:
    struct Section {
        SectionIdentifier identifier;
        std::vector<ItemIdentifier> items;
        bool operator==(Section const&) const = default;
    };

    void appendSection(SectionIdentifier section) { m_sections.push_back({ std::move(section), {} }); }

    /// Appends items to the section that was appended last.
    void appendItems(std::vector<ItemIdentifier> items)
    {
        if (m_sections.empty()) {
            NSFatalError("a snapshot was given items before its first section");
        }
        auto& last = m_sections.back().items;
        if (last.empty()) {
            last = std::move(items);
        } else {
            last.insert(
                last.end(), std::make_move_iterator(items.begin()), std::make_move_iterator(items.end()));
        }
    }

    std::size_t numberOfSections() const { return m_sections.size(); }
    std::size_t numberOfItems() const
    {
        std::size_t count = 0;
        for (auto const& section : m_sections) {
            count += section.items.size();
        }
        return count;
    }
    std::vector<Section> const& sections() const { return m_sections; }

    bool operator==(NSDiffableDataSourceSnapshot const&) const = default;

private:
    std::vector<Section> m_sections;
};
