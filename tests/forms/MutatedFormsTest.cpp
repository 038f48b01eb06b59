#include "tests/fuzz/Mutated.h"

TEST(FormReader, HoldsForMutatedForms) {
    corvane::test::TryMutated({"tests/fuzz/corpus/forms", "samples/studies/app/Forms", "tests/forms/birds/Forms"},
                              20000);
}
