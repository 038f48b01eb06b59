// The shared module: the one root object, and the small functions that more than one class needs.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Ref.h"

namespace corvane {

class ActionItem;
class Framework;
class IExplorerItem;
class IPage;
class IService;
class PageDef;

namespace CorvaneMain {

// The root object; nothing before Main and after Unload.
[[nodiscard, gnu::visibility("default")]] Ref<corvane::Framework> Framework();

// Whether the application has ended: the main form has unloaded, and the managers are gone. A procedure that has
// called a plug-in asks before it goes on.
[[nodiscard, gnu::visibility("default")]] bool HasEnded() noexcept;

// Where a failure left a plug-in, for Failure::Context: "in NewBirds (BirdsService.OnNewBird, service Birds,
// Services/Birds.xml:12)" of an action, "in BirdsService.Initialize (service Birds, Services/Birds.xml:2)" of another
// procedure of a service, an explorer item or a page. What isn't known is left out. Never fail.
[[nodiscard, gnu::visibility("default")]] std::string PlaceOf(const Ref<ActionItem>& oActionItem) noexcept;
[[nodiscard, gnu::visibility("default")]] std::string PlaceOf(const Ref<Object>& oObject,
                                                              std::string_view sProcedure) noexcept;
// The same of an object that is only known by its definition.
[[nodiscard, gnu::visibility("default")]] std::string PlaceOf(const Ref<PageDef>& oPageDef,
                                                              std::string_view sProcedure) noexcept;

// Where an item of that size begins when it is centred in its container, all in one unit. Fail with 6 on overflow;
// neither clamps. The height is centred optically, with about 35 in a hundred of the free height above.
[[nodiscard, gnu::visibility("default")]] Long CenteredLeft(Long lItemWidth, Long lContainerWidth, Long lContainerLeft);
[[nodiscard, gnu::visibility("default")]] Long CenteredTop(Long lItemHeight, Long lContainerHeight, Long lContainerTop);

// Whether the object offers IActionsProvider; false for nothing. Never fails.
[[nodiscard, gnu::visibility("default")]] bool IsActionsProvider(const Ref<Object>& oObject) noexcept;

// The library's part of a client's object, through its access interface. Nothing for nothing; 13 when the object
// doesn't have the interface.
[[nodiscard, gnu::visibility("default")]] Ref<IExplorerItem> QueryExplorerItem(const Ref<Object>& oObject);
[[nodiscard, gnu::visibility("default")]] Ref<IPage> QueryPage(const Ref<Object>& oObject);
[[nodiscard, gnu::visibility("default")]] Ref<IService> QueryService(const Ref<Object>& oObject);

} // namespace CorvaneMain
} // namespace corvane
