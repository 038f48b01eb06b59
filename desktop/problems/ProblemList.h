// What is wrong with the definition files: a line a problem, with place, text, what to do and rule.
#pragma once

#include "analysis/Findings.h"

#include <QTreeWidget>
#include <vector>

namespace corvane::desktop {

class ProblemList final : public QTreeWidget {
    Q_OBJECT
public:
    explicit ProblemList(QWidget* parent = nullptr);

    // folder, with which the findings' places begin, isn't shown.
    void Show(std::vector<check::Finding> findings, const QString& folder);
    // What isn't a finding in a file, such as a failure of the start, is in front.
    void ShowWith(const QStringList& others, std::vector<check::Finding> findings, const QString& folder);
    [[nodiscard]] int Count() const { return topLevelItemCount(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Copy() const;
    void Open(const QTreeWidgetItem& item) const;

    std::vector<check::Finding> m_findings;
    QStringList m_others;
};

} // namespace corvane::desktop
