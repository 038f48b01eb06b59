#include "testing/Application.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/platform/controls/BarText.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "headless/Document.h"
#include "headless/Steps.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

namespace corvane::testing {

namespace {

// Below the root only the known groups may stand, but anything in them.
constexpr const char* sSchema = R"(<?xml version="1.0"?>
<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">
 <xs:complexType name="Group">
  <xs:sequence><xs:any minOccurs="0" maxOccurs="unbounded" processContents="skip"/></xs:sequence>
  <xs:anyAttribute processContents="skip"/>
 </xs:complexType>
 <xs:element name="Service">
  <xs:complexType>
   <xs:choice minOccurs="0" maxOccurs="unbounded">
    <xs:element name="ActionItems" type="Group"/><xs:element name="Menus" type="Group"/>
    <xs:element name="ExplorerItems" type="Group"/><xs:element name="Windows" type="Group"/>
    <xs:element name="Preferences" type="Group"/>
   </xs:choice>
   <xs:anyAttribute processContents="skip"/>
  </xs:complexType>
 </xs:element>
</xs:schema>)";

std::string LittleEndian(std::initializer_list<std::pair<unsigned, int>> aNumbers) {
    std::string sBytes;
    for (const auto& [nNumber, nBytes] : aNumbers)
        for (int i = 0; i < nBytes; ++i)
            sBytes += static_cast<char>((nNumber >> (8 * i)) & 0xFFu);
    return sBytes;
}

// One red pixel.
std::string Bmp() {
    return "BM" + LittleEndian({{58, 4},
                                {0, 4},
                                {54, 4}, // the file
                                {40, 4},
                                {1, 4},
                                {1, 4},
                                {1, 2},
                                {24, 2},
                                {0, 4},
                                {4, 4},
                                {0, 4},
                                {0, 4},
                                {0, 4},
                                {0, 4},
                                {0x00FF0000u, 4}});
}

std::string Ico() {
    return LittleEndian({{0, 2},  {1, 2},  {1, 2}, // one picture
                         {1, 1},  {1, 1},  {0, 1}, {0, 1}, {1, 2}, {24, 2},          {48, 4},
                         {22, 4}, {40, 4}, {1, 4}, {2, 4}, {1, 2}, {24, 2},          {0, 4},
                         {8, 4},  {0, 4},  {0, 4}, {0, 4}, {0, 4}, {0x00FF0000u, 4}, {0, 4}});
}

std::string ArgumentText(const Variant& vArgument) {
    if (vArgument.IsObject()) {
        const auto oItem = ToObject(vArgument).TryAs<ActionItem>();
        return oItem ? oItem->Name() : "-";
    }
    return vArgument.IsEmpty() ? "-" : ToText(vArgument);
}

std::string CallText(const inspect::RecordedCall& oCall) {
    std::string sText = oCall.sObject + " " + oCall.sMember;
    if (oCall.aArguments.empty())
        return sText;
    std::string sArguments;
    for (const auto& vArgument : oCall.aArguments)
        sArguments += (&vArgument == &oCall.aArguments.front() ? "" : ", ") + ArgumentText(vArgument);
    return sText + "(" + sArguments + ")";
}

void AddNodes(Lines& aLines, const std::vector<Node*>& aSiblings, std::size_t nDepth) {
    for (const Node* pNode : aSiblings) {
        aLines.push_back(std::string(nDepth, ' ') + pNode->Key());
        AddNodes(aLines, pNode->Children(), nDepth + 1);
    }
}

} // namespace

std::string ServiceXml(const std::string& sName, const std::string& sContent,
                       std::initializer_list<Attribute> aAttributes) {
    std::map<std::string, std::string> mapAttributes{
        {"Name", sName}, {"ProgID", sName + ".Service"}, {"Active", "true"}};
    for (const auto& [sAttribute, sValue] : aAttributes)
        mapAttributes[sAttribute] = sValue;
    std::string sXml = "<Service";
    for (const auto& [sAttribute, sValue] : mapAttributes)
        sXml += " " + sAttribute + "=\"" + sValue + "\"";
    return sXml + ">" + sContent + "</Service>";
}

Application::Application() {
    std::string sTemplate = (std::filesystem::temp_directory_path() / "corvane-XXXXXX").string();
    if (!::mkdtemp(sTemplate.data()))
        throw std::runtime_error("no temporary folder");
    m_sFolder = sTemplate;
    AddFile("Services/Service.xdr", sSchema);
    AddFile("Images/GenericExplorerItem.ico", Ico());
    AddFile("Images/open.bmp", Bmp());
    AddDefinition("!Shell.xml",
                  ServiceXml("Shell",
                             R"(<ActionItems><ActionItem Name="Navigation" Action="ViewNavigation" Enabled="false"
                                 PassActionItemParam="true"/></ActionItems>)",
                             {{"ProgID", "Corvane.Framework"}}));
}

Application::Application(std::string sFolder) : m_sFolder(std::move(sFolder)), m_bIsOwn(false) {
    if (!std::filesystem::is_directory(m_sFolder))
        Fail(FailureNumber::PathNotFound, "There is no application folder \"" + m_sFolder + "\"");
}

Application::~Application() {
    m_pHost.reset();
    std::error_code oError;
    if (m_bIsOwn)
        std::filesystem::remove_all(m_sFolder, oError);
}

