// What of the shared module only the library itself needs: the root's life, and the reading of attributes.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Variant.h"
#include "corvane/platform/IXmlService.h"

#include <string_view>

namespace corvane::CorvaneMain {

// Creates the root object. A failure is shown and leaves the root nothing.
void Main();
// Releases the root object, when the library is unloaded.
void Unload();

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

} // namespace corvane::CorvaneMain
