#include "adapters/common/Paths.h"
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace corvane::check {

namespace {

constexpr const char* sFrameworkProgID = "Corvane.Framework";
constexpr const char* sHelpProgID = "TavelinSvc.TavelinService";

bool IsFramework(const Provider& oService) {
    return EqualText(oService.sProgID, sFrameworkProgID);
}

void CheckFramework(Model& oModel, const std::string& sApplication, Report& oReport) {
    // Of several files of the root object the actions of the last are its own.
    Provider* pFramework = nullptr;
    for (Provider& oService : oModel.aServices)
        if (IsFramework(oService))
            pFramework = &oService;
    if (!pFramework) {
        if (oModel.bComplete)
            oReport.Add(Rule::MissingFramework, {JoinPath(sApplication, "Services"), {}},
                        "no active file has the ProgID \"Corvane.Framework\"",
                        "add one, with the action \"Navigation\" and its procedure \"ViewNavigation\"");
    } else if (!pFramework->FindAction("Navigation")) {
        oReport.Add(Rule::MissingNavigation, pFramework->At("ProgID"), "the root object has no action \"Navigation\"",
                    "add <ActionItem Name=\"Navigation\" Action=\"ViewNavigation\" PassActionItemParam=\"True\"/>");
    }
}

void CheckStartServices(const Model& oModel, Report& oReport) {
    const Provider* pStart = nullptr;
    for (const Provider& oService : oModel.aServices) {
        if (!BooleanOf(*oService.pElement, "IsStartService", false))
            continue;
        if (IsFramework(oService))
            oReport.Add(Rule::StartServiceFramework, oService.At("IsStartService"),
                        "the root object can't be the start service", "remove IsStartService here");
        if (pStart && !EqualText(pStart->sName, oService.sName)) // else the name is the mistake
            oReport.Add(Rule::SeveralStartServices, oService.At("IsStartService"),
                        "Start is called on " + oService.Named() + ", and not on " + pStart->Named(),
                        "let one file say IsStartService", {{pStart->At("IsStartService"), "the other one"}});
        pStart = &oService;
    }
}

// The library writes into the entry before it asks whether the file counts.
void CheckHelp(const Model& oModel, Report& oReport) {
    for (const auto& pFile : oModel.aFiles) {
        if (!pFile->pRoot || !EqualText(pFile->pRoot->Value("ProgID"), sHelpProgID))
            continue;
        const Element* pAbout = nullptr; // the first one is taken
        for (const Element& oGroup : pFile->pRoot->Children())
            if (oGroup.sName == "Menus")
                for (const Element& oEntry : oGroup.Children())
                    if (!pAbout && oEntry.sName == "MenuItem" && oEntry.Value("ActionItem") == "About")
                        pAbout = &oEntry;
        if (!pAbout)
            oReport.Add(Rule::HelpWithoutAbout, pFile->At(pFile->pRoot->At("ProgID")),
                        "the help service has no MenuItem of the action \"About\"",
                        "add one, in exactly these letters");
        else if (!pAbout->Find("Caption"))
            oReport.Add(Rule::HelpWithoutAbout, pFile->At(pAbout->At()),
                        "the MenuItem of the action \"About\" has no Caption", "add one");
    }
}

class ItemCheck {
public:
    ItemCheck(Model& oModel, Report& oReport) : m_oModel(oModel), m_oReport(oReport) {
        for (Provider& oItem : oModel.aItems) {
            m_mapItems.emplace(oItem.sName, &oItem);
            m_aNames.push_back(oItem.sName);
        }
    }

    void Check() {
        for (Provider& oItem : m_oModel.aItems) {
            CheckParent(oItem);
            CheckDefaultAction(oItem);
        }
    }

private:
    void CheckParent(const Provider& oItem) {
        const std::string sParent(oItem.pElement->Value("Parent"));
        if (sParent.empty()) {
            if (EqualText(oItem.pElement->Value("Type"), "Default"))
                m_oReport.Add(Rule::UnreachableItem, oItem.At("Type"),
                              "nothing shows " + oItem.Named() + ", which is of Type Default and has no Parent",
                              "name the item above it as Parent, or make it a Folder");
            return;
        }
        if (!m_mapItems.contains(sParent)) {
            if (m_oModel.bComplete)
                m_oReport.Add(Rule::UnknownParent, oItem.At("Parent"), "there is no explorer item " + Quoted(sParent),
                              WriteInstead(m_aNames, sParent, "define it in an active file, or remove Parent"));
            return;
        }
        CheckCycle(oItem);
    }

    // Reported at the first item of the ring alone.
    void CheckCycle(const Provider& oItem) {
        std::set<const Provider*> setRing;
        const Provider* pItem = &oItem;
        while (pItem && setRing.insert(pItem).second) {
            const auto it = m_mapItems.find(pItem->pElement->Value("Parent"));
            pItem = it == m_mapItems.end() ? nullptr : it->second;
        }
        if (pItem != &oItem || m_setInRings.contains(&oItem))
            return;
        m_setInRings.insert(setRing.begin(), setRing.end());
        m_oReport.Add(Rule::ParentCycle, oItem.At("Parent"),
                      oItem.Named() + (setRing.size() == 1 ? " is its own Parent" : " is below itself"),
                      "remove the Parent of the one that is meant to be on top");
    }

    void CheckDefaultAction(Provider& oItem) {
        const std::string sAction(oItem.pElement->Value("DefaultAction"));
        if (sAction.empty() || oItem.FindAction(sAction))
            return;
        std::vector<std::string> aNames;
        for (const Action& oAction : oItem.aActions)
            aNames.emplace_back(oAction.sName);
        m_oReport.Add(Rule::UnknownDefaultAction, oItem.At("DefaultAction"),
                      oItem.Named() + " has no action " + Quoted(sAction),
                      WriteInstead(aNames, sAction, "define it there as an ActionItem"));
    }

    Model& m_oModel;
    Report& m_oReport;
    std::unordered_map<std::string_view, Provider*, TextHash, TextEqual> m_mapItems; // by name
    std::vector<std::string> m_aNames;
    std::set<const Provider*> m_setInRings;
};

void CheckWindows(const Model& oModel, Report& oReport) {
    for (const Window& oWindow : oModel.aWindows)
        if (BooleanOf(*oWindow.pElement, "IsModal", false) && BooleanOf(*oWindow.pElement, "IsMDIChild", true))
            oReport.Add(Rule::ModalMdiChild, oWindow.pFile->At(oWindow.pElement->At("IsModal")),
                        "the window " + Quoted(oWindow.sName) + " is modal and an MDI child, so opening it fails",
                        "write IsMDIChild=\"False\"");
}

} // namespace

void CheckNames(Model& oModel, const std::string& sApplication, Report& oReport) {
    CheckFramework(oModel, sApplication, oReport);
    CheckStartServices(oModel, oReport);
    CheckHelp(oModel, oReport);
    ItemCheck(oModel, oReport).Check();
    CheckWindows(oModel, oReport);
}

} // namespace corvane::check
