#pragma once

class NSView;

/// Makes the widget as hidden as its view says: at once, or when what is being handled now has been
/// handled, so that a view that is hidden and shown meanwhile keeps its mouse grab and its focus.
void applyHidden(NSView& view);

/// Applies what has been put off, to all views.
void settleHidden();

/// Applies what has been put off to the views in and below this one, except where that would end
/// a press or take the focus.
void settleHiddenForLayout(NSView& root);
