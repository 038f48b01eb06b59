// A read-only table of texts whose figures stand on the right; it copies what is selected as text with tabs.
#pragma once

#include <QStringList>
#include <QTableWidget>
#include <vector>

namespace studies {

struct FigureColumn {
    QString sName;
    bool bFigures = false; // which stand on the right
};

class FigureTable final : public QTableWidget {
    Q_OBJECT
public:
    explicit FigureTable(QWidget* pParent = nullptr);

    void SetContent(const std::vector<FigureColumn>& aColumns, const std::vector<QStringList>& aRows);
    void Copy();
    // All of it, with the names.
    [[nodiscard]] QString AsText() const;
    // At which all rows are seen.
    [[nodiscard]] int HeightOfAll() const;

protected:
    bool event(QEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
};

} // namespace studies
