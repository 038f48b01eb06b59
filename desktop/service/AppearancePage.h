// The host's own page among the preferences: theme, size of icons, how windows stand in the main window.
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
    std::string sTheme = "System"; // or Light, Dark
    int nIconSize = 0;             // in pixels, of toolbars; 0 for the style's own
    bool bTabbedWindows = false;

    // What the person chose; a value that can't be read is the default.
    [[nodiscard]] static Appearance Load();
    void Save() const;
    bool operator==(const Appearance&) const = default;
};

// Of the whole program. "System" is what was there when the program started.
void ApplyTheme(const std::string& sTheme);
[[nodiscard]] QPalette ThemePalette(bool bDark);

class AppearancePage final : public IPageAccess, public IQtPage {
    Q_DECLARE_TR_FUNCTIONS(AppearancePage)
public:
    using ApplyFunction = std::function<void(const Appearance&)>;
    explicit AppearancePage(ApplyFunction fnApply);

    Ref<IPage> Page() override { return m_oPageBase; }
    QWidget* NewWidget(QWidget* pParent) override;
    QWidget* FirstFocus() override;
    bool IsChanged() override;

    std::string_view TypeName() const override { return "AppearancePage"; }

private:
    [[nodiscard]] Appearance Chosen() const;
    void Save();

    ApplyFunction m_fnApply;
    Appearance m_oSaved;
    QPointer<QComboBox> m_pTheme;
    QPointer<QComboBox> m_pIconSize;
    QPointer<QComboBox> m_pWindows;
    Ref<PageBase> m_oPageBase = New<PageBase>();
    Subscription m_oSave;
};

} // namespace corvane::desktop
