#pragma once

#include "Typloom/TyploomApp/TLEditState.h"

class QWidget;

/// Lists the masters of the family and, below them, the intermediate layers of the edited glyph; shows the
/// one that is shown, under a preview the current master.
class TLMasterPicker {
public:
    explicit TLMasterPicker(std::shared_ptr<TLEditState> state);
    ~TLMasterPicker();
    TLMasterPicker(TLMasterPicker const&) = delete;

    QWidget* widget() const;
    void update();

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};
