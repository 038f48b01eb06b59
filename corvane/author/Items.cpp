#include "corvane/author/Items.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/windows/WindowManager.h"

namespace corvane {

namespace {

template <class T>
const T& At(const std::vector<T>& aAll, Long lIndex) {
    if (lIndex < 1 || lIndex > static_cast<Long>(aAll.size()))
        Fail(FailureNumber::Subscript);
    return aAll[static_cast<std::size_t>(lIndex - 1)];
}

} // namespace

std::vector<Ref<Object>> SelectedItems() {
    const Ref<Object> oSelection =
        ToObject(Singleton::Framework()->WindowManager()->MainForm()->Invoke("SelectedItems", {}));
    std::vector<Ref<Object>> aItems;
    const Long lCount = ToLong(oSelection->Invoke("Count", {}));
    for (Long l = 1; l <= lCount; ++l)
        aItems.push_back(ToObject(oSelection->Invoke("Item", std::array<Variant, 1>{l})));
    return aItems;
}

Dropped::~Dropped() = default;

Ref<Object> Dropped::Item(Long lIndex) const {
    return At(m_aItems, lIndex);
}

std::string Dropped::File(Long lIndex) const {
    return At(m_aFiles, lIndex);
}

NewChildren::~NewChildren() = default;

void NewChildren::Add(const Ref<Object>& oItem, const std::string& sKind) {
    if (!oItem)
        Fail(FailureNumber::ObjectNotSet);
    m_aAdded.emplace_back(oItem, sKind);
}

} // namespace corvane
