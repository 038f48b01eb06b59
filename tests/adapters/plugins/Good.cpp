#include "corvane/base/Automation.h"
#include "corvane/base/PluginExport.h"

namespace {

class Counter final : public corvane::Automation<Counter> {
public:
    corvane::Long Add(corvane::Long more) { return m_count += more; }
    corvane::Long Count() const { return m_count; }

    static constexpr auto Members =
        corvane::MemberTable(corvane::Method("Add", &Counter::Add), corvane::Property("Count", &Counter::Count));

private:
    corvane::Long m_count = 0;
};

class Account final : public corvane::Object {};

} // namespace

CORVANE_PLUGIN(Class<Account>("Good.Account"), Class<Counter>("Good.Counter"))
