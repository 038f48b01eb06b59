#include "Shell.h"
#include "corvane/base/Automation.h"
#include "corvane/base/PluginExport.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"

namespace studies {

using namespace corvane;

class TavelinService final : public Automation<TavelinService, IServiceAccess> {
public:
    Ref<IService> Service() override { return m_serviceBase; }
    std::string_view TypeName() const override { return "TavelinService"; }

    void OnAbout() {
        ShowMessage("Studies\n\nStudies with data sets and analyses, in one file.\nBuilt with Corvane from plug-ins "
                    "and definition files.\n\nPalmer penguins: data by Gorman, Williams and Fraser (2014), CC0.",
                    "About Studies");
    }

    static constexpr auto Members = MemberTable(Method("OnAbout", &TavelinService::OnAbout));

private:
    Ref<ServiceBase> m_serviceBase = New<ServiceBase>();
};

} // namespace studies

CORVANE_PLUGIN(Class<studies::TavelinService>("TavelinSvc.TavelinService"))
