// What is wrong with the definition files: a line a problem, with place, text, what to do and rule. Errors come first;
// many of one rule are together below a line that counts them, by file, which can be folded.
#pragma once

#include "analysis/Findings.h"

#include <QHash>
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
    // How many problems are listed.
    [[nodiscard]] int Count() const { return static_cast<int>(m_findings.size()) + static_cast<int>(m_others.size()); }
    // The problem of a line, or nothing of one that is none.
    [[nodiscard]] const check::Finding* FindingOf(const QTreeWidgetItem* item) const;
    // Makes the first error the current line, without selecting it.
    void MakeFirstErrorCurrent();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Copy() const;
    void Open(const QTreeWidgetItem& item) const;
    QTreeWidgetItem* Add(QTreeWidgetItem* parent, const QStringList& texts);
    QTreeWidgetItem* AddGroup(QTreeWidgetItem* parent, const QStringList& texts, const QString& key);
    void Fold(QTreeWidgetItem& group, bool isFolded);
    void AddRule(std::size_t begin, std::size_t end, const QString& folder);
    void AddFinding(QTreeWidgetItem* parent, std::size_t number, const QString& folder);

    std::vector<check::Finding> m_findings; // errors first, one rule after the other
    QStringList m_others;
    QHash<QString, bool> m_folds; // of groups that the user has folded or unfolded, by key
    bool m_isFilling = false;
};

} // namespace corvane::desktop
