#include "desktop/windows/CommandRow.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QStyle>
#include <algorithm>

namespace corvane::desktop {

using Command = StandardCommandConstants;

namespace {

// As wide as the style wants it, or in a narrow window as its text needs.
class CommandButton final : public QPushButton {
public:
    explicit CommandButton(const QString& sText) : QPushButton(sText) {
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }
    [[nodiscard]] QSize minimumSizeHint() const override {
        const int nMargin = style()->pixelMetric(QStyle::PM_ButtonMargin, nullptr, this) + 2 * nFocusLine;
        const int nText = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
        return {std::min(nText + nMargin, sizeHint().width()), sizeHint().height()};
    }

private:
    static constexpr int nFocusLine = 2;
};

} // namespace

CommandRow::CommandRow(WindowTypeConstants eType, bool bWithApply, bool bWithHelp, QWidget* pParent)
    : QWidget(pParent) {
    auto* pLayout = new QHBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    if (eType == WindowTypeConstants::cvWizard)
        FillWizard(bWithHelp);
    else
        FillDialog(eType, bWithApply, bWithHelp);
}

QPushButton* CommandRow::Add(Command eCommand, const QString& sText) {
    auto* pButton = new CommandButton(sText);
    connect(pButton, &QPushButton::clicked, this, [this, eCommand] { Q_EMIT Chosen(eCommand); });
    m_aButtons.emplace_back(eCommand, pButton);
    return pButton;
}

void CommandRow::FillWizard(bool bWithHelp) {
    auto* pLayout = static_cast<QHBoxLayout*>(layout());
    if (bWithHelp)
        pLayout->addWidget(Add(Command::cvHelp, tr("&Help")));
    pLayout->addStretch();
    pLayout->addWidget(Add(Command::cvPrevious, tr("&Previous")));
    pLayout->addWidget(Add(Command::cvNext, tr("&Next")));
    pLayout->addSpacing(pLayout->spacing() * 2);
    pLayout->addWidget(Add(Command::cvFinish, tr("&Finish")));
    pLayout->addWidget(Add(Command::cvCancel, tr("Cancel")));
}

// The order is the desktop's own.
void CommandRow::FillDialog(WindowTypeConstants eType, bool bWithApply, bool bWithHelp) {
    auto* pBox = new QDialogButtonBox;
    if (bWithHelp)
        pBox->addButton(Add(Command::cvHelp, tr("&Help")), QDialogButtonBox::HelpRole);
    if (eType == WindowTypeConstants::cvSaveDialog) {
        pBox->addButton(Add(Command::cvSave, tr("&Save")), QDialogButtonBox::AcceptRole);
        pBox->addButton(Add(Command::cvSaveAs, tr("Save &As…")), QDialogButtonBox::AcceptRole);
    } else {
        pBox->addButton(Add(Command::cvOK, tr("OK")), QDialogButtonBox::AcceptRole);
        if (bWithApply)
            pBox->addButton(Add(Command::cvApply, tr("&Apply")), QDialogButtonBox::ApplyRole);
    }
    pBox->addButton(Add(Command::cvCancel, tr("Cancel")), QDialogButtonBox::RejectRole);
    layout()->addWidget(pBox);
}

QPushButton* CommandRow::Button(Command eCommand) const {
    const auto it =
        std::find_if(m_aButtons.begin(), m_aButtons.end(), [&](const auto& o) { return o.first == eCommand; });
    return it == m_aButtons.end() ? nullptr : it->second;
}

std::vector<Command> CommandRow::Commands() const {
    std::vector<Command> aCommands;
    for (const auto& [eCommand, pButton] : m_aButtons)
        aCommands.push_back(eCommand);
    return aCommands;
}

void CommandRow::SetCommandEnabled(Command eCommand, bool bEnabled) {
    if (QPushButton* pButton = Button(eCommand))
        pButton->setEnabled(bEnabled);
}

void CommandRow::SetDefault(Command eCommand) {
    for (const auto& [eEach, pButton] : m_aButtons)
        if (pButton->isDefault() != (eEach == eCommand))
            pButton->setDefault(eEach == eCommand);
}

std::optional<Command> CommandRow::Default() const {
    for (const auto& [eCommand, pButton] : m_aButtons)
        if (pButton->isDefault())
            return eCommand;
    return std::nullopt;
}

void CommandRow::SetSkips(bool bSkips) {
    if (QPushButton* pButton = Button(Command::cvNext))
        pButton->setText(bSkips ? tr("S&kip") : tr("&Next"));
}

} // namespace corvane::desktop
