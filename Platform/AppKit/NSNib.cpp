#include "Platform/AppKit/NSNib.h"

#include "Platform/AppKit/NSButton.h"
#include "Platform/AppKit/NSSearchField.h"
#include "Platform/AppKit/NSSlider.h"
#include "Platform/AppKit/NSTableCellView.h"
#include "Platform/AppKit/NSTableView.h"
#include "Platform/Foundation/NSMainThread.h"
#include "Platform/Qt/Conversions.h"
#include "Platform/Qt/NibLoader.h"
#include "Platform/Qt/NSViewBacking.h"

#include <cxxabi.h>

#include <algorithm>
#include <set>

#include <QFile>

namespace {

using ViewMakers = std::map<std::string, std::function<std::shared_ptr<NSView>()>, std::less<>>;

ViewMakers& viewMakers()
{
    static ViewMakers makers {
        { "NSView", [] { return std::make_shared<NSView>(); } },
        { "NSTableCellView", [] { return std::make_shared<NSTableCellView>(); } },
        { "NSTableView", [] { return std::make_shared<NSTableView>(); } },
        { "NSSearchField", [] { return std::make_shared<NSSearchField>(); } },
        { "NSTextField", [] { return std::make_shared<NSTextField>(NSTextField::Kind::field); } },
        { "NSButton", [] { return std::make_shared<NSButton>(); } },
        { "NSSlider", [] { return std::make_shared<NSSlider>(); } },
    };
    return makers;
}

std::string classNameOf(NSObject const& object)
{
    int status = 0;
    std::unique_ptr<char, decltype(&std::free)> const name(
        abi::__cxa_demangle(typeid(object).name(), nullptr, nullptr, &status), &std::free);
    return status == 0 ? name.get() : typeid(object).name();
}

std::string nameProperty(NSView const& view, char const* property)
{
    return fromQString(qtWidget(view)->property(property).toString());
}

/// Connects the views of one file with their owner, and keeps a list of what does not fit.
class Binder {
public:
    Binder(std::vector<std::shared_ptr<NSView>> const& views, std::shared_ptr<NSObject> owner)
        : m_views(views)
        , m_owner(std::move(owner))
    {
        if (auto const* nibOwner = dynamic_cast<NSNibOwner const*>(m_owner.get())) {
            m_outlets = nibOwner->outlets();
        }
    }

    std::vector<std::string> connect()
    {
        for (auto const& view : m_views) {
            connectOutlet(view);
            connectAction(view);
        }
        for (auto const& outlet : m_outlets) {
            if (outlet.presence == NSOutletPresence::required && !m_connected.count(outlet.name)) {
                m_problems.push_back(
                    "does not name the outlet '" + std::string(outlet.name) + "', which its owner needs");
            }
        }
        if (!m_problems.empty()) {
            disconnect();
        }
        return std::move(m_problems);
    }

private:
    void connectOutlet(std::shared_ptr<NSView> const& view)
    {
        auto const name = nameProperty(*view, "outlet");
        if (name.empty()) {
            return;
        }
        auto const outlet = std::find_if(m_outlets.begin(), m_outlets.end(),
            [&](auto const& candidate) { return candidate.name == name; });
        if (outlet == m_outlets.end()) {
            m_problems.push_back("names the outlet '" + name + "', which its owner does not have");
        } else if (!m_connected.insert(outlet->name).second) {
            m_problems.push_back("names the outlet '" + name + "' twice");
        } else if (!outlet->connect(*m_owner, view)) {
            m_problems.push_back(
                "names the outlet '" + name + "' for a view of the wrong class, " + classNameOf(*view));
        }
    }

    void connectAction(std::shared_ptr<NSView> const& view)
    {
        auto const name = nameProperty(*view, "action");
        auto const control = std::dynamic_pointer_cast<NSControl>(view);
        auto const field = std::dynamic_pointer_cast<NSTextField>(view);
        bool const isLabel = field && !field->isEditable();
        if (name.empty()) {
            return;
        }
        if (!control || isLabel) {
            m_problems.push_back(
                "names the action '" + name + "' for '" + view->identifier() + "', which sends none");
        } else if (!m_owner->respondsToSelector(name)) {
            m_problems.push_back("names the action '" + name + "', which its owner does not have");
        } else {
            control->setTarget(m_owner);
            control->setAction(name);
        }
    }

    /// An owner whose interface could not be read has none.
    void disconnect()
    {
        for (auto const& outlet : m_outlets) {
            if (m_connected.count(outlet.name)) {
                outlet.connect(*m_owner, nullptr);
            }
        }
    }

    std::vector<std::shared_ptr<NSView>> const& m_views;
    std::shared_ptr<NSObject> m_owner;
    std::span<NSOutlet const> m_outlets;
    std::set<std::string_view> m_connected;
    std::vector<std::string> m_problems;
};

} // namespace

void NSRegisterViewClass(std::string name, std::function<std::shared_ptr<NSView>()> make)
{
    NSAssertMainThread();
    viewMakers().insert_or_assign(std::move(name), std::move(make));
}

std::shared_ptr<NSView> makeRegisteredView(std::string_view className)
{
    auto const maker = viewMakers().find(className);
    return maker == viewMakers().end() ? nullptr : maker->second();
}

NSNib::NSNib(std::string name, std::shared_ptr<NSBundle> bundle)
    : m_name(std::move(name))
    , m_bundle(bundle ? std::move(bundle) : NSBundle::mainBundle())
{
}

std::shared_ptr<NSView> NSNib::instantiate(
    std::shared_ptr<NSObject> const& owner, std::vector<std::string>& errors) const
{
    NSAssertMainThread();
    // Without another owner it is the view at the top, whose class is known once the file is read.
    auto ownerClass = owner ? classNameOf(*owner) : std::string();
    auto const report = [&](std::vector<std::string> const& problems) {
        auto const ofOwner = ownerClass.empty() ? std::string() : " of " + ownerClass;
        for (auto const& problem : problems) {
            errors.push_back("The interface " + m_name + ".ui" + ofOwner + " " + problem + ".");
        }
    };
    auto const path = m_bundle->pathForResource(m_name, "ui");
    QFile file(path ? toQString(path->string()) : QString());
    if (!path || !file.open(QIODevice::ReadOnly)) {
        report({ "is not in the folder " + (m_bundle->bundlePath() / "Resources").string() });
        return nullptr;
    }
    NibLoader loader;
    auto const top = loader.load(file, m_bundle);
    if (!owner) {
        ownerClass = loader.topClass();
    }
    if (!top) {
        report(loader.problems());
        return nullptr;
    }
    std::shared_ptr<NSObject> const fileOwner = owner ? owner : top;
    if (auto const problems = Binder(loader.views(), fileOwner).connect(); !problems.empty()) {
        report(problems);
        return nullptr;
    }
    for (auto const& view : loader.views()) {
        if (view != fileOwner) {
            view->awakeFromNib();
        }
    }
    fileOwner->awakeFromNib();
    return top;
}

std::shared_ptr<NSView> NSNib::instantiateOrStop(std::shared_ptr<NSObject> const& owner) const
{
    std::vector<std::string> errors;
    auto view = instantiate(owner, errors);
    if (!view) {
        NSFatalError(errors.front());
    }
    return view;
}
