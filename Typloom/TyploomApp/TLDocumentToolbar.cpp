#include "Typloom/TyploomApp/TLDocumentToolbar.h"

#include "Platform/AppKit/NSApplication.h"
#include "Platform/Qt/Conversions.h"
#include "Platform/Qt/NSViewBacking.h"
#include "Typloom/TyploomApp/TLLineText.h"
#include "Typloom/TyploomApp/TLMasterPicker.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QStringListModel>

#include <algorithm>

namespace {

constexpr int shortestField = 56; ///< Points.

/// A field of the toolbar, from which Escape leads back to the edit view.
class ToolbarField final : public QLineEdit {
public:
    std::function<void()> willBegin; ///< The user has come into the field.
    std::function<void()> didFinish; ///< The field was left.
    std::function<void()> didCancel; ///< Escape was pressed.

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Escape && didCancel) {
            didCancel();
        } else {
            QLineEdit::keyPressEvent(event);
        }
    }
    void focusInEvent(QFocusEvent* event) override
    {
        if (willBegin) {
            willBegin();
        }
        QLineEdit::focusInEvent(event);
    }
    void focusOutEvent(QFocusEvent* event) override
    {
        QLineEdit::focusOutEvent(event);
        if (event->reason() != Qt::PopupFocusReason && didFinish) {
            didFinish();
        }
    }
};

QLabel* captionFor(QString const& text, QWidget* field)
{
    auto* const label = new QLabel(text);
    label->setBuddy(field);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

} // namespace

struct TLDocumentToolbar::Impl {
    std::shared_ptr<TLEditState> state;
    std::shared_ptr<TLLineEditView> view;
    TLMasterPicker masterPicker;
    QPointer<QWidget> widget { new QWidget };
    ToolbarField* textField { new ToolbarField };
    ToolbarField* glyphField { new ToolbarField };
    QStringListModel* nameModel { new QStringListModel(glyphField) };
    std::vector<std::string> shownNames; ///< What the text field's text stands for.
    std::vector<std::string> glyphOrder; ///< Empty until it is needed: a family can have 80,000 glyphs.

    Impl(std::shared_ptr<TLEditState> editState, std::shared_ptr<TLLineEditView> lineView)
        : state(std::move(editState))
        , view(std::move(lineView))
        , masterPicker(state)
    {
        buildTextField();
        buildGlyphField();
        textField->didCancel = glyphField->didCancel = [this] { focusEditView(); };
        auto* const layout = new QHBoxLayout(widget);
        layout->setContentsMargins(10, 6, 10, 6);
        layout->setSpacing(6);
        layout->addWidget(captionFor("Text", textField));
        layout->addWidget(textField, 3);
        layout->addSpacing(8);
        layout->addWidget(captionFor("Glyph", glyphField));
        layout->addWidget(glyphField, 1);
        layout->addSpacing(8);
        layout->addWidget(captionFor("Master", masterPicker.widget()));
        layout->addWidget(masterPicker.widget());
    }

    ~Impl()
    {
        textField->didFinish = nullptr;
        glyphField->didFinish = nullptr;
        delete widget;
    }

    void buildTextField()
    {
        textField->setMinimumWidth(shortestField);
        textField->setAccessibleName("Text");
        textField->setPlaceholderText("Characters, or /name");
        textField->setToolTip(
            "The text of the edit view. A glyph that no character shows is written as /name.");
        textField->setFocusPolicy(Qt::StrongFocus);
        QObject::connect(textField, &QLineEdit::textEdited, widget, [this] { takeText(); });
        QObject::connect(textField, &QLineEdit::returnPressed, widget, [this] { focusEditView(); });
    }

    void buildGlyphField()
    {
        glyphField->setAccessibleName("Glyph");
        glyphField->setPlaceholderText("Name of a glyph");
        glyphField->setToolTip("The edited glyph. Type a part of another's name to choose it.");
        glyphField->setMinimumWidth(shortestField);
        auto* const completer = new QCompleter(nameModel, glyphField);
        completer->setFilterMode(Qt::MatchContains);
        completer->setCaseSensitivity(Qt::CaseInsensitive);
        completer->setMaxVisibleItems(14);
        glyphField->setCompleter(completer);
        glyphField->willBegin = [this] {
            loadGlyphOrder();
            QMetaObject::invokeMethod(glyphField, &QLineEdit::selectAll, Qt::QueuedConnection);
        };
        glyphField->didFinish = [this] { showEditedName(); };
        QObject::connect(completer, qOverload<QString const&>(&QCompleter::activated), widget,
            [this](QString const& name) { takeGlyphName(name); });
        QObject::connect(glyphField, &QLineEdit::returnPressed, widget, [this] {
            if (!glyphField->completer()->popup()->currentIndex().isValid()) {
                takeGlyphName(glyphField->text());
            }
        });
    }

