#include "config/printerconfig.h"

#include <array>
#include <cmath>

#include "profile/vprofilekey.h"

namespace connectdialog {

namespace {

constexpr VMarginData kUsualMargins = {0.5, 0.5, 0.5, 0.5};

constexpr int kPortrait = 1;
constexpr int kLetterPaper = 1;
constexpr int kAutomaticSource = 7;

VLogFont UsualFont() {
    VLogFont font(13, u"Courier New");
    font.size = 100;
    font.characterSet = 0;
    font.outPrecision = 3;
    font.clipPrecision = 2;
    font.quality = 1;
    font.pitchAndFamily = 49;
    return font;
}

/// Eight bytes need not be a number, and what is none differs even from itself: the session would be changed for ever.
void CorrectMargins(VProfileMarginData& margins) {
    VMarginData corrected = margins.Get();
    for (double* margin : {&corrected.left, &corrected.top, &corrected.right, &corrected.bottom})
        if (!std::isfinite(*margin)) *margin = kUsualMargins.left;
    margins.Set(corrected);
}

}  // namespace

std::span<const MemberAccess<PrinterConfig>> PrinterConfig::Members() {
    using P = PrinterConfig;
    static constexpr auto kMembers = std::to_array<MemberAccess<P>>({
        Member<P, &P::pageMargins>,
        Member<P, &P::font>,
        Member<P, &P::pageOrientation>,
        Member<P, &P::paperSize>,
        Member<P, &P::paperSource>,
        Member<P, &P::printerName>,
        Member<P, &P::disablePassThrough>,
        Member<P, &P::bufferPassThrough>,
        Member<P, &P::forceBlackOnWhite>,
        Member<P, &P::useRawMode>,
        Member<P, &P::serialDevice>,
        Member<P, &P::usePrinterPort>,
    });
    return kMembers;
}

PrinterConfig::PrinterConfig(VProfileKey* key) : serialDevice(key) {
    pageMargins.Load(key, u"Page Margins"_v, kUsualMargins);
    CorrectMargins(pageMargins);
    font.Load(key, u"Printer Font v2"_v, UsualFont());
    pageOrientation.Load(key, u"Page Orientation"_v, kPortrait);
    paperSize.Load(key, u"Paper Size"_v, kLetterPaper);
    paperSource.Load(key, u"Paper Source"_v, kAutomaticSource);
    printerName.Load(key, u"Printer Name"_v, VUnicodeString());
    disablePassThrough.Load(key, u"Disable Pass Through Printing"_v, false);
    bufferPassThrough.Load(key, u"Buffer Pass Through Printing"_v, false);
    forceBlackOnWhite.Load(key, u"Force Black On White"_v, false);
    useRawMode.Load(key, u"Use Raw Mode"_v, false);
    usePrinterPort.Load(key, u"Use Printer Port"_v, false);
    if (useRawMode.Get()) usePrinterPort.Set(false);
}

}  // namespace connectdialog
