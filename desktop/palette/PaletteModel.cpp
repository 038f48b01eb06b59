#include "desktop/palette/PaletteModel.h"

#include <algorithm>
#include <numeric>

namespace corvane::desktop {

PaletteModel::PaletteModel(std::vector<PaletteEntry> entries, QObject* parent)
    : QAbstractListModel(parent), m_entries(std::move(entries)), m_rows(m_entries.size()) {
    m_texts.reserve(m_entries.size());
    for (const PaletteEntry& entry : m_entries)
        m_texts.emplace_back(entry.path + ' ' + entry.caption, entry.path.size() + 1);
    for (std::size_t i = 0; i < m_entries.size(); ++i)
        if (!m_entries[i].original.isEmpty() && m_entries[i].original != m_entries[i].caption)
            m_originals.emplace(i, FuzzyText(m_entries[i].original, 0));
    std::iota(m_rows.begin(), m_rows.end(), std::size_t{0});
}

std::optional<int> PaletteModel::ScoreOf(std::size_t entry) const {
    const auto score = m_texts[entry].Score(m_words);
    const auto it = m_originals.find(entry);
    return score || it == m_originals.end() ? score : it->second.Score(m_words);
}

void PaletteModel::SetTyped(const QString& typed) {
    struct Found {
        int score;
        std::size_t entry;
    };
    constexpr int cantBeChosen = 20;
    m_words = FuzzyWords(typed);
    std::vector<Found> foundItems;
    foundItems.reserve(m_entries.size());
    for (std::size_t i = 0; i < m_entries.size(); ++i)
        if (m_words.isEmpty())
            foundItems.push_back({0, i});
        else if (const auto score = ScoreOf(i))
            foundItems.push_back({*score - (m_entries[i].whyNot.isEmpty() ? 0 : cantBeChosen), i});
    std::stable_sort(foundItems.begin(), foundItems.end(),
                     [](const Found& left, const Found& right) { return left.score > right.score; });
    beginResetModel();
    m_rows.clear();
    for (const Found& found : foundItems)
        m_rows.push_back(found.entry);
    endResetModel();
}

std::vector<qsizetype> PaletteModel::MarkedAt(int row) const {
    const std::size_t entry = m_rows[AsIndex(row)];
    const qsizetype caption = m_entries[entry].path.size() + 1;
    std::vector<qsizetype> places;
    if (!m_words.isEmpty())
        places = m_texts[entry].Places(m_words);
    std::erase_if(places, [caption](qsizetype i) { return i < caption; });
    for (qsizetype& i : places)
        i -= caption;
    return places;
}

int PaletteModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant PaletteModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const PaletteEntry& entry = EntryAt(index.row());
    if (role == Qt::DisplayRole)
        return entry.caption;
    if (role != Qt::AccessibleTextRole)
        return {};
    QStringList parts{entry.caption, entry.path, entry.owner, entry.keys, entry.whyNot};
    parts.removeAll(QString());
    return parts.join(", ");
}

} // namespace corvane::desktop

#include "moc_PaletteModel.cpp"