    void loadGlyphOrder()
    {
        if (!glyphOrder.empty()) {
            return;
        }
        glyphOrder = state->font()->glyphNames();
        QStringList names;
        names.reserve(static_cast<qsizetype>(glyphOrder.size()));
        for (auto const& name : glyphOrder) {
            names.append(toQString(name));
        }
        nameModel->setStringList(names);
    }

    void focusEditView() const { qtWidget(*view)->setFocus(); }

    void takeText()
    {
        shownNames = TLGlyphNamesForText(*state->font(), fromQString(textField->text()));
        state->setGlyphNames(shownNames, 0);
        view->centreEditedGlyph();
    }

    void takeGlyphName(QString const& name)
    {
        if (choose(fromQString(name))) {
            focusEditView();
        } else {
            NSBeep();
            glyphField->selectAll();
        }
    }

    bool choose(std::string const& name)
    {
        if (!TLFontListsGlyph(*state->font(), name)) {
            return false;
        }
        state->showGlyphAtCursor(name);
        return true;
    }

    void showEditedName() const
    {
        auto const* object = state->line().editedObject();
        auto const name = toQString(object ? object->glyphName : std::string());
        if (glyphField->text() != name) {
            glyphField->setText(name);
        }
    }

    void showText()
    {
        std::vector<std::string> names;
        auto const& objects = state->line().objects();
        auto const isShown
            = [](TLGlyphObject const& object, std::string const& name) { return object.glyphName == name; };
        if (std::equal(objects.begin(), objects.end(), shownNames.begin(), shownNames.end(), isShown)) {
            return;
        }
        for (auto const& object : objects) {
            names.push_back(object.glyphName);
        }
        textField->setText(toQString(TLTextForGlyphNames(*state->font(), names)));
        textField->setCursorPosition(0);
        shownNames = std::move(names);
    }
};

TLDocumentToolbar::TLDocumentToolbar(std::shared_ptr<TLEditState> state, std::shared_ptr<TLLineEditView> view)
    : m_impl(std::make_unique<Impl>(std::move(state), std::move(view)))
{
    update();
}

TLDocumentToolbar::~TLDocumentToolbar() = default;

QWidget* TLDocumentToolbar::widget() const
{
    return m_impl->widget;
}

void TLDocumentToolbar::update()
{
    m_impl->showText();
    if (!m_impl->glyphField->hasFocus()) {
        m_impl->showEditedName();
    }
    m_impl->masterPicker.update();
}

void TLDocumentToolbar::setText(std::string const& text)
{
    m_impl->textField->setText(toQString(text));
    m_impl->textField->setCursorPosition(0);
    m_impl->takeText();
}

bool TLDocumentToolbar::chooseGlyph(std::string const& name)
{
    return m_impl->choose(name);
}

void TLDocumentToolbar::chooseNeighbouringGlyph(std::ptrdiff_t distance)
{
    m_impl->loadGlyphOrder();
    auto const& order = m_impl->glyphOrder;
    auto const* object = m_impl->state->line().editedObject();
    auto const found = object ? std::find(order.begin(), order.end(), object->glyphName) : order.end();
    if (found == order.end()) {
        return;
    }
    auto const last = static_cast<std::ptrdiff_t>(order.size()) - 1;
    auto const index = std::clamp<std::ptrdiff_t>((found - order.begin()) + distance, 0, last);
    m_impl->choose(order[static_cast<std::size_t>(index)]);
}

void TLDocumentToolbar::focusTextField()
{
    m_impl->textField->setFocus(Qt::ShortcutFocusReason);
    m_impl->textField->selectAll();
}

void TLDocumentToolbar::focusGlyphField()
{
    m_impl->glyphField->setFocus(Qt::ShortcutFocusReason);
}
