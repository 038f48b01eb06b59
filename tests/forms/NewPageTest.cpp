#include "analysis/Check.h"
#include "cli/new/New.h"
#include "forms/FormReader.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sstream>

namespace corvane::scaffold {

namespace {

std::string TextOf(const std::string& path) {
    std::stringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

TEST(NewPage, AddsAFormWithItsWindowAndClass) {
    const test::TemporaryFolder folder;
    const std::string root = folder.Path("birds");
    (void)NewApplication(root, {}, "0.1.0", Language::Cpp);
    const std::vector<std::string> written = NewPage(root, "details", "");
    EXPECT_EQ(written.size(), 4U);
    std::filesystem::copy_file(CORVANE_SOURCE "/packaging/schema/Service.xdr", root + "/app/Services/Service.xdr");
    EXPECT_EQ(forms::ReadFormFile(root + "/app/Forms/BirdsSvc.DetailsPage.ui").problems.size(), 0U);
    for (const check::Finding& finding : check::Check({root + "/app"}))
        ADD_FAILURE() << finding.place.file << ": " << finding.text;
    const std::string source = TextOf(root + "/services/Birds/BirdsService.cpp");
    EXPECT_NE(source.find("#include \"DetailsPage.h\"\n"), std::string::npos) << source;
    EXPECT_NE(source.find("Class<DetailsPage>(\"BirdsSvc.DetailsPage\"))"), std::string::npos) << source;
    EXPECT_NE(TextOf(root + "/app/Services/Birds.xml").find("<Window Name=\"Details\""), std::string::npos);

    // The second one of the name, a service that isn't there, and two of them change nothing.
    EXPECT_THROW((void)NewPage(root, "Details", ""), Failure);
    EXPECT_THROW((void)NewPage(root, "More", "Brids"), Failure);
    (void)NewService(root, "Nests", Language::Cpp);
    EXPECT_THROW((void)NewPage(root, "More", ""), Failure);
    EXPECT_EQ(TextOf(root + "/services/Birds/BirdsService.cpp"), source);
    EXPECT_EQ(NewPage(root, "More", "nests").size(), 4U);
}

} // namespace

} // namespace corvane::scaffold
