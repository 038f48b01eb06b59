// Which item of the explorer a window belongs to, and the mark that shows it for the window in front. A window belongs
// to the item that is its business context, or from which the user opened it. The mark is no selection: nothing is
// reported to the application, and its commands go on acting on what the user has selected.
#pragma once

#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/TreeView.h"
#include "corvane/windows/Window.h"
#include "desktop/application/MainWindow.h"

#include <QObject>
#include <map>
#include <string>
#include <vector>

namespace corvane::desktop {

class ExplorerLink final : public QObject {
    Q_OBJECT
public:
    // The window outlives it.
    explicit ExplorerLink(MainWindow& window) : m_window(window) {}

    // Once the library is initialized. It ends with the main form.
    void Follow(const Ref<MdiForm>& mainForm);
    // A command of that provider, or of no one, is about to run.
    void CommandBegins(const Ref<Object>& provider);
    // Off takes the mark away.
    void SetOn(bool on);
    [[nodiscard]] bool IsOn() const { return m_isOn; }
    // The window's item as a text that means the same at the next start, empty without one; and the same again.
    [[nodiscard]] std::string ItemOf(const Window& window) const;
    void SetItem(const Window& window, const std::string& item);

private:
    struct Item {
        Ref<TreeView> tree;
        Ref<Node> node;
    };
    [[nodiscard]] std::vector<Ref<TreeView>> Trees() const;
    [[nodiscard]] static bool IsThere(const Item& item);
    [[nodiscard]] Item ItemOfObject(const Ref<Object>& object) const; // nothing for what isn't in the explorer
    void Leave();
    void WindowMade(const Ref<Window>& window);
    void Opened();
    void Show();

    MainWindow& m_window;
    bool m_isOn = true;
    Ref<Object> m_activeObject;
    Item m_active; // likewise
    Item m_opener; // the item whose command or double click came last
    std::map<const Window*, Item> m_items;
    std::vector<const Window*> m_new; // since the event loop turned, without an item
    const Window* m_front = nullptr;
    std::vector<Subscription> m_subscriptions;
};

} // namespace corvane::desktop
