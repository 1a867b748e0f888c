#pragma once

#include "Platform/Foundation/Export.h"

#include <functional>

/// How changes made inside a group move on screen. This platform shows every change at once; the
/// context keeps what was asked for, for those who read it while the group runs.
class PLATFORM_API NSAnimationContext {
public:
    static void runAnimationGroup(std::function<void(NSAnimationContext&)> const& changes);
    static void beginGrouping();
    static void endGrouping();
    /// The innermost open group's context.
    static NSAnimationContext& currentContext();

    double duration() const { return m_duration; }
    void setDuration(double seconds) { m_duration = seconds; }
    /// Without effect: every change is shown at once.
    void setAllowsImplicitAnimation(bool) { }

private:
    double m_duration { 0.25 };
};
