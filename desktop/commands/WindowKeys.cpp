#include "desktop/commands/WindowKeys.h"

#include "corvane/menus/ActionItem.h"
#include "desktop/commands/CommandList.h"

namespace corvane::desktop {

namespace {

bool IsHosts(const Tool& tool) {
    const auto action = tool.TagVariant().TryAs<ActionItem>();
    return action && action->ActionsProviderObj() && action->ActionsProviderObj()->TypeName() == "HostService";
}

QKeySequence Keys(const char* keys) {
    return QKeySequence::fromString(QLatin1String(keys), QKeySequence::PortableText);
}

} // namespace

std::vector<WindowKey> FixedWindowKeys() {
    using Use = WindowKey::Use;
    const QString window = QCoreApplication::translate("WindowKeys", "the window itself");
    const QString explorer = QCoreApplication::translate("WindowKeys", "the explorer");
    const QString pages = QCoreApplication::translate("WindowKeys", "windows with pages");
    const QString next = QCoreApplication::translate("WindowKeys", "Next window");
    const QString previous = QCoreApplication::translate("WindowKeys", "Previous window");
    const QString close = QCoreApplication::translate("WindowKeys", "Close window");
    const QString otherPart = QCoreApplication::translate("WindowKeys", "Next part: window, explorer, open views");
    const QString previousPart = QCoreApplication::translate("WindowKeys", "Previous part");
    const QString menu = QCoreApplication::translate("WindowKeys", "Context menu");
    return {
        {Keys("Ctrl+Tab"), Use::LastUsedWindow,
         QCoreApplication::translate("WindowKeys", "Switch to the window used before"), window, true},
        {Keys("Ctrl+F6"), Use::NextWindow, next, window, true},
        {Keys("Ctrl+Shift+Tab"), Use::FirstUsedWindow,
         QCoreApplication::translate("WindowKeys", "Switch to the window not used for longest"), window, true},
        {Keys("Ctrl+Shift+F6"), Use::PreviousWindow, previous, window, true},
        {Keys("Ctrl+F4"), Use::CloseWindow, close, window, true},
        {Keys("Ctrl+W"), Use::CloseWindow, close, window, false},
        {Keys("Ctrl+S"), Use::SaveWindow, QCoreApplication::translate("WindowKeys", "Save window"), window, false},
        {Keys("F6"), Use::OtherPart, otherPart, window, false},
        {Keys("Shift+F6"), Use::PreviousPart, previousPart, window, false},
        {Keys("F10"), Use::FirstMenu, QCoreApplication::translate("WindowKeys", "First menu"), window, false},
        {Keys("F2"), Use::Other, QCoreApplication::translate("WindowKeys", "Rename"), explorer, false},
        {Keys("Return"), Use::Other, QCoreApplication::translate("WindowKeys", "Open"), explorer, false},
        {Keys("Space"), Use::Other, QCoreApplication::translate("WindowKeys", "Choose"), explorer, false},
        {Keys("Ctrl+F"), Use::Other, QCoreApplication::translate("WindowKeys", "Filter"), explorer, false},
        {Keys("Ctrl+M"), Use::Other, QCoreApplication::translate("WindowKeys", "Move to another item"), explorer,
         false},
        {Keys("Menu"), Use::Other, menu, explorer, false},
        {Keys("Shift+F10"), Use::Other, menu, explorer, false},
        {Keys("Ctrl+PgDown"), Use::Other, QCoreApplication::translate("WindowKeys", "Next page"), pages, false},
        {Keys("Ctrl+PgUp"), Use::Other, QCoreApplication::translate("WindowKeys", "Previous page"), pages, false},
    };
}

std::vector<WindowKey> WindowKeys(const ActiveBar& activeBar) {
    std::vector<WindowKey> keyList = FixedWindowKeys();
    // What a command of the host does as well isn't lost to it.
    for (const auto& [name, use] :
         {std::pair("File.Save", WindowKey::Use::SaveWindow), std::pair("File.Close", WindowKey::Use::CloseWindow)})
        if (const Ref<Tool> tool = activeBar.Tools()->Find(name); tool && IsHosts(*tool))
            std::erase_if(keyList,
                          [&, same = use](const WindowKey& key) { return key.use == same && !key.comesFirst; });
    for (const auto& band : activeBar.Bands()->All()) {
        if (band->Kind() != BandKind::MenuBar || !band->Visible())
            continue;
        for (const auto& title : band->Tools()->All()) {
            const QKeySequence keys = QKeySequence::mnemonic(QString::fromStdString(title->Caption()));
            if (title->Visible() && !keys.isEmpty())
                keyList.push_back({keys, WindowKey::Use::Title,
                                   QCoreApplication::translate("WindowKeys", "Menu %1").arg(PlainCaption(*title)),
                                   keyList.front().owner, true});
        }
    }
    return keyList;
}

} // namespace corvane::desktop
