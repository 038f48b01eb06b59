// Who an application is for the desktop: what its file "about.json" says, which "corvane package" reads, too.
#pragma once

#include <QIcon>
#include <string>

namespace corvane::desktop {

struct Identity {
    std::string id;   // "org.example.Birds"; empty without the file
    std::string name; // as users read it; without the file that of the folder
    QIcon icon;       // of Images; null without one
    std::string version;
    std::string license;
    // Which file and what is wrong with it, where it is there; for the log.
    std::string problem;

    // The name under which settings, session and log are kept.
    [[nodiscard]] const std::string& Settings() const { return id.empty() ? name : id; }

    // Says it to the window system: name, icon, desktop file and WM_CLASS, by which docks find the launcher. To be
    // called before the first window is shown.
    void Announce() const;
};

// Never fails: without a usable file an application comes up under the name of its folder.
[[nodiscard]] Identity ReadIdentity(const std::string& applicationFolder);

} // namespace corvane::desktop
