#pragma once

#include "Platform/AppKit/NSView.h"
#include "Platform/Foundation/NSBundle.h"
#include "Platform/Qt/NibOutline.h"

#include <QUiLoader>

class QIODevice;

/// Hides the toolkit's plug-ins while it lives: a reader of descriptions loads at its birth all those
/// of the designer that it finds, which takes up to a tenth of a second and gives nothing here.
class HiddenToolkitPlugins {
public:
    HiddenToolkitPlugins();
    void showAgain();

private:
    QStringList m_paths;
};

/// Reads one interface description with the toolkit's own reader and makes a view of every widget in it.
class NibLoader final : HiddenToolkitPlugins, public QUiLoader {
public:
    NibLoader();

    /// The top view, its texts in the user's language where the bundle's table has them; null when there is
    /// none, of which `problems` says why.
    std::shared_ptr<NSView> load(QIODevice& file, std::shared_ptr<NSBundle> const& bundle);
    /// As the file names it; empty where it has no top view.
    std::string const& topClass() const { return m_topClass; }
    /// In the file's order, the top view first.
    std::vector<std::shared_ptr<NSView>> const& views() const { return m_views; }
    /// What is wrong with the file, each the end of a sentence that begins with its name.
    std::vector<std::string> const& problems() const { return m_problems; }

    QWidget* createWidget(QString const& className, QWidget* parent, QString const& name) override;

private:
    void decode(NSView& view, QString const& className, QString const& name);
    void translate(NibOutline::Text const& text, std::shared_ptr<NSBundle> const& bundle);
    void joinSuperviews();
    void applyProperties(NSView& view);
    void nameByTitle(NSView& view);

    std::vector<std::shared_ptr<NSView>> m_views;
    std::vector<std::string> m_problems;
    std::string m_topClass;
};

/// A view of the class that an interface description names; null for a class that is not registered.
std::shared_ptr<NSView> makeRegisteredView(std::string_view className);
