#include "desktop/translation/DefinitionTranslation.h"

#include "corvane/base/Text.h"
#include "corvane/platform/controls/BarText.h"
#include "desktop/translation/HostTranslation.h"
#include "desktop/translation/ShownText.h"

#include <QCoreApplication>
#include <QFile>
#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr const char* sHelpProgID = "TavelinSvc.TavelinService"; // whose entry "About" the library completes
constexpr std::string_view sAbout = "About ";

// What the library itself writes.
struct Library {
    Q_DECLARE_TR_FUNCTIONS(Library)
};

std::string WithAmpersand(std::string sText) {
    std::replace(sText.begin(), sText.end(), '#', '&'); // as the library does when it reads a caption
    return sText;
}

} // namespace

class DefinitionTranslation::Translator final : public QTranslator {
public:
    QString translate(const char* sContext, const char* sText, const char* sWhich, int) const override {
        static constexpr std::string_view sPrefix = TextKind::sPrefix;
        if (!std::string_view(sContext).starts_with(sPrefix))
            return {};
        const auto it = m_mapShown.find(Index(sContext, sWhich ? sWhich : "", sText));
        return it == m_mapShown.end() ? QString() : it->second;
    }

    void Read(const QString& sPath, const NoteFunction& fnNote) {
        QFile oFile(sPath);
        if (!oFile.open(QIODevice::ReadOnly)) {
            fnNote(sPath.toStdString() + " can't be read: " + oFile.errorString().toStdString());
            return;
        }
        std::vector<CatalogueFault> aFaults;
        const auto oCatalogue = Catalogue::Read(oFile.readAll().toStdString(), aFaults);
        for (const CatalogueFault& oFault : aFaults)
            fnNote(sPath.toStdString() + ", line " + std::to_string(oFault.lLine) + ": " + oFault.sText);
        for (const CatalogueMessage& oMessage : oCatalogue.Messages())
            if (const std::string* pTranslation = oCatalogue.Find(oMessage.sKey, oMessage.sText)) {
                const bool bMnemonic = HasMnemonic(oMessage.sKey);
                m_mapTranslations.try_emplace(oMessage.sKey + "\n" +
                                                  (bMnemonic ? WithAmpersand(oMessage.sText) : oMessage.sText),
                                              bMnemonic ? WithAmpersand(*pTranslation) : *pTranslation);
            }
    }

    void AddAll(const ServiceManager& oManager) {
        AddLibrary();
        for (const auto& oDef : *oManager.ServiceDefs()) {
            AddEntries(ServiceKey(oDef->Name()), *oDef->ActionItemDefs(), *oDef->MenuItemDefs());
            if (EqualText(oDef->ProgID(), sHelpProgID))
                AddAbout(*oDef->MenuItemDefs());
        }
        for (const auto& oDef : *oManager.ExplorerItemDefs())
            AddExplorerItem(*oDef);
        for (const auto& oWindow : *oManager.WindowDefs()) {
            Add(TextKind::sWindow, oWindow->Name(), oWindow->Caption(),
                AttributeKey(WindowKey(oWindow->Name()), "Caption"));
            for (const auto& oPage : *oWindow->PageDefs())
                AddPage(oWindow->Name(), *oPage);
        }
        for (const auto& oPage : *oManager.PreferencePageDefs())
            AddPage({}, *oPage);
        m_mapTranslations.clear();
    }

private:
    static std::string Index(std::string_view sKind, std::string_view sWhich, std::string_view sText) {
        std::string sIndex;
        for (const std::string_view sPart : {sKind, sWhich, sText})
            sIndex.append(sPart).append("\n");
        return sIndex;
    }

    const std::string* Find(const std::string& sKey, const std::string& sText) const {
        const auto it = m_mapTranslations.find(sKey + "\n" + sText);
        return it == m_mapTranslations.end() ? nullptr : &it->second;
    }

    void Show(const char* sKind, const std::string& sWhich, const std::string& sText, const QString& sTranslation) {
        m_mapShown.try_emplace(Index(sKind, sWhich, sText), sTranslation);
    }

    bool Add(const char* sKind, const std::string& sWhich, const std::string& sText, const std::string& sKey) {
        const std::string* pTranslation = sText.empty() ? nullptr : Find(sKey, sText);
        if (pTranslation)
            Show(sKind, sWhich, sText, QString::fromStdString(*pTranslation));
        return pTranslation;
    }

    // A button that a person has added has the caption without its mnemonic.
    void AddCaption(const std::string& sTool, const std::string& sText, const std::string& sKey) {
        const std::string* pTranslation = Find(sKey, sText);
        if (!pTranslation)
            return;
        Show(TextKind::sCaption, sTool, sText, QString::fromStdString(*pTranslation));
        Show(TextKind::sCaption, sTool, WithoutMnemonic(sText), QString::fromStdString(WithoutMnemonic(*pTranslation)));
    }

