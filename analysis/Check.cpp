#include "analysis/Check.h"

#include "analysis/Application.h"
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>

namespace corvane::check {

std::vector<Finding> Check(const Options& options) {
    Report report;
    Model model;
    ReadApplication(model, options.application, report, options.buffers);
    BuildModel(model, report);
    const MenuPlan plan(model);
    const Code code(options.application);
    CheckFiles(model, options.application, report);
    CheckNames(model, options.application, report);
    CheckMenus(model, plan, report);
    CheckReach(model, plan, code, report);
    CheckEffects(model, plan, code, report);
    CheckTexts(model, plan, report);
    CheckCollisions(model, plan, report);
    CheckKeys(model, plan, report);
    CheckFolder(model, options.application, options.plugins, report);
    CheckPlugins(model, options.application, options.plugins, report);
    if (options.plugins)
        CheckCode(model, code, options.application, report);
    CheckForms(model, options.application, options.plugins, options.buffers, report);
    CheckWelcome(model, options.application, options.buffers, report);
    return report.TakeSorted();
}

std::vector<Finding> CheckFile(const std::string& application, const std::string& file) {
    std::vector<Finding> findings = Check({application, false, {}});
    std::erase_if(findings, [&](const Finding& finding) {
        const std::string& path = finding.place.file;
        return !EqualText(path.substr(path.find_last_of('/') + 1), file);
    });
    return findings;
}

} // namespace corvane::check
