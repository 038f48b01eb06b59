// Compiles for some values of LISTED, and must not for others.
#include "corvane/author/Methods.h"

class Kind final : public corvane::Automation<Kind> {
public:
    void Start() {}
    void Stop() {}
    bool operator!() const { return false; }
    [[nodiscard]] corvane::Long Count() const { return count; }
    corvane::Long count = 0;

    static constexpr auto Members = corvane::LISTED;
};

int main() {
    return corvane::New<Kind>()->MembersByName().size() == 3 ? 0 : 1;
}
