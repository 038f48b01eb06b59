// A small file that reports, after the program's death, whose code it was in. It is mapped into memory, so that a mark
// costs nothing and stays whatever ends the program; at a regular end the file goes.
#pragma once

#include <string>
#include <vector>

namespace corvane::desktop {

// What a program that died has left.
struct CrashRecord {
    std::string plugin;  // in whose code it was, by its library; empty when no one knows
    std::string service; // whose command was under way, and that service's plug-in
    std::string servicePlugin;
    std::string creating; // the ProgID of the object that was being made
    std::string entered;  // by CrashMarker::SetEntered: whose code had been entered last and not been left
    int signal = 0;       // 0 when it was killed
    bool hung = false;    // the plug-in had kept the user interface busy
};

// The service, or else the plug-in, that the record speaks of, by the definition files of that folder as they are now.
// Of several services of one plug-in it is the one whose object was being made or had been entered; code that neither
// the library nor the host calls, such as a timer's, is known by its plug-in alone. From any thread.
[[nodiscard]] std::string WhoIn(const CrashRecord& record, const std::string& servicesFolder);
// The service of that plug-in; "" when it has several, or none.
[[nodiscard]] std::string OnlyServiceOf(const std::string& plugin, const std::string& servicesFolder);

class CrashMarker {
public:
    // Takes what dead programs have left in the folder, then makes a mark of its own there. An empty folder, or one
    // that can't be written, means that nothing is marked.
    explicit CrashMarker(const std::string& folder);
    ~CrashMarker();
    CrashMarker(const CrashMarker&) = delete;
    CrashMarker& operator=(const CrashMarker&) = delete;

    // Of programs that were in someone's code; the others died for reasons of their own.
    [[nodiscard]] const std::vector<CrashRecord>& Found() const { return m_found; }

    // Both empty when it has ended.
    void SetService(const std::string& service, const std::string& plugin);
    void SetCreating(const std::string& progID);
    // The ProgID of the object's class, or the name of an explorer item's definition behind a "#"; "?" for another
    // object's, and empty for none.
    void SetEntered(const std::string& what);
    // The calling thread, which isn't the user interface's, works for the service from now on, or for none if that is
    // empty. What dies in it is that service's.
    static void SetThreadService(const std::string& service);
    // From any thread: the plug-in that keeps the user interface busy; a null pointer when it doesn't any more.
    void SetHung(const char* plugin);
    // What would be found if the program died now, in that plug-in's code.
    [[nodiscard]] CrashRecord Current(const char* plugin) const;

private:
    struct Mark;

    [[nodiscard]] static CrashRecord RecordOf(const Mark& mark);
    void TakeOld(const std::string& folder);
    void Make(const std::string& folder);
    static void InstallHandlers();
    static void OnSignal(int signal);

    std::vector<CrashRecord> m_found;
    std::string m_path;
    int m_file = -1;
    Mark* m_mark = nullptr;
};

} // namespace corvane::desktop
