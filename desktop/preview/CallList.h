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

    explicit CallList(QWidget* parent = nullptr);

    // Between the making of the models and the start of the library.
    void Follow(const Ref<ActiveBar>& activeBar, const Ref<inspect::Record>& record);
    void Leave();
    // What the start itself calls isn't listed.
    void SetHeld(bool held) { m_held = held; }

Q_SIGNALS:
    // In one line.
    void Called(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Bar_ToolClick(const Tool& tool);
    void Record_CallAdded(const inspect::RecordedCall& call);
    void AddRow(const QStringList& texts);

    Ref<inspect::Record> m_record;
    std::string m_expectedObject; // the call that the command listed last brings about
    std::string m_expectedMember;
    bool m_held = false;
    Subscription m_toolClick;
    Subscription m_callAdded;
};

} // namespace corvane::desktop
