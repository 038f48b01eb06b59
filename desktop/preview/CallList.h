// What the previewed application calls: which command, on which object, which procedure, with what. Commands of
// plug-ins that are there are listed as well as those that end at a stand-in.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"
#include "headless/Recording.h"

#include <QTreeWidget>
#include <string>

namespace corvane::desktop {

class CallList final : public QTreeWidget {
    Q_OBJECT
public:
    enum Column { Time, Command, Provider, Procedure, Tag, By };

    explicit CallList(QWidget* pParent = nullptr);

    // Between the making of the models and the start of the library.
    void Follow(const Ref<ActiveBar>& oActiveBar, const Ref<inspect::Record>& oRecord);
    void Leave();
    // What the start itself calls isn't listed.
    void SetHeld(bool bHeld) { m_bHeld = bHeld; }

Q_SIGNALS:
    // In one line.
    void Called(const QString& sText);

protected:
    void keyPressEvent(QKeyEvent* pEvent) override;

private:
    void Bar_ToolClick(const Tool& oTool);
    void Record_CallAdded(const inspect::RecordedCall& oCall);
    void AddRow(const QStringList& aTexts);

    Ref<inspect::Record> m_oRecord;
    std::string m_sExpectedObject; // the call that the command listed last brings about
    std::string m_sExpectedMember;
    bool m_bHeld = false;
    Subscription m_oToolClick;
    Subscription m_oCallAdded;
};

} // namespace corvane::desktop
