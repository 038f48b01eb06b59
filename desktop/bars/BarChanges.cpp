#include "desktop/bars/BarChanges.h"

#include "desktop/bars/ShortCutTable.h"

namespace corvane::desktop {

QList<QKeySequence> BarChanges::KeysOf(const Tool& oTool) const {
    QList<QKeySequence> aKeys;
    for (const auto& oShortCut : oTool.ShortCuts())
        if (const QKeySequence oKeys = KeyIn(QString::fromStdString(oShortCut->Value())); !oKeys.isEmpty())
            aKeys.append(oKeys);
    return aKeys;
}

QString BarChanges::KeysText(const Tool& oTool) const {
    QStringList aTexts;
    for (const QKeySequence& oKeys : KeysOf(oTool))
        aTexts.append(oKeys.toString(QKeySequence::NativeText));
    return aTexts.join(", ");
}

const BarChanges& BarChanges::None() {
    static const BarChanges oNone;
    return oNone;
}

} // namespace corvane::desktop
