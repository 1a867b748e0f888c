#include "Typloom/TyploomApp/TLMessages.h"

#include "Platform/Qt/Conversions.h"

#include <algorithm>

QMessageBox* TLMakeMessage(
    QWidget& window, QMessageBox::Icon icon, QString const& text, QString const& details)
{
    auto* const box = new QMessageBox(icon, "Typloom", text, QMessageBox::NoButton, &window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(details);
    return box;
}

QString TLListOf(std::vector<std::string> const& lines)
{
    constexpr std::size_t most = 8;
    QStringList shown;
    for (std::size_t index = 0; index < std::min(lines.size(), most); ++index) {
        shown.append(toQString(lines[index]));
    }
    if (lines.size() > most) {
        shown.append("and " + QString::number(lines.size() - most) + " more");
    }
    return shown.join('\n');
}
