// A service, explorer items and pages that write down what they hear.
#include "corvane/Explorer.h"
#include "corvane/Page.h"
#include "corvane/Service.h"

#include <utility>

using namespace corvane;

namespace {

std::string s_sHeard;

void Hear(const std::string& sWhat) {
    s_sHeard += (s_sHeard.empty() ? "" : " ") + sWhat;
}

// What no item of its own has: its functions are private, and one is inherited from a class between.
class Named : public AnyExplorerItem {
protected:
    void OnDisplayName(std::string& sText) override { sText = "<" + sText + ">"; }
};

class Parcel final : public ExplorerItem<Parcel, Named> {
public:
    explicit Parcel(std::string sName) : ExplorerItem(std::move(sName)) {}

    bool bSealed = false;

private:
    void OnOpen() {
        const auto oWindow =
            OpenWindow("ParcelWindow", Ref<Object>(this), {.key = Name(), .caption = "Parcel " + Name(), .page = 1});
        Hear("Opened:" + oWindow->Caption());
    }
    void OnPeek() {
        const auto oWindow = OpenWindow("SealWindow", Ref<Object>(this), {.caption = "Peek"});
        Hear(oWindow->WasWindowCancelled() ? "PeekCancelled" : "PeekDone");
    }
    void OnAfterRename(const std::string& sName) override { Hear("Renamed:" + sName); }
    void OnExit(const Ref<Window>& oWindow, bool bWasCancelled) override {
        Hear("Exit:" + oWindow->Caption() + (bWasCancelled ? ":cancelled" : ":done"));
    }

public:
    static constexpr auto Members = Methods<&Parcel::OnOpen, &Parcel::OnPeek>();
};

class Shelf final : public ExplorerItem<Shelf> {
    void OnInitialize() override {
        AddChild(New<Parcel>("Book"));
        AddChild(New<Parcel>("Vase"));
    }
};

class AnyShopPage : public AnyPage {
public:
    bool IsChanged() override { return !AboutAs<Parcel>()->bSealed; }

protected:
    void OnInitialize() override {
        Hear("Initialize" + OwnWindow()->Caption());
        Keep(OwnWindow()->WindowDef() ? Explorer()->OnActive.Subscribe([](const Ref<Object>&) { Hear("PageSees"); })
                                      : Subscription());
    }
    void OnTerminate() override { Hear("Terminate"); }
};

class LabelPage final : public Page<LabelPage, Parcel, AnyShopPage> {
    void OnActivate() override { Hear("LabelActivate"); }
    void OnDeactivate() override { Hear("LabelDeactivate"); }
    void OnSave() override {
        About()->bSealed = true;
        Hear("Save:" + About()->Name());
        ValidityChanged();
    }
    void OnCommand(StandardCommandConstants eCommand) override {
        Hear("Command" + std::to_string(static_cast<Long>(eCommand)));
    }
};

class WeightPage final : public Page<WeightPage, Parcel, AnyShopPage> {
    void OnActivate() override { Hear("WeightActivate"); }
    bool IsValid() override { return About()->Name() != "Vase"; }
};

class ShopService final : public corvane::Service<ShopService> {
public:
    void Start() {
        Hear("Start");
        Keep(Explorer()->OnActive.Subscribe(
            [](const Ref<Object>& oItem) { Hear("Active:" + std::string(oItem->TypeName())); }));
        Explorer()->Populate();
    }
    std::string Heard() const { return std::exchange(s_sHeard, {}); }

private:
    void OnInitialize() override { Hear("Initialize"); }
    void OnTerminate() override { Hear("ShopTerminate"); }
    void OnUnsaved(Dictionary& dctItems, Double& dblOrder) override {
        dctItems.Add("The ledger", Ref<Object>(this));
        dblOrder = 7;
    }
    void OnSave(const Ref<Object>& oItem) override { Hear("Saved" + std::string(oItem->TypeName())); }
    void OnSaveComplete(bool bWasCancelled) override { Hear(bWasCancelled ? "Unfinished" : "Finished"); }
    void OnSell() {
        Action("Sell")->SetEnabled(false);
        SetStatus("Sold");
    }
    void OnName() {
        const auto oName = AskText("What is it called?");
        SetStatus(oName ? "Named " + *oName : "Not named");
    }
    void OnBuy(const Ref<ActionItem>& oActionItem) { (void)Action(oActionItem->Name() + "er"); }

public:
    static constexpr auto Members =
        Methods<&ShopService::Start, &ShopService::OnSell, &ShopService::OnName, &ShopService::OnBuy>(
            Property("Heard", &ShopService::Heard));
};

} // namespace

CORVANE_PLUGIN(Class<ShopService>("ShopSvc.ShopService"), Class<Shelf>("ShopSvc.Shelf"),
               Class<LabelPage>("ShopSvc.LabelPage"), Class<WeightPage>("ShopSvc.WeightPage"))
