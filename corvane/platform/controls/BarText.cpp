#include "corvane/platform/controls/BarText.h"

namespace corvane {

namespace {

constexpr int nDeepestBand = 16; // bands may open one another in a ring

std::string EntryText(const Tool& oInstance) {
    std::string sText =
        oInstance.Caption().empty() ? "<" + oInstance.Name() + ">" : WithoutMnemonic(oInstance.Caption());
    for (const auto& oShortCut : oInstance.ShortCuts())
        sText += "  [" + oShortCut->Value() + "]";
    if (oInstance.IsDefaultItem())
        sText += "  (default)";
    if (oInstance.Checked())
        sText += "  (checked)";
    if (!oInstance.Enabled())
        sText += "  (disabled)";
    if (!oInstance.Visible())
        sText += "  (hidden)";
    return sText;
}

} // namespace

std::string WithoutMnemonic(std::string_view sCaption) {
    std::string sPlain;
    for (std::size_t i = 0; i < sCaption.size(); ++i) {
        if (sCaption[i] == '&' && i + 1 < sCaption.size())
            ++i;
        sPlain += sCaption[i];
    }
    return sPlain;
}

std::string BandAsText(const Band& oBand, int nDepth) {
    const std::string sIndent(static_cast<std::size_t>(nDepth) * 2, ' ');
    if (nDepth > nDeepestBand)
        return sIndent + "...\n";
    std::string sText;
    for (const auto& oInstance : oBand.Tools()->All()) {
        if (EqualText(oInstance->Name(), "Separator")) {
            sText += sIndent + "--------\n";
            continue;
        }
        if (EqualText(oInstance->Name(), "WindowList")) {
            sText += sIndent + "(list of open windows)\n";
            continue;
        }
        sText += sIndent + EntryText(*oInstance) + "\n";
        if (oInstance->DropDownBand().empty() || !oBand.Owner())
            continue;
        if (const auto oMenu = oBand.Owner()->Bands()->Find(oInstance->DropDownBand()))
            sText += BandAsText(*oMenu, nDepth + 1);
    }
    return sText;
}

} // namespace corvane
