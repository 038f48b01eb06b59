#include "desktop/preview/CallList.h"

#include "corvane/menus/ActionItem.h"
#include "desktop/style/QtText.h"
#include "headless/StandIns.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTime>

namespace corvane::desktop {

namespace {

constexpr int most = 1000;

// An action item by its name, another object by its id, as far as it has one.
QString TextOf(const Variant& argument, const inspect::Record& record) {
    if (!argument.IsObject())
        return argument.IsEmpty() ? QStringLiteral("–") : Text(ToText(argument));
    const Ref<Object> object = ToObject(argument);
    if (!object)
        return QStringLiteral("–");
    if (const auto item = object.TryAs<ActionItem>())
        return Text(item->Name());
    const std::string id = record.IdOf(object);
    return id.empty() ? Text(object->TypeName()) : Text(id);
}

} // namespace

CallList::CallList(QWidget* parent) : QTreeWidget(parent) {
    setHeaderLabels({tr("Time"), tr("Command"), tr("Provider"), tr("Procedure"), tr("Tag"), tr("Handled by")});
    setAccessibleName(tr("Calls"));
    setRootIsDecorated(false);
    setAlternatingRowColors(true);
    setUniformRowHeights(true);
    setSelectionMode(ExtendedSelection);
    setFrameShape(NoFrame);
    header()->setSectionResizeMode(QHeaderView::Interactive);
    const int letter = fontMetrics().averageCharWidth();
    for (const auto& [column, letters] :
         {std::pair{Time, 10}, {Command, 26}, {Provider, 34}, {Procedure, 24}, {Tag, 20}})
        header()->resizeSection(column, letter * letters);
}

void CallList::Follow(const Ref<ActiveBar>& activeBar, const Ref<inspect::Record>& record) {
    m_record = record;
    m_toolClick = activeBar->ToolClick.Subscribe([this](const Ref<Tool>& tool) { Bar_ToolClick(*tool); });
    m_callAdded = record->CallAdded.Subscribe([this](const inspect::RecordedCall& call) { Record_CallAdded(call); });
}

void CallList::Leave() {
    m_toolClick = {};
    m_callAdded = {};
    m_record = nullptr;
}

void CallList::AddRow(const QStringList& texts) {
    const QScrollBar* bar = verticalScrollBar();
    const bool atEnd = bar->value() == bar->maximum();
    auto* item = new QTreeWidgetItem(this, QStringList(QTime::currentTime().toString("HH:mm:ss")) + texts);
    for (int i = 0; i < item->columnCount(); ++i)
        item->setToolTip(i, item->text(i));
    if (topLevelItemCount() > most)
        delete takeTopLevelItem(0);
    if (atEnd)
        scrollToItem(item);
    QString text = texts[0].isEmpty() ? QString() : texts[0] + "  →  ";
    text += texts[1] + "  ·  " + texts[2];
    if (!texts[3].isEmpty())
        text += "  (" + texts[3] + ")";
    Q_EMIT Called(text);
}

void CallList::Bar_ToolClick(const Tool& tool) {
    const auto item = tool.TagVariant().TryAs<ActionItem>();
    if (m_held)
        return;
    if (!item) {
        AddRow({Text(tool.Name()), tr("no object"), QString(), QString(), QString()});
        return;
    }
    const Ref<Object> provider = item->ActionsProviderObj();
    std::string providerText = m_record->IdOf(provider);
    if (providerText.empty() && provider)
        providerText = provider->TypeName();
    const bool isStandIn = static_cast<bool>(provider.TryAs<inspect::StandInObject>());
    m_expectedObject = isStandIn ? providerText : std::string();
    m_expectedMember = item->Action();
    AddRow({Text(tool.Name()), providerText.empty() ? tr("no object") : Text(providerText),
            item->Action().empty() ? tr("none") : Text(item->Action()), Text(item->Name()),
            providerText.empty() ? QString()
            : isStandIn          ? tr("stub")
                                 : tr("plug-in")});
}

void CallList::Record_CallAdded(const inspect::RecordedCall& call) {
    m_record->calls.clear(); // it would hold what the arguments are
    if (m_held)
        return;
    const bool isListed = call.object == m_expectedObject && EqualText(call.member, m_expectedMember);
    m_expectedObject.clear();
    if (isListed)
        return;
    QStringList arguments;
    for (const Variant& argument : call.arguments)
        arguments << TextOf(argument, *m_record);
    AddRow({QString(), Text(call.object), Text(call.member), arguments.join(", "), tr("stub")});
}

void CallList::keyPressEvent(QKeyEvent* event) {
    if (!event->matches(QKeySequence::Copy)) {
        QTreeWidget::keyPressEvent(event);
        return;
    }
    QStringList lines;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        if (!topLevelItem(i)->isSelected())
            continue;
        QStringList texts;
        for (int column = 0; column < columnCount(); ++column)
            texts << topLevelItem(i)->text(column);
        lines << texts.join('\t');
    }
    QApplication::clipboard()->setText(lines.join('\n'));
}

} // namespace corvane::desktop

#include "moc_CallList.cpp"
