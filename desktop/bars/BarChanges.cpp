#include "desktop/bars/BarChanges.h"

#include "desktop/bars/ShortCutTable.h"

namespace corvane::desktop {

QList<QKeySequence> BarChanges::KeysOf(const Tool& tool) const {
    QList<QKeySequence> keyList;
    for (const auto& shortCut : tool.ShortCuts())
        if (const QKeySequence keys = KeyIn(QString::fromStdString(shortCut->Value())); !keys.isEmpty())
            keyList.append(keys);
    return keyList;
}

QString BarChanges::KeysText(const Tool& tool) const {
    QStringList texts;
    for (const QKeySequence& keys : KeysOf(tool))
        texts.append(keys.toString(QKeySequence::NativeText));
    return texts.join(", ");
}

const BarChanges& BarChanges::None() {
    static const BarChanges none;
    return none;
}

} // namespace corvane::desktop