Application& Application::AddFile(const std::string& sPath, std::string_view sBytes) {
    CheckIsOwn();
    const std::filesystem::path oPath = std::filesystem::path(m_sFolder) / sPath;
    std::filesystem::create_directories(oPath.parent_path());
    std::ofstream(oPath, std::ios::binary) << sBytes;
    return *this;
}

void Application::CheckIsOwn() const {
    if (!m_bIsOwn)
        Fail(FailureNumber::InvalidProcedureCall, "The application folder \"" + m_sFolder + "\" isn't the test's own");
}

Application& Application::RemoveFile(const std::string& sPath) {
    CheckIsOwn();
    std::filesystem::remove_all(std::filesystem::path(m_sFolder) / sPath);
    return *this;
}

Application& Application::AddDefinition(const std::string& sFile, const std::string& sXml) {
    return AddFile("Services/" + sFile, sXml);
}

Application& Application::AddService(const std::string& sName, const std::string& sContent,
                                     std::initializer_list<Attribute> aAttributes) {
    return AddDefinition(sName + ".xml", ServiceXml(sName, sContent, aAttributes));
}

Application& Application::SetStandIns(const std::string& sJson) {
    return AddFile("standins.json", sJson);
}

void Application::Load() {
    m_nCallsTaken = m_nLogTaken = m_nUnmetTaken = 0;
    m_pHost = std::make_unique<inspect::ModelHost>(
        inspect::HostOptions{.sApplicationFolder = m_sFolder, .bStandIns = m_bIsOwn, .oXml = nullptr});
}

Long Application::Start() {
    Load();
    return m_pHost->Start() ? 0 : m_pHost->FirstFailure()->Number;
}

void Application::Stop() {
    m_pHost.reset();
}

Ref<ServiceManager> Application::Services() const {
    return CorvaneMain::Framework()->ServiceManager();
}

Ref<MenuManager> Application::Menus() const {
    return CorvaneMain::Framework()->NavigationManager()->MenuManager();
}

Ref<ExplorerManager> Application::Explorer() const {
    return CorvaneMain::Framework()->NavigationManager()->ExplorerManager();
}

Ref<WindowManager> Application::Windows() const {
    return CorvaneMain::Framework()->WindowManager();
}

Ref<Tool> Application::MasterTool(const std::string& sName) const {
    return m_pHost->Bar()->Tools()->Item(sName);
}

void Application::Take(const std::string& sSteps) {
    std::istringstream oSteps(sSteps);
    inspect::TakeAll(*m_pHost, inspect::ReadSteps(oSteps, "steps"));
}

Long Application::Click(const std::string& sTool) const {
    try {
        m_pHost->Bar()->Click(MasterTool(sTool));
        return 0;
    } catch (const Failure& oFailure) {
        return oFailure.Number;
    }
}

Lines Application::TakeCalls() {
    Lines aLines;
    const auto& aCalls = m_pHost->Recorded().aCalls;
    for (; m_nCallsTaken < aCalls.size(); ++m_nCallsTaken)
        aLines.push_back(CallText(aCalls[m_nCallsTaken]));
    return aLines;
}

Lines Application::TakeLog() {
    Lines aLines;
    const auto& aLog = m_pHost->Recorded().aLog;
    for (; m_nLogTaken < aLog.size(); ++m_nLogTaken)
        aLines.push_back(aLog[m_nLogTaken].sModule + "." + aLog[m_nLogTaken].sProcedure + " " +
                         std::to_string(aLog[m_nLogTaken].oFailure.Number));
    return aLines;
}

Lines Application::TakeUnmet() {
    const auto& aUnmet = m_pHost->Recorded().aUnmet;
    Lines aLines(aUnmet.begin() + static_cast<std::ptrdiff_t>(m_nUnmetTaken), aUnmet.end());
    m_nUnmetTaken = aUnmet.size();
    return aLines;
}

std::string Application::Text() const {
    return inspect::TextDocument(*m_pHost, {});
}

std::string Application::Status() const {
    return m_pHost->Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
}

std::string Application::BandText(const std::string& sBand) const {
    return BandAsText(*m_pHost->Bar()->Bands()->Item(sBand));
}

std::string Application::BandNames(const std::string& sBand) const {
    std::string sNames;
    for (const auto& oInstance : m_pHost->Bar()->Bands()->Item(sBand)->Tools()->All())
        sNames += (sNames.empty() ? "" : " ") + (oInstance->Name() == "Separator" ? "|" : oInstance->Name());
    return sNames;
}

Lines Application::OpenWindows() const {
    Lines aNames;
    for (const auto& oWindow : Windows()->Windows())
        aNames.push_back(oWindow->WindowDef()->Name());
    return aNames;
}

std::size_t Application::TabOf(const std::string& sCaption) const {
    const auto aTrees = m_pHost->Trees();
    for (std::size_t iTab = 0; iTab < aTrees.size(); ++iTab)
        if (EqualText(aTrees[iTab]->Tag(), sCaption))
            return iTab;
    Fail(FailureNumber::InvalidProcedureCall, "There is no tab \"" + sCaption + "\"");
}

Lines Application::Nodes(std::size_t iTab) const {
    Lines aLines;
    AddNodes(aLines, m_pHost->Trees().at(iTab)->GetNodes()->Roots(), 0);
    return aLines;
}

} // namespace corvane::testing
