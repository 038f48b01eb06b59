// The host's own page among the preferences: theme, size of icons, how windows are in the main window.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"
#include "desktop/IQtPage.h"

#include <QCoreApplication>
#include <QPalette>
#include <QPointer>
#include <functional>
#include <string>

class QComboBox;

namespace corvane::desktop {

struct Appearance {
    std::string theme = "System"; // or Light, Dark
    int iconSize = 0;             // in pixels, of toolbars; 0 for the style's own
    bool tabbedWindows = true;    // or free
    bool startPage = true;        // while no window is open
    std::string language;         // its code, "de"; empty for that of the desktop. From the next start on

    // What the user chose; a value that can't be read is the default.
    [[nodiscard]] static Appearance Load();
    void Save() const;
    bool operator==(const Appearance&) const = default;
};

// Of the whole program. "System" is what was there when the program started.
void ApplyTheme(const std::string& theme);
[[nodiscard]] QPalette ThemePalette(bool dark);

class AppearancePage final : public IPageAccess, public IQtPage {
    Q_DECLARE_TR_FUNCTIONS(AppearancePage)
public:
    using ApplyFunction = std::function<void(const Appearance&)>;
    explicit AppearancePage(ApplyFunction apply);

    Ref<IPage> Page() override { return m_pageBase; }
    QWidget* NewWidget(QWidget* parent) override;
    QWidget* FirstFocus() override;
    bool IsChanged() override;

    std::string_view TypeName() const override { return "AppearancePage"; }

private:
    [[nodiscard]] Appearance Chosen() const;
    void Save();

    ApplyFunction m_apply;
    Appearance m_saved;
    QPointer<QComboBox> m_theme;
    QPointer<QComboBox> m_iconSize;
    QPointer<QComboBox> m_windows;
    QPointer<QComboBox> m_startPage;
    QPointer<QComboBox> m_language;
    Ref<PageBase> m_pageBase = New<PageBase>();
    Subscription m_save;
};

} // namespace corvane::desktop