    void AddEntries(const std::string& sOwner, const ActionItemDefCollection& colActions,
                    const MenuItemDefCollection& colEntries) {
        for (const auto& oAction : colActions)
            if (oAction->Tool())
                Add(TextKind::sDescription, oAction->Tool()->Name(), oAction->Description(),
                    DescriptionKey(sOwner, oAction->Name()));
        for (const auto& oEntry : colEntries) {
            const auto& oAction = oEntry->ActionItemDef();
            const auto oTool = oAction ? oAction->Tool() : nullptr;
            if (!oTool)
                continue;
            const auto fnKey = [&](const char* sAttribute) {
                return EntryKey(sOwner, WordOf(oEntry->MenuType()), oEntry->Path(), oAction->Name(), sAttribute);
            };
            AddCaption(oTool->Name(), oEntry->Caption(), fnKey("Caption"));
            Add(TextKind::sToolTip, oTool->Name(), oEntry->ToolTip(), fnKey("Tip"));
            if (oEntry->MenuType() == MenuType::fwToolbarItem)
                AddToolbar(oEntry->Path());
        }
    }

    void AddToolbar(const std::string& sPath) {
        const std::string sBand = "Toolbars." + sPath; // the name of the band, and of the tool that shows and hides it
        const std::string* pTranslation = Find(ToolbarKey(sPath), sPath);
        const QString sShown = QString::fromStdString(pTranslation ? *pTranslation : sPath);
        Show(TextKind::sBand, sBand, sPath, sShown);
        Show(TextKind::sCaption, sBand, sPath, sShown);
        Show(TextKind::sDescription, sBand, "Shows/Hides " + sPath + " Toolbar",
             Library::tr("Shows or hides the toolbar %1").arg(sShown));
    }

    void AddAbout(const MenuItemDefCollection& colEntries) {
        for (const auto& oEntry : colEntries)
            if (const auto& oAction = oEntry->ActionItemDef(); oAction && oAction->Tool() &&
                                                               EqualText(oAction->Name(), "About") &&
                                                               oEntry->Caption().starts_with(sAbout))
                Show(TextKind::sCaption, oAction->Tool()->Name(), oEntry->Caption(),
                     Library::tr("About %1").arg(QString::fromStdString(oEntry->Caption().substr(sAbout.size()))));
    }

    void AddExplorerItem(const ExplorerItemDef& oDef) {
        const std::string sKey = ExplorerItemKey(oDef.Name());
        AddEntries(sKey, *oDef.ActionItemDefs(), *oDef.MenuItemDefs());
        int nDepth = 0;
        const ExplorerItemDef* pRoot = &oDef;
        for (; pRoot->ParentExplorerItemDef() && nDepth < nDeepest; ++nDepth)
            pRoot = pRoot->ParentExplorerItemDef().Get();
        if (nDepth == 0)
            Add(TextKind::sTab, {}, oDef.Name(), AttributeKey(sKey, "Name"));
        const char* sAttribute = oDef.DisplayName().empty() ? "Name" : "DisplayName";
        const std::string& sText = oDef.DisplayName().empty() ? oDef.Name() : oDef.DisplayName();
        const std::string sWhich = pRoot->Name() + "/" + std::to_string(nDepth);
        if (Add(TextKind::sNode, sWhich, sText, AttributeKey(sKey, sAttribute)))
            Show(TextKind::sNode, {}, sText, "\n"); // there is one, somewhere
    }

    void AddPage(const std::string& sWindow, const PageDef& oPage) {
        const std::string sKey = PageKey(sWindow, oPage.PageProgID());
        Add(TextKind::sPage, oPage.PageProgID(), oPage.Caption(), AttributeKey(sKey, "Caption"));
        AddEntries(sKey, *oPage.ActionItemDefs(), *oPage.MenuItemDefs());
    }

    void AddLibrary() {
        Show(TextKind::sAny, {}, "no", "yes");
        Show(TextKind::sCaption, "View.Toolbars", "Toolbars", Library::tr("Toolbars"));
        Show(TextKind::sBand, "Explorer", "Study Explorer", Library::tr("Explorer"));
    }

    static constexpr int nDeepest = 100; // kinds of items that stand below themselves

    std::unordered_map<std::string, std::string> m_mapTranslations; // by key and text, until all are added
    std::unordered_map<std::string, QString> m_mapShown;
};

DefinitionTranslation::DefinitionTranslation(QStringList aLanguages, std::string sServicesFolder, NoteFunction fnNote)
    : m_aLanguages(std::move(aLanguages)), m_sServicesFolder(std::move(sServicesFolder)), m_fnNote(std::move(fnNote)) {}

DefinitionTranslation::~DefinitionTranslation() = default;

bool DefinitionTranslation::Begin(const ServiceManager& oManager) {
    if (m_aLanguages.isEmpty())
        return false;
    m_pTranslator = std::make_unique<Translator>();
    for (const QString& sFolder :
         {QString::fromStdString(m_sServicesFolder) + "/translations", QString(":/corvane/definitions")}) {
        QStringList aPaths;
        for (const QString& sLanguage : m_aLanguages)
            for (const QString& sName : CatalogueNames(sLanguage))
                aPaths.append(sFolder + "/" + sName + ".po");
        const auto it = std::find_if(aPaths.begin(), aPaths.end(), [](const QString& s) { return QFile::exists(s); });
        if (it != aPaths.end())
            m_pTranslator->Read(*it, m_fnNote);
    }
    m_pTranslator->AddAll(oManager);
    QCoreApplication::installTranslator(m_pTranslator.get());
    return true;
}

} // namespace corvane::desktop
