#include "desktop/windows/WindowHost.h"

#include <QStyle>

namespace corvane::desktop {

const QIcon& WindowHost::ChildIcon() const {
    if (m_childIcon.isNull() && mainWindow)
        m_childIcon = mainWindow->windowIcon().isNull()
                          ? mainWindow->style()->standardIcon(QStyle::SP_FileIcon, nullptr, mainWindow)
                          : mainWindow->windowIcon();
    return m_childIcon;
}

} // namespace corvane::desktop
