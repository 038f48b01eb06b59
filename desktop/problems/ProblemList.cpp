#include "desktop/problems/ProblemList.h"

#include "analysis/Print.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QUrl>

namespace corvane::desktop {

namespace {

constexpr int nFindingRole = Qt::UserRole; // its number; -1 for what is none
constexpr int nPathRole = Qt::UserRole + 1;

QString Text(std::string_view sText) {
    return QString::fromUtf8(sText.data(), static_cast<qsizetype>(sText.size()));
}

// A file that is linked into the folder is told by its own folder and its name; the tool tip has the whole path.
QString Beside(const QString& sPath, const QString& sFolder) {
    return sPath.startsWith(sFolder + "/") ? sPath.mid(sFolder.size() + 1) : sPath.section('/', -2);
}

QString PlaceText(const check::Place& oPlace, const QString& sFolder) {
    QString sText = Beside(Text(oPlace.sFile), sFolder);
    if (oPlace.oAt.lLine > 0)
        sText += QString(":%1").arg(oPlace.oAt.lLine);
    if (oPlace.oAt.lLine > 0 && oPlace.oAt.lColumn > 0)
        sText += QString(":%1").arg(oPlace.oAt.lColumn);
    return sText;
}

// Rows as high as their texts are in the width of their columns, which the view doesn't tell.
class WrappedRows final : public QStyledItemDelegate {
public:
    explicit WrappedRows(QTreeView* pView) : QStyledItemDelegate(pView), m_pView(pView) {}

    QSize sizeHint(const QStyleOptionViewItem& oOption, const QModelIndex& oIndex) const override {
        QSize oSize = QStyledItemDelegate::sizeHint(oOption, oIndex);
        if (m_pView->header()->sectionResizeMode(oIndex.column()) != QHeaderView::Stretch)
            return oSize;
        const int nMargin = m_pView->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, m_pView) + 1;
        const QRect oRoom(0, 0, m_pView->columnWidth(oIndex.column()) - 2 * nMargin, 10000);
        const QRect oText = oOption.fontMetrics.boundingRect(oRoom, Qt::TextWordWrap, oIndex.data().toString());
        oSize.setHeight(qMax(oSize.height(), oText.height() + 2));
        return oSize;
    }

private:
    QTreeView* m_pView;
};

} // namespace

ProblemList::ProblemList(QWidget* pParent) : QTreeWidget(pParent) {
    setHeaderLabels({tr("Location"), tr("Problem"), tr("Remedy"), tr("Rule")});
    setAccessibleName(tr("Problems"));
    setRootIsDecorated(true);
    setAlternatingRowColors(true);
    setSelectionMode(ExtendedSelection);
    setWordWrap(true);
    setItemDelegate(new WrappedRows(this));
    setTextElideMode(Qt::ElideNone);
    setFrameShape(NoFrame);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(1, QHeaderView::Stretch);
    header()->setSectionResizeMode(2, QHeaderView::Stretch);
    header()->setSectionResizeMode(3, QHeaderView::ResizeToContents);
    // The height of a row comes from the width of its texts.
    connect(header(), &QHeaderView::sectionResized, this, [this] { scheduleDelayedItemsLayout(); });
    connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* pItem) { Open(*pItem); });
}

void ProblemList::Show(std::vector<check::Finding> aFindings, const QString& sFolder) {
    ShowWith({}, std::move(aFindings), sFolder);
}

void ProblemList::ShowWith(const QStringList& aOthers, std::vector<check::Finding> aFindings, const QString& sFolder) {
    clear();
    m_aFindings = std::move(aFindings);
    m_aOthers = aOthers;
    const QIcon oError = style()->standardIcon(QStyle::SP_MessageBoxCritical, nullptr, this);
    const QIcon oWarning = style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this);
    const auto fnAdd = [this](auto* pParent, const QStringList& aTexts) {
        auto* pItem = new QTreeWidgetItem(pParent, aTexts);
        pItem->setData(0, nFindingRole, -1);
        for (int i = 0; i < aTexts.size(); ++i)
            pItem->setTextAlignment(i, Qt::AlignLeft | Qt::AlignTop);
        return pItem;
    };
    for (const QString& sOther : aOthers) {
        auto* pItem = fnAdd(this, {QString(), sOther, QString(), QString()});
        pItem->setIcon(0, oError);
    }
    for (std::size_t i = 0; i < m_aFindings.size(); ++i) {
        const check::Finding& oFinding = m_aFindings[i];
        const check::RuleText& oRule = check::TextOf(oFinding.eRule);
        const bool bIsError = oRule.eSeverity == check::Severity::Error;
        auto* pItem = fnAdd(
            this, {PlaceText(oFinding.oPlace, sFolder), Text(oFinding.sText), Text(oFinding.sCure), Text(oRule.sName)});
        pItem->setIcon(0, bIsError ? oError : oWarning);
        pItem->setData(0, Qt::AccessibleTextRole,
                       (bIsError ? tr("Error in %1") : tr("Warning in %1")).arg(pItem->text(0)));
        pItem->setToolTip(0, Text(oFinding.oPlace.sFile));
        pItem->setToolTip(3, Text(oRule.sSummary));
        pItem->setData(0, nFindingRole, static_cast<int>(i));
        pItem->setData(0, nPathRole, Text(oFinding.oPlace.sFile));
        for (const check::Note& oNote : oFinding.aNotes) {
            auto* pNote = fnAdd(pItem, {PlaceText(oNote.oPlace, sFolder), Text(oNote.sText)});
            pNote->setData(0, nPathRole, Text(oNote.oPlace.sFile));
        }
    }
    expandAll();
}

void ProblemList::Copy() const {
    std::string sText;
    const auto aItems = selectedItems();
    for (int i = 0; i < topLevelItemCount(); ++i) {
        QTreeWidgetItem* pItem = topLevelItem(i);
        if (!aItems.isEmpty() && !pItem->isSelected())
            continue;
        const int iFinding = pItem->data(0, nFindingRole).toInt();
        if (iFinding < 0)
            sText += pItem->text(1).toStdString() + "\n";
        else
            sText += check::AsText({&m_aFindings[static_cast<std::size_t>(iFinding)], 1}, false);
    }
    QApplication::clipboard()->setText(QString::fromStdString(sText));
}

void ProblemList::Open(const QTreeWidgetItem& oItem) const {
    const QString sPath = oItem.data(0, nPathRole).toString();
    if (!sPath.isEmpty() && QFileInfo::exists(sPath))
        QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(sPath).absoluteFilePath()));
}

void ProblemList::keyPressEvent(QKeyEvent* pEvent) {
    if (pEvent->matches(QKeySequence::Copy))
        Copy();
    else
        QTreeWidget::keyPressEvent(pEvent);
}

} // namespace corvane::desktop
