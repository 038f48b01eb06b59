// All definition files of an application as one model: the library's records, tied to the places where they stand. It
// holds what is usable; what isn't has been reported and is left out or has its default.
#pragma once

#include "cli/check/Format.h"
#include "cli/check/Source.h"
#include "corvane/services/ExplorerItemDef.h"

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace corvane::check {

// The findings of a check, in order of their discovery.
class Report {
public:
    void Add(Rule eRule, Place oPlace, std::string sText, std::string sCure, std::vector<Note> aNotes = {}) {
        m_aFindings.push_back({eRule, std::move(oPlace), std::move(sText), std::move(sCure), std::move(aNotes)});
    }
    [[nodiscard]] const std::vector<Finding>& Findings() const { return m_aFindings; }
    // In order of files and places, each only once.
    [[nodiscard]] std::vector<Finding> Sorted() const;

private:
    std::vector<Finding> m_aFindings;
};

struct File {
    std::string sPath; // for messages
    std::string sName;
    std::string sBytes;
    std::deque<std::string> aTexts; // what ScanElements keeps
    std::optional<Element> oRoot;   // nothing while the file can't be read as a definition
    bool bActive = false;           // the library would read its records

    [[nodiscard]] Place At(Position oAt) const { return {sPath, oAt}; }
};

struct Provider;

struct Action {
    const Element* pElement;
    Provider* pProvider;
    Ref<ActionItemDef> oDef;
    std::size_t iNumber; // among all actions of the model, from 0
};

struct Entry {
    const Element* pElement;
    Provider* pProvider;
    Action* pAction;
    Ref<MenuItemDef> oDef; // with its action
    std::string sKey;      // MenuItemDef.Key
    std::size_t iNumber;   // among all entries of the model, from 0

    [[nodiscard]] Place At(std::string_view sAttribute) const;
    // "the entry "File.Open"", for messages.
    [[nodiscard]] std::string Named() const;
};

enum class ProviderKind { Service, ExplorerItem, Page, PreferencePage };

// A service, explorer item or page: what has actions.
struct Provider {
    ProviderKind eKind;
    const File* pFile;
    const Element* pElement;
    std::string sName; // of a page its caption
    std::string sProgID;
    std::deque<Action> aActions;
    std::deque<Entry> aEntries;

    [[nodiscard]] Place At(std::string_view sAttribute) const { return pFile->At(pElement->At(sAttribute)); }
    [[nodiscard]] Action* FindAction(std::string_view sAction);
    [[nodiscard]] std::string Named() const; // "the service "Data""
    // Whether commands of both can be in reach of a person at one time.
    [[nodiscard]] bool MayMeet(const Provider& oOther) const;
};

struct Window {
    const File* pFile;
    const Element* pElement;
    std::string sName;
    std::vector<Provider*> aPages;
};

struct Model {
    std::vector<std::unique_ptr<File>> aFiles; // in order of loading
    bool bComplete = true;                     // every file could be read
    std::deque<Provider> aServices;            // in order of loading, as all that follows
    std::deque<Provider> aItems;
    std::deque<Provider> aPages;
    std::deque<Provider> aPreferencePages;
    std::deque<Window> aWindows;
    std::size_t nActions = 0;
    std::size_t nEntries = 0;

    // Services, items and pages, as the menus are filled with them.
    [[nodiscard]] std::vector<Provider*> MenuProviders();
};

// Makes the model of the files, and reports what the records find in them: names, duplicates, references.
void BuildModel(Model& oModel, Report& oReport);

// The attribute as the library's records read it.
[[nodiscard]] bool BooleanOf(const Element& oElement, std::string_view sAttribute, bool bDefault);

// What to do about a name that isn't there: the nearest of the names, or sOtherwise.
[[nodiscard]] std::string WriteInstead(std::span<const std::string> aNames, std::string_view sWritten,
                                       const std::string& sOtherwise);
[[nodiscard]] std::string Quoted(std::string_view sText);

} // namespace corvane::check
