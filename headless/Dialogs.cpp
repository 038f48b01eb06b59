#include "headless/Dialogs.h"

namespace corvane::inspect {

std::string Dialogs::Answer(const std::string& question) {
    m_asked.push_back(question);
    if (m_answers.empty() && m_beforeQuestion)
        m_beforeQuestion();
    if (m_answers.empty()) {
        m_unanswered.push_back(question);
        return {};
    }
    std::string answer = std::move(m_answers.front());
    m_answers.pop_front();
    return answer;
}

std::string Dialogs::ShowOpen(const std::string& title, const std::string& /*filter*/, const std::string& /*folder*/) {
    return Answer(title);
}

std::string Dialogs::ShowSave(const std::string& title, const std::string& /*filter*/, const std::string& /*path*/) {
    return Answer(title);
}

std::string Dialogs::AskText(const std::string& /*title*/, const std::string& question, const std::string& /*text*/) {
    return Answer(question);
}

std::string Dialogs::ShowChoice(const std::string& title, const std::string& /*choices*/) {
    return Answer(title);
}

std::string Dialogs::Ask(const std::string& /*title*/, const std::string& question, const std::string& /*choices*/) {
    return Answer(question);
}

} // namespace corvane::inspect
