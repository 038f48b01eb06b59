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
    std::string sModule;
    std::string sProcedure;
    Failure oFailure;
    std::string sContext;
    bool bShown;
};

struct RecordedCall {
    std::string sObject; // the object's id
    std::string sMember;
    std::vector<Variant> aArguments;
    bool bHasArguments; // false where the arguments are of no interest
};

struct RecordedMessage {
    std::string sText;
    std::string sTitle;
};

class Record final : public virtual Object {
public:
    std::vector<LoggedFailure> aLog;
    std::vector<RecordedCall> aCalls;
    std::vector<RecordedMessage> aMessages;
    std::vector<std::string> aPopups; // names of the bands that were shown
    std::vector<std::string> aMissed; // steps that were about nothing that is there, likewise
    std::vector<std::string> aUnmet;  // expectations that weren't met, with file and line
    Event<const RecordedCall&> CallAdded;

    void Add(RecordedCall oCall);

    // "ProgID#n", n counting the objects of that ProgID.
    std::string NewId(std::string_view sProgID);
    void Name(const Object& oObject, std::string sId) { m_mapIds[&oObject] = std::move(sId); }
    void Forget(const Object& oObject) { m_mapIds.erase(&oObject); }
    // Empty for an object that has no id.
    [[nodiscard]] std::string IdOf(const Ref<Object>& oObject) const;

private:
    std::map<std::string, int, std::less<>> m_mapCounts;
    std::map<const Object*, std::string> m_mapIds;
};

class RecordingUtilities final : public IUtilities {
public:
    RecordingUtilities(Ref<Record> oRecord, std::string sApplicationFolder)
        : m_oRecord(std::move(oRecord)), m_sApplicationFolder(std::move(sApplicationFolder)) {}

    void LogError(std::string_view sAppName, std::string_view sModule, std::string_view sProcedure,
                  const Failure& oFailure, std::string_view sContext, bool bShow) override;
    [[nodiscard]] std::string AppName() const override { return "Corvane"; }
    [[nodiscard]] bool BreakOnError() const override { return false; }
    [[nodiscard]] bool IsRunningInIDE() const override { return false; }
    [[nodiscard]] std::string GetAppFolder(std::string_view sName) const override;
    [[nodiscard]] std::string LibraryFolder() const override { return m_sApplicationFolder; }

private:
    Ref<Record> m_oRecord;
    std::string m_sApplicationFolder;
};

class RecordingMessageBox final : public IMessageBox {
public:
    explicit RecordingMessageBox(Ref<Record> oRecord) : m_oRecord(std::move(oRecord)) {}
    void ShowInformation(std::string_view sText, std::string_view sTitle) override {
        m_oRecord->aMessages.push_back({std::string(sText), std::string(sTitle)});
    }

private:
    Ref<Record> m_oRecord;
};

// Timers that tick when they are told to.
class ManualTimers final : public ITimers {
public:
    [[nodiscard]] Ref<ITimer> NewTimer() override;
    void DoEvents() override {}
    // Every enabled timer ticks once, in the order in which they were made.
    void TickAll();

private:
    class ManualTimer final : public ITimer {
    public:
        void SetInterval(Long /*lMilliseconds*/) override {}
        void SetEnabled(bool bEnabled) override { m_bEnabled = bEnabled; }
        [[nodiscard]] bool Enabled() const { return m_bEnabled; }

    private:
        bool m_bEnabled = false;
    };
    std::vector<Ref<ManualTimer>> m_aTimers;
};

class FixedScreen final : public IScreen {
public:
    [[nodiscard]] MousePointer Pointer() const override { return m_ePointer; }
    void SetPointer(MousePointer ePointer) override { m_ePointer = ePointer; }
    [[nodiscard]] Single TwipsPerPixelX() const override { return 15; }
    [[nodiscard]] Single TwipsPerPixelY() const override { return 15; }

private:
    MousePointer m_ePointer = MousePointer::Default;
};

// Settings that are forgotten with the program.
class MemorySettings final : public ISettingsStore {
public:
    [[nodiscard]] std::string Read(std::string_view sService, std::string_view sCategory, std::string_view sName,
                                   std::string_view sDefault) const override;
    void Write(std::string_view sService, std::string_view sCategory, std::string_view sName,
               std::string_view sValue) override;

private:
    std::map<std::string, std::string> m_mapValues;
};

// The progress control of the main form, without a picture.
class ProgressModel final : public Automation<ProgressModel> {
public:
    [[nodiscard]] Long HWnd() const { return 1; }
    [[nodiscard]] bool Cancel() const { return m_bCancel; }
    void SetCancel(bool bCancel) { m_bCancel = bCancel; }
    [[nodiscard]] bool WasCanceled() const { return m_bWasCanceled; }
    void SetWasCanceled(bool bWasCanceled) { m_bWasCanceled = bWasCanceled; }
    [[nodiscard]] Double Max() const { return m_dblMax; }
    void SetMax(Double dblMax) { m_dblMax = dblMax; }
    [[nodiscard]] Double Value() const { return m_dblValue; }
    void SetValue(Double dblValue) { m_dblValue = dblValue; }
    void Increment() { m_dblValue += 1; }
    void Percent(Double dblPercent) { m_dblValue = m_dblMax * dblPercent / 100; }
    [[nodiscard]] Long Pixels() const { return 0; }

    static constexpr auto Members = MemberTable(
        Property("hwnd", &ProgressModel::HWnd), Property("Cancel", &ProgressModel::Cancel, &ProgressModel::SetCancel),
        Property("WasCanceled", &ProgressModel::WasCanceled, &ProgressModel::SetWasCanceled),
        Property("Max", &ProgressModel::Max, &ProgressModel::SetMax),
        Property("Value", &ProgressModel::Value, &ProgressModel::SetValue),
        Method("Increment", &ProgressModel::Increment), Method("Percent", &ProgressModel::Percent),
        Property("Pixels", &ProgressModel::Pixels));

private:
    bool m_bCancel = false;
    bool m_bWasCanceled = false;
    Double m_dblMax = 100;
    Double m_dblValue = 0;
};

} // namespace corvane::inspect
