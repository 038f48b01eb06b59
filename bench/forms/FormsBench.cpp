// Measures the first paint of a page of 50 fields that is a form, from its file on, against the same page made by hand
// in the same run; and how reading, the setting of fields through the model and the opening of pages grow with their
// number. Times are those of the processor. Reading is measured in memory that the process has already: the first time
// the system has to give it out, which may take longer than the reading itself.

#include "bench/Times.h"
#include "desktop/forms/FormWidget.h"
#include "forms/FormReader.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace corvane::bench {
namespace {

constexpr int fields = 50;
constexpr int rounds = 40;
constexpr const char* classes[] = {"QLineEdit", "QSpinBox", "QComboBox", "QLineEdit", "QDoubleSpinBox"};

std::string Property(const char* name, const char* type, const std::string& value) {
    return std::string("<property name=\"") + name + "\"><" + type + ">" + value + "</" + type + "></property>";
}

std::string FormOf(int count) {
    std::string items;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        const std::string className = classes[i % 5];
        const std::string choices = className == "QComboBox"
                                        ? "<item>" + Property("text", "string", "red") + "</item><item>" +
                                              Property("text", "string", "green") + "</item>"
                                        : "";
        items += "<item row=\"" + number + "\" column=\"0\"><widget class=\"QLabel\" name=\"l" + number + "\">" +
                 Property("text", "string", "Field " + number + ":") + "</widget></item><item row=\"" + number +
                 "\" column=\"1\"><widget class=\"" + className + "\" name=\"F" + number + "\">" +
                 Property("toolTip", "string", "What field " + number + " is for") + choices + "</widget></item>";
    }
    return "<ui version=\"4.0\"><class>Page</class><widget class=\"QWidget\" name=\"Page\"><layout "
           "class=\"QFormLayout\">" +
           items + "</layout></widget></ui>";
}

class NoData final : public forms::IFormData {
public:
    forms::Problem Write(std::size_t, const Variant&) override { return {}; }
    void Entered(std::size_t) override {}
    void Left(std::size_t) override {}
    void Press(std::size_t) override {}
    std::size_t RowCount(std::size_t) override { return 0; }
    Variant Cell(std::size_t, std::size_t, std::size_t) override { return {}; }
    forms::Problem WriteCell(std::size_t, std::size_t, std::size_t, const Variant&) override { return {}; }
    int Depth(std::size_t, std::size_t) override { return 0; }
    void SelectRow(std::size_t, std::size_t) override {}
};

Ref<forms::FormModel> ModelOf(const std::string& text, NoData& data) {
    auto model = New<forms::FormModel>(std::make_shared<forms::FormDef>(forms::ReadForm(text, "Page.ui")));
    model->SetData(&data);
    return model;
}

// With what the form has: labels with their fields, tooltips, and a function that hears of each change.
QWidget* PageByHand() {
    auto* page = new QWidget;
    auto* form = new QFormLayout(page);
    const auto heard = [page] { page->setWindowModified(true); };
    for (int i = 0; i < fields; ++i) {
        QWidget* field = nullptr;
        switch (i % 5) {
        case 1: {
            auto* box = new QSpinBox;
            QObject::connect(box, &QSpinBox::valueChanged, page, heard);
            field = box;
            break;
        }
        case 2: {
            auto* box = new QComboBox;
            box->addItems({"red", "green"});
            QObject::connect(box, &QComboBox::currentIndexChanged, page, heard);
            field = box;
            break;
        }
        case 4: {
            auto* box = new QDoubleSpinBox;
            QObject::connect(box, &QDoubleSpinBox::valueChanged, page, heard);
            field = box;
            break;
        }
        default: {
            auto* line = new QLineEdit;
            QObject::connect(line, &QLineEdit::textChanged, page, heard);
            field = line;
        }
        }
        field->setToolTip(QString("What field %1 is for").arg(i));
        form->addRow(QString("Field %1:").arg(i), field);
    }
    return page;
}

double ShowAndDelete(const std::function<QWidget*()>& make) {
    QWidget* page = nullptr;
    const double time = ProcessorMilliseconds([&] {
        page = make();
        page->resize(500, 1600);
        page->show();
        QApplication::processEvents();
    });
    delete page;
    return time;
}

void Run() {
    NoData data;
    const std::string text = FormOf(fields);
    std::vector<double> form;
    std::vector<double> hand;
    for (int i = 0; i < rounds; ++i) {
        hand.push_back(ShowAndDelete(PageByHand));
        form.push_back(ShowAndDelete([&] { return new desktop::FormWidget(ModelOf(text, data), {}, nullptr); }));
    }
    std::printf("first paint of %d fields: form %.2f ms, by hand %.2f ms, ratio %.2f\n", fields, Median(form),
                Median(hand), Median(form) / Median(hand));
    for (const int count : {1000, 2000, 4000}) {
        const std::string many = FormOf(count);
        const double first = ProcessorMilliseconds([&] { (void)ModelOf(many, data); });
        std::vector<double> times;
        for (int i = 0; i < rounds; ++i)
            times.push_back(ProcessorMilliseconds([&] { (void)ModelOf(many, data); }));
        std::printf("reading %d fields into a model: %.2f ms, %.1f us each; the first time %.1f us each\n", count,
                    Median(times), Median(times) * 1000 / count, first * 1000 / count);
    }
    for (const int count : {250, 500, 1000}) {
        const auto model = ModelOf(FormOf(count), data);
        const desktop::FormWidget widget(model, {}, nullptr);
        const double time = ProcessorMilliseconds([&] {
            for (std::size_t i = 0; i < model->Count(); ++i)
                (void)model->Type(i, "1");
        });
        std::printf("setting %4d fields on screen: %.2f ms, %.1f us each\n", count, time, time * 1000 / count);
    }
    for (const int count : {1, 5, 10}) {
        std::vector<double> times;
        for (int i = 0; i < rounds / 4; ++i)
            times.push_back(ShowAndDelete([&] {
                auto* window = new QWidget;
                auto* layout = new QVBoxLayout(window);
                for (int page = 0; page < count; ++page)
                    layout->addWidget(new desktop::FormWidget(ModelOf(text, data), {}, nullptr));
                return window;
            }));
        std::printf("opening %2d such pages at once: %.2f ms\n", count, Median(times));
    }
}

} // namespace
} // namespace corvane::bench

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    corvane::bench::Run();
    return 0;
}
