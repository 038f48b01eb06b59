// All that the classes of explorer items need: #include "corvane/Explorer.h"
#pragma once

#include "corvane/author/ExplorerItem.h"
#include "corvane/author/Items.h"
#include "corvane/author/Translation.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
