// The parts of a platform that write down what happens instead of showing it.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/base/Event.h"
#include "corvane/platform/Platform.h"

#include <map>
#include <string>
#include <vector>

namespace corvane::inspect {

struct LoggedFailure {
    std::string module;
    std::string procedure;
    Failure failure;
    std::string context;
    bool shown;
};

struct RecordedCall {
    std::string object; // the object's id
    std::string member;
    std::vector<Variant> arguments;
    bool hasArguments; // false where the arguments are of no interest
};

struct RecordedMessage {
    std::string text;
    std::string title;
};

class Record final : public virtual Object {
public:
    std::vector<LoggedFailure> log;
    std::vector<RecordedCall> calls;
    std::vector<RecordedMessage> messages;
    std::vector<std::string> popups; // names of the bands that were shown
    std::vector<std::string> missed; // steps that were about nothing that is there, likewise
    std::vector<std::string> unmet;  // expectations that weren't met, with file and line
    Event<const RecordedCall&> CallAdded;

    void Add(RecordedCall call);

    // "ProgID#n", n counting the objects of that ProgID.
    std::string NewId(std::string_view progID);
    void Name(const Object& object, std::string id) { m_ids[&object] = std::move(id); }
    void Forget(const Object& object) { m_ids.erase(&object); }
    // Empty for an object that has no id.
    [[nodiscard]] std::string IdOf(const Ref<Object>& object) const;

private:
    std::map<std::string, int, std::less<>> m_counts;
    std::map<const Object*, std::string> m_ids;
};

class RecordingUtilities final : public IUtilities {
public:
    RecordingUtilities(Ref<Record> record, std::string applicationFolder)
        : m_record(std::move(record)), m_applicationFolder(std::move(applicationFolder)) {}

    void LogError(std::string_view appName, std::string_view module, std::string_view procedure, const Failure& failure,
                  std::string_view context, bool show) override;
    [[nodiscard]] std::string AppName() const override { return "Corvane"; }
    [[nodiscard]] bool BreakOnError() const override { return false; }
    [[nodiscard]] bool IsRunningInIDE() const override { return false; }
    [[nodiscard]] std::string GetAppFolder(std::string_view name) const override;
    [[nodiscard]] std::string LibraryFolder() const override { return m_applicationFolder; }

private:
    Ref<Record> m_record;
    std::string m_applicationFolder;
};

class RecordingMessageBox final : public IMessageBox {
public:
    explicit RecordingMessageBox(Ref<Record> record) : m_record(std::move(record)) {}
    void ShowInformation(std::string_view text, std::string_view title) override {
        m_record->messages.push_back({std::string(text), std::string(title)});
    }

private:
    Ref<Record> m_record;
};

// Timers that tick on demand.
class ManualTimers final : public ITimers {
public:
    [[nodiscard]] Ref<ITimer> NewTimer() override;
    void DoEvents() override {}
    // Every enabled timer ticks once, in the order in which they were made.
    void TickAll();

private:
    class ManualTimer final : public ITimer {
    public:
        void SetInterval(Long /*milliseconds*/) override {}
        void SetEnabled(bool enabled) override { m_enabled = enabled; }
        [[nodiscard]] bool Enabled() const { return m_enabled; }

    private:
        bool m_enabled = false;
    };
    std::vector<Ref<ManualTimer>> m_timers;
};

class FixedScreen final : public IScreen {
public:
    [[nodiscard]] MousePointer Pointer() const override { return m_pointer; }
    void SetPointer(MousePointer pointer) override { m_pointer = pointer; }
    [[nodiscard]] Single TwipsPerPixelX() const override { return 15; }
    [[nodiscard]] Single TwipsPerPixelY() const override { return 15; }

private:
    MousePointer m_pointer = MousePointer::Default;
};

// Settings that are forgotten with the program.
class MemorySettings final : public ISettingsStore {
public:
    [[nodiscard]] std::string Read(std::string_view service, std::string_view category, std::string_view name,
                                   std::string_view defaultText) const override;
    void Write(std::string_view service, std::string_view category, std::string_view name,
               std::string_view value) override;

private:
    std::map<std::string, std::string> m_values;
};

// The progress control of the main form, without a picture.
class ProgressModel final : public Automation<ProgressModel> {
public:
    [[nodiscard]] Long HWnd() const { return 1; }
    [[nodiscard]] bool Cancel() const { return m_cancel; }
    void SetCancel(bool cancel) { m_cancel = cancel; }
    [[nodiscard]] bool WasCanceled() const { return m_wasCanceled; }
    void SetWasCanceled(bool wasCanceled) { m_wasCanceled = wasCanceled; }
    [[nodiscard]] Double Max() const { return m_max; }
    void SetMax(Double max) { m_max = max; }
    [[nodiscard]] Double Value() const { return m_value; }
    void SetValue(Double value) { m_value = value; }
    void Increment() { m_value += 1; }
    void Percent(Double percent) { m_value = m_max * percent / 100; }
    [[nodiscard]] Long Pixels() const { return 0; }

    static constexpr auto Members = MemberTable(
        Property("hwnd", &ProgressModel::HWnd), Property("Cancel", &ProgressModel::Cancel, &ProgressModel::SetCancel),
        Property("WasCanceled", &ProgressModel::WasCanceled, &ProgressModel::SetWasCanceled),
        Property("Max", &ProgressModel::Max, &ProgressModel::SetMax),
        Property("Value", &ProgressModel::Value, &ProgressModel::SetValue),
        Method("Increment", &ProgressModel::Increment), Method("Percent", &ProgressModel::Percent),
        Property("Pixels", &ProgressModel::Pixels));

private:
    bool m_cancel = false;
    bool m_wasCanceled = false;
    Double m_max = 100;
    Double m_value = 0;
};

} // namespace corvane::inspect
