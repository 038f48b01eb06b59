#include "analysis/Check.h"

#include "analysis/Application.h"
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>

namespace corvane::check {

std::vector<Finding> Check(const Options& oOptions) {
    Report oReport;
    Model oModel;
    ReadApplication(oModel, oOptions.sApplication, oReport);
    BuildModel(oModel, oReport);
    const MenuPlan oPlan(oModel);
    CheckNames(oModel, oOptions.sApplication, oReport);
    CheckMenus(oModel, oPlan, oReport);
    CheckKeys(oModel, oPlan, oReport);
    CheckFolder(oModel, oOptions.sApplication, oOptions.bPlugins, oReport);
    CheckPlugins(oModel, oOptions.sApplication, oOptions.bPlugins, oReport);
    return oReport.TakeSorted();
}

std::vector<Finding> CheckFile(const std::string& sApplication, const std::string& sFile) {
    std::vector<Finding> aFindings = Check({sApplication, false});
    std::erase_if(aFindings, [&](const Finding& oFinding) {
        const std::string& sPath = oFinding.oPlace.sFile;
        return !EqualText(sPath.substr(sPath.find_last_of('/') + 1), sFile);
    });
    return aFindings;
}

} // namespace corvane::check
