// The pages of a window as a list with a field to search them, for windows with more pages than tabs have space for.
#pragma once

#include "desktop/windows/PageMark.h"

#include <QWidget>
#include <vector>

class QLabel;
class QLineEdit;
class QListWidget;

namespace corvane::desktop {

class PageList final : public QWidget {
    Q_OBJECT
public:
    explicit PageList(QWidget* parent = nullptr);

    void AddPage(const PageMark& mark);
    void SetPage(int page, const PageMark& mark);
    void SetCurrentPage(int page);
    // What is on a page, besides its caption, for the search.
    void SetTexts(int page, const QString& texts);

Q_SIGNALS:
    void PageChosen(int page);
    void TextsWanted(); // before the first search; to be answered by SetTexts

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Search(const QString& words);

    QLineEdit* m_search;
    QListWidget* m_pages;
    QLabel* m_nothing;
    std::vector<QString> m_texts;
    bool m_textsAsked = false;
};

} // namespace corvane::desktop
