// The tabs of a window's pages; they know how much of them isn't page.
#pragma once

#include <QStyle>
#include <QStyleOptionTabWidgetFrame>
#include <QTabWidget>

namespace corvane::desktop {

class PageTabs final : public QTabWidget {
public:
    [[nodiscard]] QSize NonPageSize() const {
        QStyleOptionTabWidgetFrame option;
        initStyleOption(&option);
        option.rect = QRect(0, 0, 1000, 1000);
        return option.rect.size() - style()->subElementRect(QStyle::SE_TabWidgetTabContents, &option, this).size();
    }
};

} // namespace corvane::desktop
