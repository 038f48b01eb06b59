// How well a few typed letters fit a text: the letters of each word are in it in order, best together and at the
// beginnings of its words.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace corvane::desktop {

// A text prepared for many searches.
class FuzzyText {
public:
    // Matches at main and behind count more: "File › Export" with main at "Export".
    FuzzyText(const QString& text, qsizetype main);

    // Higher is better; nothing where a word isn't in the text. The words are in small letters.
    [[nodiscard]] std::optional<int> Score(const QStringList& words) const;
    // The places of the letters that matched, for Score's words, in order.
    [[nodiscard]] std::vector<qsizetype> Places(const QStringList& words) const;

private:
    struct Hit {
        int score = 0;
        std::vector<qsizetype>* places = nullptr;
    };
    [[nodiscard]] bool Match(const QString& word, Hit& hit) const;
    [[nodiscard]] bool IsWordStart(qsizetype i) const;
    [[nodiscard]] qsizetype BestWhole(const QString& word) const;

    QString m_folded;
    qsizetype m_main;
};

// What was typed as words in small letters.
[[nodiscard]] QStringList FuzzyWords(const QString& typed);

} // namespace corvane::desktop
