// The commands that fit what was typed, the best first.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "desktop/commands/FuzzyMatch.h"

#include <QAbstractListModel>
#include <QStringList>
#include <optional>
#include <unordered_map>
#include <vector>

namespace corvane::desktop {

struct PaletteEntry {
    Ref<Tool> oTool;
    QString sCaption;
    QString sPath;
    QString sKeys;
    QString sOwner;
    QString sWhyNot; // empty for a command that can be chosen
    QString sDescription;
    QString sOriginal = {}; // what the caption was translated from; it is found as well
};

class PaletteModel final : public QAbstractListModel {
    Q_OBJECT
public:
    explicit PaletteModel(std::vector<PaletteEntry> aEntries, QObject* pParent = nullptr);

    // An empty text shows all, in their own order. What can't be chosen stands behind what fits as well and can.
    void SetTyped(const QString& sTyped);
    [[nodiscard]] const PaletteEntry& EntryAt(int nRow) const { return m_aEntries[m_aRows[AsIndex(nRow)]]; }
    [[nodiscard]] int EntryCount() const { return static_cast<int>(m_aEntries.size()); }
    // The letters of the caption that fit, by their places in it.
    [[nodiscard]] std::vector<qsizetype> MarkedAt(int nRow) const;

    [[nodiscard]] int rowCount(const QModelIndex& oParent = {}) const override;
    // The caption; for accessibility all that is shown.
    [[nodiscard]] QVariant data(const QModelIndex& oIndex, int nRole) const override;

private:
    [[nodiscard]] static std::size_t AsIndex(int nRow) { return static_cast<std::size_t>(nRow); }

    std::vector<PaletteEntry> m_aEntries;
    [[nodiscard]] std::optional<int> ScoreOf(std::size_t iEntry) const;

    std::vector<FuzzyText> m_aTexts;
    std::unordered_map<std::size_t, FuzzyText> m_mapOriginals; // of the entries that are translated
    std::vector<std::size_t> m_aRows;
    QStringList m_aWords;
};

} // namespace corvane::desktop
