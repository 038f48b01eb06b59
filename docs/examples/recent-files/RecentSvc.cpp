#include "corvane/base/PluginExport.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/menus/MenuSection.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/windows/ProgressScope.h"

using namespace corvane;

// Opens files, and offers those that were opened in a section of the menu "File".
class RecentService final : public Automation<RecentService, IServiceAccess> {
public:
    Ref<IService> Service() override { return m_base; }

    // The procedure behind the command "Open": the first time it opens a.csv, then b.csv, and so on.
    void OnOpen() { Open(std::string(1, m_next++) + ".csv"); }

    static constexpr auto Members = MemberTable(Method("OnOpen", &RecentService::OnOpen));

private:
    void Open(const std::string& file) {
        {
            ProgressScope progress(2); // ends with the block, also when reading fails
            progress.Increment();
            progress.Increment();
        }
        std::erase(m_files, file);
        m_files.insert(m_files.begin(), file);
        Singleton::Framework()->SetStatus("Opened " + file);

        // Each entry calls a function of its own, also when it was chosen from the section that it fills again.
        m_recent.Clear();
        for (const std::string& each : m_files)
            m_recent.Add(MenuSection::Verbatim(each), [this, each] { Open(each); });
    }

    Ref<ServiceBase> m_base = New<ServiceBase>();
    std::vector<std::string> m_files; // the latest first
    char m_next = 'a';
    // Behind the entry "Open" of the menu "File", with a separator before it while there are any.
    MenuSection m_recent{*this, "File", "Recent", "Open", true};
};

CORVANE_PLUGIN(Class<RecentService>("RecentSvc.RecentService"))
