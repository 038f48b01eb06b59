// How well a few typed letters fit a text: the letters of each word stand in it in order, best together and at the
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
    // Matches at iMain and behind count more: "File › Export" with iMain at "Export".
    FuzzyText(const QString& sText, qsizetype iMain);

    // Higher is better; nothing where a word isn't in the text. The words are in small letters.
    [[nodiscard]] std::optional<int> Score(const QStringList& aWords) const;
    // The places of the letters that matched, for Score's words, in order.
    [[nodiscard]] std::vector<qsizetype> Places(const QStringList& aWords) const;

private:
    struct Hit {
        int nScore = 0;
        std::vector<qsizetype>* pPlaces = nullptr;
    };
    [[nodiscard]] bool Match(const QString& sWord, Hit& oHit) const;
    [[nodiscard]] bool IsWordStart(qsizetype i) const;
    [[nodiscard]] qsizetype BestWhole(const QString& sWord) const;

    QString m_sFolded;
    qsizetype m_iMain;
};

// What was typed as words in small letters.
[[nodiscard]] QStringList FuzzyWords(const QString& sTyped);

} // namespace corvane::desktop
