#include "desktop/application/AboutDialog.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace corvane::desktop {

namespace {

constexpr int logoSize = 64;

// Which others than this program ask to be named where it is used.
constexpr const char* licences =
    "Corvane \u2013 MIT\nQt \u2013 LGPL 3\nlibxml2, spdlog, fmt \u2013 MIT\ninih \u2013 BSD 3";

} // namespace

AboutDialog::AboutDialog(const Identity& identity, QWidget* parent) : QDialog(parent) {
    const QString name = QString::fromStdString(identity.name);
    setWindowTitle(tr("About %1").arg(name));
    auto* icon = new QLabel;
    const QIcon ownIcon = identity.icon.isNull() ? QApplication::windowIcon() : identity.icon;
    icon->setPixmap(
        (ownIcon.isNull() ? style()->standardIcon(QStyle::SP_MessageBoxInformation, nullptr, this) : ownIcon)
            .pixmap(logoSize, logoSize));
    icon->setAlignment(Qt::AlignTop);
    auto* title = new QLabel(name);
    QFont font = title->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.4);
    title->setFont(font);
    QStringList lines;
    if (!identity.version.empty())
        lines << tr("Version %1").arg(QString::fromStdString(identity.version));
    lines << tr("Runs on Corvane %1 and Qt %2").arg(CORVANE_VERSION, qVersion());
    if (!identity.license.empty())
        lines << tr("Licence: %1").arg(QString::fromStdString(identity.license));
    auto* versions = new QLabel(lines.join('\n'));
    auto* others = new QLabel(tr("Uses these libraries under their licences:") + "\n" + QString::fromUtf8(licences));
    for (QLabel* label : {title, versions, others}) {
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* texts = new QVBoxLayout;
    for (QLabel* label : {title, versions, others})
        texts->addWidget(label);
    auto* top = new QHBoxLayout;
    top->setSpacing(style()->pixelMetric(QStyle::PM_LayoutLeftMargin) * 2);
    top->addWidget(icon);
    top->addLayout(texts, 1);
    auto* all = new QVBoxLayout(this);
    all->addLayout(top);
    all->addWidget(buttons);
    buttons->button(QDialogButtonBox::Close)->setFocus();
}

} // namespace corvane::desktop

#include "moc_AboutDialog.cpp"
