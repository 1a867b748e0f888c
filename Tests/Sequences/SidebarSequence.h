#pragma once

#include "Tests/Sequences/FamilyChanges.h"
#include "Tests/Sequences/ShownTable.h"
#include "Tests/Support/ViewWindow.h"

/// One thing that happens. The numbers choose among what is there when it does.
struct Step {
    unsigned deed { 0 }; ///< Index into `SidebarSequence::deeds`.
    unsigned which { 0 };
    unsigned value { 0 };
};
std::ostream& operator<<(std::ostream& out, Step const& step);

/// A sidebar on screen over a host that lives: what the host, the person and the main queue do, in any
/// order, and after each step what must hold. Throws `Wrong`.
class SidebarSequence {
public:
    SidebarSequence();
    ~SidebarSequence();

    struct Deed {
        std::string name;
        std::function<void(SidebarSequence&, unsigned which, unsigned value)> act;
        unsigned weight;
    };
    static std::vector<Deed> const& deeds();
    void perform(Step const& step);
    /// Everything that waits has come, and nothing is left of closed families.
    void finish();

private:
    template <void (SidebarSequence::*Act)(unsigned, unsigned)>
    static Deed deed(char const* name, unsigned weight);
    void makeSidebar();
    void changeFamily(FamilyChanges::Change change, unsigned which, unsigned value);
    void settle();
    std::shared_ptr<AxisCellView> row(unsigned which) const;
    WindowEvents editorWindow() const;

    void update(unsigned which, unsigned value);
    void appear(unsigned which, unsigned value);
    void nestUpdate(unsigned which, unsigned value);
    void runQueue(unsigned which, unsigned value);
    void settleAll(unsigned which, unsigned value);
    void filter(unsigned which, unsigned value);
    void showTab(unsigned which, unsigned value);
    void resize(unsigned which, unsigned value);
    void scroll(unsigned which, unsigned value);
    void openEditor(unsigned which, unsigned value);
    void addAxis(unsigned which, unsigned value);
    void typeName(unsigned which, unsigned value);
    void endEditor(unsigned which, unsigned value);
    void chooseValue(unsigned which, unsigned value);
    void step(unsigned which, unsigned value);
    void drag(unsigned which, unsigned value);
    void typeValue(unsigned which, unsigned value);
    void chooseReflow(unsigned which, unsigned value);
    void callBack(unsigned which, unsigned value);
    void releaseHost(unsigned which, unsigned value);
    void renewSidebar(unsigned which, unsigned value);
    void showSecond(unsigned which, unsigned value);

    std::shared_ptr<LiveHost> m_host { std::make_shared<LiveHost>() };
    FamilyChanges m_family { m_host };
    std::shared_ptr<SidebarViewController> m_sidebar;
    std::unique_ptr<ViewWindow> m_window;
    std::unique_ptr<ShownTable> m_table;
    std::shared_ptr<SidebarViewController> m_second; ///< Beside it, on the same host; never on screen.
    std::unique_ptr<ShownTable> m_secondTable;
    std::shared_ptr<NSObject> m_nesting;
    std::vector<std::weak_ptr<TLFont>> m_closed;
    bool m_isPressed { false };
    bool m_isTall { true };
    bool m_isShown { true };
};
