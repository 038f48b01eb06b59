// A section of a menu that a service fills and empties while the application runs: recent files, open documents, the
// instruments that are connected.
#pragma once

#include "corvane/menus/ActionItem.h"

#include <functional>
#include <string>
#include <vector>

namespace corvane {

class BandTools;
class MenuManager;

// A member of the service, made in its constructor and used from its Initialize on:
//
//     MenuSection m_oRecent{*this, "File.Recent", "Recent"};
//     ...
//     m_oRecent.Clear();
//     for (const std::string& sFile : aFiles)
//         m_oRecent.Add(MenuSection::Verbatim(sFile), [this, sFile] { Open(sFile); });
//
// Its entries are shown and can be chosen at once. They go with the section.
class __attribute__((visibility("default"))) MenuSection final {
public:
    // The owner outlives the section. sPath is the path of the menu as in definition files, where it has a title. sName
    // begins the names of the entries and is the only one of its kind in that menu. The entries stand behind the one of
    // the action sBehind in that menu, or at the menu's end; the first has a separator before it if bSeparated says so.
    MenuSection(Object& oOwner, std::string sPath, std::string sName, std::string sBehind = {},
                bool bSeparated = false);
    ~MenuSection();
    MenuSection(const MenuSection&) = delete;
    MenuSection& operator=(const MenuSection&) = delete;

    // Adds an entry behind the others; "&" stands before its mnemonic. fnChosen runs when a person chooses it, and may
    // fill the section again. By the action an entry is checked or disabled. Fails with 91 while there is no
    // application.
    Ref<ActionItem> Add(const std::string& sCaption, std::function<void()> fnChosen);
    // Takes all entries away.
    void Clear();
    [[nodiscard]] Long Count() const { return static_cast<Long>(m_aEntries.size()); }

    // A text that isn't the author's, such as a file's name, as a caption without a mnemonic.
    [[nodiscard]] static std::string Verbatim(const std::string& sText);

private:
    class Provider;

    [[nodiscard]] Ref<BandTools> Tools() const;
    [[nodiscard]] Long NextPosition(const BandTools& oTools) const;

    Ref<Provider> m_oProvider;
    std::string m_sPath;
    std::string m_sName;
    std::string m_sBehind;
    bool m_bSeparated;
    Ref<Tool> m_oSeparator;
    std::vector<Ref<Tool>> m_aEntries; // instances in the menu
};

} // namespace corvane
