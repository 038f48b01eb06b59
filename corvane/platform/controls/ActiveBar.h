// The model of the menu and toolbar control: bands (menus, toolbars, pop-ups), the master list of tools, and the
// instances of tools in bands. It holds state and draws nothing; a renderer subscribes to Changed.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/base/KeyedCollection.h"
#include "corvane/base/Ref.h"
#include "corvane/base/SharedText.h"
#include "corvane/base/TextIndex.h"
#include "corvane/base/Variant.h"
#include "corvane/platform/IPictureLoader.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

class ActiveBar;
class Band;
class Tool;

enum class BandKind : Long { Toolbar = 0, MenuBar = 1, Popup = 2 };

// The change that a renderer is notified of. It says where something changed, not the previous state.
struct BarChange {
    enum class What {
        BandAdded,
        BandLook,  // caption, kind, visibility of pBand
        BandTools, // instances inserted into or removed from pBand
        ToolState, // checked, enabled, visible of the master pTool
        ShortCuts, // of the master pTool
        ToolTexts, // caption, tips, drop-down band, default mark, pictures of pTool, master or instance
        Layout,    // RecalcLayout
        Redraw,    // RedrawBars
    };
    What eWhat;
    Band* pBand = nullptr;
    Tool* pTool = nullptr;
};

// A keyboard shortcut, made empty and given the text of a definition.
class __attribute__((visibility("default"))) ShortCut final : public virtual Object {
public:
    [[nodiscard]] const std::string& Value() const { return m_sValue; }
    void SetValue(std::string sValue) { m_sValue = std::move(sValue); }
    std::string_view TypeName() const override { return "ShortCut"; }

private:
    std::string m_sValue;
};

// A command in the master list, or an instance of one in a band. An instance has texts, drop-down band, pictures and
// default mark of its own; all else it shares with its master. There are tens of thousands of them in a large
// application, two per entry, so rarely used members are stored separately.
class __attribute__((visibility("default"))) Tool final : public virtual Object {
public:
    enum PictureState : Long { Normal = 0, Pressed = 1, Disabled = 3 };

    Tool(ActiveBar* pBar, Long lToolId, SharedText sName); // a master
    Tool(Band* pBand, Ref<Tool> oMaster);                  // an instance
    ~Tool() override;

    [[nodiscard]] Long ToolId() const { return Master().m_lToolId; }
    [[nodiscard]] const std::string& Name() const { return Master().m_sName; }
    // This tool itself for a master.
    [[nodiscard]] const Tool& Master() const { return m_oMaster ? *m_oMaster.Get() : *this; }
    [[nodiscard]] Tool& Master() { return m_oMaster ? *m_oMaster.Get() : *this; }
    [[nodiscard]] bool IsInstance() const { return static_cast<bool>(m_oMaster); }
    // The band of an instance; a null pointer for a master and for an instance that has been removed.
    [[nodiscard]] Band* OwningBand() const { return IsInstance() ? m_oOwner.pBand : nullptr; }

    // A master's instances, in order of insertion.
    class InstanceRange;
    [[nodiscard]] InstanceRange Instances() const;

    [[nodiscard]] const std::string& Caption() const { return m_sCaption; }
    void SetCaption(SharedText sCaption) { SetText(m_sCaption, std::move(sCaption)); }
    [[nodiscard]] const std::string& ToolTip() const { return Rare().sToolTip; }
    void SetToolTip(SharedText sToolTip) { SetRareText(&RareParts::sToolTip, std::move(sToolTip)); }
    [[nodiscard]] const std::string& Description() const { return m_sDescription; }
    void SetDescription(SharedText sDescription) { SetText(m_sDescription, std::move(sDescription)); }
    // The name of the band that opens from the tool; empty for none.
    [[nodiscard]] const std::string& DropDownBand() const { return Rare().sDropDownBand; }
    void SetDropDownBand(SharedText sBand) { SetRareText(&RareParts::sDropDownBand, std::move(sBand)); }
    [[nodiscard]] bool IsDefaultItem() const { return m_bIsDefaultItem; }
    void SetIsDefaultItem(bool bDefault);
    // Nothing removes the picture of that state.
    void SetPicture(Long lState, Ref<Picture> oPicture);
    [[nodiscard]] Ref<Picture> PictureOf(Long lState) const;
    // All calls of SetPicture, in order.
    [[nodiscard]] const std::vector<std::pair<Long, Ref<Picture>>>& Pictures() const { return Rare().aPictures; }

