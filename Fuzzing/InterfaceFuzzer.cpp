#include "Fuzzing/FuzzInput.h"
#include "Platform/AppKit/NSNib.h"
#include "Platform/AppKit/NSTableCellView.h"
#include "Platform/AppKit/NSTextField.h"

#include <array>
#include <fstream>

#include <QApplication>

#include <unistd.h>

namespace {

class Owner final : public NSObject, public NSNibOwner {
public:
    std::weak_ptr<NSTextField> nameLabel;
    std::shared_ptr<NSView> box;

    void press(std::shared_ptr<NSView> const&) { }
    std::span<NSOutlet const> outlets() const override
    {
        static std::array const outlets {
            NSOutletMake("nameLabel", &Owner::nameLabel, NSOutletPresence::optional),
            NSOutletMake("box", &Owner::box, NSOutletPresence::optional),
        };
        return outlets;
    }
    std::span<NSMethod const> methods() const override
    {
        static std::array const methods { NSMethodMake("press:", &Owner::press) };
        return methods;
    }
};

class Cell final : public NSTableCellView, public NSNibOwner {
public:
    std::weak_ptr<NSTextField> nameLabel;
    std::span<NSOutlet const> outlets() const override
    {
        static std::array const outlets { NSOutletMake("nameLabel", &Cell::nameLabel) };
        return outlets;
    }
};

/// A bundle in memory, for as long as the process lives.
class MemoryBundle {
public:
    MemoryBundle()
    {
        std::filesystem::create_directories(m_path / "Resources");
        bundle = NSBundle::bundleWithPath(m_path);
    }
    ~MemoryBundle() { std::filesystem::remove_all(m_path); }
    MemoryBundle(MemoryBundle const&) = delete;

    void write(std::string_view description) const
    {
        std::ofstream(m_path / "Resources" / "Fuzz.ui", std::ios::binary) << description;
    }

    std::shared_ptr<NSBundle> bundle;

private:
    std::filesystem::path m_path { "/dev/shm/typloom-fuzz-" + std::to_string(::getpid()) };
};

void load(MemoryBundle const& files, std::shared_ptr<NSObject> const& owner)
{
    std::vector<std::string> errors;
    auto const view = NSNib("Fuzz", files.bundle).instantiate(owner, errors);
    fuzzExpect((view == nullptr) == !errors.empty(), "a view, or why there is none");
    if (view) {
        view->layoutSubtreeIfNeeded();
    }
}

/// Widgets may live to the end of the turn.
void expectNothingLeft()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    fuzzExpect(QApplication::allWidgets().isEmpty(), "nothing stays behind");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    static int count = 1;
    static std::array<char*, 2> arguments { const_cast<char*>("InterfaceFuzzer"), nullptr };
    new QApplication(count, arguments.data());
    qInstallMessageHandler([](QtMsgType, QMessageLogContext const&, QString const&) {});
    NSRegisterViewClass("Cell", [] { return std::make_shared<Cell>(); });
    return 0;
}

int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    static MemoryBundle const files;
    files.write(fuzzInput(bytes, size));
    load(files, std::make_shared<Owner>());
    expectNothingLeft();
    load(files, nullptr);
    expectNothingLeft();
    return 0;
}
