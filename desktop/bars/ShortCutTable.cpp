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

// What the keys may have been written as: with the sign's own Shift, or without.
std::vector<int> WaysToWrite(QKeyCombination pressed) {
    const Qt::Key key = Twin(pressed.key());
    Qt::KeyboardModifiers modifiers =
        pressed.keyboardModifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    std::vector<int> ways{QKeyCombination(modifiers, key).toCombined()};
    const bool sign = key > Qt::Key_Space && key < Qt::Key_Escape && (key < Qt::Key_A || key > Qt::Key_Z);
    if (sign && modifiers.testFlag(Qt::ShiftModifier))
        ways.push_back(QKeyCombination(modifiers.setFlag(Qt::ShiftModifier, false), key).toCombined());
    return ways;
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

Ref<Tool> ShortCutTable::Find(std::optional<QKeyCombination> before, QKeyCombination pressed) {
    if (!m_valid)
        Read();
    for (const int first : WaysToWrite(before.value_or(pressed))) {
        if (!before) {
            if (Ref<Tool> tool = Exactly({first, 0}))
                return tool;
            continue;
        }
        for (const int second : WaysToWrite(pressed))
            if (Ref<Tool> tool = Exactly({first, second}))
                return tool;
    }
    return nullptr;
}

bool ShortCutTable::BeginsChord(QKeyCombination pressed) {
    if (!m_valid)
        Read();
    for (const int first : WaysToWrite(pressed))
        if (const auto it = m_chords.constFind(first); it != m_chords.constEnd())
            for (const Strokes& strokes : *it)
                if (Exactly(strokes))
                    return true;
    return false;
}

Ref<Tool> ShortCutTable::Exactly(const Strokes& strokes) const {
    const auto it = m_tools.constFind(strokes);
    if (it != m_tools.constEnd())
        for (Tool* tool : *it)
            if (tool->Visible() && tool->Enabled())
                return Ref<Tool>(tool);
    return nullptr;
}

void ShortCutTable::Read() {
    m_tools.clear();
    m_chords.clear();
    for (const bool own : {true, false})
        for (const auto& tool : m_activeBar->Tools()->All())
            if (m_changes->HasOwnKeys(*tool) == own)
                for (const QKeySequence& keys : m_changes->KeysOf(*tool)) {
                    const Strokes strokes(keys[0].toCombined(), keys.count() > 1 ? keys[1].toCombined() : 0);
                    m_tools[strokes].push_back(tool.Get());
                    if (strokes.second != 0)
                        m_chords[strokes.first].push_back(strokes);
                }
    m_valid = true;
}

} // namespace corvane::desktop
