// All definition files of an application as one model: what the library's records would hold, tied to the places where
// it is. It holds what is usable; what isn't has been reported and is left out or has its default.
#pragma once

#include "analysis/Format.h"
#include "analysis/Source.h"
#include "corvane/base/Variant.h"
#include "corvane/services/DefinitionEnums.h"

#include <deque>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace corvane::check {

// The findings of a check, in order of their discovery.
class Report {
public:
    // Text and cure together are kept within 240 characters: what is longer is cut in the middle.
    Finding& Add(Rule rule, Place place, std::string text, std::string cure, std::vector<Note> notes = {});
    // The one that has been added last.
    [[nodiscard]] Finding& Last() { return m_findings.back(); }
    [[nodiscard]] const std::vector<Finding>& Findings() const { return m_findings; }
    // In order of files and places, each only once; the report is empty then.
    [[nodiscard]] std::vector<Finding> TakeSorted();

private:
    std::vector<Finding> m_findings;
};

struct File {
    std::string path; // for messages
    std::string name;
    std::string bytes;
    const Element* root = nullptr; // nothing while the file can't be read as a definition
    bool active = false;           // the library would read its records
    bool isCopy = false;           // of another file, for which reason it has been left out

    [[nodiscard]] Place At(Spot spot) const { return {path, lines.PositionOf(bytes, spot)}; }

    mutable Lines lines;
};

struct Provider;

// An ActionItem, as ActionItemDef reads it.
struct Action {
    const Element* element;
    Provider* provider;
    std::string_view name;
    std::string_view procedure;
    std::size_t number; // among all actions of the model, from 0

    [[nodiscard]] bool PassesItself() const;
};

// A MenuItem, as MenuItemDef reads it.
struct Entry {
    const Element* element;
    Provider* provider;
    Action* action;
    MenuType type;
    Single positionOrder;
    std::string_view path;
    std::string_view key; // the identity of the entry in its bar: [Tool.][Path.]action name
    std::size_t number;   // among all entries of the model, from 0

    [[nodiscard]] bool IsTitle() const { return type == MenuType::fwMenuTitle; }
    [[nodiscard]] bool IsButton() const { return type == MenuType::fwToolbarItem; }
    [[nodiscard]] bool IsOfContextMenu() const {
        return type == MenuType::fwContextMenuItem || type == MenuType::fwContextMenuTitle;
    }
    // As it is written, with "#" or "&" before the mnemonic.
    [[nodiscard]] std::string_view Caption() const { return element->Value("Caption"); }
    [[nodiscard]] std::string_view ShortCutKey() const { return element->Value("ShortCutKey"); }
    // By which toolbars are sorted.
    [[nodiscard]] std::string PositionKey() const;
    [[nodiscard]] Place At(std::string_view attribute) const;
    // "the entry "File.Open"", for messages.
    [[nodiscard]] std::string Named() const;
};

enum class ProviderKind { Service, ExplorerItem, Page, PreferencePage };

// A service, explorer item or page: what has actions.
struct Provider {
    ProviderKind kind;
    const File* file;
    const Element* element;
    std::string name; // of a page its caption
    std::string progID;
    std::span<Action> actions;
    std::span<Entry> entries;

    [[nodiscard]] Place At(std::string_view attribute) const { return file->At(element->At(attribute)); }
    [[nodiscard]] Action* FindAction(std::string_view actionName);
    [[nodiscard]] std::string Named() const; // "the service "Data""
    // Whether commands of both can be in reach of a user at one time.
    [[nodiscard]] bool MayMeet(const Provider& other) const;
};

struct Window {
    const File* file;
    const Element* element;
    std::string name;
    std::vector<Provider*> pages;
};

struct Model {
    Arena memory;                             // of elements, attributes, actions, entries and texts
    std::vector<std::unique_ptr<File>> files; // in order of loading
    bool complete = true;                     // every file could be read
    std::deque<Provider> services;            // in order of loading, as all that follows
    std::deque<Provider> items;
    std::deque<Provider> pages;
    std::deque<Provider> preferencePages;
    std::deque<Window> windows;
    std::size_t actions = 0;
    std::size_t entries = 0;

    // Services, items and pages, as the menus are filled with them.
    [[nodiscard]] std::vector<Provider*> MenuProviders();
};

// Makes the model of the files, and reports what the records find in them: names, duplicates, references.
void BuildModel(Model& model, Report& report);

// The attribute as the library's records read it.
[[nodiscard]] bool BooleanOf(const Element& element, std::string_view attribute, bool isDefault);

// What to do about a name that isn't there: the nearest of the names, or otherwise.
[[nodiscard]] std::string WriteInstead(std::span<const std::string> names, std::string_view written,
                                       const std::string& otherwise);
// In quotation marks; what is too long to be read is cut in the middle.
[[nodiscard]] std::string Quoted(std::string_view text);
// The text, or its beginning and end with "…" between, in no more than that many characters.
[[nodiscard]] std::string CutInTheMiddle(std::string_view text, std::size_t most);

} // namespace corvane::check
