#pragma once

#include "Platform/Foundation/NSNotificationCenter.h"
#include "Tests/Support/EditViewDouble.h"

#include <array>

/// Stands in front of a part of the host: keeps what is asked, and passes it on.
template <class Part> class Recorder : public Part {
public:
    Recorder(CallLog log, std::shared_ptr<Part> part)
        : m_log(std::move(log))
        , m_part(std::move(part))
    {
    }

protected:
    CallLog const m_log;
    std::shared_ptr<Part> const m_part;
};

class RecordingEditView final : public Recorder<TLGlyphEditView> {
public:
    using Recorder::Recorder;
    std::optional<TLLocation> axisLocation() const override { return m_part->axisLocation(); }
    NSRange selectedRange() const override { return m_part->selectedRange(); }
    void setAxisLocation(std::optional<TLLocation> location) override
    {
        m_log->push_back("setAxisLocation " + describeLocation(location));
        m_part->setAxisLocation(std::move(location));
    }
    void switchToLayerWithId(std::string_view layerId, std::optional<std::string> const& associatedMasterId,
        NSRange range) override
    {
        m_log->push_back(describeSwitch(layerId, associatedMasterId, range));
        m_part->switchToLayerWithId(layerId, associatedMasterId, range);
    }
};

class RecordingWindowController final : public Recorder<TLWindowController> {
public:
    using Recorder::Recorder;
    std::shared_ptr<TLFont> documentFont() const override { return m_part->documentFont(); }
    void setMasterIndex(std::size_t index) override
    {
        m_log->push_back("setMasterIndex " + std::to_string(index));
        m_part->setMasterIndex(index);
    }
};

class RecordingController final : public Recorder<TLEditViewController> {
public:
    RecordingController(CallLog log, std::shared_ptr<TLEditViewController> controller)
        : Recorder(std::move(log), std::move(controller))
        , m_view(std::make_shared<RecordingEditView>(m_log, m_part->graphicView()))
        , m_window(std::make_shared<RecordingWindowController>(m_log, m_part->windowController()))
    {
    }
    std::shared_ptr<TLLayer> activeLayer() const override { return m_part->activeLayer(); }
    std::size_t masterIndex() const override { return m_part->masterIndex(); }
    std::shared_ptr<TLGlyphEditView> graphicView() const override { return m_view; }
    std::shared_ptr<TLWindowController> windowController() const override { return m_window; }
    void reflowKeepActiveContentCenteredWithCallback(
        std::function<void(std::shared_ptr<NSObject> const&)> callback) override
    {
        m_log->push_back("reflow");
        m_part->reflowKeepActiveContentCenteredWithCallback(
            [this, callback](std::shared_ptr<NSObject> const& object) {
                callback(object);
                m_log->push_back("laid out");
            });
    }

private:
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
