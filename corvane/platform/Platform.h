// What the library needs from the machine, passed when it is loaded.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/platform/IFileSystem.h"
#include "corvane/platform/IIniReader.h"
#include "corvane/platform/IMessageBox.h"
#include "corvane/platform/IObjectFactory.h"
#include "corvane/platform/IPictureLoader.h"
#include "corvane/platform/IScreen.h"
#include "corvane/platform/IScreenPrinter.h"
#include "corvane/platform/ISettingsStore.h"
#include "corvane/platform/ITimers.h"
#include "corvane/platform/IUtilities.h"
#include "corvane/platform/IWindowMessages.h"
#include "corvane/platform/IXmlService.h"

namespace corvane {

// Every member must be set, but those that the application never reaches may be nothing: using one fails with 91.
struct Platform {
    Ref<IUtilities> oUtilities;
    Ref<IXmlService> oXmlService;
    Ref<IFileSystem> oFileSystem;
    Ref<IIniReader> oIniReader;
    Ref<IObjectFactory> oObjectFactory;
    Ref<IPictureLoader> oPictureLoader;
    Ref<ISettingsStore> oSettingsStore;
    Ref<IScreen> oScreen;
    Ref<ITimers> oTimers;
    Ref<IMessageBox> oMessageBox;
    Ref<IWindowMessages> oWindowMessages;
    Ref<IScreenPrinter> oScreenPrinter;
};

// The platform of the loaded library. Empty before loading and after unloading.
[[nodiscard, gnu::visibility("default")]] const Platform& CurrentPlatform();
[[gnu::visibility("default")]] void SetCurrentPlatform(Platform oPlatform); // by the loading of the library

} // namespace corvane
