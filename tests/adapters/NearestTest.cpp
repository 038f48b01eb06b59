#include "adapters/common/Nearest.h"

#include <gtest/gtest.h>
#include <vector>

namespace corvane {

// Slips are found, names that have letters in common only by chance aren't.
TEST(Nearest, IsASlipAndNotACoincidence) {
    struct Row {
        const char* written;
        std::vector<std::string> names;
        const char* nearest; // "" for none
    };
    for (const Row& row : std::vector<Row>{
             {"Contrl", {"Control", "Shift"}, "Control"},
             {"Fiel", {"File", "View"}, "File"},
             {"OnGret", {"OnOpen", "OnGreet"}, "OnGreet"},
             {"File.Exprot", {"File.Import", "File.Export"}, "File.Export"},
             {"Navigtaoin", {"Navigation"}, "Navigation"},
             {"viewnavigation", {"ViewNavigation"}, "ViewNavigation"},
             {"NewNest", {"NewNests", "NewBirds"}, "NewNests"},
             {"D2o1", {"Do21"}, "Do21"},
             {"FirstService", {"StartService"}, ""},
             {"Service", {"StartService"}, ""},
             {"MenuEntry", {"MenuItem"}, ""},
             {"OnOpen", {"OnClose"}, ""},
             {"B", {"A"}, ""},
             {"Go", {"Do"}, ""},
             {"Plot3", {"Plot1", "Plot2"}, ""},
             {"Birds", {"Words"}, ""},
             {"", {"A"}, ""},
         })
        EXPECT_EQ(Nearest(row.names, row.written).value_or(""), row.nearest) << row.written;
}

} // namespace corvane
