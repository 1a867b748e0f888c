#pragma once

class QAbstractButton;
class QLabel;
class QString;

/// Lets a screen reader find the button as the tab of a page, selected where the button is checked.
void TLPresentAsTab(QAbstractButton& button);

/// Lets a screen reader find the label as a line of text under the label's accessible name.
void TLPresentAsNamedLine(QLabel& label);
/// To be called instead of `setText`: a screen reader hears of the change.
void TLSetTextOfNamedLine(QLabel& label, QString const& text);
