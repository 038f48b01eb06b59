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
    static QTimer timer;
    if (!qEnvironmentVariableIsSet("PRESS") || timer.isActive())
        return;
    QObject::connect(&timer, &QTimer::timeout, [] {
        for (QWidget* widget : QApplication::allWidgets())
            if (auto* button = qobject_cast<QAbstractButton*>(widget);
                button && button->isVisible() && button->text() == qEnvironmentVariable("PRESS")) {
                timer.stop();
                return button->click();
            }
    });
    timer.start(20);
}

class DraftService final : public Automation<DraftService, IServiceAccess> {
public:
    DraftService() {
        PressIfAsked();
        m_unsaved = m_base->GetUnsavedItems.Subscribe([this](const Ref<Dictionary>& items, Double&) {
            if (m_written)
                items->Add("Draft", Variant(Ref<Object>(this)));
        });
        m_complete = m_base->SaveCompleteEvent.Subscribe(
            [](bool cancelled) { Singleton::Framework()->SetStatus(cancelled ? "stays" : "ends"); });
    }
    Ref<IService> Service() override { return m_base; }
    void OnWrite() { m_written = true; }
    void OnSave() { m_written = false; }
    // Waits in an event loop of its own.
    void OnAsk() { QMessageBox(QMessageBox::Question, "Draft", "Well?").exec(); }

    static constexpr auto Members =
        MemberTable(Method("OnWrite", &DraftService::OnWrite), Method("OnSave", &DraftService::OnSave),
                    Method("OnAsk", &DraftService::OnAsk));

private:
    Ref<ServiceBase> m_base = New<ServiceBase>();
    Subscription m_unsaved;
    Subscription m_complete;
    bool m_written = false;
};

class DraftPage final : public IPageAccess, public desktop::IQtPage {
public:
    Ref<IPage> Page() override { return m_base; }
    QWidget* NewWidget(QWidget* parent) override {
        auto* field = new QLineEdit(parent);
        QObject::connect(field, &QLineEdit::textChanged, [this](const QString& text) {
            m_changed = !text.isEmpty();
            if (m_base->Window())
                m_base->ValidityChanged();
        });
        return field;
    }
    bool IsChanged() override { return m_changed; }

private:
    Ref<PageBase> m_base = New<PageBase>();
    bool m_changed = false;
};

} // namespace

CORVANE_PLUGIN(Class<DraftPage>("Draft.Page"), Class<DraftService>("Draft.Service"))
