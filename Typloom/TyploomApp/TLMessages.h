#pragma once

#include <QMessageBox>

#include <string>
#include <vector>

/// A message of a window that goes when it has been answered. Other windows can be used meanwhile.
QMessageBox* TLMakeMessage(
    QWidget& window, QMessageBox::Icon icon, QString const& text, QString const& details);

/// A line each, no more than a dialog should list.
QString TLListOf(std::vector<std::string> const& lines);
