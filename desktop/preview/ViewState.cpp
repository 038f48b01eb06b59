#include "desktop/preview/ViewState.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/services/WindowDef.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/application/MainWindow.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/explorer/ExplorerTree.h"
#include "desktop/windows/WindowForm.h"
#include "forms/FormModel.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenuBar>
#include <QScrollBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>

namespace corvane::desktop {

namespace {

Ref<WindowManager> Windows() {
    const Ref<Framework> framework = Singleton::Framework();
    return framework ? framework->WindowManager() : nullptr;
}

std::string KeyOf(const Window& window) {
    return window.Key() == ToText(window.ObjectKey()) ? std::string() : window.Key();
}

Ref<Window> Find(const ViewState::OpenWindow& open) {
    const auto manager = Windows();
    if (!manager)
        return nullptr;
    for (const auto& window : manager->Windows())
        if (EqualText(window->WindowDef()->Name(), open.name) && EqualText(KeyOf(*window), open.key))
            return window;
    return nullptr;
}

Ref<Form> FormOf(const Application& application, const Window& window) {
    for (const auto& frm : application.MainForm()->Forms())
        if (const auto form = frm.TryAs<WindowForm>(); form && form->ShownWindow().Get() == &window)
            return frm;
    return nullptr;
}

void TakeEntries(const WindowForm& form, ViewState::OpenWindow& open) {
    for (int page = 0; page < form.Pages().Count(); ++page) {
        const PageSlot& slot = form.Pages().At(page);
        const Ref<forms::FormModel> model = slot.Form();
        for (std::size_t i = 0; model && i < model->Count(); ++i)
            if (forms::IsEntered(model->Field(i).kind) && model->IsChanged(i))
                open.entries.push_back({slot.PageDef()->PageProgID(), model->Field(i).name, model->Text(i)});
    }
}

// As far as the fields are still there; what isn't a value any more stays, with its problem.
void EnterInto(const WindowForm& form, const ViewState::OpenWindow& open) {
    for (int page = 0; page < form.Pages().Count(); ++page) {
        const PageSlot& slot = form.Pages().At(page);
        const Ref<forms::FormModel> model = slot.Form();
        for (const ViewState::Entry& entry : open.entries)
            if (model && EqualText(slot.PageDef()->PageProgID(), entry.page))
                if (const auto field = model->Find(entry.field))
                    if (model->Type(*field, entry.text).empty())
                        model->Leave(*field);
    }
}

bool IsDefined(const std::string& window) {
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->ServiceManager() : nullptr;
    return manager && manager->WindowDefs()->HasKey(window);
}

std::string ToolOf(const Application& application, const QAction* action) {
    auto& bars = const_cast<Application&>(application).Window().Bars();
    const Ref<Tool> tool = action ? bars.Actions().InstanceOf(action) : nullptr;
    return tool ? tool->Name() : std::string();
}

QAction* ActionOf(const Application& application, const QWidget& widget, const std::string& tool) {
    for (QAction* action : widget.actions())
        if (!tool.empty() && action->isVisible() && EqualText(ToolOf(application, action), tool))
            return action;
    return nullptr;
}

} // namespace

ViewState ViewState::Of(Application& application) {
    ViewState state;
    state.TakeTrees(application);
    state.TakeWindows(application);
    state.TakeMenu(application);
    return state;
}

void ViewState::TakeTrees(Application& application) {
    const ExplorerPanel& panel = application.Window().Explorer();
    for (int i = 0; panel.Page(i); ++i) {
        const ExplorerTree* tree = panel.Page(i)->Tree();
        const Ref<Node> selected = tree->Tree()->SelectedItem();
        trees.push_back({tree->Tree()->Name(), selected ? selected->Key() : std::string(),
                         panel.Page(i)->Filter()->text(), tree->verticalScrollBar()->value()});
        if (tree->hasFocus())
            focus = Focus::Tree;
        else if (panel.Page(i)->Filter()->hasFocus())
            focus = Focus::Filter;
    }
    const auto band = application.Bar()->Bands()->Find("Explorer");
    explorerIsShown = band && band->Visible() && band->WasVisibleSet();
}

void ViewState::TakeWindows(Application& application) {
    const auto manager = Windows();
    if (!manager || !manager->Windows())
        return;
    for (const auto& window : manager->Windows()) {
        OpenWindow open;
        open.name = window->WindowDef()->Name();
        open.key = KeyOf(*window);
        open.modal = window->IsModal();
        open.active = window == manager->ActiveWindow();
        open.page = window->ActivePageIndex();
        open.pageWidth = window->WindowDef()->DefPageWidth();
        open.pageHeight = window->WindowDef()->DefPageHeight();
        if (const Ref<Form> frm = FormOf(application, *window)) {
            open.child = frm->MDIChild();
            open.state = frm->WindowState();
            open.left = frm->Left();
            open.top = frm->Top();
            open.width = frm->Width();
            open.height = frm->Height();
            TakeEntries(*frm.As<WindowForm>(), open);
        }
        windows.push_back(std::move(open));
    }
}

// From the menu on top down to what it hangs on.
void ViewState::TakeMenu(Application& application) {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!menu)
        return;
    if (const std::string lit = ToolOf(application, menu->activeAction()); !lit.empty())
        menus.push_back(lit);
    while (true) {
        menuPlace = menu->pos();
        QWidget* below = menu->parentWidget();
        if (qobject_cast<QMenuBar*>(below) || qobject_cast<QToolBar*>(below)) {
            menuRoot = qobject_cast<QMenuBar*>(below) ? MenuRoot::MenuBar : MenuRoot::Toolbar;
            menus.push_back(ToolOf(application, menu->menuAction()));
            break;
        }
        auto* belowMenu = qobject_cast<QMenu*>(below);
        if (!belowMenu) {
            // The library waits for the menu of a node; others are the toolkit's.
            menuRoot = application.Failures().Entry() != 0 ? MenuRoot::Explorer : MenuRoot::None;
            break;
        }
        menus.push_back(ToolOf(application, menu->menuAction()));
        menu = belowMenu;
    }
    std::reverse(menus.begin(), menus.end());
}

