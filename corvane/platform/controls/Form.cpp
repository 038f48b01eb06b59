#include "corvane/platform/controls/Form.h"

#include "corvane/base/Automation.h"
#include "corvane/platform/controls/MdiForm.h"

namespace corvane {

Form::Form(MdiForm* pApplication, bool bMDIChild) : m_pApplication(pApplication), m_bMDIChild(bMDIChild) {
    if (m_pApplication)
        m_pApplication->FormMade(*this);
}

Form::~Form() {
    if (m_pApplication)
        m_pApplication->Forget(*this);
}

void Form::Load() {
    static Long lLastHWnd = 0;
    if (m_bLoaded)
        return;
    const Ref<Form> oSelf(this); // handlers may drop the last other reference
    m_bLoaded = true;
    m_lHWnd = ++lLastHWnd;
    if (m_pApplication)
        m_pApplication->FormLoaded(Ref<Form>(this));
    OnLoad.Raise();
    Changed.Raise(Change::Loaded);
}

bool Form::Unload() {
    if (!m_bLoaded || m_bUnloading)
        return true;
    const Ref<Form> oSelf(this);
    bool bRefused = false;
    m_bUnloading = true;
    try {
        OnQueryUnload.Raise(bRefused);
        if (!bRefused)
            OnUnload.Raise(bRefused);
    } catch (...) {
        m_bUnloading = false;
        throw;
    }
    m_bUnloading = false;
    if (bRefused)
        return false;
    m_bLoaded = false;
    m_bVisible = false;
    m_lHWnd = 0;
    m_oOwner = nullptr;
    if (m_pApplication)
        m_pApplication->FormUnloaded(*this);
    Changed.Raise(Change::Unloaded);
    return true;
}

void Form::Show(ShowMode eMode, const Ref<Form>& oOwner) {
    const Ref<Form> oSelf(this);
    Load();
    m_bModal = eMode == ShowMode::Modal;
    m_oOwner = oOwner;
    m_bVisible = true;
    Changed.Raise(Change::Shown);
    if (!m_bLoaded)
        return; // what it shows has unloaded it
    Activate();
    if (m_bModal && m_bVisible)
        ModalLoop.Raise();
}

void Form::Hide() {
    CheckThread();
    if (!m_bVisible)
        return;
    m_bVisible = false;
    Changed.Raise(Change::Hidden);
}

void Form::Refresh() {
    CheckThread();
    Changed.Raise(Change::Repaint);
}

void Form::Move(Single fLeft, Single fTop, Single fWidth, Single fHeight) {
    CheckThread();
    m_fLeft = fLeft;
    m_fTop = fTop;
    m_fWidth = fWidth;
    m_fHeight = fHeight;
    Changed.Raise(Change::Moved);
}

void Form::SetFrame(Single fWidth, Single fHeight) {
    m_fFrameWidth = fWidth;
    m_fFrameHeight = fHeight;
}

void Form::SetCaption(std::string sCaption) {
    CheckThread();
    m_sCaption = std::move(sCaption);
    Changed.Raise(Change::Caption);
}

void Form::SetWindowState(FormState eState) {
    CheckThread();
    m_eState = eState;
    Changed.Raise(Change::State);
}

void Form::Activate() {
    if (m_pApplication)
        m_pApplication->FormActivated(Ref<Form>(this));
    else
        OnActivate.Raise();
}

Variant Form::Invoke(std::string_view sName, std::span<const Variant> /*aArguments*/) {
    if (EqualText(sName, "hwnd"))
        return m_lHWnd;
    if (EqualText(sName, "Caption"))
        return m_sCaption;
    FailNoSuchMember(*this, sName);
}

} // namespace corvane
