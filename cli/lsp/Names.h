// What names of an application mean: where they are defined, what may be written at a place, and what a new name
// changes.
#pragma once

#include "analysis/Application.h"
#include "analysis/MenuPlan.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane::lsp {

class Names {
public:
    // Fails with 76 when the folder isn't one of an application.
    Names(std::string application, const check::Buffers& buffers);

    // The value of an attribute that the place is in; without an attribute, the element's tag.
    struct Spot {
        const check::File* file = nullptr;
        const check::Element* element = nullptr;
        const check::Attribute* attribute = nullptr;
    };
    // Nothing for a file that can't be read, or a place outside of all tags.
    [[nodiscard]] std::optional<Spot> At(const std::string& path, std::size_t offset) const;

    // Where the name at the spot is defined.
    [[nodiscard]] std::vector<check::Place> Definitions(const Spot& spot) const;
    // What the spot is about, in the form of Markdown; empty when there is nothing to say.
    [[nodiscard]] std::string Description(const Spot& spot) const;
    // What may be written in the attribute of an element of that name. The spot is one of an earlier text and may be
    // empty.
    [[nodiscard]] std::vector<std::string> Values(std::string_view element, std::string_view attribute,
                                                  std::string_view type, const std::optional<Spot>& spot) const;
    // The edits that give the action, explorer item, service or window at the spot another name wherever it is written.
    // None where nothing is defined by the name at the spot.
    [[nodiscard]] std::vector<check::Edit> Renamed(const Spot& spot, const std::string& name) const;
    // Why that name can't be given to what is at the spot: it is no name, something else has it, or what is there isn't
    // an action or explorer item. Empty when it can.
    [[nodiscard]] std::string Conflict(const Spot& spot, const std::string& name) const;
    // The attribute whose value Renamed would change there.
    [[nodiscard]] static bool IsName(const Spot& spot);

private:
    [[nodiscard]] const check::Provider* ProviderOf(const Spot& spot) const;
    [[nodiscard]] const check::Provider* ItemNamed(std::string_view name) const;
    void RenameAction(const check::Provider& provider, std::string_view old, const std::string& name,
                      std::vector<check::Edit>& edits) const;

    std::string m_application;
    mutable check::Model m_model;
    check::Report m_report;
    std::unique_ptr<check::MenuPlan> m_plan;
};

} // namespace corvane::lsp