    [[nodiscard]] bool Checked() const { return Master().m_bChecked; }
    void SetChecked(bool bChecked) { SetState(&Tool::m_bChecked, bChecked); }
    [[nodiscard]] bool Enabled() const { return Master().m_bEnabled; }
    void SetEnabled(bool bEnabled) { SetState(&Tool::m_bEnabled, bEnabled); }
    [[nodiscard]] bool Visible() const { return Master().m_bVisible; }
    void SetVisible(bool bVisible) { SetState(&Tool::m_bVisible, bVisible); }
    [[nodiscard]] const std::string& Category() const { return Master().Rare().sCategory; }
    void SetCategory(SharedText sCategory);
    [[nodiscard]] const std::vector<Ref<ShortCut>>& ShortCuts() const { return Master().Rare().aShortCuts; }
    void SetShortCuts(std::vector<Ref<ShortCut>> aShortCuts);
    // A free slot for an object.
    [[nodiscard]] const Ref<Object>& TagVariant() const { return Master().m_oTagVariant; }
    void SetTagVariant(Ref<Object> oTag) { Master().m_oTagVariant = std::move(oTag); }
    // The control or form that is shown inside the tool.
    [[nodiscard]] const Ref<Object>& HostedControl() const { return Master().Rare().oHostedControl; }
    void SetHostedControl(Ref<Object> oControl);
    // The handle of the window that is shown inside the tool; 0 for none.
    [[nodiscard]] Long HWnd() const { return Master().Rare().lHWnd; }
    void SetHWnd(Long hWnd);

    void CopyFromMaster();      // texts, drop-down band and pictures that the master has
    void Detach(bool bFromBar); // by the band or the control that goes away

    std::string_view TypeName() const override { return "Tool"; }

private:
    struct RareParts {
        SharedText sToolTip;
        SharedText sDropDownBand;
        SharedText sCategory;
        std::vector<std::pair<Long, Ref<Picture>>> aPictures;
        std::vector<Ref<ShortCut>> aShortCuts;
        Ref<Object> oHostedControl;
        Long lHWnd = 0;
    };

    friend class ToolCollection;
    union Owner {
        ActiveBar* pBar; // of a master
        Band* pBand;     // of an instance
    };

    [[nodiscard]] ActiveBar* Bar() const;
    void SetText(SharedText& sOld, SharedText sNew);
    void SetRareText(SharedText RareParts::*pText, SharedText sNew);
    void SetState(bool Tool::*pState, bool bNew);
    [[nodiscard]] const RareParts& Rare() const { return m_pRare ? *m_pRare : m_oNothingRare; }
    [[nodiscard]] RareParts& RareToWrite();
    void RaiseChanged(BarChange::What eWhat);

    static const RareParts m_oNothingRare;
    Owner m_oOwner;
    Ref<Tool> m_oMaster;
    Tool* m_pPrevious = this; // a master and its instances form a ring
    Tool* m_pNext = this;
    SharedText m_sName; // of a master
    SharedText m_sCaption;
    SharedText m_sDescription;
    std::unique_ptr<RareParts> m_pRare;
    Ref<Object> m_oTagVariant;
    Long m_lToolId = 0;
    bool m_bIsDefaultItem : 1 = false;
    bool m_bHasNamesakes : 1 = false; // as the first of its name in a collection: whether others have been inserted
    bool m_bChecked = false;
    bool m_bEnabled = true;
    bool m_bVisible = true;
};

// Walks the instances of a master, none of which may come or go meanwhile.
class Tool::InstanceRange {
public:
    class Iterator {
    public:
        explicit Iterator(Tool* pTool) : m_pTool(pTool) {}
        Tool* operator*() const { return m_pTool; }
        Iterator& operator++() {
            m_pTool = m_pTool->m_pNext;
            return *this;
        }
        bool operator!=(const Iterator& oOther) const { return m_pTool != oOther.m_pTool; }

