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
    Ref<Tool> tool;
    QString caption;
    QString path;
    QString keys;
    QString owner;
    QString whyNot; // empty for a command that can be chosen
    QString description;
    bool whyNotIsAdvice = false; // it says what to do first, in a sentence
    QString original = {};       // what the caption was translated from; it is found as well
};

class PaletteModel final : public QAbstractListModel {
    Q_OBJECT
public:
    explicit PaletteModel(std::vector<PaletteEntry> entries, QObject* parent = nullptr);

    // An empty text shows all, in their own order. What can't be chosen is behind what fits as well and can.
    void SetTyped(const QString& typed);
    [[nodiscard]] const PaletteEntry& EntryAt(int row) const { return m_entries[m_rows[AsIndex(row)]]; }
    [[nodiscard]] int EntryCount() const { return static_cast<int>(m_entries.size()); }
    // The letters of the caption that fit, by their places in it.
    [[nodiscard]] std::vector<qsizetype> MarkedAt(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    // The caption; for accessibility all that is shown.
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    [[nodiscard]] static std::size_t AsIndex(int row) { return static_cast<std::size_t>(row); }

    std::vector<PaletteEntry> m_entries;
    [[nodiscard]] std::optional<int> ScoreOf(std::size_t entry) const;

    std::vector<FuzzyText> m_texts;
    std::unordered_map<std::size_t, FuzzyText> m_originals; // of the entries that are translated
    std::vector<std::size_t> m_rows;
    QStringList m_words;
};

} // namespace corvane::desktop
