#include "Platform/Qt/NibLoader.h"

#include "Platform/AppKit/NSButton.h"
#include "Platform/AppKit/NSTextField.h"
#include "Platform/Qt/Conversions.h"
#include "Platform/Qt/NSTextFieldBacking.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QPushButton>

HiddenToolkitPlugins::HiddenToolkitPlugins()
    : m_paths(QCoreApplication::libraryPaths())
{
    QCoreApplication::setLibraryPaths({});
}

void HiddenToolkitPlugins::showAgain()
{
    QCoreApplication::setLibraryPaths(m_paths);
}

NibLoader::NibLoader()
{
    showAgain();
}

/// Decorations of the toolkit that are no views.
static bool isDecoration(QString const& className)
{
    return className == QLatin1String("QFrame") || className == QLatin1String("Line");
}

static std::shared_ptr<NSView> makeStandardView(QString const& className)
{
    if (className == QLatin1String("QWidget")) {
        return std::make_shared<NSView>();
    }
    if (className == QLatin1String("QLabel")) {
        return std::make_shared<NSTextField>(NSTextField::Kind::label);
    }
    if (className == QLatin1String("QLineEdit")) {
        return std::make_shared<NSTextField>(NSTextField::Kind::field);
    }
    bool const isToolButton = className == QLatin1String("QToolButton");
    if (isToolButton || className == QLatin1String("QPushButton")) {
        auto button = std::make_shared<NSButton>();
        button->setBezelStyle(isToolButton ? NSBezelStyle::borderless : NSBezelStyle::rounded);
        return button;
    }
    return nullptr;
}

QWidget* NibLoader::createWidget(QString const& className, QWidget* parent, QString const& name)
{
    if (isDecoration(className)) {
        return QUiLoader::createWidget(className, parent, name);
    }
    auto view = makeStandardView(className);
    if (!view) {
        view = makeRegisteredView(fromQString(className));
    }
    if (!view) {
        // Without a widget the toolkit would take the base class instead, and say nothing.
        m_problems.push_back("has the class '" + fromQString(className) + "', which is not known");
        auto* placeholder = new QWidget(parent);
        placeholder->setObjectName(name);
        return placeholder;
    }
    auto* widget = qtWidget(*view);
    widget->setParent(parent);
    widget->setObjectName(name);
    m_views.push_back(view);
    decode(*view, className, name);
    return widget;
}

void NibLoader::decode(NSView& view, QString const& className, QString const& name)
{
    NSCoder const coder({ { "NSClassName", fromQString(className) }, { "NSIdentifier", fromQString(name) } });
    if (!view.initWithCoder(coder)) {
        m_problems.push_back("has the view '" + fromQString(name) + "' of class '" + fromQString(className)
            + "', which cannot be decoded");
    }
    view.setIdentifier(fromQString(name));
}

std::shared_ptr<NSView> NibLoader::load(QIODevice& file, std::shared_ptr<NSBundle> const& bundle)
{
    auto const outline = readNibOutline(file);
    m_topClass = outline.topClasses.empty() ? std::string() : outline.topClasses.front();
    auto* widget = QUiLoader::load(&file);
    if (!widget) {
        auto problem = fromQString(errorString());
        problem.erase(problem.find_last_not_of('.') + 1);
        m_problems.push_back("cannot be read: " + problem);
        return nullptr;
    }
    auto* top = viewOfWidget(widget);
    // Of several top widgets the toolkit takes the last, and says nothing.
    if (outline.topClasses.size() > 1) {
        m_problems.push_back("has more than one top widget");
    }
    if (!top) {
        m_problems.push_back("has no view at its top");
    }
    for (auto const& text : outline.texts) {
        translate(text, bundle);
    }
    for (auto const& view : m_views) {
        applyProperties(*view);
        nameByTitle(*view);
    }
    joinSuperviews();
    if (m_problems.empty()) {
        return top->sharedAs<NSView>();
    }
    if (!top) {
        m_views.clear();
        delete widget;
    }
    return nullptr;
}

/// The English text is its own key.
void NibLoader::translate(NibOutline::Text const& text, std::shared_ptr<NSBundle> const& bundle)
{
    auto const english = fromQString(text.english);
    auto const translated = NSLocalizedString(english, bundle, english, "");
    if (translated == english) {
        return;
    }
    for (auto const& view : m_views) {
        if (auto* widget = qtWidget(*view); widget->objectName() == text.widget) {
            widget->setProperty(text.property.constData(), toQString(translated));
        }
    }
}

void NibLoader::joinSuperviews()
{
    for (auto const& view : m_views) {
        if (auto* superview = enclosingViewOfWidget(qtWidget(*view)->parentWidget())) {
            superview->addSubview(view);
        }
    }
}

static std::string textProperty(QWidget const& widget, char const* name)
{
    return fromQString(widget.property(name).toString());
}

/// False for what is no number of digits.
static bool applyFractionDigits(NSNumberFormatter& formatter, QWidget const& widget)
{
    auto const property = widget.property("maximumFractionDigits");
    bool isNumber = !property.isValid();
    int const digits = isNumber ? formatter.maximumFractionDigits() : property.toInt(&isNumber);
    formatter.setMaximumFractionDigits(digits);
    return isNumber && digits >= 0;
}

/// The property "accessibilityTitle" names the label whose text says what a view is for.
void NibLoader::nameByTitle(NSView& view)
{
    auto const title = textProperty(*qtWidget(view), "accessibilityTitle");
    if (title.empty()) {
        return;
    }
    for (auto const& candidate : m_views) {
        auto* const label = qobject_cast<QtLabel*>(qtWidget(*candidate));
        if (label && candidate->identifier() == title) {
            label->name(*qtWidget(view));
            return;
        }
    }
    m_problems.push_back(
        "names '" + view.identifier() + "' by the label '" + title + "', which it does not have");
}

void NibLoader::applyProperties(NSView& view)
{
    auto const& widget = *qtWidget(view);
    auto const problem = [&](std::string const& what, std::string const& value) {
        m_problems.push_back(
            "gives '" + view.identifier() + "' the " + what + " '" + value + "', which is not known");
    };
    if (widget.isHidden() && widget.testAttribute(Qt::WA_WState_ExplicitShowHide)) {
        view.setHidden(true);
    }
    if (auto* button = dynamic_cast<NSButton*>(&view)) {
        auto const* push = qobject_cast<QPushButton const*>(&widget);
        if (push && push->isFlat()) {
            button->setBezelStyle(NSBezelStyle::borderless);
        }
        if (auto const symbol = textProperty(widget, "symbol"); !symbol.empty()) {
            auto const image = NSImage::imageWithSystemSymbolName(symbol);
            image ? button->setImage(image) : problem("symbol", symbol);
        }
    }
    if (auto* field = dynamic_cast<NSTextField*>(&view)) {
        static_cast<NSTextFieldBacking&>(field->backing()).takeTextOfWidget();
        auto const formatter = textProperty(widget, "formatter");
        if (formatter == "number") {
            field->setFormatter(std::make_shared<NSNumberFormatter>());
            if (!applyFractionDigits(*field->formatter(), widget)) {
                problem("maximumFractionDigits", textProperty(widget, "maximumFractionDigits"));
            }
        } else if (!formatter.empty()) {
            problem("formatter", formatter);
        }
    }
}