    private:
        Tool* m_pTool;
    };

    explicit InstanceRange(Tool* pMaster) : m_pMaster(pMaster) {}
    [[nodiscard]] Iterator begin() const { return Iterator(m_pMaster->m_pNext); }
    [[nodiscard]] Iterator end() const { return Iterator(m_pMaster); }

private:
    Tool* m_pMaster;
};

// A list of tools found by name without regard to case, the first of equal names.
class __attribute__((visibility("default"))) ToolCollection : public virtual Object {
public:
    [[nodiscard]] Long Count() const { return static_cast<Long>(m_aTools.size()); }
    // Fails with 5 when there is no such tool.
    [[nodiscard]] Ref<Tool> Item(std::string_view sName) const;
    [[nodiscard]] Ref<Tool> Find(std::string_view sName) const; // nothing instead of the failure
    [[nodiscard]] const std::vector<Ref<Tool>>& All() const { return m_aTools; }

protected:
    void InsertTool(std::size_t iPosition, Ref<Tool> oTool);
    Ref<Tool> RemoveTool(std::size_t iPosition);

    std::vector<Ref<Tool>> m_aTools;

private:
    void IndexTool(std::size_t iPosition, Tool* pTool);

    // The first of each name, once there have been more than a few tools: before that they are looked at one by one.
    std::unique_ptr<TextIndex<Tool*>> m_pNames;
};

// The master list.
class __attribute__((visibility("default"))) MasterTools final : public ToolCollection {
public:
    explicit MasterTools(ActiveBar* pBar) : m_pBar(pBar) {}
    ~MasterTools() override;

    [[nodiscard]] Ref<Tool> Add(Long lToolId, SharedText sName);
    using ToolCollection::Item;
    // By identifier. Fails with 5 when there is none.
    [[nodiscard]] Ref<Tool> Item(Long lToolId) const;
    void Detach(); // by the control that goes away

private:
    ActiveBar* m_pBar;
    bool m_bIdsAscend = true; // each identifier is larger than those before it, as the library gives them out
};

// The instances in a band.
class __attribute__((visibility("default"))) BandTools final : public ToolCollection {
public:
    explicit BandTools(Band* pBand) : m_pBand(pBand) {}
    ~BandTools() override;

    using ToolCollection::Item;
    // By position from 0. Fails with 9 outside.
    [[nodiscard]] Ref<Tool> Item(Long lPosition) const;
    // Makes an instance of the tool's master at a position from 0; -1 and Count mean the end. Fails with 9 elsewhere,
    // with 91 for nothing and in a band that is gone.
    Ref<Tool> Insert(Long lPosition, const Ref<Tool>& oTool);
    // Fails with 9 when there is none at that position.
    void Remove(Long lPosition);
    // A tool of the host's own in this band alone, which isn't in the master list.
    Ref<Tool> AddHostTool(std::string_view sName);
    void Detach(); // by the band that goes away

private:
    [[nodiscard]] Band& OwningBand() const;

    Band* m_pBand;
};

class __attribute__((visibility("default"))) Band final : public virtual Object {
public:
    Band(ActiveBar* pBar, SharedText sName);
    ~Band() override;

    [[nodiscard]] const std::string& Name() const { return m_sName; }
    [[nodiscard]] const std::string& Caption() const { return m_sCaption.has_value() ? *m_sCaption : m_sNoText; }
    void SetCaption(std::string sCaption);
    [[nodiscard]] std::optional<BandKind> Kind() const { return m_eKind; } // nothing until it is set
    void SetBandKind(BandKind eKind);
    [[nodiscard]] bool Visible() const { return m_bVisible.value_or(true); }
    void SetVisible(bool bVisible);
    // Whether the user may rebuild the band by dragging; the library sets false for each toolbar.
    [[nodiscard]] bool AllowCustomize() const { return m_bAllowCustomize; }
    void SetAllowCustomize(bool bAllow) { m_bAllowCustomize = bAllow; }
    [[nodiscard]] const Ref<BandTools>& Tools() const { return m_oTools; }
    [[nodiscard]] const Ref<Object>& TagVariant() const { return m_oTagVariant; }
    void SetTagVariant(Ref<Object> oTag) { m_oTagVariant = std::move(oTag); }
    // Shows the band at the pointer, or at the place set in the renderer. Returns when the menu has closed.
    void ShowPopup();
    // Repaints at once.
    void Refresh();

