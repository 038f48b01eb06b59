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
#include <string>
#include <unordered_set>

namespace corvane::desktop {

// What is to be done about a service in whose code the program died.
enum class CrashAnswer { LeaveOut, StartAll, Safe };

class Blame final : private Entering::Watcher {
    Q_DECLARE_TR_FUNCTIONS(Blame)
public:
    using AskFunction = std::function<CrashAnswer(const CrashRecord&, const std::string& who)>;

    // ask is asked what to do about each service in whose code the program died; without it that is only logged.
    Blame(Ref<Utilities> utilities, std::string stateFolder, LeftOut leftOut, const AskFunction& ask);
    ~Blame() override;

    // What the library is to get in place of these.
    [[nodiscard]] Ref<IFileSystem> Files(Ref<IFileSystem> files, const std::string& servicesFolder);
    [[nodiscard]] Ref<IObjectFactory> Factory(Ref<PluginFactory> plugins);

    // A command begins; it has ended when the event loop has its next turn.
    void CommandBegins(const ActionItem& actionItem);
    // From here on a service that keeps the user interface busy for longer than the limit is named in the log.
    void StartWatch(UiWatch::Milliseconds limit = UiWatch::Milliseconds(2000));

    // From here on the objects are noted that are entered from where the program is now, not from within one another.
    void NoteEntered();
    [[nodiscard]] bool WasEntered(const Object& object) const { return m_noted.contains(&object); }

    [[nodiscard]] const LeftOut& WithoutServices() const { return m_leftOut; }
    // After the start.
    [[nodiscard]] const Ref<LeftOutServices>& Filter() const { return m_filter; }

    [[nodiscard]] static CrashAnswer AskInBox(const CrashRecord& record, const std::string& whoDied);
    // The service, or else the plug-in.
    [[nodiscard]] std::string Who(const CrashRecord& record) const { return WhoIn(record, m_servicesFolder); }

private:
    void Entered(const Object& object) noexcept override;
    void Left() noexcept override;
    void ReportCrash(const AskFunction& ask);
    void Log(const std::string& text) const;
    void ReportBusy(const char* plugin, UiWatch::Milliseconds duration, bool over);

    Ref<Utilities> m_utilities;
    Utilities& m_log; // the same: the watching thread, too, writes to the log, but holds no object
    std::string m_servicesFolder;
    LeftOut m_leftOut;
    CrashMarker m_marker;
    EnteredCode m_entered{m_marker};
    Ref<LeftOutServices> m_filter;
    std::optional<std::size_t> m_notesAt; // the depth; nothing before NoteEntered
    std::unordered_set<const Object*> m_noted;
    QObject m_turn;     // ends what waits for the next turn
    std::string m_busy; // the watching thread's
    std::unique_ptr<UiWatch> m_watch;
};

} // namespace corvane::desktop
