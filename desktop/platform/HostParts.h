// The parts of the platform that only a desktop has: screen, timers, messages, dialogs by name.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/platform/IMessageBox.h"
#include "corvane/platform/IScreen.h"
#include "corvane/platform/ITimers.h"
#include "desktop/guard/Guard.h"
#include "desktop/platform/FileDialogs.h"

#include <QPointer>
#include <QString>
#include <QWidget>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace corvane::desktop {

class QtScreen final : public IScreen {
public:
    [[nodiscard]] MousePointer Pointer() const override { return m_pointer; }
    void SetPointer(MousePointer pointer) override;
    // By the primary screen's logical resolution.
    [[nodiscard]] Single TwipsPerPixelX() const override;
    [[nodiscard]] Single TwipsPerPixelY() const override;

private:
    MousePointer m_pointer = MousePointer::Default;
};

// Where a message or a dialog belongs: over the window that is active, or else over that one.
[[nodiscard]] QWidget* ActiveWindowOr(QWidget* window);

class QtTimers final : public ITimers {
public:
    explicit QtTimers(Guard guard) : m_guard(std::move(guard)) {}
    [[nodiscard]] Ref<ITimer> NewTimer() override;
    void DoEvents() override;
    // How many timers are waiting for a tick that comes within half a second; those that look after something now and
    // then don't count.
    [[nodiscard]] int RunningCount() const { return *m_running; }

private:
    Guard m_guard;
    std::shared_ptr<int> m_running = std::make_shared<int>(0);
};

// Keeps what was shown; without dialogs that is all it does.
class QtMessageBox final : public IMessageBox {
public:
    explicit QtMessageBox(bool withDialogs) : m_withDialogs(withDialogs) {}
    void SetParentWindow(QWidget* window) { m_window = window; }
    void ShowInformation(std::string_view text, std::string_view title) override;

    struct Message {
        QString text;
        QString title;
    };
    [[nodiscard]] const std::vector<Message>& Shown() const { return m_shown; }

private:
    bool m_withDialogs;
    QPointer<QWidget> m_window;
    std::vector<Message> m_shown;
};

// The host's "CommonDialog": dialogs that plug-ins open by name.
class CommonDialog final : public Automation<CommonDialog> {
public:
    explicit CommonDialog(bool withDialogs) : m_withDialogs(withDialogs) {}
    void SetParentWindow(QWidget* window) { m_window = window; }
    // Keeps the folders of files there, for the next start.
    void KeepFolders(StateFile file) { m_files = FileDialogs(std::move(file)); }
    // Answers the next dialog without showing it; several answers are used in order.
    void AddAnswer(std::string answer) { m_answers.push_back(std::move(answer)); }

    // Answers the next question for a file to open, until it is taken back by nothing.
    void AnswerOpen(std::optional<std::string> path) { m_openAnswer = std::move(path); }
    // Called with each path that ShowOpen returns.
    void SetOnOpen(std::function<void(const std::string&)> onOpen) { m_onOpen = std::move(onOpen); }
    // Called with each answer to a call by name, "" for Cancel.
    void SetOnAnswer(std::function<void(const std::string&)> onAnswer) { m_onAnswer = std::move(onAnswer); }
    Variant Invoke(std::string_view name, std::span<const Variant> arguments) override;

    // The answer that is given without asking, if there is one or no one to ask.
    [[nodiscard]] std::optional<std::string> TakeAnswer();

    // The path that the user chose, empty when they cancelled or there is no one to ask. The filter is written in
    // pairs of a text and a pattern, like "Data files (*.csv)|*.csv|All files|*".
    [[nodiscard]] std::string ShowOpen(const std::string& title, const std::string& filter, const std::string& folder);
    [[nodiscard]] std::string ShowSave(const std::string& title, const std::string& filter, const std::string& path);
    [[nodiscard]] std::string ShowFolder(const std::string& title, const std::string& folder);
    // The text that the user entered, empty when they cancelled or there is no one to ask.
    [[nodiscard]] std::string AskText(const std::string& title, const std::string& prompt, const std::string& text);
    // One of the choices, which are separated by line feeds; empty when the user cancelled. Ask offers up to three as
    // buttons beside "Cancel", the first as the one that Return presses, and more as a list.
    [[nodiscard]] std::string ShowChoice(const std::string& title, const std::string& choices);
    [[nodiscard]] std::string Ask(const std::string& title, const std::string& question, const std::string& choices);

    static constexpr auto Members =
        MemberTable(Method("ShowOpen", &CommonDialog::ShowOpen), Method("ShowSave", &CommonDialog::ShowSave),
                    Method("AskText", &CommonDialog::AskText), Method("ShowChoice", &CommonDialog::ShowChoice),
                    Method("Ask", &CommonDialog::Ask));

private:
    [[nodiscard]] std::string ChooseInList(const std::string& title, const std::string& question,
                                           const QStringList& choices) const;

    bool m_withDialogs;
    QPointer<QWidget> m_window;
    std::deque<std::string> m_answers;
    std::optional<std::string> m_openAnswer;
    std::function<void(const std::string&)> m_onOpen;
    std::function<void(const std::string&)> m_onAnswer;
    FileDialogs m_files{StateFile({}, {})};
};

} // namespace corvane::desktop
