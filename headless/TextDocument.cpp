#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/platform/controls/BarText.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "headless/Document.h"

#include <sstream>

namespace corvane::inspect {

namespace {

class Writer {
public:
    void Heading(const std::string& sText) {
        if (m_oText.tellp() > 0)
            m_oText << "\n";
        m_oText << sText << "\n";
    }
    void Line(int nDepth, const std::string& sText) {
        m_oText << std::string(static_cast<std::size_t>(nDepth) * 2, ' ') << sText << "\n";
    }
    void BandEntries(const Band& oBand, int nDepth) { m_oText << BandAsText(oBand, nDepth); }
    void Nodes(const std::vector<Node*>& aSiblings, int nDepth) {
        for (const Node* pNode : aSiblings) {
            Line(nDepth, pNode->Text() + (pNode->Selected() ? "  (selected)" : ""));
            Nodes(pNode->Children(), nDepth + 1);
        }
    }
    [[nodiscard]] std::string Text() const { return m_oText.str(); }

private:
    std::ostringstream m_oText;
};

void WriteBands(Writer& oWriter, const ModelHost& oHost) {
    const auto& aBands = oHost.Bar()->Bands()->All();
    for (const auto& oBand : aBands)
        if (oBand->Kind() == BandKind::MenuBar) {
            oWriter.Heading("Menus");
            oWriter.BandEntries(*oBand, 1);
        }
    for (const auto& oBand : aBands)
        if (oBand->Kind() == BandKind::Toolbar) {
            oWriter.Heading("Toolbar " + oBand->Caption() + (oBand->Visible() ? "" : "  (hidden)"));
            oWriter.BandEntries(*oBand, 1);
        }
    constexpr std::string_view sContext = "Context.";
    for (const auto& oBand : aBands)
        if (oBand->Kind() == BandKind::Popup && EqualText(oBand->Name().substr(0, sContext.size()), sContext)) {
            oWriter.Heading("Context menu of " + oBand->Name().substr(sContext.size()));
            oWriter.BandEntries(*oBand, 1);
        }
}

void WriteExplorer(Writer& oWriter, const ModelHost& oHost) {
    const bool bVisible = oHost.Bar()->Bands()->Item("Explorer")->Visible();
    oWriter.Heading(std::string("Explorer") + (bVisible ? "" : "  (hidden)"));
    for (const auto& tvw : oHost.Trees()) {
        oWriter.Line(1, "[" + oHost.Tabs()->CaptionOf(tvw->Container()) + "]" +
                            (tvw->Container() == oHost.Tabs()->Tab() ? "" : "  (behind)"));
        oWriter.Nodes(tvw->GetNodes()->Roots(), 2);
    }
}

void WriteRecord(Writer& oWriter, const ModelHost& oHost) {
    const Record& oRecord = oHost.Recorded();
    if (!oRecord.aMessages.empty())
        oWriter.Heading("Messages");
    for (const auto& oMessage : oRecord.aMessages)
        oWriter.Line(1, oMessage.sTitle + ": " + oMessage.sText);
    if (!oRecord.aLog.empty())
        oWriter.Heading("Log");
    for (const auto& oEntry : oRecord.aLog) {
        std::string sLine = oEntry.sModule + "." + oEntry.sProcedure + ": " + std::to_string(oEntry.oFailure.Number) +
                            " " + oEntry.oFailure.Source + ": " + oEntry.oFailure.Description;
        if (!oEntry.sContext.empty())
            sLine += "  {" + oEntry.sContext + "}";
        if (oEntry.oFailure.Line > 0)
            sLine += "  line " + std::to_string(oEntry.oFailure.Line);
        oWriter.Line(1, sLine + (oEntry.bShown ? "  (shown)" : ""));
    }
    if (const auto& oFailure = oHost.FirstFailure()) {
        oWriter.Heading("Failure");
        oWriter.Line(1, std::to_string(oFailure->Number) + " " + oFailure->Source + ": " + oFailure->Description);
    }
}

} // namespace

std::string TextDocument(const ModelHost& oHost, const DocumentOptions& /*oOptions*/) {
    Writer oWriter;
    const Ref<Framework> oFramework = CorvaneMain::Framework();
    if (const auto oServiceManager = oFramework ? oFramework->ServiceManager() : nullptr) {
        oWriter.Heading("Services");
        for (const auto& oServiceDef : oServiceManager->ServiceDefs())
            oWriter.Line(1, oServiceDef->Name() + "  " + oServiceDef->ProgID() +
                                (oServiceDef->IsStartService() ? "  (start service)" : ""));
    }
    WriteBands(oWriter, oHost);
    WriteExplorer(oWriter, oHost);
    if (const auto oWindowManager = oFramework ? oFramework->WindowManager() : nullptr;
        oWindowManager && oWindowManager->Windows() && oWindowManager->Windows()->Count() > 0) {
        oWriter.Heading("Windows");
        for (const auto& oWindow : oWindowManager->Windows())
            oWriter.Line(1, oWindow->WindowDef()->Name() + "  " + oWindow->Caption() + "  key " + oWindow->Key());
    }
    if (const std::string sStatus = oHost.Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
        !sStatus.empty()) {
        oWriter.Heading("Status");
        oWriter.Line(1, sStatus);
    }
    WriteRecord(oWriter, oHost);
    return oWriter.Text();
}

} // namespace corvane::inspect
