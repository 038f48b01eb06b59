#include "desktop/windows/WindowHost.h"

#include <QStyle>

namespace corvane::desktop {

const QIcon& WindowHost::ChildIcon() const {
    if (m_oChildIcon.isNull() && pMainWindow)
        m_oChildIcon = pMainWindow->windowIcon().isNull()
                           ? pMainWindow->style()->standardIcon(QStyle::SP_FileIcon, nullptr, pMainWindow)
                           : pMainWindow->windowIcon();
    return m_oChildIcon;
}

} // namespace corvane::desktop
