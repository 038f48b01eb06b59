// The parts of the platform that only a desktop has: screen, timers, messages, dialogs by name.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/platform/IMessageBox.h"
#include "corvane/platform/IScreen.h"
#include "corvane/platform/ITimers.h"

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
    [[nodiscard]] MousePointer Pointer() const override { return m_ePointer; }
    void SetPointer(MousePointer ePointer) override;
    // By the primary screen's logical resolution.
    [[nodiscard]] Single TwipsPerPixelX() const override;
    [[nodiscard]] Single TwipsPerPixelY() const override;

private:
    MousePointer m_ePointer = MousePointer::Default;
};

// Where a message or a dialog belongs: over the window that is active, or else over that one.
[[nodiscard]] QWidget* ActiveWindowOr(QWidget* pWindow);

class QtTimers final : public ITimers {
public:
    using GuardFunction = std::function<void(const std::function<void()>&)>;
    explicit QtTimers(GuardFunction fnGuard) : m_fnGuard(std::move(fnGuard)) {}
    [[nodiscard]] Ref<ITimer> NewTimer() override;
    void DoEvents() override;
    // How many timers are waiting for their tick.
    [[nodiscard]] int RunningCount() const { return *m_pRunning; }

private:
    GuardFunction m_fnGuard;
    std::shared_ptr<int> m_pRunning = std::make_shared<int>(0);
};

// Keeps what was shown; without dialogs that is all it does.
class QtMessageBox final : public IMessageBox {
public:
    explicit QtMessageBox(bool bWithDialogs) : m_bWithDialogs(bWithDialogs) {}
    void SetParentWindow(QWidget* pWindow) { m_pWindow = pWindow; }
    void ShowInformation(std::string_view sText, std::string_view sTitle) override;

    struct Message {
        QString sText;
        QString sTitle;
    };
    [[nodiscard]] const std::vector<Message>& Shown() const { return m_aShown; }

private:
    bool m_bWithDialogs;
    QPointer<QWidget> m_pWindow;
    std::vector<Message> m_aShown;
};

// The host's "CommonDialog": dialogs that plug-ins open by name.
class CommonDialog final : public Automation<CommonDialog> {
public:
    explicit CommonDialog(bool bWithDialogs) : m_bWithDialogs(bWithDialogs) {}
    void SetParentWindow(QWidget* pWindow) { m_pWindow = pWindow; }
    // Answers the next dialog without showing it; several answers are used in order.
    void AddAnswer(std::string sAnswer) { m_aAnswers.push_back(std::move(sAnswer)); }

    // The answer that is given without asking, if there is one or nobody to ask.
    [[nodiscard]] std::optional<std::string> TakeAnswer();

    // The path that the person chose, empty when they cancelled or there is nobody to ask. The filter is written in
    // pairs of a text and a pattern, like "Data files (*.csv)|*.csv|All files|*".
    [[nodiscard]] std::string ShowOpen(const std::string& sTitle, const std::string& sFilter,
                                       const std::string& sFolder);
    [[nodiscard]] std::string ShowSave(const std::string& sTitle, const std::string& sFilter, const std::string& sPath);
    // The text that the person entered, empty when they cancelled or there is nobody to ask.
    [[nodiscard]] std::string AskText(const std::string& sTitle, const std::string& sPrompt, const std::string& sText);
    // One of the choices, which are separated by line feeds; empty when the person cancelled.
    [[nodiscard]] std::string ShowChoice(const std::string& sTitle, const std::string& sChoices);

    static constexpr auto Members =
        MemberTable(Method("ShowOpen", &CommonDialog::ShowOpen), Method("ShowSave", &CommonDialog::ShowSave),
                    Method("AskText", &CommonDialog::AskText), Method("ShowChoice", &CommonDialog::ShowChoice));

private:
    bool m_bWithDialogs;
    QPointer<QWidget> m_pWindow;
    std::deque<std::string> m_aAnswers;
};

} // namespace corvane::desktop
