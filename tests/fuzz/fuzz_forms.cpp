// A form of any bytes: read, shown, filled in with its own texts, and put back.
#include "forms/FormModel.h"
#include "forms/FormReader.h"

#include <cstdint>
#include <cstdlib>

using namespace corvane;
using namespace corvane::forms;

namespace {

// Takes everything.
class Anything final : public IFormData {
public:
    forms::Problem Write(std::size_t, const Variant&) override { return {}; }
    void Entered(std::size_t) override {}
    void Left(std::size_t) override {}
    void Press(std::size_t) override {}
    std::size_t RowCount(std::size_t) override { return 2; }
    Variant Cell(std::size_t, std::size_t, std::size_t) override { return "1"; }
    forms::Problem WriteCell(std::size_t, std::size_t, std::size_t, const Variant&) override { return {}; }
    int Depth(std::size_t, std::size_t) override { return 0; }
    void SelectRow(std::size_t, std::size_t) override {}
};

void Require(bool holds) {
    if (!holds)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto form =
        std::make_shared<FormDef>(ReadForm({reinterpret_cast<const char*>(data), size}, "Forms/P.Page.ui"));
    Require(form->readable || !form->problems.empty());
    if (!form->readable)
        return 0;
    (void)TextsOf(*form);
    Require(form->tabOrder.size() == form->fields.size());
    Anything anything;
    const Ref<FormModel> model = New<FormModel>(form);
    model->SetData(&anything);
    for (std::size_t i = 0; i < model->Count(); ++i) {
        const std::string text = model->Field(i).label.text + "1";
        if (model->Type(i, text).empty() && !model->ProblemOf(i))
            Require(model->IsChanged(i) || model->Text(i) == text || !IsFreeText(model->Field(i).kind));
        (void)model->EnterText(i, model->Field(i).choices.empty() ? "2" : model->Field(i).choices.front().value);
        (void)model->EnterCell(i, 1, 0, "3");
        (void)model->SelectRow(i, 1);
        (void)model->Press(i);
        model->Leave(i);
    }
    model->Revert();
    Require(!model->IsChanged());
    Require((model->FirstWrong() == none) == model->IsValid());
    model->SetData(nullptr);
    return 0;
}
