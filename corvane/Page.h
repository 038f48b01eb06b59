// All that the class of a page needs that a form shows: #include "corvane/Page.h". With a widget of its own:
// "desktop/QtPage.h".
#pragma once

#include "corvane/author/Page.h"
#include "corvane/author/Rows.h"
#include "corvane/author/Translation.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Preferences.h"
#include "corvane/core/Singleton.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/Handlers.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
