#include "Typloom/TyploomApp/TLRecentMenu.h"

#include "Typloom/TyploomApp/TLUserState.h"

#include <QFile>
#include <QFontMetrics>
#include <QMenu>

namespace {

/// In points of the menu's font; longer folders lose their middle.
constexpr int widestFolder = 420;

QString displayed(std::filesystem::path const& path)
{
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

/// "Name.designspace — folder"; an ampersand in a menu would underline a letter.
QString titleFor(std::filesystem::path const& family, QFontMetrics const& metrics)
{
    auto const folder = metrics.elidedText(displayed(family.parent_path()), Qt::ElideMiddle, widestFolder);
    return QString(displayed(family.filename()) + " — " + folder).replace('&', "&&");
}

} // namespace

void TLFillRecentMenu(
    QMenu& menu, TLUserState& state, std::function<void(std::filesystem::path const&)> const& open)
{
    menu.clear();
    menu.setToolTipsVisible(true);
    auto const families = state.recentFamilies();
    for (auto const& family : families) {
        auto* const action = menu.addAction(titleFor(family, menu.fontMetrics()));
        action->setToolTip(displayed(family));
        std::error_code error;
        action->setEnabled(std::filesystem::is_regular_file(family, error));
        QObject::connect(action, &QAction::triggered, &menu, [family, open] { open(family); });
    }
    if (!families.empty()) {
        menu.addSeparator();
        auto* const clear = menu.addAction("&Clear Menu");
        QObject::connect(clear, &QAction::triggered, &menu, [&state] { state.clearRecentFamilies(); });
    }
}
