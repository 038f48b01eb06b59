// The pages of one window, from their creation to their end: which is in front, which has been reported active, and
// what they say together. Any of them may end the window when it is called; the pages stay, ended, as long as the form.
#pragma once

#include "corvane/windows/IWindowFormController.h"
#include "corvane/windows/WindowEnums.h"
#include "desktop/guard/Guard.h"
#include "desktop/windows/PageSlot.h"

#include <memory>
#include <vector>

namespace corvane::desktop {

class WindowPages final {
public:
    WindowPages(WindowTypeConstants type, Guard guard, OpenFormFunction openForm)
        : m_type(type), m_guard(std::move(guard)), m_openForm(std::move(openForm)) {}

    // Creates those of the controller's definition, in their order; not all when one of them ends the window.
    void Create(Ref<IWindowFormController> controller);
    // Reports that the active page isn't active any more, and the end of each page. A page that fails at its end
    // doesn't keep the window open.
    void End();

    [[nodiscard]] int Count() const { return static_cast<int>(m_slots.size()); }
    [[nodiscard]] PageSlot& At(int page) const { return *m_slots[static_cast<std::size_t>(page)]; }
    [[nodiscard]] int FrontIndex() const { return m_front; }
    // Null in a window without pages.
    [[nodiscard]] PageSlot* Front() const { return m_front < Count() ? &At(m_front) : nullptr; }
    void SetFront(int page) { m_front = page; }
    // Of a wizard: back always, forward over pages that don't hold it back. Otherwise all.
    [[nodiscard]] bool IsReachable(int page) const;

    // Activations come in pairs: a page that is active isn't activated again, and one that can't be shown never is.
    // While the window isn't the active one, none is.
    void SetWindowActive(bool active) { m_isWindowActive = active; }
    void ActivateFront();
    void Deactivate();

    void AskAll();
    void Ask(const Ref<IPage>& page);
    // By what they last answered.
    [[nodiscard]] bool AllPassable() const;
    [[nodiscard]] bool AnyChanged() const;
    // A step that isn't optional can't be shown.
    [[nodiscard]] bool IsIncomplete() const;
    // The first that holds the window's commands back; -1 for none.
    [[nodiscard]] int FirstHindrance() const;
    // Of a page on its tab or in the list of steps.
    [[nodiscard]] PageMark MarkOf(int page) const;

private:
    WindowTypeConstants m_type;
    Guard m_guard;
    OpenFormFunction m_openForm;
    Ref<IWindowFormController> m_controller; // until the end
    std::vector<std::unique_ptr<PageSlot>> m_slots;
    int m_front = 0;
    int m_active = -1; // the page that has been reported active
    bool m_isWindowActive = false;
};

} // namespace corvane::desktop
