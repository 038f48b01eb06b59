// The host's "CommonDialog" without a display: questions are answered beforehand, by steps or by a test.
#pragma once

#include "corvane/base/Automation.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace corvane::inspect {

class Dialogs final : public Automation<Dialogs> {
public:
    // For the next question that has none yet; "" cancels it. A question without an answer is cancelled, too.
    void AddAnswer(std::string answer) { m_answers.push_back(std::move(answer)); }
    // Runs before a question for which there is no answer; it may add one.
    void SetBeforeQuestion(std::function<void()> act) { m_beforeQuestion = std::move(act); }
    // What has been asked since the last call without an answer, and what has been asked at all.
    [[nodiscard]] std::vector<std::string> TakeUnanswered() { return std::exchange(m_unanswered, {}); }
    [[nodiscard]] const std::vector<std::string>& Asked() const { return m_asked; }

    // As the members of the desktop host are called.
    [[nodiscard]] std::string ShowOpen(const std::string& title, const std::string& filter, const std::string& folder);
    [[nodiscard]] std::string ShowSave(const std::string& title, const std::string& filter, const std::string& path);
    [[nodiscard]] std::string AskText(const std::string& title, const std::string& question, const std::string& text);
    [[nodiscard]] std::string ShowChoice(const std::string& title, const std::string& choices);
    [[nodiscard]] std::string Ask(const std::string& title, const std::string& question, const std::string& choices);

    static constexpr auto Members = MemberTable(
        Method("ShowOpen", &Dialogs::ShowOpen), Method("ShowSave", &Dialogs::ShowSave),
        Method("AskText", &Dialogs::AskText), Method("ShowChoice", &Dialogs::ShowChoice), Method("Ask", &Dialogs::Ask));

private:
    std::string Answer(const std::string& question);

    std::deque<std::string> m_answers;
    std::function<void()> m_beforeQuestion;
    std::vector<std::string> m_asked;
    std::vector<std::string> m_unanswered;
};

} // namespace corvane::inspect
