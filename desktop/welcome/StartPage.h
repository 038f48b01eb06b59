// The start page: what an application is, and lists of what can be done first. What is in them comes from outside, and
// so does what follows when something is chosen.
#pragma once

#include <QIcon>
#include <QScrollArea>
#include <functional>
#include <optional>
#include <vector>

class QCheckBox;
class QGridLayout;
class QLabel;

namespace corvane::desktop {

class EntryButton;

class StartPage final : public QScrollArea {
    Q_OBJECT
public:
    struct Entry {
        QString text;
        QString detail; // in one line below it, or empty
        QIcon icon;
        std::optional<bool> isDone; // of a step
        bool isEnabled = true;
        QString toolTip;
        std::function<void()> choose;
    };
    struct Section {
        QString title;
        std::vector<Entry> entries; // never none
    };
    struct Content {
        QString title;
        QString text;
        QIcon icon;
        std::vector<Section> sections;
        bool isShownAtStart = true;
    };

    explicit StartPage(QWidget* parent = nullptr);

    // The focus stays at the entry of the same text.
    void Show(const Content& content);
    // Puts the keyboard where it was in the page, or on the first entry.
    void Focus();

Q_SIGNALS:
    void ShownAtStartChanged(bool shown);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void SetFonts();
    void Arrange();
    [[nodiscard]] QWidget* NewSection(const Section& section);

    QWidget* m_inside;
    QLabel* m_icon;
    QLabel* m_title;
    QLabel* m_text;
    QGridLayout* m_grid;
    QCheckBox* m_shown;
    std::vector<QWidget*> m_sections;
    int m_columns = 0;
};

} // namespace corvane::desktop
