#include "Platform/Qt/NSTextFieldBacking.h"

#include "Platform/AppKit/KeyStep.h"
#include "Platform/Qt/Conversions.h"
#include "Platform/Qt/PopoverWindow.h"

#include <algorithm>
#include <cmath>
#include <limits>

static QWidget* makeWidget(NSTextField::Kind kind)
{
    if (kind == NSTextField::Kind::field) {
        return new QtTextField;
    }
    return new QtLabel(kind == NSTextField::Kind::wrappingLabel);
}

NSTextFieldBacking::NSTextFieldBacking(NSTextField::Kind kind)
    : NSViewBacking(makeWidget(kind))
    , label(qobject_cast<QtLabel*>(widget))
    , field(qobject_cast<QtTextField*>(widget))
{
}

NSTextFieldBacking::~NSTextFieldBacking()
{
    // The widget may live on to the end of the event that it is handling.
    if (widget && field) {
        field->hooks = {};
        QObject::disconnect(field, &QLineEdit::textEdited, nullptr, nullptr);
    }
}

void NSTextFieldBacking::attach(NSView& owner)
{
    NSViewBacking::attach(owner);
    if (!field) {
        return;
    }
    QObject::connect(field, &QLineEdit::textEdited, field, [this] { userChangedText(); });
    field->hooks = {
        .command = [this](std::string_view selector) { return handleCommand(selector); },
        .left = [this] { endEditing(); },
        .takenAway = [this] { dropEditing(); },
    };
}

QString NSTextFieldBacking::text() const
{
    return !widget ? QString() : field ? field->text() : label->wholeText();
}

void NSTextFieldBacking::show(QString const& text)
{
    m_edited = false;
    m_committed = text;
    if (!widget || text == this->text()) {
        return;
    }
    if (label) {
        return label->show(text);
    }
    bool const wasSelected = field->hasSelectedText() && field->selectedText() == field->text();
    field->setText(text);
    if (wasSelected) {
        field->selectAll();
    } else if (!field->hasFocus()) {
        field->home(false);
    }
}

void NSTextFieldBacking::takeTextOfWidget()
{
    m_committed = text();
    if (label && label->wordWrap()) {
        owner().m_kind = NSTextField::Kind::wrappingLabel;
    }
}

static void notifyDelegate(NSTextField& field, char const* name,
    void (NSControlTextEditingDelegate::*operation)(std::shared_ptr<NSNotification> const&))
{
    if (auto const delegate = field.delegate()) {
        ((*delegate).*operation)(
            std::make_shared<NSNotification>(name, NSSender(field.sharedAs<NSTextField>())));
    }
}

void NSTextFieldBacking::notifyChange()
{
    notifyDelegate(
        owner(), "NSControlTextDidChangeNotification", &NSControlTextEditingDelegate::controlTextDidChange);
}

void NSTextFieldBacking::userChangedText()
{
    m_edited = true;
    notifyChange();
}

bool NSTextFieldBacking::handleCommand(std::string_view selector)
{
    auto const keep = owner().sharedAs<NSTextField>();
    if (auto const delegate = owner().delegate();
        delegate && delegate->controlDoCommandBySelector(keep, selector)) {
        return true;
    }
    if (selector == "insertNewline:") {
        commit(Commit::byReturn);
        return true;
    }
    if (selector == "cancelOperation:") {
        return cancel();
    }
    bool const big = selector.find("AndModifySelection:") != std::string_view::npos;
    if (selector.starts_with("moveUp")) {
        return step(1, big);
    }
    return selector.starts_with("moveDown") && step(-1, big);
}

bool NSTextFieldBacking::readTypedText()
{
    auto const formatter = owner().m_formatter;
    auto const number = formatter ? formatter->numberFromString(fromQString(text())) : std::nullopt;
    if (formatter && !number) {
        show(QString(m_committed));
        return false;
    }
    owner().m_number = number;
    auto const formatted = number ? formatter->stringFromNumber(*number) : std::nullopt;
    show(formatted ? toQString(*formatted) : text());
    return true;
}

void NSTextFieldBacking::commit(Commit how)
{
    auto const keep = owner().sharedAs<NSTextField>();
    // Return takes what was typed for what is meant, even where it reads as before: the number
    // behind the text may have more digits. Leaving does not.
    bool const changed = m_edited && (how == Commit::byReturn || text() != m_committed);
    bool const sends = changed && readTypedText();
    m_edited = false;
    forgetTyping();
    if (how == Commit::byReturn) {
        field->selectAll();
    }
    if (sends) {
        owner().sendAction();
    }
}

/// What has been taken is no longer the text field's to undo.
void NSTextFieldBacking::forgetTyping() const
{
    if (field && field->isUndoAvailable()) {
        field->setText(field->text());
    }
}

static bool isInTransientPopover(QWidget const& widget)
{
    auto const* popover = dynamic_cast<PopoverWindow const*>(widget.window());
    return popover && popover->isTransient();
}

/// The key goes on to whoever shows the field, and takes the keyboard back.
bool NSTextFieldBacking::cancelSearch()
{
    if (!text().isEmpty()) {
        auto const keep = owner().sharedAs<NSTextField>();
        show(QString());
        notifyChange();
    }
    return false;
}

bool NSTextFieldBacking::cancel()
{
    if (isSearchField) {
        return cancelSearch();
    }
    if (!m_edited || isInTransientPopover(*field)) {
        return false;
    }
    auto const keep = owner().sharedAs<NSTextField>();
    bool const changes = text() != m_committed;
    show(QString(m_committed));
    field->selectAll();
    if (changes) {
        notifyChange();
    }
    return true;
}

static double spanOf(NSNumberFormatter const& formatter)
{
    bool const isBounded = formatter.minimum() && formatter.maximum();
    return isBounded ? *formatter.maximum() - *formatter.minimum() : std::numeric_limits<double>::infinity();
}

bool NSTextFieldBacking::step(double direction, bool big)
{
    auto const formatter = owner().m_formatter;
    if (!formatter) {
        return false;
    }
    auto const typed = m_edited ? formatter->numberFromString(fromQString(text())) : owner().m_number;
    auto const number = typed ? typed : formatter->numberFromString(fromQString(m_committed));
    if (!number) {
        return true;
    }
    // Sums of tenths gather noise in the last digits: 0.1 + 0.2.
    double target = std::round((*number + direction * keyStep(spanOf(*formatter), big)) * 1e6) / 1e6;
    target = std::min(target, formatter->maximum().value_or(target));
    target = std::max(target, formatter->minimum().value_or(target));
    if (target == *number && !m_edited) {
        return true;
    }
    auto const keep = owner().sharedAs<NSTextField>();
    owner().m_number = target;
    show(toQString(formatter->stringFromNumber(target).value_or(NSNumberDescription(target))));
    field->selectAll();
    notifyChange();
    owner().sendAction();
    return true;
}

void NSTextFieldBacking::endEditing()
{
    auto const keep = owner().sharedAs<NSTextField>();
    // The delegate sees the text as it was typed, and may put another one in its place.
    notifyDelegate(owner(), "NSControlTextDidEndEditingNotification",
        &NSControlTextEditingDelegate::controlTextDidEndEditing);
    commit(Commit::byLeaving);
}

void NSTextFieldBacking::dropEditing()
{
    if (m_edited) {
        show(isSearchField ? text() : QString(m_committed));
    }
}
