// Names the service in whose code the program died or hung, and leaves services out of a start.
#pragma once

#include "adapters/log/Utilities.h"
#include "adapters/plugins/PluginFactory.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/Entering.h"
#include "desktop/blame/CrashMarker.h"
#include "desktop/blame/EnteredCode.h"
#include "desktop/blame/LeftOutServices.h"
#include "desktop/blame/UiWatch.h"

#include <QCoreApplication>
#include <functional>
#include <memory>
#include <optional>

namespace corvane::desktop {

class Blame final : private Entering::Watcher {
    Q_DECLARE_TR_FUNCTIONS(Blame)
public:
    enum class Answer { LeaveOut, StartAll, Safe };
    using AskFunction = std::function<Answer(const CrashRecord&, const std::string& sWho)>;

    // fnAsk is asked what to do about each service in whose code the program died; without it that is only logged.
    Blame(Ref<Utilities> oUtilities, std::string sStateFolder, LeftOut oLeftOut, const AskFunction& fnAsk);
    ~Blame() override;

    // What the library is to get in place of these.
    [[nodiscard]] Ref<IFileSystem> Files(Ref<IFileSystem> oFiles, const std::string& sServicesFolder);
    [[nodiscard]] Ref<IObjectFactory> Factory(Ref<PluginFactory> oPlugins);

    // A command begins; it has ended when the event loop has its next turn.
    void CommandBegins(const ActionItem& oActionItem);
    // From here on a service that keeps the user interface busy for longer than the limit is named in the log.
    void StartWatch(UiWatch::Milliseconds oLimit = UiWatch::Milliseconds(2000));

    [[nodiscard]] const LeftOut& WithoutServices() const { return m_oLeftOut; }
    // After the start.
    [[nodiscard]] const Ref<LeftOutServices>& Filter() const { return m_oFilter; }

    [[nodiscard]] static Answer AskInBox(const CrashRecord& oRecord, const std::string& sWhoDied);
    // The service, or else the plug-in.
    [[nodiscard]] std::string Who(const CrashRecord& oRecord) const { return WhoIn(oRecord, m_sServicesFolder); }

private:
    void Entered(const Object& oObject) noexcept override;
    void Left() noexcept override;
    void TellOfDead(const AskFunction& fnAsk);
    void Log(const std::string& sText) const;
    void TellOfBusy(const char* sPlugin, UiWatch::Milliseconds oFor, bool bOver);

    Ref<Utilities> m_oUtilities;
    std::string m_sServicesFolder;
    LeftOut m_oLeftOut;
    CrashMarker m_oMarker;
    EnteredCode m_oEntered{m_oMarker};
    Ref<LeftOutServices> m_oFilter;
    QObject m_oTurn;     // ends what waits for the next turn
    std::string m_sBusy; // the watching thread's
    std::unique_ptr<UiWatch> m_pWatch;
};

} // namespace corvane::desktop
