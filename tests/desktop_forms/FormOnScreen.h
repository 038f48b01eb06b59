// A form on screen over data of the test's own, which write down what reaches them.
#pragma once

#include "desktop/forms/FormWidget.h"
#include "tests/forms/Ui.h"

#include <QApplication>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <map>

namespace corvane::desktop {

class TestData final : public forms::IFormData {
public:
    forms::Problem Write(std::size_t field, const Variant& value) override {
        ++writes;
        const std::string text = forms::WriteValue(value);
        const auto refused = refusals.find(text);
        last = {field, text};
        return refused == refusals.end() ? forms::Problem()
                                         : forms::Problem{forms::ProblemKind::Own, {refused->second}};
    }
    void Entered(std::size_t field) override {
        if (entered)
            entered(field);
    }
    void Left(std::size_t field) override {
        if (left)
            left(field);
    }
    void Press(std::size_t /*field*/) override { ++presses; }
    std::size_t RowCount(std::size_t /*field*/) override { return rows; }
    Variant Cell(std::size_t /*field*/, std::size_t row, std::size_t column) override {
        ++cellsAsked;
        const auto it = cells.find({row, column});
        return it == cells.end() ? Variant(std::to_string(row) + "." + std::to_string(column)) : it->second;
    }
    forms::Problem WriteCell(std::size_t /*field*/, std::size_t row, std::size_t column,
                             const Variant& value) override {
        cells[{row, column}] = value;
        return {};
    }
    int Depth(std::size_t /*field*/, std::size_t row) override { return static_cast<int>(row % 3); }
    void SelectRow(std::size_t /*field*/, std::size_t row) override { selected = row; }

    std::map<std::string, std::string> refusals; // by text, the reason
    std::function<void(std::size_t)> entered;
    std::function<void(std::size_t)> left;
    std::map<std::pair<std::size_t, std::size_t>, Variant> cells;
    std::pair<std::size_t, std::string> last;
    std::size_t rows = 0;
    std::size_t selected = forms::none;
    int writes = 0;
    int presses = 0;
    int cellsAsked = 0;
};

class FormOnScreen {
public:
    explicit FormOnScreen(const std::string& ui, bool resets = false) {
        auto def = std::make_shared<forms::FormDef>(forms::ReadForm(ui, "Forms/P.Page.ui"));
        EXPECT_TRUE(def->problems.empty()) << def->problems.front().text;
        model = New<forms::FormModel>(std::move(def));
        model->SetData(&data);
        FormHost host;
        host.resets = resets;
        host.act = [this](const FormAct& act, const FormHost::Work& work) {
            acts.push_back(act);
            work();
        };
        host.askFile = [](const forms::FieldDef& field, const std::string& path) { return path + field.filter; };
        host.fill = [](QWidget* parent) { return new QWidget(parent); };
        widget = std::make_unique<FormWidget>(model, std::move(host), nullptr);
        widget->resize(640, 480);
        widget->show();
        widget->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(widget.get()));
    }
    ~FormOnScreen() { model->SetData(nullptr); }

    [[nodiscard]] std::size_t Field(const char* name) const { return *model->Find(name); }
    [[nodiscard]] std::string Text(const char* name) const { return model->Text(Field(name)); }
    template <class W = QWidget>
    [[nodiscard]] W& On(const char* name) const {
        auto* found = widget->findChild<W*>(name);
        if (!found)
            throw std::runtime_error(std::string("no widget ") + name);
        return *found;
    }
    // What is said to be wrong, below all fields.
    [[nodiscard]] std::vector<std::string> Problems() const;

    TestData data;
    Ref<forms::FormModel> model;
    std::vector<FormAct> acts;
    std::unique_ptr<FormWidget> widget;
};

} // namespace corvane::desktop
