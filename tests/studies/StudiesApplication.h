// Studies on the control models, driven as a user would.
#pragma once

#include "Csv.h"
#include "Store.h"
#include "Workspace.h"
#include "corvane/author/Host.h"
#include "corvane/base/Automation.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "headless/ModelHost.h"
#include "headless/Steps.h"
#include "jobs/Manager.h"
#include "tests/support/TemporaryFolder.h"

#include <array>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

using namespace corvane;
using corvane::inspect::ModelHost;

inline void AppendTree(std::string& text, const Node& node) {
    text += node.Text();
    if (node.Children().empty())
        return;
    text += "(";
    for (const Node* child : node.Children()) {
        if (child != node.Children().front())
            text += ", ";
        AppendTree(text, *child);
    }
    text += ")";
}

class StudiesApplication : public testing::Test {
protected:
    StudiesApplication() { ::setenv("XDG_DATA_HOME", m_folder.Path().c_str(), 1); }

    void Start() {
        m_host = std::make_unique<ModelHost>(inspect::HostOptions{STUDIES_APP, false, nullptr});
        EXPECT_TRUE(m_host->Start());
        EXPECT_TRUE(m_host->Recorded().log.empty());
    }
    // A study with the penguins and a summary, in the file that the application will open.
    static void Prepare() {
        studies::Store store(studies::Store::DefaultPath());
        studies::AnalysisSettings settings;
        settings.groupColumn = "species";
        const studies::Id dataSet =
            store.ImportDataSet(store.CreateStudy("Penguins"), "penguins.csv", STUDIES_DATA "/penguins.csv",
                                studies::ReadCsvFile(STUDIES_DATA "/penguins.csv").table);
        store.AddAnalysis(dataSet, settings.Title("penguins.csv"), settings);
    }
    void Import(const std::string& file) {
        m_host->Do([&] { CallByName(FindService("Studies"), "ImportFile", std::string(STUDIES_DATA "/") + file); });
    }
    // So large that reading and writing it are jobs.
    std::string LargeFile() const {
        std::string path = m_folder.Path("big.csv");
        std::ofstream file(path);
        file << "a";
        for (int i = 0; i < 19; ++i)
            file << ",b" << i;
        for (int i = 0; i < 27000; ++i)
            file << "\n" << i << ",1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19";
        return path;
    }
    void Restart() {
        m_host->Exit();
        m_host.reset();
        Start();
    }

    void Take(const std::string& steps) {
        std::istringstream lines(steps);
        inspect::TakeAll(*m_host, inspect::ReadSteps(lines, "steps"));
    }
    void Click(const std::string& tool) {
        m_host->Do([&] { m_host->Bar()->Click(m_host->Bar()->Tools()->Item(tool)); });
    }
    // The first node of that text in the tree that is shown.
    void Choose(const std::string& text) {
        const Ref<Node> node = Find(text);
        ASSERT_TRUE(node) << text;
        m_host->Do([&] { m_host->ActiveTree()->ClickNode(node); });
    }
    void Open(const std::string& text) {
        Choose(text);
        m_host->Do([&] { m_host->ActiveTree()->DblClick.Raise(); });
    }
    // What the explorer's active item says of a name.
    [[nodiscard]] std::string NameProblem(const std::string& name) {
        std::string problem;
        m_host->Do([&] {
            const Ref<Object> active = ToObject(CallByName(FindService("Studies"), "ActiveItem"));
            problem = ToText(CallByName(active, "NameProblem", name));
        });
        return problem;
    }
    // What is to be answered when Restore asks.
    static std::string RestoreChoice(const std::string& name, const std::string& kind) {
        studies::Store store(studies::Store::DefaultPath());
        for (const studies::Deleted& item : store.DeletedItems()) {
            if (item.name != name)
                continue;
            const auto time = static_cast<std::time_t>(item.time);
            std::array<char, 32> text{};
            (void)std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", std::localtime(&time));
            return "“" + name + "”, " + kind + " deleted on " + text.data();
        }
        return {};
    }
    void Type(const std::string& name) {
        m_host->Do([&] { m_host->ActiveTree()->CommitLabelEdit(name); });
    }

    [[nodiscard]] Ref<Node> Find(const std::string& text) const {
        std::vector<Node*> nodes = m_host->ActiveTree()->GetNodes()->Roots();
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            if (nodes[i]->Text() == text)
                return Ref<Node>(nodes[i]);
            nodes.insert(nodes.end(), nodes[i]->Children().begin(), nodes[i]->Children().end());
        }
        return nullptr;
    }
    [[nodiscard]] std::string Selected() const {
        const Ref<Node> node = m_host->ActiveTree()->SelectedItem();
        return node ? node->Text() : "";
    }
    [[nodiscard]] std::string Tree() const {
        std::string text;
        for (const Node* root : m_host->ActiveTree()->GetNodes()->Roots())
            AppendTree(text, *root);
        return text;
    }
    [[nodiscard]] std::string Status() const {
        return m_host->Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
    }
    [[nodiscard]] bool IsOffered(const std::string& toolName) const {
        const Ref<Tool> tool = m_host->Bar()->Tools()->Item(toolName);
        return tool->Visible() && tool->Enabled();
    }
    [[nodiscard]] std::string Entries(const std::string& band) const {
        std::string text;
        for (const Ref<Tool>& tool : m_host->Bar()->Bands()->Item(band)->Tools()->All())
            text += (text.empty() ? "" : "|") + (tool->Name() == "Separator" ? "-" : tool->Caption()) +
                    (tool->IsDefaultItem() ? "*" : "");
        return text;
    }
    [[nodiscard]] std::string LastMessage() const {
        const auto& messages = m_host->Recorded().messages;
        return messages.empty() ? "" : messages.back().title + "\n" + messages.back().text;
    }
    [[nodiscard]] std::string Failures() const {
        return m_host->FirstFailure() ? m_host->FirstFailure()->Description : "";
    }

    corvane::test::TemporaryFolder m_folder;
    std::unique_ptr<ModelHost> m_host;
};
