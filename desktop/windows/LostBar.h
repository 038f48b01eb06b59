// Above a page whose process has ended: why, and a button that starts it again. What has been entered stays.
#pragma once

#include "adapters/common/Recoverable.h"
#include "corvane/base/Ref.h"

#include <QCoreApplication>
#include <QFrame>
#include <functional>

class QLabel;

namespace corvane::desktop {

class LostBar final : public QFrame {
    Q_DECLARE_TR_FUNCTIONS(LostBar)
public:
    // recover is called when the button is pressed.
    LostBar(Ref<Recoverable> page, std::function<void()> recover, QWidget* parent);

private:
    void Show();

    Ref<Recoverable> m_page;
    QLabel* m_text;
    Subscription m_changed;
};

} // namespace corvane::desktop
