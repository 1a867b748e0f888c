#include "Platform/AppKit/NSNib.h"
#include "Typloom/TyploomKit/TLLandmarkSlider.h"
#include "Typloom/TyploomKit/TLPlaceholderView.h"

void TLRegisterViewClasses()
{
    NSRegisterViewClass("TLLandmarkSlider", [] { return std::make_shared<TLLandmarkSlider>(); });
    NSRegisterViewClass("TLPlaceholderView", [] { return std::make_shared<TLPlaceholderView>(); });
}
