#include "Platform/AppKit/NSSearchField.h"

#include "Platform/AppKit/NSImage.h"
#include "Platform/Qt/NSTextFieldBacking.h"
#include "Platform/Qt/SymbolIcons.h"

static std::unique_ptr<NSViewBacking> makeBacking()
{
    auto backing = std::make_unique<NSTextFieldBacking>(NSTextField::Kind::field);
    backing->isSearchField = true;
    backing->field->setClearButtonEnabled(true);
    if (auto const glass = NSImage::imageWithSystemSymbolName("magnifyingglass")) {
        backing->field->addAction(symbolIcon(*glass), QLineEdit::LeadingPosition);
    }
    return backing;
}

NSSearchField::NSSearchField()
    : NSTextField(Kind::field, makeBacking())
{
}
