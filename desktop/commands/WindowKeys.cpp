#include "desktop/commands/WindowKeys.h"

#include "desktop/commands/CommandList.h"

namespace corvane::desktop {

namespace {

QKeySequence Keys(const char* sKeys) {
    return QKeySequence::fromString(QLatin1String(sKeys), QKeySequence::PortableText);
}

} // namespace

std::vector<WindowKey> FixedWindowKeys() {
    using Use = WindowKey::Use;
    const QString sWindow = QCoreApplication::translate("WindowKeys", "the window itself");
    const QString sExplorer = QCoreApplication::translate("WindowKeys", "the explorer");
    const QString sPages = QCoreApplication::translate("WindowKeys", "windows with pages");
    const QString sNext = QCoreApplication::translate("WindowKeys", "Next window");
    const QString sPrevious = QCoreApplication::translate("WindowKeys", "Previous window");
    const QString sClose = QCoreApplication::translate("WindowKeys", "Close window");
    const QString sOtherPart = QCoreApplication::translate("WindowKeys", "Switch between explorer and window");
    const QString sMenu = QCoreApplication::translate("WindowKeys", "Context menu");
    return {
        {Keys("Ctrl+Tab"), Use::NextWindow, sNext, sWindow, true},
        {Keys("Ctrl+F6"), Use::NextWindow, sNext, sWindow, true},
        {Keys("Ctrl+Shift+Tab"), Use::PreviousWindow, sPrevious, sWindow, true},
        {Keys("Ctrl+Shift+F6"), Use::PreviousWindow, sPrevious, sWindow, true},
        {Keys("Ctrl+F4"), Use::CloseWindow, sClose, sWindow, true},
        {Keys("Ctrl+W"), Use::CloseWindow, sClose, sWindow, false},
        {Keys("F6"), Use::OtherPart, sOtherPart, sWindow, false},
        {Keys("Shift+F6"), Use::OtherPart, sOtherPart, sWindow, false},
        {Keys("F10"), Use::FirstMenu, QCoreApplication::translate("WindowKeys", "First menu"), sWindow, false},
        {Keys("F2"), Use::Other, QCoreApplication::translate("WindowKeys", "Rename"), sExplorer, false},
        {Keys("Return"), Use::Other, QCoreApplication::translate("WindowKeys", "Open"), sExplorer, false},
        {Keys("Space"), Use::Other, QCoreApplication::translate("WindowKeys", "Choose"), sExplorer, false},
        {Keys("Ctrl+F"), Use::Other, QCoreApplication::translate("WindowKeys", "Filter"), sExplorer, false},
        {Keys("Menu"), Use::Other, sMenu, sExplorer, false},
        {Keys("Shift+F10"), Use::Other, sMenu, sExplorer, false},
        {Keys("Ctrl+PgDown"), Use::Other, QCoreApplication::translate("WindowKeys", "Next page"), sPages, false},
        {Keys("Ctrl+PgUp"), Use::Other, QCoreApplication::translate("WindowKeys", "Previous page"), sPages, false},
    };
}

std::vector<WindowKey> WindowKeys(const ActiveBar& oActiveBar) {
    std::vector<WindowKey> aKeys = FixedWindowKeys();
    for (const auto& oBand : oActiveBar.Bands()->All()) {
        if (oBand->Kind() != BandKind::MenuBar || !oBand->Visible())
            continue;
        for (const auto& oTitle : oBand->Tools()->All()) {
            const QKeySequence oKeys = QKeySequence::mnemonic(QString::fromStdString(oTitle->Caption()));
            if (oTitle->Visible() && !oKeys.isEmpty())
                aKeys.push_back({oKeys, WindowKey::Use::Title,
                                 QCoreApplication::translate("WindowKeys", "Menu %1").arg(PlainCaption(*oTitle)),
                                 aKeys.front().sOwner, true});
        }
    }
    return aKeys;
}

} // namespace corvane::desktop
