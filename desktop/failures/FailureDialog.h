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
    // The findings are listed, with places below sServicesFolder.
    FailureDialog(const FailureTexts& oTexts, std::vector<check::Finding> aFindings, const QString& sServicesFolder,
                  const QString& sLogFile, QWidget* pParent);

private:
    void AddFindings(QVBoxLayout& oLayout, const QString& sServicesFolder);
    void Copy() const;

    FailureTexts m_oTexts;
    std::vector<check::Finding> m_aFindings;
    QPlainTextEdit* m_pDetails;
};

} // namespace corvane::desktop
