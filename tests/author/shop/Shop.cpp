// A service, explorer items and pages that write down what they hear.
#include "corvane/Explorer.h"
#include "corvane/Page.h"
#include "corvane/Service.h"

#include <utility>

using namespace corvane;

namespace {

std::string s_heard;

void Hear(const std::string& what) {
    s_heard += (s_heard.empty() ? "" : " ") + what;
}

// What no item of its own has: its functions are private, and one is inherited from a class between.
class Named : public AnyExplorerItem {
protected:
    void OnDisplayName(std::string& text) override { text = "<" + text + ">"; }
};

class Parcel final : public ExplorerItem<Parcel, Named> {
public:
    explicit Parcel(std::string name) : ExplorerItem(std::move(name)) {}

    bool sealed = false;

private:
    void OnOpen() {
        const auto window =
            OpenWindow("ParcelWindow", Ref<Object>(this), {.key = Name(), .caption = "Parcel " + Name(), .page = 1});
        Hear("Opened:" + window->Caption());
    }
    void OnPeek() {
        const auto window = OpenWindow("SealWindow", Ref<Object>(this), {.caption = "Peek"});
        Hear(window->WasWindowCancelled() ? "PeekCancelled" : "PeekDone");
    }
    void OnAfterRename(const std::string& name) override { Hear("Renamed:" + name); }
    void OnExit(const Ref<Window>& window, bool wasCancelled) override {
        Hear("Exit:" + window->Caption() + (wasCancelled ? ":cancelled" : ":done"));
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
    bool IsChanged() override { return !AboutAs<Parcel>()->sealed; }

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
        About()->sealed = true;
        Hear("Save:" + About()->Name());
        ValidityChanged();
    }
    void OnCommand(StandardCommandConstants command) override {
        Hear("Command" + std::to_string(static_cast<Long>(command)));
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
            [](const Ref<Object>& item) { Hear("Active:" + std::string(item->TypeName())); }));
        Explorer()->Populate();
    }
    std::string Heard() const { return std::exchange(s_heard, {}); }

private:
    void OnInitialize() override { Hear("Initialize"); }
    void OnTerminate() override { Hear("ShopTerminate"); }
    void OnUnsaved(Dictionary& items, Double& order) override {
        items.Add("The ledger", Ref<Object>(this));
        order = 7;
    }
    void OnSave(const Ref<Object>& item) override { Hear("Saved" + std::string(item->TypeName())); }
    void OnSaveComplete(bool wasCancelled) override { Hear(wasCancelled ? "Unfinished" : "Finished"); }
    void OnSell() {
        Action("Sell")->SetEnabled(false);
        SetStatus("Sold");
    }
    void OnName() {
        const auto name = AskText("What is it called?");
        SetStatus(name ? "Named " + *name : "Not named");
    }
    void OnBuy(const Ref<ActionItem>& actionItem) { (void)Action(actionItem->Name() + "er"); }

public:
    static constexpr auto Members =
        Methods<&ShopService::Start, &ShopService::OnSell, &ShopService::OnName, &ShopService::OnBuy>(
            Property("Heard", &ShopService::Heard));
};

} // namespace

CORVANE_PLUGIN(Class<ShopService>("ShopSvc.ShopService"), Class<Shelf>("ShopSvc.Shelf"),
               Class<LabelPage>("ShopSvc.LabelPage"), Class<WeightPage>("ShopSvc.WeightPage"))
