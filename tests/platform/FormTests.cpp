#include "corvane/base/Variant.h"
#include "corvane/platform/controls/Form.h"
#include "corvane/platform/controls/MdiForm.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
namespace {

using testing::NumberOf;

class FormTest : public ::testing::Test {
protected:
    // A form whose events are heard under its name.
    Ref<Form> NewForm(const std::string& sName, MdiForm* pApplication, bool bMDIChild = true) {
        auto oForm = New<Form>(pApplication, bMDIChild);
        oForm->SetCaption(sName);
        m_aSubscriptions.push_back(oForm->OnLoad.Subscribe([this, sName] { m_sHeard += sName + ".load "; }));
        m_aSubscriptions.push_back(oForm->OnUnload.Subscribe([this, sName](bool& bRefused) {
            m_sHeard += sName + ".unload ";
            bRefused = m_bRefuses;
        }));
        m_aSubscriptions.push_back(oForm->OnActivate.Subscribe([this, sName] { m_sHeard += sName + ".activate "; }));
        m_aSubscriptions.push_back(
            oForm->OnDeactivate.Subscribe([this, sName] { m_sHeard += sName + ".deactivate "; }));
        m_aSubscriptions.push_back(oForm->ModalLoop.Subscribe([this, sName] { m_sHeard += sName + ".loop "; }));
        return oForm;
    }
    std::string Heard() { return std::exchange(m_sHeard, {}); }
    std::string Active() const {
        const auto oForm = m_oMain->ActiveForm();
        return oForm ? oForm->Caption() : "none";
    }

