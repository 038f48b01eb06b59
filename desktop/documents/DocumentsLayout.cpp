#include "desktop/documents/Documents.h"

#include <QMdiArea>
#include <QSplitter>
#include <algorithm>
#include <cmath>

namespace corvane::desktop {

namespace {

constexpr int mostTiles = 9; // more windows share the groups

} // namespace

void Documents::SetAlone() {
    const auto groups = Groups();
    std::vector<TabGroup::Entry> entries;
    for (TabGroup* group : groups)
        while (!group->Entries().empty())
            entries.push_back(group->Take(group->Entries().front().frame));
    delete m_root;
    MakeRoot();
    if (entries.empty())
        return;
    TabGroup* all = NewGroup();
    m_root->addWidget(all);
    for (const auto& entry : entries)
        all->Insert(static_cast<int>(all->Entries().size()), entry);
}

void Documents::ResetLayout() {
    if (!m_isTabbed)
        return;
    WindowFrame* const active = ActiveFrame();
    for (WindowFrame* frame : std::vector(m_frames))
        if (frame->Held() == WindowFrame::Holding::Own) {
            TabGroup* group = ActiveGroup();
            MoveTo(*frame, {group, -1, {}, false, {}});
        }
    Arrange(Arrangement::Cascade);
    if (active)
        Activate(*active);
}

void Documents::Arrange(Arrangement how) {
    if (!m_isTabbed || how == Arrangement::ArrangeIcons)
        return;
    WindowFrame* const active = ActiveFrame();
    SetAlone();
    const auto groups = Groups();
    std::vector<TabGroup::Entry> entries;
    if (!groups.empty() && how != Arrangement::Cascade)
        entries = groups.front()->Entries();
    std::erase_if(entries, [](const auto& entry) { return !entry.isShown; });
    const int cells = std::min(mostTiles, static_cast<int>(entries.size()));
    if (cells > 1) {
        for (const auto& entry : entries)
            groups.front()->Take(entry.frame);
        const bool sideBySide = how == Arrangement::TileVertical;
        const int lines = static_cast<int>(std::sqrt(static_cast<double>(cells)));
        m_root->setOrientation(sideBySide ? Qt::Vertical : Qt::Horizontal);
        std::size_t next = 0;
        for (int line = 0; line < lines; ++line) {
            const int inLine = cells / lines + (line >= lines - cells % lines ? 1 : 0);
            QSplitter* row = NewPart(sideBySide ? Qt::Horizontal : Qt::Vertical);
            m_root->addWidget(row);
            for (int i = 0; i < inLine; ++i, ++next) {
                TabGroup* group = NewGroup();
                row->addWidget(group);
                for (std::size_t entry = next; entry < entries.size(); entry += static_cast<std::size_t>(cells))
                    group->Insert(static_cast<int>(group->Entries().size()), entries[entry]);
            }
            row->setSizes(QList<int>(inLine, 1000));
        }
        m_root->setSizes(QList<int>(m_root->count(), 1000));
        RemoveIfEmpty(groups.front());
        Tidy(m_root);
    }
    if (active && GroupOf(active))
        GroupOf(active)->SetFront(active);
    ShowGroups();
    if (active)
        Activate(*active);
    Q_EMIT Changed();
}

// What is kept.

QJsonObject Documents::StateOf(const QWidget& cell, const std::map<const QWidget*, int>& numbers) const {
    QJsonObject state;
    if (const auto* splitter = qobject_cast<const QSplitter*>(&cell)) {
        QJsonArray parts;
        QJsonArray sizes;
        for (int i = 0; i < splitter->count(); ++i) {
            parts.append(StateOf(*splitter->widget(i), numbers));
            sizes.append(splitter->sizes()[i]);
        }
        return {{"split", splitter->orientation() == Qt::Horizontal ? "across" : "down"},
                {"parts", parts},
                {"sizes", sizes}};
    }
    const auto& group = static_cast<const TabGroup&>(cell);
    QJsonArray tabs;
    QJsonArray pinned;
    for (const auto& entry : group.Entries())
        if (const auto it = numbers.find(entry.frame->Widget()); it != numbers.end()) {
            tabs.append(it->second);
            if (entry.isPinned)
                pinned.append(it->second);
            if (entry.frame == group.Front())
                state["front"] = it->second;
        }
    state["tabs"] = tabs;
    if (!pinned.isEmpty())
        state["pinned"] = pinned;
    return state;
}

QJsonObject Documents::State(const std::vector<QWidget*>& windows) const {
    if (!m_root)
        return {};
    std::map<const QWidget*, int> numbers;
    for (std::size_t i = 0; i < windows.size(); ++i)
        if (windows[i])
            numbers.emplace(windows[i], static_cast<int>(i));
    return StateOf(*m_root, numbers);
}

void Documents::Build(const QJsonObject& state, QSplitter& parent, const std::vector<QWidget*>& windows) {
    const auto frameOf = [&](const QJsonValue& number) {
        const int i = number.toInt(-1);
        return i >= 0 && static_cast<std::size_t>(i) < windows.size() ? FrameOf(windows[static_cast<std::size_t>(i)])
                                                                      : nullptr;
    };
    if (!state["parts"].isArray()) {
        TabGroup* group = NewGroup();
        parent.addWidget(group);
        const QJsonArray pinned = state["pinned"].toArray();
        for (const auto& number : state["tabs"].toArray())
            if (WindowFrame* frame = frameOf(number))
                if (TabGroup* before = GroupOf(frame); before && before != group)
                    group->Insert(static_cast<int>(group->Entries().size()),
                                  {frame, pinned.contains(number), before->Take(frame).isShown});
        if (WindowFrame* front = frameOf(state["front"]); front && group->IndexOf(front) >= 0)
            group->SetFront(front);
        return;
    }
    QSplitter* splitter = NewPart(state["split"].toString() == "down" ? Qt::Vertical : Qt::Horizontal);
    parent.addWidget(splitter);
    for (const auto& part : state["parts"].toArray())
        Build(part.toObject(), *splitter, windows);
    QList<int> sizes;
    for (const auto& size : state["sizes"].toArray())
        sizes.append(std::max(1, size.toInt()));
    if (sizes.size() == splitter->count())
        splitter->setSizes(sizes);
    if (splitter->count() == 0)
        delete splitter;
}

void Documents::Restore(const QJsonObject& state, const std::vector<QWidget*>& windows) {
    if (!m_isTabbed || !state["parts"].isArray())
        return;
    WindowFrame* const active = ActiveFrame();
    SetAlone();
    const auto before = Groups();
    if (before.empty())
        return;
    Build(state, *m_root, windows);
    const auto groups = Groups();
    if (groups.size() > 1)
        while (!groups[0]->Entries().empty()) { // windows that are new
            const auto entry = groups[0]->Take(groups[0]->Entries().front().frame);
            groups[1]->Insert(static_cast<int>(groups[1]->Entries().size()), entry);
        }
    for (TabGroup* group : groups)
        RemoveIfEmpty(group);
    Tidy(m_root);
    if (active && GroupOf(active))
        GroupOf(active)->SetFront(active);
    ShowGroups();
    Q_EMIT Changed();
}

} // namespace corvane::desktop
