#include "desktop/platform/HostParts.h"

#include "desktop/style/QtText.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr Single twipsPerInch = 1440;
constexpr int longestMoment = 500; // in milliseconds; a timer that looks after something now and then isn't waited for

class QtTimer final : public ITimer {
public:
    QtTimer(const Guard& guard, std::shared_ptr<int> running) : m_running(std::move(running)) {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, guard] {
            const Ref<QtTimer> self(this); // a handler may release the timer
            guard([this] { Tick.Raise(); });
        });
    }
    void SetInterval(Long milliseconds) override {
        m_timer.setInterval(milliseconds);
        Count();
    }
    ~QtTimer() override { QtTimer::SetEnabled(false); }
    void SetEnabled(bool enabled) override {
        if (enabled)
            m_timer.start();
        else
            m_timer.stop();
        Count();
    }

private:
    void Count() {
        const bool counts = m_timer.isActive() && m_timer.interval() <= longestMoment;
        *m_running += static_cast<int>(counts) - static_cast<int>(std::exchange(m_counts, counts));
    }

    bool m_counts = false;
    QTimer m_timer;
    std::shared_ptr<int> m_running;
};

} // namespace

void QtScreen::SetPointer(MousePointer pointer) {
    if (m_pointer == pointer)
        return;
    m_pointer = pointer;
    if (pointer == MousePointer::Hourglass)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

Single QtScreen::TwipsPerPixelX() const {
    return twipsPerInch / static_cast<Single>(QGuiApplication::primaryScreen()->logicalDotsPerInchX());
}

Single QtScreen::TwipsPerPixelY() const {
    return twipsPerInch / static_cast<Single>(QGuiApplication::primaryScreen()->logicalDotsPerInchY());
}

Ref<ITimer> QtTimers::NewTimer() {
    return New<QtTimer>(m_guard, m_running);
}

QWidget* ActiveWindowOr(QWidget* window) {
    QWidget* const active =
        QApplication::activeModalWidget() ? QApplication::activeModalWidget() : QApplication::activeWindow();
    return active ? active : window;
}

void QtTimers::DoEvents() {
    QCoreApplication::processEvents();
}

void QtMessageBox::ShowInformation(std::string_view text, std::string_view title) {
    m_shown.push_back({Text(text), Text(title)});
    if (!m_withDialogs)
        return;
    QMessageBox box(QMessageBox::Information, Text(title), Text(text), QMessageBox::Ok, ActiveWindowOr(m_window));
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    if (box.text().contains('\n')) // figures in columns
        box.setStyleSheet("QLabel#qt_msgbox_label { font-family: monospace; }");
    box.exec();
}

std::optional<std::string> CommonDialog::TakeAnswer() {
    if (m_answers.empty())
        return m_withDialogs ? std::nullopt : std::optional<std::string>("");
    std::string answer = std::move(m_answers.front());
    m_answers.pop_front();
    return answer;
}

Variant CommonDialog::Invoke(std::string_view name, std::span<const Variant> arguments) {
    Variant answer = Automation::Invoke(name, arguments);
    if (m_onAnswer)
        m_onAnswer(ToText(answer));
    return answer;
}

std::string CommonDialog::ShowOpen(const std::string& title, const std::string& filter, const std::string& folder) {
    std::optional<std::string> path = std::exchange(m_openAnswer, std::nullopt);
    if (!path)
        path = TakeAnswer();
    if (!path)
        path = m_files.AskOpen(ActiveWindowOr(m_window), Text(title), Text(filter), Text(folder)).toStdString();
    if (m_onOpen && !path->empty())
        m_onOpen(*path);
    return *path;
}

std::string CommonDialog::ShowSave(const std::string& title, const std::string& filter, const std::string& path) {
    if (auto answer = TakeAnswer())
        return *answer;
    return m_files.AskSave(ActiveWindowOr(m_window), Text(title), Text(filter), Text(path)).toStdString();
}

std::string CommonDialog::ShowFolder(const std::string& title, const std::string& folder) {
    if (auto answer = TakeAnswer())
        return *answer;
    return m_files.AskFolder(ActiveWindowOr(m_window), Text(title), Text(folder)).toStdString();
}

std::string CommonDialog::AskText(const std::string& title, const std::string& prompt, const std::string& text) {
    if (auto answer = TakeAnswer())
        return *answer;
    return QInputDialog::getText(ActiveWindowOr(m_window), Text(title), Text(prompt), QLineEdit::Normal, Text(text))
        .toStdString();
}

std::string CommonDialog::ChooseInList(const std::string& title, const std::string& question,
                                       const QStringList& choices) const {
    bool chosen = false;
    const QString choice =
        QInputDialog::getItem(ActiveWindowOr(m_window), Text(title), Text(question), choices, 0, false, &chosen);
    return chosen ? choice.toStdString() : std::string();
}

std::string CommonDialog::ShowChoice(const std::string& title, const std::string& choices) {
    if (auto answer = TakeAnswer())
        return *answer;
    return ChooseInList(title, title, Text(choices).split('\n', Qt::SkipEmptyParts));
}

std::string CommonDialog::Ask(const std::string& title, const std::string& question, const std::string& choices) {
    constexpr qsizetype mostButtons = 3;
    if (auto answer = TakeAnswer())
        return *answer;
    const QStringList names = Text(choices).split('\n', Qt::SkipEmptyParts);
    if (names.size() > mostButtons)
        return ChooseInList(title, question, names);
    QMessageBox box(QMessageBox::Question, Text(title), Text(question), QMessageBox::Cancel, ActiveWindowOr(m_window));
    box.setTextFormat(Qt::PlainText);
    QList<QAbstractButton*> buttons;
    for (const QString& name : names)
        buttons.append(box.addButton(QString(name).replace("&", "&&"), QMessageBox::AcceptRole));
    if (!buttons.isEmpty())
        box.setDefaultButton(qobject_cast<QPushButton*>(buttons.front()));
    box.exec();
    const qsizetype chosen = buttons.indexOf(box.clickedButton());
    return chosen < 0 ? std::string() : names[chosen].toStdString();
}

} // namespace corvane::desktop
