#include "corvane/platform/controls/ActiveBar.h"

#include <algorithm>

namespace corvane {

namespace {

[[noreturn]] void FailPosition(Long lPosition, Long lCount) {
    Fail(FailureNumber::Subscript,
         "There is no position " + std::to_string(lPosition) + " among " + std::to_string(lCount) + " tools");
}

} // namespace

Tool::Tool(ActiveBar* pBar, Long lToolId, std::string sName)
    : m_pBar(pBar), m_sName(std::move(sName)), m_lToolId(lToolId) {}

Tool::Tool(Band* pBand, Ref<Tool> oMaster) : m_pBar(pBand->Owner()), m_pBand(pBand), m_oMaster(std::move(oMaster)) {
    m_oMaster->m_aInstances.push_back(this);
    CopyFromMaster();
}

Tool::~Tool() {
    if (m_oMaster)
        std::erase(m_oMaster->m_aInstances, this);
}

void Tool::CopyFromMaster() {
    const Tool& oMaster = Master();
    m_sCaption = oMaster.m_sCaption;
    m_sToolTip = oMaster.m_sToolTip;
    m_sDescription = oMaster.m_sDescription;
    m_sDropDownBand = oMaster.m_sDropDownBand;
    RaiseChanged(BarChange::What::ToolTexts);
}

void Tool::Detach(bool bFromBar) {
    m_pBand = nullptr;
    if (!bFromBar)
        return;
    m_pBar = nullptr;
    if (m_oMaster)
        m_oMaster->m_pBar = nullptr; // the master of a host's tool stands in no other list
}

void Tool::RaiseChanged(BarChange::What eWhat) {
    if (m_pBar)
        m_pBar->Changed.Raise({eWhat, m_pBand, this});
}

void Tool::SetCaption(std::string sCaption) {
    if (m_sCaption == sCaption)
        return;
    m_sCaption = std::move(sCaption);
    RaiseChanged(BarChange::What::ToolTexts);
}

void Tool::SetToolTip(std::string sToolTip) {
    if (m_sToolTip == sToolTip)
        return;
    m_sToolTip = std::move(sToolTip);
    RaiseChanged(BarChange::What::ToolTexts);
}

void Tool::SetDescription(std::string sDescription) {
    if (m_sDescription == sDescription)
        return;
    m_sDescription = std::move(sDescription);
    RaiseChanged(BarChange::What::ToolTexts);
}

void Tool::SetDropDownBand(std::string sBand) {
    if (m_sDropDownBand == sBand)
        return;
    m_sDropDownBand = std::move(sBand);
    RaiseChanged(BarChange::What::ToolTexts);
}

void Tool::SetIsDefaultItem(bool bDefault) {
    if (m_bIsDefaultItem == bDefault)
        return;
    m_bIsDefaultItem = bDefault;
    RaiseChanged(BarChange::What::ToolTexts);
}

void Tool::SetPicture(Long lState, Ref<Picture> oPicture) {
    m_aPictures.emplace_back(lState, std::move(oPicture));
    RaiseChanged(BarChange::What::ToolTexts);
}

Ref<Picture> Tool::PictureOf(Long lState) const {
    for (auto it = m_aPictures.rbegin(); it != m_aPictures.rend(); ++it)
        if (it->first == lState)
            return it->second;
    return nullptr;
}

void Tool::SetChecked(bool bChecked) {
    Tool& oMaster = Master();
    if (oMaster.m_bChecked == bChecked)
        return;
    oMaster.m_bChecked = bChecked;
    oMaster.RaiseChanged(BarChange::What::ToolState);
}

void Tool::SetEnabled(bool bEnabled) {
    Tool& oMaster = Master();
    if (oMaster.m_bEnabled == bEnabled)
        return;
    oMaster.m_bEnabled = bEnabled;
    oMaster.RaiseChanged(BarChange::What::ToolState);
}

void Tool::SetVisible(bool bVisible) {
    Tool& oMaster = Master();
    if (oMaster.m_bVisible == bVisible)
        return;
    oMaster.m_bVisible = bVisible;
    oMaster.RaiseChanged(BarChange::What::ToolState);
}

void Tool::SetCategory(std::string sCategory) {
    Master().m_sCategory = std::move(sCategory);
}

void Tool::SetShortCuts(std::vector<Ref<ShortCut>> aShortCuts) {
    Tool& oMaster = Master();
    oMaster.m_aShortCuts = std::move(aShortCuts);
    oMaster.RaiseChanged(BarChange::What::ShortCuts);
}

void Tool::SetTagVariant(Ref<Object> oTag) {
    Master().m_oTagVariant = std::move(oTag);
}

void Tool::SetHostedControl(Ref<Object> oControl) {
    Tool& oMaster = Master();
    oMaster.m_oHostedControl = std::move(oControl);
    oMaster.RaiseChanged(BarChange::What::ToolState);
}

void Tool::SetHWnd(Long hWnd) {
    Tool& oMaster = Master();
    oMaster.m_lHWnd = hWnd;
    oMaster.RaiseChanged(BarChange::What::ToolState);
}

Ref<Tool> ToolCollection::Item(std::string_view sName) const {
    Ref<Tool> oTool = Find(sName);
    if (!oTool)
        Fail(FailureNumber::InvalidProcedureCall, "There is no tool \"" + std::string(sName) + "\"");
    return oTool;
}

Ref<Tool> ToolCollection::Find(std::string_view sName) const {
    const auto it = m_mapNames.find(sName);
    return it == m_mapNames.end() ? Ref<Tool>() : Ref<Tool>(it->second.pTool);
}

void ToolCollection::InsertTool(std::size_t iPosition, Ref<Tool> oTool) {
    const auto [it, bNew] = m_mapNames.try_emplace(oTool->Name(), First{oTool.Get(), 0});
    ++it->second.nTools;
    if (!bNew && iPosition < m_aTools.size()) {
        const auto itFirst = std::find(m_aTools.begin(), m_aTools.end(), Ref<Tool>(it->second.pTool));
        if (static_cast<std::size_t>(itFirst - m_aTools.begin()) >= iPosition)
            it->second.pTool = oTool.Get();
    }
    m_aTools.insert(m_aTools.begin() + static_cast<std::ptrdiff_t>(iPosition), std::move(oTool));
}

Ref<Tool> ToolCollection::RemoveTool(std::size_t iPosition) {
    const auto itTool = m_aTools.begin() + static_cast<std::ptrdiff_t>(iPosition);
    Ref<Tool> oTool = *itTool;
    m_aTools.erase(itTool);
    const auto it = m_mapNames.find(oTool->Name());
    if (--it->second.nTools == 0) {
        m_mapNames.erase(it);
    } else if (it->second.pTool == oTool.Get()) {
        const auto itNext = std::find_if(m_aTools.begin(), m_aTools.end(), [&](const Ref<Tool>& oOther) {
            return EqualText(oOther->Name(), oTool->Name());
        });
        it->second.pTool = itNext->Get();
    }
    return oTool;
}

MasterTools::~MasterTools() {
    Detach();
}

void MasterTools::Detach() {
    m_pBar = nullptr;
    for (const auto& oTool : m_aTools)
        oTool->Detach(true);
}

Ref<Tool> MasterTools::Add(Long lToolId, std::string_view sName) {
    auto oTool = New<Tool>(m_pBar, lToolId, std::string(sName));
    m_mapIds.try_emplace(lToolId, oTool.Get());
    InsertTool(m_aTools.size(), oTool);
    return oTool;
}

Ref<Tool> MasterTools::Item(Long lToolId) const {
    const auto it = m_mapIds.find(lToolId);
    if (it == m_mapIds.end())
        Fail(FailureNumber::InvalidProcedureCall, "There is no tool " + std::to_string(lToolId));
    return Ref<Tool>(it->second);
}

BandTools::~BandTools() {
    Detach();
}

void BandTools::Detach() {
    m_pBand = nullptr;
    for (const auto& oTool : m_aTools)
        oTool->Detach(true);
}

Band& BandTools::OwningBand() const {
    if (!m_pBand)
        FailObjectNotSet();
    return *m_pBand;
}

Ref<Tool> BandTools::Item(Long lPosition) const {
    if (lPosition < 0 || lPosition >= Count())
        FailPosition(lPosition, Count());
    return m_aTools[static_cast<std::size_t>(lPosition)];
}

Ref<Tool> BandTools::Insert(Long lPosition, const Ref<Tool>& oTool) {
    if (lPosition < -1 || lPosition > Count())
        FailPosition(lPosition, Count());
    Band& oBand = OwningBand();
    Tool& oMaster = oTool->Master();
    auto oInstance = New<Tool>(&oBand, Ref<Tool>(&oMaster));
    InsertTool(static_cast<std::size_t>(lPosition == -1 ? Count() : lPosition), oInstance);
    oBand.RaiseChanged(BarChange::What::BandTools);
    return oInstance;
}

void BandTools::Remove(Long lPosition) {
    if (lPosition < 0 || lPosition >= Count())
        FailPosition(lPosition, Count());
    Band& oBand = OwningBand();
    RemoveTool(static_cast<std::size_t>(lPosition))->Detach(false);
    oBand.RaiseChanged(BarChange::What::BandTools);
}

Ref<Tool> BandTools::AddHostTool(std::string_view sName) {
    auto oMaster = New<Tool>(OwningBand().Owner(), 0, std::string(sName));
    return Insert(-1, oMaster);
}

const std::string Band::m_sNoText;

Band::Band(ActiveBar* pBar, std::string sName)
    : m_pBar(pBar), m_sName(std::move(sName)), m_oTools(New<BandTools>(this)) {}

Band::~Band() {
    m_oTools->Detach();
}

void Band::Detach() {
    m_pBar = nullptr;
    for (const auto& oTool : m_oTools->All())
        oTool->Detach(true);
}

void Band::RaiseChanged(BarChange::What eWhat) {
    if (m_pBar)
        m_pBar->Changed.Raise({eWhat, this, nullptr});
}

void Band::SetCaption(std::string sCaption) {
    m_sCaption = std::move(sCaption);
    RaiseChanged(BarChange::What::BandLook);
}

void Band::SetBandKind(BandKind eKind) {
    m_eKind = eKind;
    RaiseChanged(BarChange::What::BandLook);
}

void Band::SetVisible(bool bVisible) {
    const bool bChanged = Visible() != bVisible;
    m_bVisible = bVisible;
    if (bChanged)
        RaiseChanged(BarChange::What::BandLook);
}

void Band::ShowPopup() {
    if (m_pBar)
        m_pBar->PopupRequested.Raise(Ref<Band>(this));
}

void Band::Refresh() {
    if (m_pBar)
        m_pBar->PaintRequested.Raise(Ref<Band>(this));
}

BandCollection::~BandCollection() {
    Detach();
}

void BandCollection::Detach() {
    m_pBar = nullptr;
    for (const auto& oBand : m_aBands)
        oBand->Detach();
}

Ref<Band> BandCollection::Add(std::string_view sName) {
    auto oBand = New<Band>(m_pBar, std::string(sName));
    m_aBands.push_back(oBand);
    m_mapNames.try_emplace(std::string(sName), oBand.Get());
    if (m_pBar)
        m_pBar->Changed.Raise({BarChange::What::BandAdded, oBand.Get(), nullptr});
    return oBand;
}

Ref<Band> BandCollection::Item(std::string_view sName) const {
    Ref<Band> oBand = Find(sName);
    if (!oBand)
        Fail(FailureNumber::InvalidProcedureCall, "There is no band \"" + std::string(sName) + "\"");
    return oBand;
}

Ref<Band> BandCollection::Find(std::string_view sName) const {
    const auto it = m_mapNames.find(sName);
    return it == m_mapNames.end() ? Ref<Band>() : Ref<Band>(it->second);
}

Ref<Band> BandCollection::Item(Long lPosition) const {
    if (lPosition < 0 || lPosition >= Count())
        FailPosition(lPosition, Count());
    return m_aBands[static_cast<std::size_t>(lPosition)];
}

ActiveBar::ActiveBar() : m_oTools(New<MasterTools>(this)), m_oBands(New<BandCollection>(this)) {}

// Bands and tools may live on in other hands, but as parts of no control.
ActiveBar::~ActiveBar() {
    m_oBands->Detach();
    m_oTools->Detach();
}

void ActiveBar::RecalcLayout() {
    Changed.Raise({BarChange::What::Layout});
}

void ActiveBar::RedrawBars() {
    Changed.Raise({BarChange::What::Redraw});
}

void ActiveBar::ApplyToolToInstances(const Ref<Tool>& oTool) {
    for (Tool* pInstance : oTool->Instances())
        pInstance->CopyFromMaster();
}

void ActiveBar::SetStatusTextShown(bool bShown) {
    m_bStatusTextShown = bShown;
    RecalcLayout();
}

void ActiveBar::Click(const Ref<Tool>& oTool) {
    if (oTool->Visible() && oTool->Enabled())
        ToolClick.Raise(oTool);
}

bool ActiveBar::Open(const Ref<Band>& oBand) {
    bool bCancel = false;
    BandOpen.Raise(oBand, bCancel);
    return !bCancel;
}

void ActiveBar::Close(const Ref<Band>& oBand) {
    if (!oBand->Visible())
        return;
    oBand->SetVisible(false);
    BandClose.Raise(oBand);
}

Ref<ActiveBar> NewHostActiveBar() {
    auto oActiveBar = New<ActiveBar>();
    const auto oStatusBar = oActiveBar->Bands()->Add("StatusBar");
    oStatusBar->Tools()->AddHostTool("Status");
    oStatusBar->Tools()->AddHostTool("ctlProgressBar");
    oActiveBar->Bands()->Add("Explorer")->Tools()->AddHostTool("ExplorerPanel");
    // The library's own identifiers begin at 4.
    (void)oActiveBar->Tools()->Add(1, "Separator");
    (void)oActiveBar->Tools()->Add(2, "WindowList");
    return oActiveBar;
}

} // namespace corvane
