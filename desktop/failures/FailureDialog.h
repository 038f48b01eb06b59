// A failure that one can read and copy.
#pragma once

#include "desktop/failures/FailurePresenter.h"

#include <QDialog>

class QPlainTextEdit;
class QVBoxLayout;

namespace corvane::desktop {

class FailureDialog final : public QDialog {
    Q_OBJECT
public:
    // The findings are listed, with places below servicesFolder.
    FailureDialog(const FailureTexts& texts, std::vector<check::Finding> findings, const QString& servicesFolder,
                  const QString& logFile, QWidget* parent);

private:
    void AddFindings(QVBoxLayout& layout, const QString& servicesFolder);
    void Copy() const;

    FailureTexts m_texts;
    std::vector<check::Finding> m_findings;
    QPlainTextEdit* m_details;
};

} // namespace corvane::desktop
