#pragma once

#include "Platform/AppKit/NSView.h"

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

    /// The top view; null when there is none, of which `problems` says why.
    std::shared_ptr<NSView> load(QIODevice& file);
    /// In the file's order, the top view first.
    std::vector<std::shared_ptr<NSView>> const& views() const { return m_views; }
    /// What is wrong with the file, each the end of a sentence that begins with its name.
    std::vector<std::string> const& problems() const { return m_problems; }

    QWidget* createWidget(QString const& className, QWidget* parent, QString const& name) override;

private:
    void decode(NSView& view, QString const& className, QString const& name);
    void joinSuperviews();
    void applyProperties(NSView& view);

    std::vector<std::shared_ptr<NSView>> m_views;
    std::vector<std::string> m_problems;
};

/// A view of the class that an interface description names; null for a class that is not registered.
std::shared_ptr<NSView> makeRegisteredView(std::string_view className);
