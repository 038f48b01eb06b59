// The model of a form: loaded and unloaded, shown and hidden, with the events of the real form in its order. It draws
// nothing; a host derives from it or subscribes to Changed.
#pragma once

#include "corvane/base/Badge.h"
#include "corvane/base/Event.h"
#include "corvane/base/Ref.h"

#include <string>
#include <string_view>

namespace corvane {

class MdiForm;

enum class FormState : Long { Normal = 0, Minimized = 1, Maximized = 2 };
enum class ShowMode : Long { Modeless = 0, Modal = 1 };

class __attribute__((visibility("default"))) Form : public virtual Object {
public:
    // A child of an MDI form, or a form of its own for nothing, which a child becomes when it outlives the MDI form.
    explicit Form(MdiForm* pApplication = nullptr, bool bMDIChild = false);
    ~Form() override;

    [[nodiscard]] bool IsLoaded() const { return m_bLoaded; }
    // Raises OnLoad; nothing for a loaded form.
    void Load();
    // Between the two events of an unload and its end.
    [[nodiscard]] bool IsUnloading() const { return m_bUnloading; }
    // Raises OnQueryUnload and OnUnload, whose handlers may refuse, and then takes the form away. False when it was
    // refused. Nothing for a form that isn't loaded or that is being unloaded already.
    bool Unload();
    // Loads the form when it isn't loaded. A modal form returns when it is hidden or unloaded.
    void Show(ShowMode eMode, const Ref<Form>& oOwner);
    void Hide();
    void Refresh();
    void Move(Single fLeft, Single fTop, Single fWidth, Single fHeight);

    // Never reused; 0 while the form isn't loaded.
    [[nodiscard]] Long HWnd() const { return m_lHWnd; }
    [[nodiscard]] const std::string& Caption() const { return m_sCaption; }
    void SetCaption(std::string sCaption);
    [[nodiscard]] bool Visible() const { return m_bVisible; }
    [[nodiscard]] bool MDIChild() const { return m_bMDIChild; }
    [[nodiscard]] FormState WindowState() const { return m_eState; }
    void SetWindowState(FormState eState);
    [[nodiscard]] MdiForm* Application() const { return m_pApplication; } // a null pointer for a form of its own
    void Detach(Badge<MdiForm>) { m_pApplication = nullptr; }
    [[nodiscard]] const Ref<Form>& ShowOwner() const { return m_oOwner; } // of the latest Show
    [[nodiscard]] bool IsModal() const { return m_bModal; }               // by the latest Show
    // In twips. The scale sizes are those of the inner area; they are the outer ones less what SetFrame says.
    [[nodiscard]] Single Left() const { return m_fLeft; }
    [[nodiscard]] Single Top() const { return m_fTop; }
    [[nodiscard]] Single Width() const { return m_fWidth; }
    [[nodiscard]] Single Height() const { return m_fHeight; }
    [[nodiscard]] Single ScaleWidth() const { return m_fWidth - m_fFrameWidth; }
    [[nodiscard]] Single ScaleHeight() const { return m_fHeight - m_fFrameHeight; }
    void SetFrame(Single fWidth, Single fHeight);

    // The form's events.
    Event<> OnLoad;
    Event<bool&> OnQueryUnload; // true refuses; nothing has been unloaded yet, and OnUnload isn't raised then
    Event<bool&> OnUnload;      // true refuses
    Event<> OnActivate;
    Event<> OnDeactivate;

    // For renderers alone.
    enum class Change { Loaded, Unloaded, Shown, Hidden, Moved, State, Caption, Repaint };
    Event<Change> Changed;
    // A modal form has been shown: the subscriber runs the message loop until the form is hidden or unloaded.
    Event<> ModalLoop;

    // The form comes to the front: the application's active form gets OnDeactivate, then this one OnActivate.
    // Nothing when it is active already.
    void Activate();

    Variant Invoke(std::string_view sName, std::span<const Variant> aArguments) override; // "hwnd", "Caption"

private:
    MdiForm* m_pApplication;
    Ref<Form> m_oOwner;
    std::string m_sCaption;
    Single m_fLeft = 0;
    Single m_fTop = 0;
    Single m_fWidth = 0;
    Single m_fHeight = 0;
    Single m_fFrameWidth = 0;
    Single m_fFrameHeight = 0;
    Long m_lHWnd = 0;
    FormState m_eState = FormState::Normal;
    bool m_bLoaded = false;
    bool m_bUnloading = false;
    bool m_bVisible = false;
    bool m_bModal = false;
    bool m_bMDIChild;
};

} // namespace corvane
