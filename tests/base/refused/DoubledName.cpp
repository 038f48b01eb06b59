// Compiles as it stands; with SECOND_NAME "Start" in any case the table names a member twice and must not compile.
#include "corvane/base/Automation.h"

class Doubled final : public corvane::Automation<Doubled> {
public:
    void Start() {}
    void Stop() {}
    static constexpr auto Members =
        corvane::MemberTable(corvane::Method("Start", &Doubled::Start), corvane::Method(SECOND_NAME, &Doubled::Stop));
};

int main() {
    return corvane::New<Doubled>()->MembersByName().size() == 2 ? 0 : 1;
}
