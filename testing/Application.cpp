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

// Below the root only the known groups may be, but anything in them.
constexpr const char* schema = R"(<?xml version="1.0"?>
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

std::string LittleEndian(std::initializer_list<std::pair<unsigned, int>> numbers) {
    std::string bytes;
    for (const auto& [number, byteCount] : numbers)
        for (int i = 0; i < byteCount; ++i)
            bytes += static_cast<char>((number >> (8 * i)) & 0xFFu);
    return bytes;
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

std::string ArgumentText(const Variant& argument) {
    if (argument.IsObject()) {
        const auto item = ToObject(argument).TryAs<ActionItem>();
        return item ? item->Name() : "-";
    }
    return argument.IsEmpty() ? "-" : ToText(argument);
}

std::string CallText(const inspect::RecordedCall& call) {
    std::string text = call.object + " " + call.member;
    if (call.arguments.empty())
        return text;
    std::string arguments;
    for (const auto& argument : call.arguments)
        arguments += (&argument == &call.arguments.front() ? "" : ", ") + ArgumentText(argument);
    return text + "(" + arguments + ")";
}

void AddNodes(Lines& lines, const std::vector<Node*>& siblings, std::size_t depth) {
    for (const Node* node : siblings) {
        lines.push_back(std::string(depth, ' ') + node->Key());
        AddNodes(lines, node->Children(), depth + 1);
    }
}

} // namespace

std::string ServiceXml(const std::string& name, const std::string& content,
                       std::initializer_list<Attribute> attributes) {
    std::map<std::string, std::string> attributeValues{
        {"Name", name}, {"ProgID", name + ".Service"}, {"Active", "true"}};
    for (const auto& [attribute, value] : attributes)
        attributeValues[attribute] = value;
    std::string xml = "<Service";
    for (const auto& [attribute, value] : attributeValues)
        xml += " " + attribute + "=\"" + value + "\"";
    return xml + ">" + content + "</Service>";
}

Application::Application() {
    std::string templateText = (std::filesystem::temp_directory_path() / "corvane-XXXXXX").string();
    if (!::mkdtemp(templateText.data()))
        throw std::runtime_error("no temporary folder");
    m_folder = templateText;
    AddFile("Services/Service.xdr", schema);
    AddFile("Images/GenericExplorerItem.ico", Ico());
    AddFile("Images/open.bmp", Bmp());
    AddDefinition("!Shell.xml",
                  ServiceXml("Shell",
                             R"(<ActionItems><ActionItem Name="Navigation" Action="ViewNavigation" Enabled="false"
                                 PassActionItemParam="true"/></ActionItems>)",
                             {{"ProgID", "Corvane.Framework"}}));
}

Application::Application(std::string folder) : m_folder(std::move(folder)), m_isOwn(false) {
    if (!std::filesystem::is_directory(m_folder))
        Fail(FailureNumber::PathNotFound, "There is no application folder \"" + m_folder + "\"");
}

Application::~Application() {
    m_host.reset();
    std::error_code error;
    if (m_isOwn)
        std::filesystem::remove_all(m_folder, error);
}

Application& Application::AddFile(const std::string& pathText, std::string_view bytes) {
    CheckIsOwn();
    const std::filesystem::path path = std::filesystem::path(m_folder) / pathText;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
    return *this;
}

void Application::CheckIsOwn() const {
    if (!m_isOwn)
        Fail(FailureNumber::InvalidProcedureCall, "The application folder \"" + m_folder + "\" isn't the test's own");
}

Application& Application::RemoveFile(const std::string& path) {
    CheckIsOwn();
    std::filesystem::remove_all(std::filesystem::path(m_folder) / path);
    return *this;
}

Application& Application::AddDefinition(const std::string& file, const std::string& xml) {
    return AddFile("Services/" + file, xml);
}

Application& Application::AddService(const std::string& name, const std::string& content,
                                     std::initializer_list<Attribute> attributes) {
    return AddDefinition(name + ".xml", ServiceXml(name, content, attributes));
}

Application& Application::SetStandIns(const std::string& json) {
    return AddFile("standins.json", json);
}

void Application::Load() {
    m_callsTaken = m_logTaken = m_unmetTaken = 0;
    m_host = std::make_unique<inspect::ModelHost>(inspect::HostOptions{
        .applicationFolder = m_folder, .standIns = m_isOwn, .xml = nullptr, .oneThread = m_oneThread});
}

Long Application::Start() {
    Load();
    return m_host->Start() ? 0 : m_host->FirstFailure()->Number;
}

void Application::Stop() {
    m_host.reset();
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

Ref<Tool> Application::MasterTool(const std::string& name) const {
    return m_host->Bar()->Tools()->Item(name);
}

void Application::Take(const std::string& stepsText) {
    std::istringstream steps(stepsText);
    inspect::TakeAll(*m_host, inspect::ReadSteps(steps, "steps"));
}

Long Application::Click(const std::string& tool) const {
    try {
        m_host->Bar()->Click(MasterTool(tool));
        return 0;
    } catch (const Failure& failure) {
        return failure.Number;
    }
}

Lines Application::TakeCalls() {
    Lines lines;
    const auto& calls = m_host->Recorded().calls;
    for (; m_callsTaken < calls.size(); ++m_callsTaken)
        lines.push_back(CallText(calls[m_callsTaken]));
    return lines;
}

Lines Application::TakeLog() {
    Lines lines;
    const auto& log = m_host->Recorded().log;
    for (; m_logTaken < log.size(); ++m_logTaken)
        lines.push_back(log[m_logTaken].module + "." + log[m_logTaken].procedure + " " +
                        std::to_string(log[m_logTaken].failure.Number));
    return lines;
}

Lines Application::TakeUnmet() {
    const auto& unmet = m_host->Recorded().unmet;
    Lines lines(unmet.begin() + static_cast<std::ptrdiff_t>(m_unmetTaken), unmet.end());
    m_unmetTaken = unmet.size();
    return lines;
}

std::string Application::Text() const {
    return inspect::TextDocument(*m_host, {});
}

std::string Application::Status() const {
    return m_host->Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
}

std::string Application::BandText(const std::string& band) const {
    return BandAsText(*m_host->Bar()->Bands()->Item(band));
}

std::string Application::BandNames(const std::string& band) const {
    std::string names;
    for (const auto& instance : m_host->Bar()->Bands()->Item(band)->Tools()->All())
        names += (names.empty() ? "" : " ") + (instance->Name() == "Separator" ? "|" : instance->Name());
    return names;
}

Lines Application::OpenWindows() const {
    Lines names;
    for (const auto& window : Windows()->Windows())
        names.push_back(window->WindowDef()->Name());
    return names;
}

std::size_t Application::TabOf(const std::string& caption) const {
    const auto trees = m_host->Trees();
    for (std::size_t tab = 0; tab < trees.size(); ++tab)
        if (EqualText(trees[tab]->Tag(), caption))
            return tab;
    Fail(FailureNumber::InvalidProcedureCall, "There is no tab \"" + caption + "\"");
}

Lines Application::Nodes(std::size_t tab) const {
    Lines lines;
    AddNodes(lines, m_host->Trees().at(tab)->GetNodes()->Roots(), 0);
    return lines;
}

} // namespace corvane::testing
