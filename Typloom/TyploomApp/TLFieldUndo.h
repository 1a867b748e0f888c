#pragma once

/// From now on a text field takes the keys of undo and redo only where something was typed into it that
/// can be undone or done again; otherwise they go to the document. Later calls do nothing.
void TLInstallFieldUndo();
