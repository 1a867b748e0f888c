#pragma once

#include "Typloom/TyploomApp/TLEditViewController.h"
#include "Typloom/TyploomCore/TLFont.h"

#include <sstream>

/// What was asked of the doubles of one window, in order, a line each.
using CallLog = std::shared_ptr<std::vector<std::string>>;

inline std::string describeLocation(std::optional<TLLocation> const& location)
{
    if (!location) {
        return "none";
    }
    std::ostringstream text;
    for (auto const& [axisId, value] : *location) {
        text << (text.tellp() ? "," : "") << axisId << '=';
        std::visit([&](auto const& entry) { text << entry; }, value);
    }
    return text.str();
}

inline std::string describeSwitch(
    std::string_view layerId, std::optional<std::string> const& associatedMasterId, NSRange range)
{
    std::ostringstream text;
    text << "switchToLayer " << layerId << " of " << associatedMasterId.value_or("no master") << " at "
         << range.location << '+' << range.length;
    return text.str();
}

class GlyphEditViewDouble final : public TLGlyphEditView {
public:
    explicit GlyphEditViewDouble(CallLog log)
        : m_log(std::move(log))
    {
    }
    std::optional<TLLocation> axisLocation() const override { return location; }
    void setAxisLocation(std::optional<TLLocation> newLocation) override
    {
        m_log->push_back("setAxisLocation " + describeLocation(newLocation));
        location = std::move(newLocation);
    }
    NSRange selectedRange() const override { return selection; }
    void switchToLayerWithId(std::string_view layerId, std::optional<std::string> const& associatedMasterId,
        NSRange range) override
    {
        m_log->push_back(describeSwitch(layerId, associatedMasterId, range));
    }

    std::optional<TLLocation> location;
    NSRange selection;

private:
    CallLog m_log;
};

class WindowControllerDouble final : public TLWindowController {
public:
    explicit WindowControllerDouble(CallLog log)
        : m_log(std::move(log))
    {
    }
    std::shared_ptr<TLFont> documentFont() const override { return font; }
    void setMasterIndex(std::size_t index) override
    {
        m_log->push_back("setMasterIndex " + std::to_string(index));
    }

    std::shared_ptr<TLFont> font;

private:
    CallLog m_log;
};

/// When the double calls back from its reflow.
enum class Reflow { atOnce, later, twice, never };

/// An edit view's controller that shows what the test says and keeps what it is asked for.
class EditViewControllerDouble final : public TLEditViewController {
public:
    explicit EditViewControllerDouble(std::shared_ptr<TLFont> font = nullptr)
    {
        window->font = std::move(font);
    }
    std::shared_ptr<TLLayer> activeLayer() const override { return layer; }
    std::size_t masterIndex() const override { return master; }
    std::shared_ptr<TLGlyphEditView> graphicView() const override { return view; }
    std::shared_ptr<TLWindowController> windowController() const override { return window; }
    void reflowKeepActiveContentCenteredWithCallback(
        std::function<void(std::shared_ptr<NSObject> const&)> callback) override
    {
        log->push_back("reflow");
        if (reflow == Reflow::later) {
            pendingReflow = std::move(callback);
            return;
        }
        for (auto times = reflow == Reflow::twice ? 2
                 : reflow == Reflow::atOnce       ? 1
                                                  : 0;
             times > 0; --times) {
            callback(nullptr);
        }
    }

    CallLog log { std::make_shared<std::vector<std::string>>() };
    std::shared_ptr<GlyphEditViewDouble> view { std::make_shared<GlyphEditViewDouble>(log) };
    std::shared_ptr<WindowControllerDouble> window { std::make_shared<WindowControllerDouble>(log) };
    std::shared_ptr<TLLayer> layer;
    std::size_t master { 0 };
    Reflow reflow { Reflow::atOnce };
    std::function<void(std::shared_ptr<NSObject> const&)> pendingReflow;
};

/// The controller of a view on glyphs that is no edit view.
class GlyphViewControllerDouble final : public TLGlyphViewControllerProtocol {
public:
    std::shared_ptr<TLLayer> activeLayer() const override { return layer; }
    std::size_t masterIndex() const override { return master; }

    std::shared_ptr<TLLayer> layer;
    std::size_t master { 0 };
};
