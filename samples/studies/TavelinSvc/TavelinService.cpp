#include "corvane/Service.h"
#include "corvane/author/Translation.h"

namespace studies {

using namespace corvane;

class TavelinService final : public Service<TavelinService> {
public:
    void OnAbout() {
        ShowMessage(
            Translated("Studies\n\nStudies with data sets and analyses, in one file.\nBuilt with Corvane from plug-ins "
                       "and definition files.\n\nPalmer penguins: data by Gorman, Williams and Fraser (2014), CC0."),
            Translated("About Studies"));
    }

    static constexpr auto Members = Methods<&TavelinService::OnAbout>();
};

} // namespace studies

CORVANE_PLUGIN(Class<studies::TavelinService>("TavelinSvc.TavelinService"))
