#include "desktop/bars/ShortCutTable.h"

#include <array>

namespace corvane::desktop {

namespace {

Qt::Key Twin(Qt::Key eKey) {
    switch (eKey) {
    case Qt::Key_Enter: // of the keypad
        return Qt::Key_Return;
    case Qt::Key_Backtab: // what Shift makes of the tabulator
        return Qt::Key_Tab;
    default:
        return eKey;
    }
}

} // namespace

QKeySequence KeyIn(const QString& sText) {
    static constexpr std::array<std::pair<const char*, const char*>, 9> aNames{{{"control", "Ctrl"},
                                                                                {"strg", "Ctrl"},
                                                                                {"delete", "Del"},
                                                                                {"insert", "Ins"},
                                                                                {"escape", "Esc"},
                                                                                {"pageup", "PgUp"},
                                                                                {"pagedown", "PgDown"},
                                                                                {"enter", "Return"},
                                                                                {"bksp", "Backspace"}}};
    QString sWithoutBlanks = sText;
    sWithoutBlanks.remove(' ');
    QStringList aParts = sWithoutBlanks.split('+', Qt::SkipEmptyParts);
    if (sWithoutBlanks.endsWith("++") || sWithoutBlanks == "+")
        aParts.append("+");
    for (QString& sPart : aParts)
        for (const auto& [sLong, sShort] : aNames)
            if (sPart.compare(QLatin1String(sLong), Qt::CaseInsensitive) == 0)
                sPart = QLatin1String(sShort);
    const QKeySequence oKeys = QKeySequence::fromString(aParts.join('+'), QKeySequence::PortableText);
    return oKeys.count() == 1 && oKeys[0].key() != Qt::Key_unknown ? oKeys : QKeySequence();
}

Ref<Tool> ShortCutTable::Find(QKeyCombination oPressed) {
    if (!m_bValid)
        Read();
    const Qt::Key eKey = Twin(oPressed.key());
    Qt::KeyboardModifiers eModifiers =
        oPressed.keyboardModifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (Ref<Tool> oTool = Exactly(QKeyCombination(eModifiers, eKey)))
        return oTool;
    const bool bSign = eKey > Qt::Key_Space && eKey < Qt::Key_Escape && (eKey < Qt::Key_A || eKey > Qt::Key_Z);
    if (!bSign || !eModifiers.testFlag(Qt::ShiftModifier))
        return nullptr;
    return Exactly(QKeyCombination(eModifiers.setFlag(Qt::ShiftModifier, false), eKey));
}

Ref<Tool> ShortCutTable::Exactly(QKeyCombination oKeys) const {
    const auto it = m_mapTools.constFind(oKeys.toCombined());
    if (it != m_mapTools.constEnd())
        for (Tool* pTool : *it)
            if (pTool->Visible() && pTool->Enabled())
                return Ref<Tool>(pTool);
    return nullptr;
}

void ShortCutTable::Read() {
    m_mapTools.clear();
    for (const bool bOwn : {true, false})
        for (const auto& oTool : m_oActiveBar->Tools()->All())
            if (m_pChanges->HasOwnKeys(*oTool) == bOwn)
                for (const QKeySequence& oKeys : m_pChanges->KeysOf(*oTool))
                    m_mapTools[oKeys[0].toCombined()].push_back(oTool.Get());
    m_bValid = true;
}

} // namespace corvane::desktop
