#include "desktop/platform/HostParts.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QScreen>
#include <QTimer>

namespace corvane::desktop {

namespace {

constexpr Single fTwipsPerInch = 1440;

QString Text(std::string_view sText) {
    return QString::fromUtf8(sText.data(), static_cast<qsizetype>(sText.size()));
}

// "Data files (*.csv)|*.csv|All files|*" as Qt's dialogs take it.
QString FilterText(const std::string& sFilter) {
    const QStringList aParts = Text(sFilter).split('|');
    QStringList aFilters;
    for (qsizetype i = 0; i + 1 < aParts.size(); i += 2) {
        const QString sPatterns = QString(aParts[i + 1]).replace(';', ' ');
        const QString sName = aParts[i].section('(', 0, 0).trimmed();
        aFilters.append(QString("%1 (%2)").arg(sName, sPatterns));
    }
    return aFilters.join(";;");
}

class QtTimer final : public ITimer {
public:
    QtTimer(const QtTimers::GuardFunction& fnGuard, std::shared_ptr<int> pRunning) : m_pRunning(std::move(pRunning)) {
        QObject::connect(&m_oTimer, &QTimer::timeout, &m_oTimer, [this, fnGuard] {
            const Ref<QtTimer> oSelf(this); // a handler may let go of the timer
            fnGuard([this] { Tick.Raise(); });
        });
    }
    void SetInterval(Long lMilliseconds) override { m_oTimer.setInterval(lMilliseconds); }
    ~QtTimer() override { QtTimer::SetEnabled(false); }
    void SetEnabled(bool bEnabled) override {
        *m_pRunning += static_cast<int>(bEnabled) - static_cast<int>(m_oTimer.isActive());
        if (bEnabled)
            m_oTimer.start();
        else
            m_oTimer.stop();
    }

private:
    QTimer m_oTimer;
    std::shared_ptr<int> m_pRunning;
};

} // namespace

void QtScreen::SetPointer(MousePointer ePointer) {
    if (m_ePointer == ePointer)
        return;
    m_ePointer = ePointer;
    if (ePointer == MousePointer::Hourglass)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

Single QtScreen::TwipsPerPixelX() const {
    return fTwipsPerInch / static_cast<Single>(QGuiApplication::primaryScreen()->logicalDotsPerInchX());
}

Single QtScreen::TwipsPerPixelY() const {
    return fTwipsPerInch / static_cast<Single>(QGuiApplication::primaryScreen()->logicalDotsPerInchY());
}

Ref<ITimer> QtTimers::NewTimer() {
    return New<QtTimer>(m_fnGuard, m_pRunning);
}

QWidget* ActiveWindowOr(QWidget* pWindow) {
    QWidget* const pActive =
        QApplication::activeModalWidget() ? QApplication::activeModalWidget() : QApplication::activeWindow();
    return pActive ? pActive : pWindow;
}

void QtTimers::DoEvents() {
    QCoreApplication::processEvents();
}

void QtMessageBox::ShowInformation(std::string_view sText, std::string_view sTitle) {
    m_aShown.push_back({Text(sText), Text(sTitle)});
    if (!m_bWithDialogs)
        return;
    QMessageBox oBox(QMessageBox::Information, Text(sTitle), Text(sText), QMessageBox::Ok, ActiveWindowOr(m_pWindow));
    oBox.setTextFormat(Qt::PlainText);
    oBox.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    if (oBox.text().contains('\n')) // figures in columns
        oBox.setStyleSheet("QLabel#qt_msgbox_label { font-family: monospace; }");
    oBox.exec();
}

std::optional<std::string> CommonDialog::TakeAnswer() {
    if (m_aAnswers.empty())
        return m_bWithDialogs ? std::nullopt : std::optional<std::string>("");
    std::string sAnswer = std::move(m_aAnswers.front());
    m_aAnswers.pop_front();
    return sAnswer;
}

std::string CommonDialog::ShowOpen(const std::string& sTitle, const std::string& sFilter, const std::string& sFolder) {
    if (auto oAnswer = TakeAnswer())
        return *oAnswer;
    return QFileDialog::getOpenFileName(ActiveWindowOr(m_pWindow), Text(sTitle), Text(sFolder), FilterText(sFilter))
        .toStdString();
}

std::string CommonDialog::ShowSave(const std::string& sTitle, const std::string& sFilter, const std::string& sPath) {
    if (auto oAnswer = TakeAnswer())
        return *oAnswer;
    return QFileDialog::getSaveFileName(ActiveWindowOr(m_pWindow), Text(sTitle), Text(sPath), FilterText(sFilter))
        .toStdString();
}

std::string CommonDialog::AskText(const std::string& sTitle, const std::string& sPrompt, const std::string& sText) {
    if (auto oAnswer = TakeAnswer())
        return *oAnswer;
    return QInputDialog::getText(ActiveWindowOr(m_pWindow), Text(sTitle), Text(sPrompt), QLineEdit::Normal, Text(sText))
        .toStdString();
}

std::string CommonDialog::ShowChoice(const std::string& sTitle, const std::string& sChoices) {
    if (auto oAnswer = TakeAnswer())
        return *oAnswer;
    bool bChosen = false;
    const QString sChoice = QInputDialog::getItem(ActiveWindowOr(m_pWindow), Text(sTitle), Text(sTitle),
                                                  Text(sChoices).split('\n', Qt::SkipEmptyParts), 0, false, &bChosen);
    return bChosen ? sChoice.toStdString() : std::string();
}

} // namespace corvane::desktop
