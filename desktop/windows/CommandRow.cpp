#include "desktop/windows/CommandRow.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QStyle>
#include <algorithm>

namespace corvane::desktop {

namespace {

// As wide as the style wants it, or in a narrow window as its text needs.
class CommandButton final : public QPushButton {
public:
    explicit CommandButton(const QString& text) : QPushButton(text) {
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }
    [[nodiscard]] QSize minimumSizeHint() const override {
        const int margin = style()->pixelMetric(QStyle::PM_ButtonMargin, nullptr, this) + 2 * focusLine;
        const int textWidth = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
        return {std::min(textWidth + margin, sizeHint().width()), sizeHint().height()};
    }

private:
    static constexpr int focusLine = 2;
};

} // namespace

CommandRow::CommandRow(WindowTypeConstants type, bool withApply, bool withHelp, QWidget* parent) : QWidget(parent) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    if (type == WindowTypeConstants::cvWizard)
        FillWizard(withHelp);
    else
        FillDialog(type, withApply, withHelp);
}

QPushButton* CommandRow::Add(StandardCommandConstants command, const QString& text) {
    auto* button = new CommandButton(text);
    connect(button, &QPushButton::clicked, this, [this, command] { Q_EMIT Chosen(command); });
    m_buttons.emplace_back(command, button);
    return button;
}

void CommandRow::FillWizard(bool withHelp) {
    auto* hBoxLayout = static_cast<QHBoxLayout*>(layout());
    if (withHelp)
        hBoxLayout->addWidget(Add(StandardCommandConstants::cvHelp, tr("&Help")));
    hBoxLayout->addStretch();
    hBoxLayout->addWidget(Add(StandardCommandConstants::cvPrevious, tr("&Previous")));
    hBoxLayout->addWidget(Add(StandardCommandConstants::cvNext, tr("&Next")));
    hBoxLayout->addSpacing(hBoxLayout->spacing() * 2);
    hBoxLayout->addWidget(Add(StandardCommandConstants::cvFinish, tr("&Finish")));
    hBoxLayout->addWidget(Add(StandardCommandConstants::cvCancel, tr("Cancel")));
}

// The order is the desktop's own.
void CommandRow::FillDialog(WindowTypeConstants type, bool withApply, bool withHelp) {
    auto* box = new QDialogButtonBox;
    if (withHelp)
        box->addButton(Add(StandardCommandConstants::cvHelp, tr("&Help")), QDialogButtonBox::HelpRole);
    if (type == WindowTypeConstants::cvSaveDialog) {
        box->addButton(Add(StandardCommandConstants::cvSave, tr("&Save")), QDialogButtonBox::AcceptRole);
        box->addButton(Add(StandardCommandConstants::cvSaveAs, tr("Save &As…")), QDialogButtonBox::AcceptRole);
    } else {
        box->addButton(Add(StandardCommandConstants::cvOK, tr("OK")), QDialogButtonBox::AcceptRole);
        if (withApply)
            box->addButton(Add(StandardCommandConstants::cvApply, tr("&Apply")), QDialogButtonBox::ApplyRole);
    }
    box->addButton(Add(StandardCommandConstants::cvCancel, tr("Cancel")), QDialogButtonBox::RejectRole);
    layout()->addWidget(box);
}

QPushButton* CommandRow::Button(StandardCommandConstants command) const {
    const auto it = std::find_if(m_buttons.begin(), m_buttons.end(), [&](const auto& o) { return o.first == command; });
    return it == m_buttons.end() ? nullptr : it->second;
}

std::vector<StandardCommandConstants> CommandRow::Commands() const {
    std::vector<StandardCommandConstants> commands;
    for (const auto& [command, button] : m_buttons)
        commands.push_back(command);
    return commands;
}

void CommandRow::SetCommandEnabled(StandardCommandConstants command, bool enabled) {
    if (QPushButton* button = Button(command))
        button->setEnabled(enabled);
}

void CommandRow::SetDefault(std::optional<StandardCommandConstants> command) {
    for (const auto& [each, button] : m_buttons)
        if (button->isDefault() != (each == command))
            button->setDefault(each == command);
}

std::optional<StandardCommandConstants> CommandRow::Default() const {
    for (const auto& [command, button] : m_buttons)
        if (button->isDefault())
            return command;
    return std::nullopt;
}

void CommandRow::SetSkips(bool skips) {
    if (QPushButton* button = Button(StandardCommandConstants::cvNext))
        button->setText(skips ? tr("S&kip") : tr("&Next"));
}

} // namespace corvane::desktop

#include "moc_CommandRow.cpp"
