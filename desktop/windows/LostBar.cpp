#include "desktop/windows/LostBar.h"

#include "desktop/style/QtText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

namespace corvane::desktop {

LostBar::LostBar(Ref<Recoverable> page, std::function<void()> recover, QWidget* parent)
    : QFrame(parent), m_page(std::move(page)), m_text(new QLabel(this)) {
    setObjectName("LostBar");
    setFrameShape(QFrame::StyledPanel);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* again = new QPushButton(tr("&Start Again"), this);
    again->setToolTip(tr("Starts the service of this page. What you have entered stays"));
    again->setAutoDefault(false);
    connect(again, &QPushButton::clicked, this, [recover = std::move(recover)] { recover(); });
    auto* warning = new QLabel(this); // the text says what it does
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    warning->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(size));
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(warning);
    layout->addWidget(m_text, 1);
    layout->addWidget(again);
    m_changed = m_page->LostChanged.Subscribe([this] { Show(); });
    Show();
}

void LostBar::Show() {
    m_text->setText(Text(m_page->WhyLost()));
    setVisible(!m_page->WhyLost().empty());
}

} // namespace corvane::desktop
