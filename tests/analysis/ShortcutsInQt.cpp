// The check reads shortcuts without Qt as the Qt host reads them.
#include "analysis/Shortcuts.h"
#include "desktop/bars/ShortCutTable.h"

#include <gtest/gtest.h>

namespace corvane::desktop {

TEST(Shortcuts, AreReadAsTheHostReadsThem) {
    for (const char* text : {"Control+S",   "ctrl + shift + o",
                             "Strg+F5",     "F35",
                             "F36",         "f1",
                             "F01",         "F",
                             "Alt+Delete",  "Del",
                             "Escape",      "esc",
                             "PageUp",      "pgdown",
                             "Enter",       "Bksp",
                             "Backspace",   "Tab",
                             "Space",       "Home",
                             "End",         "Left",
                             "Up",          "Pause",
                             "Print",       "Meta+X",
                             "Ctrl++",      "+",
                             "Ctrl+",       "Ctrl",
                             "Contrl+S",    "Shift+Control+S",
                             "Ctrl+Ctrl+S", "Ctrl+,",
                             "Ctrl+1",      "Ctrl+\u00E4",
                             "Hyper+X",     "Escpe",
                             "Ctrl+AB",     "",
                             " ",           "Menu",
                             "Help",        "CapsLock",
                             "Insert",      "Ins",
                             "Save",        "Clear",
                             "Back",        "Ctrl+A, Ctrl+B"}) {
        const QKeySequence keys = KeyIn(QString::fromUtf8(text));
        EXPECT_EQ(check::ShortcutIn(text).has_value(), !keys.isEmpty())
            << text << ": " << keys.toString(QKeySequence::PortableText).toStdString();
    }
    for (const auto& [first, second] :
         {std::pair{"Control+Shift+S", "shift+ctrl+s"}, {"Delete", "Del"}, {"Enter", "Return"}})
        EXPECT_EQ(check::ShortcutIn(first), check::ShortcutIn(second));
}

} // namespace corvane::desktop
