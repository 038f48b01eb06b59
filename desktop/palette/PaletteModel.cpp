#include "desktop/palette/PaletteModel.h"

#include <algorithm>
#include <numeric>

namespace corvane::desktop {

PaletteModel::PaletteModel(std::vector<PaletteEntry> aEntries, QObject* pParent)
    : QAbstractListModel(pParent), m_aEntries(std::move(aEntries)), m_aRows(m_aEntries.size()) {
    m_aTexts.reserve(m_aEntries.size());
    for (const PaletteEntry& oEntry : m_aEntries)
        m_aTexts.emplace_back(oEntry.sPath + ' ' + oEntry.sCaption, oEntry.sPath.size() + 1);
    for (std::size_t i = 0; i < m_aEntries.size(); ++i)
        if (!m_aEntries[i].sOriginal.isEmpty() && m_aEntries[i].sOriginal != m_aEntries[i].sCaption)
            m_mapOriginals.emplace(i, FuzzyText(m_aEntries[i].sOriginal, 0));
    std::iota(m_aRows.begin(), m_aRows.end(), std::size_t{0});
}

std::optional<int> PaletteModel::ScoreOf(std::size_t iEntry) const {
    const auto oScore = m_aTexts[iEntry].Score(m_aWords);
    const auto it = m_mapOriginals.find(iEntry);
    return oScore || it == m_mapOriginals.end() ? oScore : it->second.Score(m_aWords);
}

void PaletteModel::SetTyped(const QString& sTyped) {
    struct Found {
        int nScore;
        std::size_t iEntry;
    };
    constexpr int nCantBeChosen = 20;
    m_aWords = FuzzyWords(sTyped);
    std::vector<Found> aFound;
    aFound.reserve(m_aEntries.size());
    for (std::size_t i = 0; i < m_aEntries.size(); ++i)
        if (m_aWords.isEmpty())
            aFound.push_back({0, i});
        else if (const auto oScore = ScoreOf(i))
            aFound.push_back({*oScore - (m_aEntries[i].sWhyNot.isEmpty() ? 0 : nCantBeChosen), i});
    std::stable_sort(aFound.begin(), aFound.end(),
                     [](const Found& oLeft, const Found& oRight) { return oLeft.nScore > oRight.nScore; });
    beginResetModel();
    m_aRows.clear();
    for (const Found& oFound : aFound)
        m_aRows.push_back(oFound.iEntry);
    endResetModel();
}

std::vector<qsizetype> PaletteModel::MarkedAt(int nRow) const {
    const std::size_t iEntry = m_aRows[AsIndex(nRow)];
    const qsizetype iCaption = m_aEntries[iEntry].sPath.size() + 1;
    std::vector<qsizetype> aPlaces;
    if (!m_aWords.isEmpty())
        aPlaces = m_aTexts[iEntry].Places(m_aWords);
    std::erase_if(aPlaces, [iCaption](qsizetype i) { return i < iCaption; });
    for (qsizetype& i : aPlaces)
        i -= iCaption;
    return aPlaces;
}

int PaletteModel::rowCount(const QModelIndex& oParent) const {
    return oParent.isValid() ? 0 : static_cast<int>(m_aRows.size());
}

QVariant PaletteModel::data(const QModelIndex& oIndex, int nRole) const {
    if (!oIndex.isValid())
        return {};
    const PaletteEntry& oEntry = EntryAt(oIndex.row());
    if (nRole == Qt::DisplayRole)
        return oEntry.sCaption;
    if (nRole != Qt::AccessibleTextRole)
        return {};
    QStringList aParts{oEntry.sCaption, oEntry.sPath, oEntry.sOwner, oEntry.sKeys, oEntry.sWhyNot};
    aParts.removeAll(QString());
    return aParts.join(", ");
}

} // namespace corvane::desktop