    [[nodiscard]] bool WasCaptionSet() const { return m_sCaption.has_value(); }
    [[nodiscard]] bool WasVisibleSet() const { return m_bVisible.has_value(); }
    [[nodiscard]] ActiveBar* Owner() const { return m_pBar; } // a null pointer once the control is gone
    void Detach();

    std::string_view TypeName() const override { return "Band"; }

private:
    friend class BandTools;
    void RaiseChanged(BarChange::What eWhat);

    static const std::string m_sNoText;
    ActiveBar* m_pBar;
    SharedText m_sName;
    std::optional<std::string> m_sCaption;
    std::optional<BandKind> m_eKind;
    std::optional<bool> m_bVisible;
    bool m_bAllowCustomize = true;
    Ref<Object> m_oTagVariant;
    Ref<BandTools> m_oTools;
};

class __attribute__((visibility("default"))) BandCollection final : public virtual Object {
public:
    explicit BandCollection(ActiveBar* pBar) : m_pBar(pBar) {}
    ~BandCollection() override;

    [[nodiscard]] Long Count() const { return static_cast<Long>(m_aBands.size()); }
    // A second band of one name is allowed, but only the first is found by it.
    Ref<Band> Add(SharedText sName);
    // Fails with 5 when there is none.
    [[nodiscard]] Ref<Band> Item(std::string_view sName) const;
    [[nodiscard]] Ref<Band> Find(std::string_view sName) const; // nothing instead of the failure
    // By position from 0. Fails with 9 outside.
    [[nodiscard]] Ref<Band> Item(Long lPosition) const;
    [[nodiscard]] const std::vector<Ref<Band>>& All() const { return m_aBands; }
    void Detach(); // by the control that goes away

private:
    ActiveBar* m_pBar;
    std::vector<Ref<Band>> m_aBands;
    TextIndex<Band*> m_oNames;
};

class __attribute__((visibility("default"))) ActiveBar final : public virtual Object {
public:
    ActiveBar();
    ~ActiveBar() override;

    [[nodiscard]] const Ref<BandCollection>& Bands() const { return m_oBands; }
    [[nodiscard]] const Ref<MasterTools>& Tools() const { return m_oTools; }
    void RecalcLayout();
    void RedrawBars();
    // The instances take over texts, drop-down band and pictures of the master, so far as it has any.
    void ApplyToolToInstances(const Ref<Tool>& oTool);
    // Whether the status text is shown; off while the progress bar is shown in its place.
    [[nodiscard]] bool StatusTextShown() const { return m_bStatusTextShown; }
    void SetStatusTextShown(bool bShown);

    // The control's events.
    Event<const Ref<Tool>&> ToolClick;
    Event<const Ref<Band>&, bool&> BandOpen; // before a band opens; true cancels
    Event<const Ref<Band>&> BandClose;       // after the user closed a band

    // For renderers alone.
    Event<const BarChange&> Changed;
    Event<const Ref<Band>&> PopupRequested; // by ShowPopup; handled when it returns
    Event<const Ref<Band>&> PaintRequested; // by Refresh of a band

    // What the user does, in the name of a renderer or a test.
    // Chooses a tool: nothing happens when it is hidden or disabled.
    void Click(const Ref<Tool>& oTool);
    // A menu opens. False when a handler cancelled.
    bool Open(const Ref<Band>& oBand);
    // Hides the band and raises BandClose; nothing for a hidden band.
    void Close(const Ref<Band>& oBand);

    std::string_view TypeName() const override { return "ActiveBar"; }

private:
    Ref<MasterTools> m_oTools;
    Ref<BandCollection> m_oBands;
    bool m_bStatusTextShown = true;
};

// The bands and tools that a host's control holds before the library begins: band "StatusBar" with "Status" and
// "ctlProgressBar", band "Explorer" with "ExplorerPanel", master tools "Separator" and "WindowList".
[[nodiscard, gnu::visibility("default")]] Ref<ActiveBar> NewHostActiveBar();

} // namespace corvane
