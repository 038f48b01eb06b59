#include "tests/fuzz/Mutated.h"

TEST(FileReader, AgreesWithTheRecordsOnMutatedDefinitions) {
    corvane::test::TryMutated({"tests/fuzz/corpus/definitions", "samples/studies/app/Services"}, 20000);
}
