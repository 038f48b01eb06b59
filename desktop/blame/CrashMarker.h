// A small file that tells, after the program's death, whose code it was in. It is mapped into memory, so that a mark
// costs nothing and stays whatever ends the program; at a regular end the file goes.
#pragma once

#include <string>
#include <vector>

namespace corvane::desktop {

// What a program that died has left.
struct CrashRecord {
    std::string sPlugin;  // in whose code it was, by its library; empty when nobody knows
    std::string sService; // whose command was under way, and that service's plug-in
    std::string sServicePlugin;
    std::string sCreating; // the ProgID of the object that was being made
    std::string sEntered;  // by CrashMarker::SetEntered: whose code had been entered last and not been left
    int nSignal = 0;       // 0 when it was killed
    bool bHung = false;    // the plug-in had kept the user interface busy
};

// The service, or else the plug-in, that the record speaks of, by the definition files of that folder as they are now.
// Of several services of one plug-in it is the one whose object was being made or had been entered; code that neither
// the library nor the host calls, such as a timer's, is known by its plug-in alone. From any thread.
[[nodiscard]] std::string WhoIn(const CrashRecord& oRecord, const std::string& sServicesFolder);

class CrashMarker {
public:
    // Takes what dead programs have left in the folder, then makes a mark of its own there. An empty folder, or one
    // that can't be written, means that nothing is marked.
    explicit CrashMarker(const std::string& sFolder);
    ~CrashMarker();
    CrashMarker(const CrashMarker&) = delete;
    CrashMarker& operator=(const CrashMarker&) = delete;

    // Of programs that were in somebody's code; the others died for reasons of their own.
    [[nodiscard]] const std::vector<CrashRecord>& Found() const { return m_aFound; }

    // Both empty when it has ended.
    void SetService(const std::string& sService, const std::string& sPlugin);
    void SetCreating(const std::string& sProgID);
    // The ProgID of the object's class, or the name of an explorer item's definition behind a "#"; "?" for another
    // object's, and empty for none.
    void SetEntered(const std::string& sWhat);
    // From any thread: the plug-in that keeps the user interface busy; a null pointer when it doesn't any more.
    void SetHung(const char* sPlugin);
    // What would be found if the program died now, in that plug-in's code.
    [[nodiscard]] CrashRecord Current(const char* sPlugin) const;

private:
    struct Mark;

    [[nodiscard]] static CrashRecord RecordOf(const Mark& oMark);
    void TakeOld(const std::string& sFolder);
    void Make(const std::string& sFolder);
    static void InstallHandlers();
    static void OnSignal(int nSignal);

    std::vector<CrashRecord> m_aFound;
    std::string m_sPath;
    int m_nFile = -1;
    Mark* m_pMark = nullptr;
};

} // namespace corvane::desktop
