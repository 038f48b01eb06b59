#include "desktop/preview/CallList.h"

#include "corvane/menus/ActionItem.h"
#include "headless/StandIns.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTime>

namespace corvane::desktop {

namespace {

constexpr int nMost = 1000;

QString Text(std::string_view sText) {
    return QString::fromUtf8(sText.data(), static_cast<qsizetype>(sText.size()));
}

// An action item by its name, another object by its id, as far as it has one.
QString TextOf(const Variant& oArgument, const inspect::Record& oRecord) {
    if (!oArgument.IsObject())
        return oArgument.IsEmpty() ? QStringLiteral("–") : Text(ToText(oArgument));
    const Ref<Object> oObject = ToObject(oArgument);
    if (!oObject)
        return QStringLiteral("–");
    if (const auto oItem = oObject.TryAs<ActionItem>())
        return Text(oItem->Name());
    const std::string sId = oRecord.IdOf(oObject);
    return sId.empty() ? Text(oObject->TypeName()) : Text(sId);
}

} // namespace

CallList::CallList(QWidget* pParent) : QTreeWidget(pParent) {
    setHeaderLabels({tr("Time"), tr("Command"), tr("Provider"), tr("Procedure"), tr("Tag"), tr("Handled by")});
    setAccessibleName(tr("Calls"));
    setRootIsDecorated(false);
    setAlternatingRowColors(true);
    setUniformRowHeights(true);
    setSelectionMode(ExtendedSelection);
    setFrameShape(NoFrame);
    header()->setSectionResizeMode(QHeaderView::Interactive);
    const int nLetter = fontMetrics().averageCharWidth();
    for (const auto& [eColumn, nLetters] :
         {std::pair{Time, 10}, {Command, 26}, {Provider, 34}, {Procedure, 24}, {Tag, 20}})
        header()->resizeSection(eColumn, nLetter * nLetters);
}

void CallList::Follow(const Ref<ActiveBar>& oActiveBar, const Ref<inspect::Record>& oRecord) {
    m_oRecord = oRecord;
    m_oToolClick = oActiveBar->ToolClick.Subscribe([this](const Ref<Tool>& oTool) { Bar_ToolClick(*oTool); });
    m_oCallAdded =
        oRecord->CallAdded.Subscribe([this](const inspect::RecordedCall& oCall) { Record_CallAdded(oCall); });
}

void CallList::Leave() {
    m_oToolClick = {};
    m_oCallAdded = {};
    m_oRecord = nullptr;
}

void CallList::AddRow(const QStringList& aTexts) {
    const QScrollBar* pBar = verticalScrollBar();
    const bool bAtEnd = pBar->value() == pBar->maximum();
    auto* pItem = new QTreeWidgetItem(this, QStringList(QTime::currentTime().toString("HH:mm:ss")) + aTexts);
    for (int i = 0; i < pItem->columnCount(); ++i)
        pItem->setToolTip(i, pItem->text(i));
    if (topLevelItemCount() > nMost)
        delete takeTopLevelItem(0);
    if (bAtEnd)
        scrollToItem(pItem);
    QString sText = aTexts[0].isEmpty() ? QString() : aTexts[0] + "  →  ";
    sText += aTexts[1] + "  ·  " + aTexts[2];
    if (!aTexts[3].isEmpty())
        sText += "  (" + aTexts[3] + ")";
    Q_EMIT Called(sText);
}

void CallList::Bar_ToolClick(const Tool& oTool) {
    const auto oItem = oTool.TagVariant().TryAs<ActionItem>();
    if (m_bHeld)
        return;
    if (!oItem) {
        AddRow({Text(oTool.Name()), tr("no object"), QString(), QString(), QString()});
        return;
    }
    const Ref<Object> oProvider = oItem->ActionsProviderObj();
    std::string sProvider = m_oRecord->IdOf(oProvider);
    if (sProvider.empty() && oProvider)
        sProvider = oProvider->TypeName();
    const bool bIsStandIn = static_cast<bool>(oProvider.TryAs<inspect::StandInObject>());
    m_sExpectedObject = bIsStandIn ? sProvider : std::string();
    m_sExpectedMember = oItem->Action();
    AddRow({Text(oTool.Name()), sProvider.empty() ? tr("no object") : Text(sProvider),
            oItem->Action().empty() ? tr("none") : Text(oItem->Action()), Text(oItem->Name()),
            sProvider.empty() ? QString()
            : bIsStandIn      ? tr("stub")
                              : tr("plug-in")});
}

void CallList::Record_CallAdded(const inspect::RecordedCall& oCall) {
    m_oRecord->aCalls.clear(); // it would hold what the arguments are
    if (m_bHeld)
        return;
    const bool bIsListed = oCall.sObject == m_sExpectedObject && EqualText(oCall.sMember, m_sExpectedMember);
    m_sExpectedObject.clear();
    if (bIsListed)
        return;
    QStringList aArguments;
    for (const Variant& oArgument : oCall.aArguments)
        aArguments << TextOf(oArgument, *m_oRecord);
    AddRow({QString(), Text(oCall.sObject), Text(oCall.sMember), aArguments.join(", "), tr("stub")});
}

void CallList::keyPressEvent(QKeyEvent* pEvent) {
    if (!pEvent->matches(QKeySequence::Copy)) {
        QTreeWidget::keyPressEvent(pEvent);
        return;
    }
    QStringList aLines;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (!topLevelItem(i)->isSelected())
            continue;
        QStringList aTexts;
        for (int iColumn = 0; iColumn < columnCount(); ++iColumn)
            aTexts << topLevelItem(i)->text(iColumn);
        aLines << aTexts.join('\t');
    }
    QApplication::clipboard()->setText(aLines.join('\n'));
}

} // namespace corvane::desktop
