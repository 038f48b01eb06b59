#include "desktop/explorer/ExplorerPanel.h"

#include "desktop/translation/ShownText.h"

#include <QLabel>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

namespace corvane::desktop {

namespace {

// At 96 pixels an inch, which is what a logical pixel means.
constexpr int TwipsPerPixel = 15;

void LogFailure(const std::function<void()>& call) {
    try {
        call();
    } catch (...) {
        const Failure failure = CurrentFailure();
        qWarning("Failure %d: %s", failure.Number, failure.Description.c_str());
    }
}

// A caption isn't a place for mnemonics.
QString WithoutMnemonics(QString caption) {
    return caption.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

ExplorerPanel::ExplorerPanel(Ref<PanelForm> form, Guard guard, QWidget* parent, std::shared_ptr<items::Items> items)
    : QWidget(parent), m_form(std::move(form)), m_guard(guard ? std::move(guard) : LogFailure),
      m_items(std::move(items)), m_tabBar(new QTabBar(this)), m_stack(new QStackedWidget(this)),
      m_empty(NewMessageLabel(tr("The explorer is empty. Items appear here when the application provides them."),
                              m_stack)) {
    m_tabBar->setDocumentMode(true);
    m_tabBar->setExpanding(false);
    m_tabBar->setDrawBase(true);
    m_tabBar->setElideMode(Qt::ElideRight);
    m_tabBar->setUsesScrollButtons(true);
    m_tabBar->setAcceptDrops(true);
    m_tabBar->setChangeCurrentOnDrag(true);
    m_tabBar->setAccessibleName(tr("Explorer tabs"));
    m_stack->addWidget(m_empty);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_tabBar);
    layout->addWidget(m_stack, 1);

    for (const Ref<Object>& control : *m_form->Controls()) {
        if (const auto strip = control.TryAs<TabStrip>())
            m_strip = strip;
        AddPage(control);
    }
    m_form_ControlAdded = m_form->ControlAdded.Subscribe([this](const Ref<Object>& control) { AddPage(control); });
    if (m_strip)
        m_strip_Changed = m_strip->Changed.Subscribe([this] { Strip_Changed(); });
    connect(m_tabBar, &QTabBar::currentChanged, this, &ExplorerPanel::TabBar_CurrentChanged);
    ShowStrip();
}

// A label that is being edited ends with its tree, which goes after this.
ExplorerPanel::~ExplorerPanel() {
    for (const ExplorerTree* tree : findChildren<ExplorerTree*>())
        disconnect(tree, nullptr, this, nullptr);
}

ExplorerPage* ExplorerPanel::Page(int tab) const {
    return tab >= 0 && tab < static_cast<int>(m_pages.size()) ? m_pages[static_cast<std::size_t>(tab)] : nullptr;
}

ExplorerPage* ExplorerPanel::CurrentPage() const {
    return qobject_cast<ExplorerPage*>(m_stack->currentWidget());
}

void ExplorerPanel::AddPage(const Ref<Object>& control) {
    const auto treeView = control.TryAs<TreeView>();
    if (!treeView)
        return;
    auto* page = new ExplorerPage(treeView, m_icons, m_guard, m_stack, m_items);
    page->Tree()->SetTakesFiles([this] { return m_takesFiles && m_takesFiles(); });
    connect(page->Tree(), &ExplorerTree::FilesDropped, this, &ExplorerPanel::FilesDropped);
    connect(page->Tree(), &ExplorerTree::PopupPlace, this, &ExplorerPanel::PopupPlace);
    connect(page->Tree(), &ExplorerTree::NameTyped, this, &ExplorerPanel::NameTyped);
    m_stack->addWidget(page);
    m_pages.push_back(page);
    Strip_Changed();
}

// Setting up writes each caption on its own; the tabs are drawn once.
void ExplorerPanel::Strip_Changed() {
    if (m_scheduled)
        return;
    m_scheduled = true;
    QMetaObject::invokeMethod(this, &ExplorerPanel::ShowStrip, Qt::QueuedConnection);
}

void ExplorerPanel::ShowStrip() {
    m_scheduled = false;
    const QScopedValueRollback follows(m_followsModel, true);
    const int tabs = m_strip ? m_strip->Tabs() : 0;
    while (m_tabBar->count() > tabs)
        m_tabBar->removeTab(m_tabBar->count() - 1);
    while (m_tabBar->count() < tabs)
        m_tabBar->addTab({});
    for (int i = 0; i < tabs; ++i) {
        const QString caption = ShownTab(m_strip->CaptionOf(i));
        const QString text = WithoutMnemonics(caption);
        if (m_tabBar->tabText(i) != text) {
            m_tabBar->setTabText(i, text);
            m_tabBar->setTabToolTip(i, caption.toHtmlEscaped());
        }
    }
    const int current = m_strip ? m_strip->Tab() : 0;
    if (tabs > 0)
        m_tabBar->setCurrentIndex(current);
    m_tabBar->setVisible(tabs > 0);
    ExplorerPage* page = tabs > 0 || !m_strip ? Page(current) : nullptr;
    m_stack->setCurrentWidget(page ? static_cast<QWidget*>(page) : m_empty);
}

void ExplorerPanel::TabBar_CurrentChanged(int tab) {
    if (m_followsModel || !m_strip || tab < 0)
        return;
    m_guard([strip = m_strip, tab] { strip->ChooseTab(tab); });
    ShowStrip();
}

void ExplorerPanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (m_strip)
        m_strip->SetBounds(0, static_cast<Single>(width() * TwipsPerPixel),
                           static_cast<Single>(height() * TwipsPerPixel));
    m_guard([form = m_form] { form->Resize.Raise(); });
}

} // namespace corvane::desktop

#include "moc_ExplorerPanel.cpp"
