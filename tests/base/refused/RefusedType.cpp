// Compiles as it stands; with MEMBER another procedure than Start the table names one that can't be called by name.
#include "corvane/base/Automation.h"

class Refusing final : public corvane::Automation<Refusing> {
public:
    void Start() {}
    void List(const std::vector<int>&) {}
    void Change(std::string&) {}
    short Small() { return 1; }
    static constexpr auto Members = corvane::MemberTable(corvane::Method("Member", &Refusing::MEMBER));
};

int main() {
    return corvane::New<Refusing>()->MembersByName().size() == 1 ? 0 : 1;
}
