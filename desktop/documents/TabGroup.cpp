#include "desktop/documents/TabGroup.h"

#include <QVBoxLayout>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr QSize smallestRoom(120, 80); // pixels

} // namespace

QString TabTitle(const QWidget& window) {
    QString title = window.windowTitle();
    title.replace("[*][*]", QString(QChar(0)));
    title.replace("[*]", window.isWindowModified() ? "*" : "");
    return title.replace(QChar(0), "[*]");
}

TabGroup::TabGroup(QWidget* parent) : QWidget(parent), m_bar(new DocumentBar(this)), m_room(new QWidget(this)) {
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(m_bar);
    all->addWidget(m_room, 1);
    m_room->setMinimumSize(smallestRoom);
    m_room->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_bar->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

bool TabGroup::HasShown() const {
    return std::any_of(m_entries.begin(), m_entries.end(), [](const Entry& entry) { return entry.isShown; });
}

int TabGroup::IndexOf(const WindowFrame* frame) const {
    const auto it =
        std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) { return entry.frame == frame; });
    return it == m_entries.end() ? -1 : static_cast<int>(it - m_entries.begin());
}

TabGroup::Entry* TabGroup::Find(const WindowFrame* frame) {
    const int index = IndexOf(frame);
    return index < 0 ? nullptr : &m_entries[static_cast<std::size_t>(index)];
}

WindowFrame* TabGroup::Front() const {
    for (auto it = m_used.rbegin(); it != m_used.rend(); ++it)
        if (const int index = IndexOf(*it); index >= 0 && m_entries[static_cast<std::size_t>(index)].isShown)
            return m_entries[static_cast<std::size_t>(index)].frame;
    return nullptr;
}

void TabGroup::Insert(int index, const Entry& entry) {
    const auto pinnedCount = static_cast<int>(
        std::count_if(m_entries.begin(), m_entries.end(), [](const Entry& other) { return other.isPinned; }));
    const auto entryCount = static_cast<int>(m_entries.size());
    const int place = entry.isPinned ? std::clamp(index, 0, pinnedCount) : std::clamp(index, pinnedCount, entryCount);
    m_entries.insert(m_entries.begin() + place, entry);
    m_used.insert(m_used.begin(), entry.frame);
    ShowTabs();
}

TabGroup::Entry TabGroup::Take(const WindowFrame* frame) {
    Entry taken = *Find(frame);
    m_entries.erase(m_entries.begin() + IndexOf(frame));
    std::erase(m_used, frame);
    ShowTabs();
    return taken;
}

void TabGroup::SetFront(const WindowFrame* frame) {
    std::erase(m_used, frame);
    m_used.push_back(frame);
    ShowTabs();
}

void TabGroup::SetPinned(const WindowFrame* frame, bool pinned) {
    Entry entry = *Find(frame);
    if (entry.isPinned == pinned)
        return;
    const auto used = m_used;
    m_entries.erase(m_entries.begin() + IndexOf(frame));
    std::erase(m_used, frame);
    entry.isPinned = pinned;
    Insert(pinned ? static_cast<int>(m_entries.size()) : 0, entry); // beside the border between the two kinds
    m_used = used;
    ShowTabs();
}

void TabGroup::SetShown(const WindowFrame* frame, bool shown) {
    if (Entry* entry = Find(frame); entry && entry->isShown != shown) {
        entry->isShown = shown;
        ShowTabs();
    }
}

void TabGroup::ShowTabs() {
    std::vector<DocumentBar::Tab> tabs;
    for (const Entry& entry : m_entries) {
        const QWidget* window = entry.frame->Widget();
        tabs.push_back({window ? TabTitle(*window) : QString(), window ? window->windowIcon() : QIcon(), entry.isPinned,
                        entry.isShown});
    }
    m_bar->Show(tabs, IndexOf(Front()));
}

void TabGroup::Place(const QWidget& base) const {
    const QRect room(m_room->mapTo(&base, QPoint()), m_room->size());
    for (const Entry& entry : m_entries)
        entry.frame->PlaceInTab(room);
}

} // namespace corvane::desktop

#include "moc_TabGroup.cpp"
