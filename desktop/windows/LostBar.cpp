#include "desktop/windows/LostBar.h"

#include "desktop/style/QtText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace corvane::desktop {

LostBar::LostBar(Ref<Recoverable> page, std::function<void()> recover, QWidget* parent)
    : QFrame(parent), m_page(std::move(page)), m_text(new QLabel(this)) {
    setFrameShape(QFrame::StyledPanel);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* again = new QPushButton(tr("&Start Again"), this);
    again->setToolTip(tr("Starts the service of this page. What you have entered stays"));
    again->setAutoDefault(false);
    connect(again, &QPushButton::clicked, this, [recover = std::move(recover)] { recover(); });
    auto* layout = new QHBoxLayout(this);
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
