#include "desktop/commands/DefinitionPlaces.h"

#include "adapters/common/Encoding.h"
#include "corvane/base/Failure.h"
#include "corvane/base/Variant.h"
#include "desktop/service/DefinitionTags.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <algorithm>
#include <array>

namespace corvane::desktop {

namespace {

// An attribute's value without its references; the numeric ones as well.
std::string Plain(std::string_view sValue) {
    if (sValue.find('&') == std::string_view::npos)
        return std::string(sValue);
    static constexpr std::array<std::pair<const char*, const char*>, 5> aNames{
        {{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}, {"&amp;", "&"}}};
    QString sText = QString::fromUtf8(sValue.data(), static_cast<qsizetype>(sValue.size()));
    for (qsizetype i = sText.indexOf("&#"); i >= 0; i = sText.indexOf("&#", i + 1)) {
        const qsizetype iEnd = sText.indexOf(';', i);
        if (iEnd < 0)
            break;
        const bool bHex = sText.mid(i + 2, 1) == "x";
        const uint nCode = bHex ? sText.mid(i + 3, iEnd - i - 3).toUInt(nullptr, 16)
                                : sText.mid(i + 2, iEnd - i - 2).toUInt(nullptr, 10);
        const char32_t c = nCode;
        sText.replace(i, iEnd - i + 1, QString::fromUcs4(&c, 1));
    }
    for (const auto& [sReference, sCharacter] : aNames)
        sText.replace(QLatin1String(sReference), QLatin1String(sCharacter));
    return sText.toStdString();
}

// The element around: its name, and where it ends.
struct Around {
    std::string sName;
    std::size_t iEnd = 0;

    [[nodiscard]] std::string At(std::size_t i) const { return i < iEnd ? sName : std::string(); }
};

Around Open(std::string_view sText, const DefinitionTag& oTag, std::string_view sNameAttribute) {
    if (oTag.iEnd >= 2 && sText[oTag.iEnd - 2] == '/')
        return {};
    const std::size_t iEnd = sText.find("</" + std::string(oTag.sElement), oTag.iEnd);
    return {Plain(oTag.Attribute(sNameAttribute)), iEnd};
}

} // namespace

QString DefinitionPlace::Text() const {
    if (nLine == 0)
        return {};
    return QCoreApplication::translate("DefinitionPlaces", "%1, line %2")
        .arg(QFileInfo(QString::fromStdString(sPath)).fileName())
        .arg(nLine);
}

DefinitionPlaces::DefinitionPlaces(const IFileSystem& oFiles, const std::string& sFolder) {
    try {
        for (const std::string& sPath : oFiles.Files(sFolder)) {
            if (!EqualText(oFiles.Extension(sPath), "xml"))
                continue;
            try {
                Read(sPath, DecodeWindows1252(oFiles.ReadAll(sPath)));
            } catch (const Failure&) {
                // Its entries aren't found, and that is said of them.
            }
        }
    } catch (const Failure&) {
        // The same for a folder that has gone.
    }
}

void DefinitionPlaces::Read(const std::string& sPath, std::string sText) {
    std::string sService;
    Around oItem;
    Around oWindow;
    Around oPage;
    std::size_t iCounted = 0;
    int nLine = 1;
    for (const DefinitionTag& oTag : TagsIn(sText, {"Service", "ExplorerItem", "Window", "Page", "MenuItem"})) {
        nLine += static_cast<int>(std::count(sText.begin() + static_cast<std::ptrdiff_t>(iCounted),
                                             sText.begin() + static_cast<std::ptrdiff_t>(oTag.iBegin), '\n'));
        iCounted = oTag.iBegin;
        const bool bIsMenuItem = oTag.sElement == "MenuItem";
        const bool bIsPage = oTag.sElement == "Page";
        const char* sNameAttribute = bIsMenuItem ? "ActionItem" : bIsPage ? "Caption" : "Name";
        if (oTag.sElement == "Service")
            sService = Plain(oTag.Attribute("Name"));
        else if (oTag.sElement == "ExplorerItem")
            oItem = Open(sText, oTag, "Name");
        else if (oTag.sElement == "Window")
            oWindow = Open(sText, oTag, "Name");
        else if (bIsPage)
            oPage = Open(sText, oTag, "Caption");
        const std::string sPage = oPage.At(oTag.iBegin);
        m_aEntries.push_back({std::string(oTag.sElement),
                              Plain(oTag.Attribute(sNameAttribute)),
                              std::string(oTag.Attribute("Type")),
                              Plain(oTag.Attribute("Path")),
                              sService,
                              sPage.empty() ? oItem.At(oTag.iBegin) : sPage,
                              oWindow.At(oTag.iBegin),
                              {sPath, nLine}});
    }
}

DefinitionPlace DefinitionPlaces::Find(const Placement& oPlacement) const {
    const MenuItemDef& oDef = *oPlacement.oMenuItemDef;
    const Owner& oOwner = oPlacement.oOwner;
    for (const Entry& oEntry : m_aEntries)
        if (oEntry.sElement == "MenuItem" && EqualText(oEntry.sName, oDef.ActionItemDef()->Name()) &&
            EqualText(oEntry.sType, WordOf(oDef.MenuType())) && EqualText(oEntry.sPath, oDef.Path()) &&
            EqualText(oEntry.sItem, oOwner.sItem) && EqualText(oEntry.sWindow, oOwner.sWindow) &&
            (oOwner.sService.empty() || EqualText(oEntry.sService, oOwner.sService)))
            return oEntry.oPlace;
    return {};
}

DefinitionPlace DefinitionPlaces::FindNamed(std::string_view sElement, std::string_view sName) const {
    for (const Entry& oEntry : m_aEntries)
        if (oEntry.sElement == sElement && EqualText(oEntry.sName, sName))
            return oEntry.oPlace;
    return {};
}

} // namespace corvane::desktop
