// Short forms for tests.
#pragma once

#include "forms/FormReader.h"

#include <memory>
#include <string>

namespace corvane::forms {

// A form with that content in a layout, as Designer writes it, each part in an item of its own line.
inline std::string Ui(const std::string& items, const std::string& behind = {}) {
    return "<ui version=\"4.0\">\n<class>Page</class>\n<widget class=\"QWidget\" name=\"Page\">\n"
           "<layout class=\"QFormLayout\">\n" +
           items + "</layout>\n</widget>\n" + behind + "</ui>\n";
}

inline std::string Has(const std::string& name, const std::string& type, const std::string& value) {
    return "<property name=\"" + name + "\"><" + type + ">" + value + "</" + type + "></property>";
}

// A widget as an item of a form, with a label in front when there is one.
inline std::string Item(int row, const std::string& className, const std::string& name, const std::string& content = {},
                        const std::string& label = {}) {
    const std::string at = "<item row=\"" + std::to_string(row) + "\" column=\"";
    std::string text;
    if (!label.empty())
        text = at + "0\"><widget class=\"QLabel\" name=\"l" + name + "\">" + Has("text", "string", label) +
               "</widget></item>";
    return text + at + "1\"><widget class=\"" + className + "\" name=\"" + name + "\">" + content +
           "</widget></item>\n";
}

inline std::shared_ptr<const FormDef> Read(const std::string& items) {
    return std::make_shared<FormDef>(ReadForm(Ui(items), "Forms/P.Page.ui"));
}

} // namespace corvane::forms
