#include "desktop/service/PrintProgress.h"

#include "desktop/service/OnlyPaint.h"

#include <QDialog>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr qint64 moment = 300; // ms until it is shown
constexpr qint64 turn = 40;    // ms between two looks at Cancel

} // namespace

PrintProgress::PrintProgress(QString title, QWidget* parent) : m_title(std::move(title)), m_parent(parent) {
    m_sinceStart.start();
    m_sinceTurn.start();
}

PrintProgress::~PrintProgress() = default;

void PrintProgress::Open() {
    m_dialog = std::make_unique<QDialog>(m_parent);
    m_dialog->setWindowTitle(tr("Print: %1").arg(m_title));
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_text = new QLabel(m_dialog.get());
    m_bar = new QProgressBar(m_dialog.get());
    m_bar->setMinimumWidth(320);
    m_bar->setAccessibleName(tr("Sheets"));
    auto* cancel = new QPushButton(tr("&Cancel"), m_dialog.get());
    auto* layout = new QVBoxLayout(m_dialog.get());
    layout->addWidget(m_text);
    layout->addWidget(m_bar);
    layout->addWidget(cancel, 0, Qt::AlignRight);
    QObject::connect(cancel, &QPushButton::clicked, m_dialog.get(), [this] { m_isCancelled = true; });
    m_only = std::make_unique<OnlyPaint>(std::vector{cancel});
    m_dialog->show();
    cancel->setFocus();
}

bool PrintProgress::Show(std::size_t sheet, std::size_t all) {
    if (m_isCancelled || m_sinceTurn.elapsed() < turn || (!m_dialog && m_sinceStart.elapsed() < moment))
        return !m_isCancelled;
    if (!m_dialog)
        Open();
    m_bar->setRange(0, static_cast<int>(all));
    m_bar->setValue(all == 0 ? 0 : static_cast<int>(sheet));
    const QString number = QLocale().toString(static_cast<qulonglong>(sheet));
    m_text->setText(all == 0 ? tr("Laying out sheet %1").arg(number)
                             : tr("Sheet %1 of %2").arg(number, QLocale().toString(static_cast<qulonglong>(all))));
    QCoreApplication::processEvents();
    m_sinceTurn.restart();
    return !m_isCancelled;
}

} // namespace corvane::desktop
