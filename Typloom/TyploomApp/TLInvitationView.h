#pragma once

#include <functional>

class QWidget;

/// What a window without a family shows: an invitation to open one. The caller owns the widget.
QWidget* TLMakeInvitationView(std::function<void()> open);
