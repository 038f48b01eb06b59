#include "corvane/services/WindowDef.h"

#include "corvane/core/Internals.h"
#include "corvane/platform/Handlers.h"

namespace corvane {

using CorvaneMain::AtLineOf;
using CorvaneMain::XMLAttributeValue;

namespace {

WindowTypeConstants WindowTypeOf(const std::string& sWord) {
    if (EqualText(sWord, "Window"))
        return WindowTypeConstants::cvWindow;
    if (EqualText(sWord, "Wizard"))
        return WindowTypeConstants::cvWizard;
    if (EqualText(sWord, "Dialog"))
        return WindowTypeConstants::cvDialog;
    if (EqualText(sWord, "SaveDialog"))
        return WindowTypeConstants::cvSaveDialog;
    Fail(FailureNumber::ObjectErrorBase, "Invalid WindowType: " + sWord, "Setting WindowType");
}

WindowStateConstants WindowStateOf(const std::string& sWord) {
    if (EqualText(sWord, "Normal"))
        return WindowStateConstants::cvNormal;
    if (EqualText(sWord, "Minimized"))
        return WindowStateConstants::cvMinimized;
    if (EqualText(sWord, "Maximized"))
        return WindowStateConstants::cvMaximized;
    Fail(FailureNumber::ObjectErrorBase, "Invalid WindowState: " + sWord, "Setting WindowState");
}

} // namespace

void WindowDef::Initialize(const Ref<IXmlNode>& oxmlDefinition) try {
    m_sName = ToText(XMLAttributeValue(oxmlDefinition, "Name"));
    m_lPageWidth = ToLong(XMLAttributeValue(oxmlDefinition, "PageWidth", 0));
    m_lPageHeight = ToLong(XMLAttributeValue(oxmlDefinition, "PageHeight", 0));
    m_lDefPageWidth = ToLong(XMLAttributeValue(oxmlDefinition, "DefPageWidth", 0));
    m_lDefPageHeight = ToLong(XMLAttributeValue(oxmlDefinition, "DefPageHeight", 0));
    if (m_lDefPageWidth == 0)
        m_lDefPageWidth = m_lPageWidth;
    if (m_lDefPageHeight == 0)
        m_lDefPageHeight = m_lPageHeight;
    m_eWindowType = WindowTypeOf(ToText(XMLAttributeValue(oxmlDefinition, "Type")));
    m_sCaption = ToText(XMLAttributeValue(oxmlDefinition, "Caption"));
    m_bIsMDIChild = ToBoolean(XMLAttributeValue(oxmlDefinition, "IsMDIChild", true));
    m_eWindowState = WindowStateOf(ToText(XMLAttributeValue(oxmlDefinition, "State")));
    m_bIsModal = ToBoolean(XMLAttributeValue(oxmlDefinition, "IsModal", false));
    m_bIsNewBusinessContext = ToBoolean(XMLAttributeValue(oxmlDefinition, "IsNewBusinessContext", false));
    m_bIsApplyCommandShown = ToBoolean(XMLAttributeValue(oxmlDefinition, "IsApplyCommandShown", true));
    m_colPageDefs = New<KeyedCollection<Ref<PageDef>>>();
    for (const auto& oNode : oxmlDefinition->SelectNodes("Page")) {
        auto oPageDef = New<PageDef>();
        oPageDef->Initialize(oNode);
        AtLineOf(oNode, [&] { m_colPageDefs->Add(oPageDef, oPageDef->Key()); });
    }
} catch (...) {
    ReraiseAt("WindowDef", "Initialize", CorvaneMain::LineOf(oxmlDefinition));
}

} // namespace corvane
