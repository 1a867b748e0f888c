#pragma once

#include "Platform/AppKit/NSApplication.h"
#include "Platform/AppKit/NSTextField.h"

#include <string>
#include <vector>

/// The target of a control: notes each action, and what the control and the program said then.
class ActionRecorder final : public NSObject {
public:
    std::vector<std::shared_ptr<NSControl>> senders;
    std::vector<std::string> texts; ///< Of a sender that is a field.
    std::vector<std::optional<NSEvent>> events; ///< The event that was current.
    std::function<void()> onAction;

    void act(std::shared_ptr<NSControl> const& sender)
    {
        senders.push_back(sender);
        auto const field = std::dynamic_pointer_cast<NSTextField>(sender);
        texts.push_back(field ? field->stringValue() : "");
        events.push_back(NSApplication::currentEvent());
        if (onAction) {
            onAction();
        }
    }
    std::span<NSMethod const> methods() const override
    {
        static std::array const methods { NSMethodMake("act:", &ActionRecorder::act) };
        return methods;
    }

    void observe(NSControl& control)
    {
        control.setTarget(weak_from_this());
        control.setAction("act:");
    }
};

/// A delegate of text fields that notes what it is told, as "changed TEXT" and the like.
class EditingRecorder final : public NSSearchFieldDelegate {
public:
    std::vector<std::string> notes;
    std::function<bool(std::string_view selector)> onCommand;
    std::function<void(NSTextField& field)> onEnd;

    void controlTextDidChange(std::shared_ptr<NSNotification> const& notification) override
    {
        notes.push_back("changed " + notification->object<NSTextField>()->stringValue());
    }
    void controlTextDidEndEditing(std::shared_ptr<NSNotification> const& notification) override
    {
        auto const field = notification->object<NSTextField>();
        notes.push_back("ended " + field->stringValue());
        if (onEnd) {
            onEnd(*field);
        }
    }
    bool controlDoCommandBySelector(std::shared_ptr<NSControl> const&, std::string_view selector) override
    {
        return onCommand && onCommand(selector);
    }
};
