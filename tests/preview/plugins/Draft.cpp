// A plug-in of somebody at work: a service that holds an unsaved draft, and a page with a field that is typed into.
#include "corvane/base/Automation.h"
#include "corvane/base/Dictionary.h"
#include "corvane/base/PluginExport.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"
#include "desktop/IQtPage.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

using namespace corvane;

namespace {

// The person in a program that a test has started: presses the button that the environment names once it is there.
void PressIfAsked() {
    static QTimer oTimer;
    if (!qEnvironmentVariableIsSet("PRESS") || oTimer.isActive())
        return;
    QObject::connect(&oTimer, &QTimer::timeout, [] {
        for (QWidget* pWidget : QApplication::allWidgets())
            if (auto* pButton = qobject_cast<QAbstractButton*>(pWidget);
                pButton && pButton->isVisible() && pButton->text() == qEnvironmentVariable("PRESS")) {
                oTimer.stop();
                return pButton->click();
            }
    });
    oTimer.start(20);
}

class DraftService final : public Automation<DraftService, IServiceAccess> {
public:
    DraftService() {
        PressIfAsked();
        m_oUnsaved = m_oBase->GetUnsavedItems.Subscribe([this](const Ref<Dictionary>& dctItems, Double&) {
            if (m_bWritten)
                dctItems->Add("Draft", Variant(Ref<Object>(this)));
        });
        m_oComplete = m_oBase->SaveCompleteEvent.Subscribe(
            [](bool bCancelled) { Singleton::Framework()->SetStatus(bCancelled ? "stays" : "ends"); });
    }
    Ref<IService> Service() override { return m_oBase; }
    void OnWrite() { m_bWritten = true; }
    void OnSave() { m_bWritten = false; }
    // Waits in an event loop of its own.
    void OnAsk() { QMessageBox(QMessageBox::Question, "Draft", "Well?").exec(); }

    static constexpr auto Members =
        MemberTable(Method("OnWrite", &DraftService::OnWrite), Method("OnSave", &DraftService::OnSave),
                    Method("OnAsk", &DraftService::OnAsk));

private:
    Ref<ServiceBase> m_oBase = New<ServiceBase>();
    Subscription m_oUnsaved;
    Subscription m_oComplete;
    bool m_bWritten = false;
};

class DraftPage final : public IPageAccess, public desktop::IQtPage {
public:
    Ref<IPage> Page() override { return m_oBase; }
    QWidget* NewWidget(QWidget* pParent) override {
        auto* pField = new QLineEdit(pParent);
        QObject::connect(pField, &QLineEdit::textChanged, [this](const QString& sText) {
            m_bChanged = !sText.isEmpty();
            if (m_oBase->Window())
                m_oBase->ValidityChanged();
        });
        return pField;
    }
    bool IsChanged() override { return m_bChanged; }

private:
    Ref<PageBase> m_oBase = New<PageBase>();
    bool m_bChanged = false;
};

} // namespace

CORVANE_PLUGIN(Class<DraftPage>("Draft.Page"), Class<DraftService>("Draft.Service"))
