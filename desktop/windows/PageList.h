// The pages of a window as a list with a field to search them, for windows with more pages than tabs have room for.
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
    explicit PageList(QWidget* pParent = nullptr);

    void AddPage(const PageMark& oMark);
    void SetPage(int iPage, const PageMark& oMark);
    void SetCurrentPage(int iPage);
    // What stands on a page, besides its caption, for the search.
    void SetTexts(int iPage, const QString& sTexts);

Q_SIGNALS:
    void PageChosen(int iPage);
    void TextsWanted(); // before the first search; to be answered by SetTexts

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    void Search(const QString& sWords);

    QLineEdit* m_pSearch;
    QListWidget* m_pPages;
    QLabel* m_pNothing;
    std::vector<QString> m_aTexts;
    bool m_bTextsAsked = false;
};

} // namespace corvane::desktop
