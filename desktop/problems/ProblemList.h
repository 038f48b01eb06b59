// What is wrong with the definition files: a line a problem, with place, text, what to do and rule.
#pragma once

#include "analysis/Findings.h"

#include <QTreeWidget>
#include <vector>

namespace corvane::desktop {

class ProblemList final : public QTreeWidget {
    Q_OBJECT
public:
    explicit ProblemList(QWidget* pParent = nullptr);

    // sFolder, with which the findings' places begin, isn't shown.
    void Show(std::vector<check::Finding> aFindings, const QString& sFolder);
    // What isn't a finding in a file, such as a failure of the start, stands in front.
    void ShowWith(const QStringList& aOthers, std::vector<check::Finding> aFindings, const QString& sFolder);
    [[nodiscard]] int Count() const { return topLevelItemCount(); }

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    void Copy() const;
    void Open(const QTreeWidgetItem& oItem) const;

    std::vector<check::Finding> m_aFindings;
    QStringList m_aOthers;
};

} // namespace corvane::desktop
