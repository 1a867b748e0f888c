#include "Platform/Qt/RowViewPool.h"

#include "Platform/Qt/NSViewBacking.h"

#include <algorithm>

void RowViewPool::registerNib(std::shared_ptr<NSNib> const& nib, std::string identifier)
{
    m_waiting.erase(identifier); // Those were made from another description.
    m_nibs[std::move(identifier)] = nib;
}

std::shared_ptr<NSView> RowViewPool::make(std::string_view identifier, std::shared_ptr<NSObject> const& owner)
{
    auto const waiting = m_waiting.find(identifier);
    if (waiting != m_waiting.end() && !waiting->second.empty()) {
        auto view = std::move(waiting->second.back());
        waiting->second.pop_back();
        std::erase(m_holder->backing().subviews, view);
        view->backing().superview.reset();
        return view;
    }
    auto const nib = m_nibs.find(identifier);
    if (nib == m_nibs.end()) {
        return nullptr;
    }
    auto const keep = nib->second;
    auto view = keep->instantiateOrStop(owner);
    std::erase_if(m_identifiers, [](auto const& entry) { return entry.first.expired(); });
    m_identifiers.emplace(view, identifier);
    return view;
}

void RowViewPool::takeBack(std::shared_ptr<NSView> const& view)
{
    auto const made = m_identifiers.find(view);
    if (made == m_identifiers.end() || m_waiting[made->second].size() >= mostWaiting) {
        view->removeFromSuperview();
        return;
    }
    m_holder->addSubview(view);
    view->prepareForReuse();
    m_waiting[made->second].push_back(view);
}
