// All that the class of a page without a widget needs: #include "corvane/Page.h". With one: "desktop/QtPage.h".
#pragma once

#include "corvane/author/Page.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Preferences.h"
#include "corvane/core/Singleton.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/Handlers.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