// The node of the current tab is clicked, as its item was the active one; no handler gets a click on another one.
void ViewState::RestoreTrees(Application& application) const {
    const ExplorerPanel& panel = application.Window().Explorer();
    const auto tabs = application.Panel()->Control("tabExplorer").As<TabStrip>();
    for (int i = 0; ExplorerPage* page = panel.Page(i); ++i) {
        const Ref<TreeView>& tree = page->Tree()->Tree();
        const auto it = std::find_if(trees.begin(), trees.end(),
                                     [&](const Tree& kept) { return EqualText(kept.name, tree->Name()); });
        if (it == trees.end())
            continue;
        const bool isCurrent = tabs && tree->Container() == tabs->Tab(); // the panel draws it a moment later
        if (!it->filter.isEmpty())
            page->Filter()->setText(it->filter);
        if (const Ref<Node> node = it->selected.empty() ? nullptr : tree->GetNodes()->Find(it->selected)) {
            application.ByHost([&] { isCurrent ? tree->ClickNode(node) : tree->SetSelectedItem(node); });
        }
        page->Tree()->Sync();
        page->Tree()->verticalScrollBar()->setValue(it->scrolled);
        if (focus != Focus::Elsewhere && isCurrent)
            focus == Focus::Tree ? page->Tree()->setFocus() : page->Filter()->setFocus();
    }
}

// A size that the definition gives again is what the author wants to see.
void ViewState::Place(Application& application, const OpenWindow& open) {
    const Ref<Window> window = Find(open);
    if (!window)
        return;
    application.ByHost([&] {
        const Ref<WindowDef> def = window->WindowDef();
        if (open.page > 0 && open.page < def->PageDefs()->Count())
            window->SetActivePageIndex(open.page);
        const Ref<Form> frm = FormOf(application, *window);
        if (frm)
            EnterInto(*frm.As<WindowForm>(), open);
        if (!frm || open.child != frm->MDIChild() || open.pageWidth != def->DefPageWidth() ||
            open.pageHeight != def->DefPageHeight())
            return;
        if (open.state == FormState::Normal && frm->WindowState() == FormState::Normal)
            frm->Move(open.left, open.top, open.width, open.height);
        else
            frm->SetWindowState(open.state);
    });
}

