// What a definition file says of one window and its pages.
#pragma once

#include "corvane/services/DefinitionEnums.h"
#include "corvane/services/PageDef.h"

#include <string>

namespace corvane {

class __attribute__((visibility("default"))) WindowDef final : public virtual Object {
public:
    // Reads a Window element. Fails with ObjectErrorBase for an unknown Type or State, with 13 for a value that
    // doesn't convert, with 457 for two pages of one key.
    void Initialize(const Ref<IXmlNode>& oxmlDefinition);

    [[nodiscard]] const std::string& Name() const { return m_sName; }
    // In twips: the smallest page, and the page at opening.
    [[nodiscard]] Long PageWidth() const { return m_lPageWidth; }
    [[nodiscard]] Long PageHeight() const { return m_lPageHeight; }
    [[nodiscard]] Long DefPageWidth() const { return m_lDefPageWidth; }
    [[nodiscard]] Long DefPageHeight() const { return m_lDefPageHeight; }
    [[nodiscard]] WindowTypeConstants WindowType() const { return m_eWindowType; }
    [[nodiscard]] const std::string& Caption() const { return m_sCaption; }
    [[nodiscard]] bool IsMDIChild() const { return m_bIsMDIChild; }
    [[nodiscard]] WindowStateConstants WindowState() const { return m_eWindowState; }
    [[nodiscard]] bool IsModal() const { return m_bIsModal; }
    [[nodiscard]] bool IsNewBusinessContext() const { return m_bIsNewBusinessContext; }
    [[nodiscard]] bool IsApplyCommandShown() const { return m_bIsApplyCommandShown; }
    // In the order of the file, by PageDef.Key; nothing until Initialize.
    [[nodiscard]] const Ref<KeyedCollection<Ref<PageDef>>>& PageDefs() const { return m_colPageDefs; }

    // The service that brings the window, and its file, as "Services/Birds.xml"; empty where they aren't known.
    [[nodiscard]] const std::string& Service() const { return m_sService; }
    [[nodiscard]] const std::string& File() const { return m_sFile; }
    void SetOrigin(std::string sService, std::string sFile) {
        m_sService = std::move(sService);
        m_sFile = std::move(sFile);
    }

    std::string_view TypeName() const override { return "WindowDef"; }

private:
    std::string m_sName;
    std::string m_sService;
    std::string m_sFile;
    Long m_lPageWidth = 0;
    Long m_lPageHeight = 0;
    Long m_lDefPageWidth = 0;
    Long m_lDefPageHeight = 0;
    WindowTypeConstants m_eWindowType = WindowTypeConstants::cvWindow;
    std::string m_sCaption;
    bool m_bIsMDIChild = false;
    WindowStateConstants m_eWindowState = WindowStateConstants::cvNormal;
    bool m_bIsModal = false;
    bool m_bIsNewBusinessContext = false;
    bool m_bIsApplyCommandShown = false;
    Ref<KeyedCollection<Ref<PageDef>>> m_colPageDefs;
};

} // namespace corvane
