#include "desktop/commands/FuzzyMatch.h"

#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr int nWholeBonus = 60;  // the word stands there as it was typed
constexpr int nStartBonus = 30;  // a letter begins a word of the text
constexpr int nBesideBonus = 15; // a letter follows the one before it
constexpr int nMainBonus = 10;   // a letter stands in the main part
constexpr int nGapCost = 1;      // for each letter between two
constexpr int nLengthShare = 8;  // of two texts the shorter one, by little

// Small letters one by one, so that places are those of the text itself.
QString Folded(const QString& sText) {
    QString sFolded = sText;
    for (QChar& c : sFolded)
        c = c.toLower();
    return sFolded;
}

} // namespace

QStringList FuzzyWords(const QString& sTyped) {
    return Folded(sTyped).split(' ', Qt::SkipEmptyParts);
}

FuzzyText::FuzzyText(const QString& sText, qsizetype iMain) : m_sFolded(Folded(sText)), m_iMain(iMain) {}

bool FuzzyText::IsWordStart(qsizetype i) const {
    return i == 0 || (m_sFolded[i].isLetterOrNumber() && !m_sFolded[i - 1].isLetterOrNumber());
}

// Where the word stands as it was typed: at the beginning of a word and in the main part where it can.
qsizetype FuzzyText::BestWhole(const QString& sWord) const {
    qsizetype iBest = -1;
    int nBest = -1;
    for (qsizetype i = m_sFolded.indexOf(sWord); i >= 0; i = m_sFolded.indexOf(sWord, i + 1)) {
        const int nRank = (IsWordStart(i) ? 2 : 0) + (i >= m_iMain ? 1 : 0);
        if (nRank > nBest) {
            nBest = nRank;
            iBest = i;
        }
    }
    return iBest;
}

bool FuzzyText::Match(const QString& sWord, Hit& oHit) const {
    qsizetype iBefore = -1;
    const auto fnTake = [&](qsizetype i) {
        oHit.nScore += (IsWordStart(i) ? nStartBonus : 0) + (i >= m_iMain ? nMainBonus : 0);
        if (iBefore >= 0)
            oHit.nScore +=
                i == iBefore + 1 ? nBesideBonus : -nGapCost * static_cast<int>(std::min<qsizetype>(i - iBefore, 10));
        if (oHit.pPlaces)
            oHit.pPlaces->push_back(i);
        iBefore = i;
    };
    if (const qsizetype iWhole = BestWhole(sWord); iWhole >= 0) {
        oHit.nScore += nWholeBonus;
        for (qsizetype i = 0; i < sWord.size(); ++i)
            fnTake(iWhole + i);
        return true;
    }
    // From the end, so that of several ways the one that lies in the main part is found.
    std::vector<qsizetype> aPlaces(static_cast<std::size_t>(sWord.size()));
    qsizetype i = m_sFolded.size();
    for (qsizetype n = sWord.size(); n-- > 0;) {
        i = i == 0 ? -1 : m_sFolded.lastIndexOf(sWord[n], i - 1);
        if (i < 0)
            return false;
        aPlaces[static_cast<std::size_t>(n)] = i;
    }
    // Each letter moves forward to the beginning of a word, or else to the letter before it.
    for (std::size_t n = 0; n < aPlaces.size(); ++n) {
        const QChar c = sWord[static_cast<qsizetype>(n)];
        const qsizetype iFrom = n == 0 ? 0 : aPlaces[n - 1] + 1;
        qsizetype iStart = m_sFolded.indexOf(c, iFrom);
        while (iStart < aPlaces[n] && !IsWordStart(iStart))
            iStart = m_sFolded.indexOf(c, iStart + 1);
        if (IsWordStart(iStart))
            aPlaces[n] = iStart;
        else if (n > 0 && m_sFolded[iFrom] == c)
            aPlaces[n] = iFrom;
    }
    for (const qsizetype iPlace : aPlaces)
        fnTake(iPlace);
    return true;
}

std::optional<int> FuzzyText::Score(const QStringList& aWords) const {
    Hit oHit;
    for (const QString& sWord : aWords)
        if (!Match(sWord, oHit))
            return std::nullopt;
    return oHit.nScore - static_cast<int>(m_sFolded.size()) / nLengthShare;
}

std::vector<qsizetype> FuzzyText::Places(const QStringList& aWords) const {
    std::vector<qsizetype> aPlaces;
    Hit oHit{0, &aPlaces};
    for (const QString& sWord : aWords)
        if (!Match(sWord, oHit))
            return {};
    std::sort(aPlaces.begin(), aPlaces.end());
    return aPlaces;
}

} // namespace corvane::desktop
