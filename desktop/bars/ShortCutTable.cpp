#include "desktop/bars/ShortCutTable.h"

#include <array>

namespace corvane::desktop {

namespace {

Qt::Key Twin(Qt::Key key) {
    switch (key) {
    case Qt::Key_Enter: // of the keypad
        return Qt::Key_Return;
    case Qt::Key_Backtab: // what Shift makes of the tabulator
        return Qt::Key_Tab;
    default:
        return key;
    }
}

} // namespace

QKeySequence KeyIn(const QString& text) {
    static constexpr std::array<std::pair<const char*, const char*>, 9> names{{{"control", "Ctrl"},
                                                                               {"strg", "Ctrl"},
                                                                               {"delete", "Del"},
                                                                               {"insert", "Ins"},
                                                                               {"escape", "Esc"},
                                                                               {"pageup", "PgUp"},
                                                                               {"pagedown", "PgDown"},
                                                                               {"enter", "Return"},
                                                                               {"bksp", "Backspace"}}};
    QString withoutBlanks = text;
    withoutBlanks.remove(' ');
    QStringList parts = withoutBlanks.split('+', Qt::SkipEmptyParts);
    if (withoutBlanks.endsWith("++") || withoutBlanks == "+")
        parts.append("+");
    for (QString& part : parts)
        for (const auto& [longText, shortText] : names)
            if (part.compare(QLatin1String(longText), Qt::CaseInsensitive) == 0)
                part = QLatin1String(shortText);
    const QKeySequence keys = QKeySequence::fromString(parts.join('+'), QKeySequence::PortableText);
    return keys.count() == 1 && keys[0].key() != Qt::Key_unknown ? keys : QKeySequence();
}

Ref<Tool> ShortCutTable::Find(QKeyCombination pressed) {
    if (!m_valid)
        Read();
    const Qt::Key key = Twin(pressed.key());
    Qt::KeyboardModifiers modifiers =
        pressed.keyboardModifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (Ref<Tool> tool = Exactly(QKeyCombination(modifiers, key)))
        return tool;
    const bool sign = key > Qt::Key_Space && key < Qt::Key_Escape && (key < Qt::Key_A || key > Qt::Key_Z);
    if (!sign || !modifiers.testFlag(Qt::ShiftModifier))
        return nullptr;
    return Exactly(QKeyCombination(modifiers.setFlag(Qt::ShiftModifier, false), key));
}

Ref<Tool> ShortCutTable::Exactly(QKeyCombination keys) const {
    const auto it = m_tools.constFind(keys.toCombined());
    if (it != m_tools.constEnd())
        for (Tool* tool : *it)
            if (tool->Visible() && tool->Enabled())
                return Ref<Tool>(tool);
    return nullptr;
}

void ShortCutTable::Read() {
    m_tools.clear();
    for (const bool own : {true, false})
        for (const auto& tool : m_activeBar->Tools()->All())
            if (m_changes->HasOwnKeys(*tool) == own)
                for (const QKeySequence& keys : m_changes->KeysOf(*tool))
                    m_tools[keys[0].toCombined()].push_back(tool.Get());
    m_valid = true;
}

} // namespace corvane::desktop
