#include "corvane/platform/controls/ActiveBar.h"

#include <algorithm>

namespace corvane {

namespace {

[[noreturn]] void FailPosition(Long lPosition, Long lCount) {
    Fail(FailureNumber::Subscript,
         "There is no position " + std::to_string(lPosition) + " among " + std::to_string(lCount) + " tools");
}

} // namespace

const Tool::RareParts Tool::m_oNothingRare;

Tool::Tool(ActiveBar* pBar, Long lToolId, SharedText sName)
    : m_oOwner{.pBar = pBar}, m_sName(std::move(sName)), m_lToolId(lToolId) {}

Tool::Tool(Band* pBand, Ref<Tool> oMaster) : m_oOwner{.pBand = pBand}, m_oMaster(std::move(oMaster)) {
    m_pNext = m_oMaster.Get();
    m_pPrevious = m_pNext->m_pPrevious;
    m_pPrevious->m_pNext = this;
    m_pNext->m_pPrevious = this;
    CopyFromMaster();
}

Tool::~Tool() {
    m_pPrevious->m_pNext = m_pNext;
    m_pNext->m_pPrevious = m_pPrevious;
}

Tool::InstanceRange Tool::Instances() const {
    return InstanceRange(const_cast<Tool*>(&Master()));
}

// Texts mostly stand on the instances alone: what the master doesn't have is left as it is.
void Tool::CopyFromMaster() {
    const Tool& oMaster = Master();
    const auto Take = [](SharedText& sOwn, const SharedText& sOfMaster) {
        if (!sOfMaster.IsEmpty())
            sOwn = sOfMaster;
    };
    Take(m_sCaption, oMaster.m_sCaption);
    Take(m_sDescription, oMaster.m_sDescription);
    if (oMaster.m_pRare) {
        RareParts& oRare = RareToWrite();
        Take(oRare.sToolTip, oMaster.m_pRare->sToolTip);
        Take(oRare.sDropDownBand, oMaster.m_pRare->sDropDownBand);
        for (const auto& [lState, oPicture] : oMaster.m_pRare->aPictures)
            if (PictureOf(lState) != oMaster.PictureOf(lState))
                oRare.aPictures.emplace_back(lState, oMaster.PictureOf(lState));
    }
    RaiseChanged(BarChange::What::ToolTexts);
}

void Tool::Detach(bool bFromBar) {
    if (IsInstance())
        m_oOwner.pBand = nullptr;
    if (bFromBar)
        Master().m_oOwner.pBar = nullptr; // the master of a host's tool is in no list that would say so
}

ActiveBar* Tool::Bar() const {
    const Band* pBand = OwningBand();
    return pBand ? pBand->Owner() : Master().m_oOwner.pBar;
}

void Tool::RaiseChanged(BarChange::What eWhat) {
    CheckThread();
    if (ActiveBar* pBar = Bar())
        pBar->Changed.Raise({eWhat, OwningBand(), this});
}

void Tool::SetText(SharedText& sOld, SharedText sNew) {
    if (sOld == sNew)
        return;
    sOld = std::move(sNew);
    RaiseChanged(BarChange::What::ToolTexts);
}

void Tool::SetRareText(SharedText RareParts::*pText, SharedText sNew) {
    if (Rare().*pText == sNew)
        return;
    SetText(RareToWrite().*pText, std::move(sNew));
}

void Tool::SetState(bool Tool::*pState, bool bNew) {
    Tool& oMaster = Master();
    if (oMaster.*pState == bNew)
        return;
    oMaster.*pState = bNew;
    oMaster.RaiseChanged(BarChange::What::ToolState);
}

Tool::RareParts& Tool::RareToWrite() {
    if (!m_pRare)
        m_pRare = std::make_unique<RareParts>();
    return *m_pRare;
}

void Tool::SetIsDefaultItem(bool bDefault) {
    if (m_bIsDefaultItem == bDefault)
        return;
    m_bIsDefaultItem = bDefault;
    RaiseChanged(BarChange::What::ToolTexts);
}

void Tool::SetPicture(Long lState, Ref<Picture> oPicture) {
    RareToWrite().aPictures.emplace_back(lState, std::move(oPicture));
    RaiseChanged(BarChange::What::ToolTexts);
}

Ref<Picture> Tool::PictureOf(Long lState) const {
    const auto& aPictures = Pictures();
    for (auto it = aPictures.rbegin(); it != aPictures.rend(); ++it)
        if (it->first == lState)
            return it->second;
    return nullptr;
}

void Tool::SetCategory(SharedText sCategory) {
    Master().RareToWrite().sCategory = std::move(sCategory);
}

void Tool::SetShortCuts(std::vector<Ref<ShortCut>> aShortCuts) {
    Tool& oMaster = Master();
    oMaster.RareToWrite().aShortCuts = std::move(aShortCuts);
    oMaster.RaiseChanged(BarChange::What::ShortCuts);
}

void Tool::SetHostedControl(Ref<Object> oControl) {
    Tool& oMaster = Master();
    oMaster.RareToWrite().oHostedControl = std::move(oControl);
    oMaster.RaiseChanged(BarChange::What::ToolState);
}

void Tool::SetHWnd(Long hWnd) {
    Tool& oMaster = Master();
    oMaster.RareToWrite().lHWnd = hWnd;
    oMaster.RaiseChanged(BarChange::What::ToolState);
}

Ref<Tool> ToolCollection::Item(std::string_view sName) const {
    Ref<Tool> oTool = Find(sName);
    if (!oTool)
        Fail(FailureNumber::InvalidProcedureCall, "There is no tool \"" + std::string(sName) + "\"");
    return oTool;
}

namespace {

std::string_view ToolName(const Tool* pTool) {
    return pTool->Name();
}

} // namespace

Ref<Tool> ToolCollection::Find(std::string_view sName) const {
    if (!m_pNames) {
        const auto itTool = std::find_if(m_aTools.begin(), m_aTools.end(),
                                         [&](const auto& oTool) { return EqualText(oTool->Name(), sName); });
        return itTool == m_aTools.end() ? Ref<Tool>() : *itTool;
    }
    Tool* const* ppTool = m_pNames->Find(sName, ToolName);
    return ppTool ? Ref<Tool>(*ppTool) : Ref<Tool>();
}

void ToolCollection::InsertTool(std::size_t iPosition, Ref<Tool> oTool) {
    constexpr std::size_t nFew = 16;
    if (!m_pNames && m_aTools.size() == nFew) {
        m_pNames = std::make_unique<TextIndex<Tool*>>();
        for (std::size_t i = 0; i < m_aTools.size(); ++i)
            IndexTool(i, m_aTools[i].Get());
    }
    if (m_pNames)
        IndexTool(iPosition, oTool.Get());
    m_aTools.insert(m_aTools.begin() + static_cast<std::ptrdiff_t>(iPosition), std::move(oTool));
}

// Of a tool that will be there.
void ToolCollection::IndexTool(std::size_t iPosition, Tool* pTool) {
    Tool** ppFirst = m_pNames->AddOrFind(pTool->Name(), pTool, ToolName);
    if (!ppFirst)
        return;
    (*ppFirst)->m_bHasNamesakes = true;
    const auto itEnd = m_aTools.begin() + static_cast<std::ptrdiff_t>(iPosition);
    if (iPosition == m_aTools.size() || std::find(m_aTools.begin(), itEnd, Ref<Tool>(*ppFirst)) != itEnd)
        return;
    pTool->m_bHasNamesakes = true;
    *ppFirst = pTool;
}

Ref<Tool> ToolCollection::RemoveTool(std::size_t iPosition) {
    const auto itTool = m_aTools.begin() + static_cast<std::ptrdiff_t>(iPosition);
    Ref<Tool> oTool = *itTool;
    const auto itNext = m_aTools.erase(itTool);
    if (!m_pNames)
        return oTool;
    Tool** ppFirst = m_pNames->Find(oTool->Name(), ToolName);
    if (*ppFirst != oTool.Get())
        return oTool;
    // All others of that name are behind the first.
    const auto itOther =
        !oTool->m_bHasNamesakes ? m_aTools.end() : std::find_if(itNext, m_aTools.end(), [&](const auto& oOther) {
            return EqualText(oOther->Name(), oTool->Name());
        });
    if (itOther == m_aTools.end()) {
        m_pNames->Remove(oTool->Name(), ToolName);
    } else {
        (*itOther)->m_bHasNamesakes = true;
        *ppFirst = itOther->Get();
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

Ref<Tool> MasterTools::Add(Long lToolId, SharedText sName) {
    auto oTool = New<Tool>(m_pBar, lToolId, std::move(sName));
    m_bIdsAscend = m_bIdsAscend && (m_aTools.empty() || m_aTools.back()->ToolId() < lToolId);
    InsertTool(m_aTools.size(), oTool);
    return oTool;
}

Ref<Tool> MasterTools::Item(Long lToolId) const {
    const auto it = m_bIdsAscend
                        ? std::lower_bound(m_aTools.begin(), m_aTools.end(), lToolId,
                                           [](const Ref<Tool>& oTool, Long lId) { return oTool->ToolId() < lId; })
                        : std::find_if(m_aTools.begin(), m_aTools.end(),
                                       [&](const Ref<Tool>& oTool) { return oTool->ToolId() == lToolId; });
    if (it == m_aTools.end() || (*it)->ToolId() != lToolId)
        Fail(FailureNumber::InvalidProcedureCall, "There is no tool " + std::to_string(lToolId));
    return *it;
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

Band::Band(ActiveBar* pBar, SharedText sName)
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
    CheckThread();
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

namespace {

std::string_view BandName(const Band* pBand) {
    return pBand->Name();
}

} // namespace

Ref<Band> BandCollection::Add(SharedText sName) {
    auto oBand = New<Band>(m_pBar, std::move(sName));
    m_aBands.push_back(oBand);
    (void)m_oNames.AddOrFind(oBand->Name(), oBand.Get(), BandName);
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
    Band* const* ppBand = m_oNames.Find(sName, BandName);
    return ppBand ? Ref<Band>(*ppBand) : Ref<Band>();
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
    CheckThread();
    Changed.Raise({BarChange::What::Layout});
}

void ActiveBar::RedrawBars() {
    CheckThread();
    Changed.Raise({BarChange::What::Redraw});
}

void ActiveBar::ApplyToolToInstances(const Ref<Tool>& oTool) {
    std::vector<Ref<Tool>> aInstances; // held: a renderer that hears of one may take away another
    for (Tool* pInstance : oTool->Instances())
        aInstances.emplace_back(pInstance);
    for (const auto& oInstance : aInstances)
        oInstance->CopyFromMaster();
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
    const Ref<ActiveBar> oSelf(this);
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
