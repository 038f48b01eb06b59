// A failure that one can read and copy.
#pragma once

#include "desktop/FailurePresenter.h"

#include <QDialog>

class QPlainTextEdit;

namespace corvane::desktop {

class FailureDialog final : public QDialog {
    Q_OBJECT
public:
    FailureDialog(const FailureTexts& oTexts, const QString& sLogFile, QWidget* pParent);

private:
    void Copy() const;

    FailureTexts m_oTexts;
    QPlainTextEdit* m_pDetails;
};

} // namespace corvane::desktop
