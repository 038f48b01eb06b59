// What the Path of an entry means: the title that is meant when none has it, and what to write instead.
#pragma once

#include "analysis/MenuPlan.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::check {

class MenuPaths {
public:
    MenuPaths(const Model& model, const MenuPlan& plan) : m_model(model), m_plan(plan) {}

    // The key of the title that a Path seems to mean; nothing when that isn't certain.
    [[nodiscard]] std::optional<std::string> Meant(std::string_view path);
    // What to do about a Path that no title has, or that is empty.
    [[nodiscard]] std::string Cure(std::string_view path);
    // Whether a Path of any entry is that of the title, or is meant to be.
    [[nodiscard]] bool IsAskedFor(std::string_view title);

private:
    [[nodiscard]] const std::vector<std::string>& Titles();
    [[nodiscard]] std::optional<std::string> TitleOfCaption(const std::string& caption) const;
    void ReadAsked();

    const Model& m_model;
    const MenuPlan& m_plan;
    std::vector<std::string> m_titles; // keys; read with the first question, as the next
    std::set<std::string> m_asked;     // all that is written as a Path, folded, and the titles next to it
    bool m_titlesRead = false;
    bool m_askedRead = false;
};

} // namespace corvane::check