void ViewState::OpenAgain(Application& application, const OpenWindow& open) {
    using enum WindowStateConstants;
    if (Find(open) || !IsDefined(open.name))
        return;
    if (open.modal) // in its own event loop
        QTimer::singleShot(0, &application.Window(), [&application, open] { Place(application, open); });
    application.ByHost([&] {
        (void)Windows()->OpenWindow(open.name, nullptr, nullptr, WindowShowModeConstants::cvDefinitionDefault,
                                    cvDefinitionDefault, MDIWindowTypeConstants::cvDefinitionDefault,
                                    WindowTypeConstants::cvDefinitionDefault,
                                    BusinessContextTypeConstants::cvDefinitionDefault,
                                    ShowApplyCommandConstants::cvDefinitionDefault, open.key);
    });
}

void ViewState::Restore(Application& application, const std::function<bool(const OpenWindow&)>& opens) const {
    RestoreTrees(application);
    for (const OpenWindow& open : windows) {
        if (open.modal)
            continue;
        if (opens(open))
            OpenAgain(application, open);
        Place(application, open);
    }
    for (const OpenWindow& open : windows)
        if (open.active && !open.modal)
            (void)Activate(application, open);
}

bool ViewState::SetEntriesAside(Application& application, const std::function<bool(const OpenWindow&)>& opens) const {
    bool isAny = false;
    for (const OpenWindow& open : windows) {
        const Ref<Window> window = open.entries.empty() || !opens(open) ? nullptr : Find(open);
        const Ref<Form> frm = window ? FormOf(application, *window) : nullptr;
        if (!frm)
            continue;
        isAny = true;
        application.ByHost([&] {
            const Ref<WindowForm> form = frm.As<WindowForm>();
            for (int page = 0; page < form->Pages().Count(); ++page)
                if (const Ref<forms::FormModel> model = form->Pages().At(page).Form())
                    model->Revert();
        });
    }
    return isAny;
}

void ViewState::EnterAgain(Application& application, const std::function<bool(const OpenWindow&)>& opens) const {
    for (const OpenWindow& open : windows)
        if (const Ref<Window> window = open.entries.empty() || !opens(open) ? nullptr : Find(open))
            if (const Ref<Form> frm = FormOf(application, *window))
                application.ByHost([&] { EnterInto(*frm.As<WindowForm>(), open); });
}

bool ViewState::IsOpen(const OpenWindow& window) {
    return Find(window) != nullptr;
}

bool ViewState::Activate(Application& application, const OpenWindow& open) {
    const Ref<Window> window = Find(open);
    if (!window)
        return false;
    application.ByHost([&] {
        if (const Ref<Form> frm = FormOf(application, *window))
            frm->Activate();
    });
    return true;
}

// The button shows it as it would for the user, which returns when it is closed.
void ViewState::RestoreDropDown(Application& application) const {
    for (QToolBar* toolbar : application.Window().findChildren<QToolBar*>()) {
        QAction* action = ActionOf(application, *toolbar, menus[0]);
        auto* button = action ? qobject_cast<QToolButton*>(toolbar->widgetForAction(action)) : nullptr;
        if (!button || !action->menu() || !button->isVisible())
            continue;
        QTimer::singleShot(0, action->menu(), [state = *this, &application, menu = action->menu()] {
            state.RestoreBelow(application, menu);
        });
        button->showMenu();
        return;
    }
}

void ViewState::RestoreBelow(Application& application, QMenu* menu) const {
    for (std::size_t next = 1; menu && next < menus.size(); ++next) {
        QAction* action = ActionOf(application, *menu, menus[next]);
        if (action)
            menu->setActiveAction(action);
        menu = action && next + 1 < menus.size() ? action->menu() : nullptr;
    }
}

void ViewState::RestoreMenu(Application& application) const {
    MainWindow& window = application.Window();
    if (menuRoot == MenuRoot::MenuBar && !menus.empty()) {
        QAction* title = ActionOf(application, *window.menuBar(), menus[0]);
        if (!title || !title->menu())
            return;
        window.menuBar()->setActiveAction(title);
        RestoreBelow(application, title->menu());
    } else if (menuRoot == MenuRoot::Toolbar && !menus.empty()) {
        RestoreDropDown(application);
    } else if (menuRoot == MenuRoot::Explorer) {
        const ExplorerPage* page = window.Explorer().CurrentPage();
        if (!page || !page->Tree()->Tree()->SelectedItem())
            return;
        window.Bars().SetPopupPlace(menuPlace);
        application.ByHost([&] { page->Tree()->Tree()->MouseUp.Raise(RightButton, NoShift, 0, 0); });
    }
}

} // namespace corvane::desktop
