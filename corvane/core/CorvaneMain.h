// The module that everybody shares: the one root object, and the small functions that more than one class needs.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Ref.h"
#include "corvane/base/Variant.h"
#include "corvane/platform/IXmlService.h"

#include <string_view>

namespace corvane {

class Framework;
class IExplorerItem;
class IPage;
class IService;

namespace CorvaneMain {

// Creates the root object. A failure is shown and leaves the root nothing.
void Main();
// Lets go of the root object, when the library is unloaded.
void Unload();

// The root object; nothing before Main and after Unload.
[[nodiscard, gnu::visibility("default")]] Ref<corvane::Framework> Framework();

// Where an item of that size begins when it is centred in its container, all in one unit. Fail with 6 on overflow;
// neither clamps. The height is centred optically, with about 35 in a hundred of the free height above.
[[nodiscard, gnu::visibility("default")]] Long CenteredLeft(Long lItemWidth, Long lContainerWidth, Long lContainerLeft);
[[nodiscard, gnu::visibility("default")]] Long CenteredTop(Long lItemHeight, Long lContainerHeight, Long lContainerTop);

// The attribute's text, also when it is empty; vDefault when the attribute is absent.
[[nodiscard]] Variant XMLAttributeValue(const Ref<IXmlNode>& oNode, std::string_view sName, Variant vDefault = "");
// The same as a text, without a copy: "" when the attribute is absent. Holds as long as IXmlNode::AttributeText says.
[[nodiscard]] const char* XMLAttributeText(const Ref<IXmlNode>& oNode, std::string_view sName);
// The same as a boolean. Fails with 13 for a text that is none.
[[nodiscard]] bool XMLAttributeBoolean(const Ref<IXmlNode>& oNode, std::string_view sName, bool bDefault);
// The line of an element in its file; 0 for nothing.
[[nodiscard]] Long LineOf(const Ref<IXmlNode>& oNode) noexcept;
// Runs fnStep; a failure without a line gets the element's.
template <class Step>
void AtLineOf(const Ref<IXmlNode>& oNode, Step&& fnStep) {
    try {
        fnStep();
    } catch (Failure& oFailure) {
        if (oFailure.Line == 0)
            oFailure.Line = LineOf(oNode);
        throw;
    }
}

// Whether the object offers IActionsProvider; false for nothing. Never fails.
[[nodiscard, gnu::visibility("default")]] bool IsActionsProvider(const Ref<Object>& oObject) noexcept;

// The library's part of a client's object, through its access interface. Nothing for nothing; 13 when the object
// doesn't have the interface.
[[nodiscard, gnu::visibility("default")]] Ref<IExplorerItem> QueryExplorerItem(const Ref<Object>& oObject);
[[nodiscard, gnu::visibility("default")]] Ref<IPage> QueryPage(const Ref<Object>& oObject);
[[nodiscard, gnu::visibility("default")]] Ref<IService> QueryService(const Ref<Object>& oObject);

} // namespace CorvaneMain
} // namespace corvane