    Ref<MdiForm> m_oMain = New<MdiForm>();
    std::string m_sHeard;
    bool m_bRefuses = false;
    std::vector<Subscription> m_aSubscriptions;
};

TEST_F(FormTest, LoadsShowsAndUnloads) {
    const auto a = NewForm("a", m_oMain.Get());
    EXPECT_TRUE(a->Unload()); // not loaded yet
    a->Load();
    a->Load();
    EXPECT_EQ(Heard(), "a.load ");
    EXPECT_FALSE(a->Visible());
    EXPECT_EQ(Active(), "none") << "it has never been in front";
    a->Show(ShowMode::Modeless, nullptr);
    EXPECT_EQ(Heard(), "a.activate ");
    m_bRefuses = true;
    EXPECT_FALSE(a->Unload());
    EXPECT_TRUE(a->IsLoaded() && a->Visible() && a->HWnd() != 0);
    EXPECT_EQ(Active(), "a");
    m_bRefuses = false;
    EXPECT_TRUE(a->Unload());
    EXPECT_EQ(Heard(), "a.unload a.unload ");
    EXPECT_FALSE(a->IsLoaded() || a->Visible() || a->HWnd() != 0);
    EXPECT_EQ(Active(), "none");
    a->Show(ShowMode::Modeless, nullptr);
    EXPECT_EQ(Heard(), "a.load a.activate ");
}

TEST_F(FormTest, AFailingUnloadLeavesTheFormAndMayBeRepeated) {
    const auto a = New<Form>();
    bool bFails = true;
    int nCalls = 0;
    const auto oUnload = a->OnUnload.Subscribe([&](bool&) {
        ++nCalls;
        EXPECT_TRUE(a->Unload()); // from within nothing more happens
        if (std::exchange(bFails, false))
            Fail(-1);
    });
    a->Load();
    EXPECT_EQ(NumberOf([&] { a->Unload(); }), -1);
    EXPECT_TRUE(a->IsLoaded());
    EXPECT_TRUE(a->Unload());
    EXPECT_EQ(nCalls, 2);
}

TEST_F(FormTest, TheLastReferenceMayGoInUnload) {
    auto pForm = std::make_unique<Ref<Form>>(New<Form>(m_oMain.Get(), true));
    Form* pRaw = pForm->Get();
    const auto oUnload = pRaw->OnUnload.Subscribe([&](bool&) { pForm.reset(); });
    pRaw->Show(ShowMode::Modeless, nullptr);
    EXPECT_TRUE(pRaw->Unload());
    EXPECT_EQ(Active(), "none");
    EXPECT_TRUE(m_oMain->Forms().empty());
}

TEST_F(FormTest, ActivationGoesFromFormToForm) {
    const auto a = NewForm("a", m_oMain.Get());
    const auto b = NewForm("b", m_oMain.Get());
    const auto oDialog = NewForm("dialog", m_oMain.Get(), false);
    a->Show(ShowMode::Modeless, nullptr);
    b->Show(ShowMode::Modeless, nullptr);
    EXPECT_EQ(Heard(), "a.load a.activate b.load a.deactivate b.activate ");
    b->Activate(); // active already
    a->Activate();
    EXPECT_EQ(Heard(), "b.deactivate a.activate ");
    oDialog->Show(ShowMode::Modeless, a);
    EXPECT_EQ(Heard(), "dialog.load a.deactivate dialog.activate ");
    EXPECT_EQ(Active(), "a"); // a dialog is no child
    EXPECT_TRUE(m_oMain->ForegroundForm() == oDialog);
    EXPECT_TRUE(oDialog->ShowOwner() == a);
    NewForm("behind", m_oMain.Get())->Load(); // and gone
    std::string sForms;
    for (const auto& oForm : m_oMain->Forms())
        sForms += oForm->Caption() + " ";
    EXPECT_EQ(sForms, "b a dialog ");
    m_oMain->SetRefusesToTellChild(true);
    EXPECT_EQ(Active(), "none");
    m_oMain->SetRefusesToTellChild(false);
    a->Unload();
    EXPECT_EQ(Active(), "b");
    oDialog->Unload();
    EXPECT_FALSE(m_oMain->ForegroundForm());
    Heard();
    b->Activate();
    EXPECT_EQ(Heard(), "b.activate ");
}

TEST_F(FormTest, WhoIsCalledForwardInADeactivationStaysInFront) {
    const auto a = NewForm("a", m_oMain.Get());
    const auto b = NewForm("b", m_oMain.Get());
    const auto c = NewForm("c", m_oMain.Get());
    for (const auto& oForm : {c, b, a})
        oForm->Show(ShowMode::Modeless, nullptr);
    Heard();
    const auto oDeactivate = a->OnDeactivate.Subscribe([&] { c->Activate(); });
    b->Activate();
    EXPECT_EQ(Heard(), "a.deactivate b.deactivate c.activate ");
    EXPECT_EQ(Active(), "c");
}

TEST_F(FormTest, HandlesAreNeverReused) {
    Long lLast = 0;
    for (int n = 0; n < 3; ++n) {
        const auto a = New<Form>();
        for (int nLoad = 0; nLoad < 2; ++nLoad) {
            a->Load();
            EXPECT_GT(a->HWnd(), lLast);
            lLast = a->HWnd();
            EXPECT_EQ(a->Invoke("hWnd", {}), Variant(lLast));
            a->Unload();
        }
    }
}

TEST_F(FormTest, AModalFormLoopsWhileItIsShown) {
    const auto a = NewForm("a", m_oMain.Get(), false);
    const auto oLoop = a->ModalLoop.Subscribe([&] { a->Hide(); });
    a->Show(ShowMode::Modal, nullptr);
    EXPECT_EQ(Heard(), "a.load a.activate a.loop ");
    EXPECT_TRUE(a->IsModal() && a->IsLoaded() && !a->Visible());
    a->Show(ShowMode::Modeless, nullptr);
    EXPECT_EQ(Heard(), ""); // it never left the front
    a->Unload();
    const auto oActivate = a->OnActivate.Subscribe([&] { a->Unload(); });
    a->Show(ShowMode::Modal, nullptr); // gone before the loop could begin
    EXPECT_EQ(Heard(), "a.unload a.load a.activate a.unload ");
}

TEST_F(FormTest, TheMainFormKnowsMembersByName) {
    const Ref<Object> oMain = m_oMain;
    m_oMain->SetCaption("Main");
    const Ref<Object> oMember = New<Form>();
    m_oMain->AddMember("ActiveBar", oMember);
    EXPECT_TRUE(ToObject(oMain->Invoke("activebar", {})) == oMember);
    EXPECT_EQ(oMain->Invoke("CAPTION", {}), Variant("Main"));
    const Variant aArguments[] = {1.0};
    EXPECT_EQ(NumberOf([&] { oMain->Invoke("ActiveBar", aArguments); }), FailureNumber::WrongNumberOfArguments);
    EXPECT_EQ(NumberOf([&] { oMain->Invoke("CommonDialog", {}); }), FailureNumber::NoSuchMember);
    EXPECT_EQ(NumberOf([&] { m_oMain->AddMember("ACTIVEBAR", nullptr); }), FailureNumber::KeyInUse);
}

TEST_F(FormTest, AChildMayOutliveTheMainForm) {
    const auto a = NewForm("a", m_oMain.Get());
    const auto b = NewForm("b", m_oMain.Get());
    a->Show(ShowMode::Modeless, nullptr);
    m_oMain = nullptr;
    Heard();
    EXPECT_EQ(a->Application(), nullptr);
    b->Show(ShowMode::Modeless, a);
    EXPECT_TRUE(a->Unload());
    EXPECT_EQ(Heard(), "b.load b.activate a.unload ");
}

} // namespace
} // namespace corvane
