#include "desktop/commands/FuzzyMatch.h"

#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr int wholeBonus = 60;  // the word is there as it was typed
constexpr int startBonus = 30;  // a letter begins a word of the text
constexpr int besideBonus = 15; // a letter follows the one before it
constexpr int mainBonus = 10;   // a letter is in the main part
constexpr int gapCost = 1;      // for each letter between two
constexpr int lengthShare = 8;  // of two texts the shorter one, by little

// Small letters one by one, so that places are those of the text itself.
QString Folded(const QString& text) {
    QString folded = text;
    for (QChar& c : folded)
        c = c.toLower();
    return folded;
}

} // namespace

QStringList FuzzyWords(const QString& typed) {
    return Folded(typed).split(' ', Qt::SkipEmptyParts);
}

FuzzyText::FuzzyText(const QString& text, qsizetype main) : m_folded(Folded(text)), m_main(main) {}

bool FuzzyText::IsWordStart(qsizetype i) const {
    return i == 0 || (m_folded[i].isLetterOrNumber() && !m_folded[i - 1].isLetterOrNumber());
}

// Where the word is as it was typed: at the beginning of a word and in the main part where it can.
qsizetype FuzzyText::BestWhole(const QString& word) const {
    qsizetype bestIndex = -1;
    int best = -1;
    for (qsizetype i = m_folded.indexOf(word); i >= 0; i = m_folded.indexOf(word, i + 1)) {
        const int rank = (IsWordStart(i) ? 2 : 0) + (i >= m_main ? 1 : 0);
        if (rank > best) {
            best = rank;
            bestIndex = i;
        }
    }
    return bestIndex;
}

bool FuzzyText::Match(const QString& word, Hit& hit) const {
    qsizetype before = -1;
    const auto take = [&](qsizetype i) {
        hit.score += (IsWordStart(i) ? startBonus : 0) + (i >= m_main ? mainBonus : 0);
        if (before >= 0)
            hit.score +=
                i == before + 1 ? besideBonus : -gapCost * static_cast<int>(std::min<qsizetype>(i - before, 10));
        if (hit.places)
            hit.places->push_back(i);
        before = i;
    };
    if (const qsizetype whole = BestWhole(word); whole >= 0) {
        hit.score += wholeBonus;
        for (qsizetype i = 0; i < word.size(); ++i)
            take(whole + i);
        return true;
    }
    // From the end, so that of several ways the one that is in the main part is found.
    std::vector<qsizetype> places(static_cast<std::size_t>(word.size()));
    qsizetype i = m_folded.size();
    for (qsizetype n = word.size(); n-- > 0;) {
        i = i == 0 ? -1 : m_folded.lastIndexOf(word[n], i - 1);
        if (i < 0)
            return false;
        places[static_cast<std::size_t>(n)] = i;
    }
    // Each letter moves forward to the beginning of a word, or else to the letter before it.
    for (std::size_t n = 0; n < places.size(); ++n) {
        const QChar c = word[static_cast<qsizetype>(n)];
        const qsizetype from = n == 0 ? 0 : places[n - 1] + 1;
        qsizetype start = m_folded.indexOf(c, from);
        while (start < places[n] && !IsWordStart(start))
            start = m_folded.indexOf(c, start + 1);
        if (IsWordStart(start))
            places[n] = start;
        else if (n > 0 && m_folded[from] == c)
            places[n] = from;
    }
    for (const qsizetype place : places)
        take(place);
    return true;
}

std::optional<int> FuzzyText::Score(const QStringList& words) const {
    Hit hit;
    for (const QString& word : words)
        if (!Match(word, hit))
            return std::nullopt;
    return hit.score - static_cast<int>(m_folded.size()) / lengthShare;
}

std::vector<qsizetype> FuzzyText::Places(const QStringList& words) const {
    std::vector<qsizetype> places;
    Hit hit{0, &places};
    for (const QString& word : words)
        if (!Match(word, hit))
            return {};
    std::sort(places.begin(), places.end());
    return places;
}

} // namespace corvane::desktop
