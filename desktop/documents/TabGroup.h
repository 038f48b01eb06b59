// Windows in one place, one over another, with their tabs above: a cell of the area.
#pragma once

#include "desktop/documents/DocumentBar.h"
#include "desktop/windows/WindowFrame.h"

#include <QWidget>
#include <vector>

namespace corvane::desktop {

class TabGroup final : public QWidget {
    Q_OBJECT
public:
    struct Entry {
        WindowFrame* frame;
        bool isPinned = false;
        bool isShown = true; // false while its window is hidden
    };

    explicit TabGroup(QWidget* parent = nullptr);

    [[nodiscard]] DocumentBar& Bar() { return *m_bar; }
    [[nodiscard]] const std::vector<Entry>& Entries() const { return m_entries; }
    [[nodiscard]] bool HasShown() const;
    [[nodiscard]] int IndexOf(const WindowFrame* frame) const; // -1 when it isn't here
    // The one in front, which is shown; null when none is.
    [[nodiscard]] WindowFrame* Front() const;
    void Insert(int index, const Entry& entry); // pinned ones stay first
    Entry Take(const WindowFrame* frame);
    void SetFront(const WindowFrame* frame);
    void SetPinned(const WindowFrame* frame, bool pinned);
    void SetShown(const WindowFrame* frame, bool shown);
    void ShowTabs(); // titles, icons and what is modified
    // Puts the windows below the tabs; base is the area's viewport.
    void Place(const QWidget& base) const;

private:
    Entry* Find(const WindowFrame* frame);

    DocumentBar* m_bar;
    QWidget* m_room;
    std::vector<Entry> m_entries;
    std::vector<const WindowFrame*> m_used; // the latest last
};

// Of a window, with the sign of what isn't saved.
[[nodiscard]] QString TabTitle(const QWidget& window);

} // namespace corvane::desktop
