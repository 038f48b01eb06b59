// All definition files of an application as one model: what the library's records would hold, tied to the places where
// it stands. It holds what is usable; what isn't has been reported and is left out or has its default.
#pragma once

#include "analysis/Format.h"
#include "analysis/Source.h"
#include "corvane/base/Variant.h"
#include "corvane/services/DefinitionEnums.h"

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
    // In order of files and places, each only once; the report is empty then.
    [[nodiscard]] std::vector<Finding> TakeSorted();

private:
    std::vector<Finding> m_aFindings;
};

struct File {
    std::string sPath; // for messages
    std::string sName;
    std::string sBytes;
    const Element* pRoot = nullptr; // nothing while the file can't be read as a definition
    bool bActive = false;           // the library would read its records

    [[nodiscard]] Place At(Spot pSpot) const { return {sPath, oLines.PositionOf(sBytes, pSpot)}; }

    mutable Lines oLines;
};

struct Provider;

// An ActionItem, as ActionItemDef reads it.
struct Action {
    const Element* pElement;
    Provider* pProvider;
    std::string_view sName;
    std::string_view sProcedure;
    std::size_t iNumber; // among all actions of the model, from 0

    [[nodiscard]] bool PassesItself() const;
};

// A MenuItem, as MenuItemDef reads it.
struct Entry {
    const Element* pElement;
    Provider* pProvider;
    Action* pAction;
    MenuType eType;
    Single fPositionOrder;
    std::string_view sPath;
    std::string_view sKey; // the identity of the entry in its bar: [Tool.][Path.]action name
    std::size_t iNumber;   // among all entries of the model, from 0

    [[nodiscard]] bool IsTitle() const { return eType == MenuType::fwMenuTitle; }
    [[nodiscard]] bool IsButton() const { return eType == MenuType::fwToolbarItem; }
    [[nodiscard]] bool IsOfContextMenu() const {
        return eType == MenuType::fwContextMenuItem || eType == MenuType::fwContextMenuTitle;
    }
    // As it is written, with "#" or "&" before the mnemonic.
    [[nodiscard]] std::string_view Caption() const { return pElement->Value("Caption"); }
    [[nodiscard]] std::string_view ShortCutKey() const { return pElement->Value("ShortCutKey"); }
    // By which toolbars are sorted.
    [[nodiscard]] std::string PositionKey() const;
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
    std::vector<Action> aActions;
    std::vector<Entry> aEntries;

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
    // Of elements, attributes and texts: it goes as a whole, and is had in few pieces.
    std::pmr::monotonic_buffer_resource oMemory;
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
