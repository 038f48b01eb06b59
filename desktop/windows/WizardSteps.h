// The steps of a wizard beside its pages: which are done, which is in front, which can be left out.
#pragma once

#include "desktop/windows/PageMark.h"

#include <QListWidget>

namespace corvane::desktop {

class WizardSteps final : public QListWidget {
    Q_OBJECT
public:
    explicit WizardSteps(QWidget* parent = nullptr);

    void AddStep(const PageMark& mark);
    void SetStep(int step, const PageMark& mark);
    void SetCurrentStep(int step);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, 0}; }

Q_SIGNALS:
    void StepChosen(int step);
};

} // namespace corvane::desktop
