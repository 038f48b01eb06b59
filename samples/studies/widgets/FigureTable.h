// A read-only table of texts whose figures stand on the right; it copies what is selected as text with tabs.
#pragma once

#include "SummaryRows.h"

#include <QStringList>
#include <QTableWidget>
#include <vector>

namespace studies {

struct FigureColumn {
    QString name;
    bool figures = false; // which stand on the right
};

class FigureTable final : public QTableWidget {
    Q_OBJECT
public:
    explicit FigureTable(QWidget* parent = nullptr);

    // All of a block is seen where there is space; nothing without rows.
    void SetBlock(const SummaryBlock& block);
    void SetContent(const std::vector<FigureColumn>& columns, const std::vector<QStringList>& rows);
    void Copy();
    // All of it, with the names; for a file with numbers that are the same in each language.
    [[nodiscard]] QString AsText(bool forFile = false) const;
    // At which all rows are seen.
    [[nodiscard]] int HeightOfAll() const;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace studies
