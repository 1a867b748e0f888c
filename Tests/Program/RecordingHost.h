#pragma once

#include "Platform/Foundation/NSNotificationCenter.h"
#include "Tests/Support/EditViewDouble.h"

#include <array>

/// Stands between the sidebar and its edit view: keeps what is asked, and passes it on.
class RecordingEditView final : public TLGlyphEditView {
public:
    RecordingEditView(CallLog log, std::shared_ptr<TLGlyphEditView> view)
        : m_log(std::move(log))
        , m_view(std::move(view))
    {
    }
    std::optional<TLLocation> axisLocation() const override { return m_view->axisLocation(); }
    NSRange selectedRange() const override { return m_view->selectedRange(); }
    void setAxisLocation(std::optional<TLLocation> location) override
    {
        m_log->push_back("setAxisLocation " + describeLocation(location));
        m_view->setAxisLocation(std::move(location));
    }
    void switchToLayerWithId(std::string_view layerId, std::optional<std::string> const& associatedMasterId,
        NSRange range) override
    {
        m_log->push_back("switchToLayer " + std::string(layerId) + " of "
            + associatedMasterId.value_or("none") + " at " + std::to_string(range.location) + '+'
            + std::to_string(range.length));
        m_view->switchToLayerWithId(layerId, associatedMasterId, range);
    }

private:
    CallLog m_log;
    std::shared_ptr<TLGlyphEditView> m_view;
};

class RecordingWindowController final : public TLWindowController {
public:
    RecordingWindowController(CallLog log, std::shared_ptr<TLWindowController> controller)
        : m_log(std::move(log))
        , m_controller(std::move(controller))
    {
    }
    std::shared_ptr<TLFont> documentFont() const override { return m_controller->documentFont(); }
    void setMasterIndex(std::size_t index) override
    {
        m_log->push_back("setMasterIndex " + std::to_string(index));
        m_controller->setMasterIndex(index);
    }

private:
    CallLog m_log;
    std::shared_ptr<TLWindowController> m_controller;
};

class RecordingController final : public TLEditViewController {
public:
    RecordingController(CallLog log, std::shared_ptr<TLEditViewController> controller)
        : m_log(log)
        , m_controller(std::move(controller))
        , m_view(std::make_shared<RecordingEditView>(log, m_controller->graphicView()))
        , m_window(std::make_shared<RecordingWindowController>(log, m_controller->windowController()))
    {
    }
    std::shared_ptr<TLLayer> activeLayer() const override { return m_controller->activeLayer(); }
    std::size_t masterIndex() const override { return m_controller->masterIndex(); }
    std::shared_ptr<TLGlyphEditView> graphicView() const override { return m_view; }
    std::shared_ptr<TLWindowController> windowController() const override { return m_window; }
    void reflowKeepActiveContentCenteredWithCallback(
        std::function<void(std::shared_ptr<NSObject> const&)> callback) override
    {
        m_log->push_back("reflow");
        m_controller->reflowKeepActiveContentCenteredWithCallback(
            [this, callback](std::shared_ptr<NSObject> const& object) {
                callback(object);
                m_log->push_back("laid out");
            });
    }

private:
    CallLog m_log;
    std::shared_ptr<TLEditViewController> m_controller;
    std::shared_ptr<RecordingEditView> m_view;
    std::shared_ptr<RecordingWindowController> m_window;
};

/// Keeps the interface updates, and after each the rows that it refreshed as one entry.
class RoadObserver final : public NSObject {
public:
    explicit RoadObserver(CallLog log)
        : m_log(std::move(log))
    {
    }
    std::span<NSMethod const> methods() const override
    {
        static std::array const methods {
            NSMethodMake("didUpdateInterface:", &RoadObserver::didUpdateInterface),
            NSMethodMake("rowDidChange:", &RoadObserver::rowDidChange),
        };
        return methods;
    }
    void didUpdateInterface(std::shared_ptr<NSNotification> const&) { m_log->push_back("update"); }
    void rowDidChange(std::shared_ptr<NSNotification> const&)
    {
        if (m_log->empty() || m_log->back() != "rows") {
            m_log->push_back("rows");
        }
    }

private:
    CallLog m_log;
};
