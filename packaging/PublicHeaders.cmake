# What a plug-in, a test or another host may include, and therefore what is installed. Everything that these headers declare
# is exported, and they include only one another: scripts/check_public_headers checks both. The build tag of plug-ins holds a
# hash over those below corvane/ and desktop/.
set(CORVANE_PUBLIC_HEADERS
  # One a subject, for plug-ins; the others are what they are made of.
  corvane/Explorer.h
  corvane/Jobs.h
  corvane/Page.h
  corvane/Service.h

  corvane/author/Client.h
  corvane/author/Encoding.h
  corvane/author/ExplorerItem.h
  corvane/author/Fields.h
  corvane/author/Host.h
  corvane/author/Items.h
  corvane/author/Jobs.h
  corvane/author/Methods.h
  corvane/author/Nodes.h
  corvane/author/Page.h
  corvane/author/Rows.h
  corvane/author/Service.h
  corvane/author/Translation.h

  corvane/base/Automation.h
  corvane/base/Badge.h
  corvane/base/Dictionary.h
  corvane/base/Event.h
  corvane/base/Failure.h
  corvane/base/KeyedCollection.h
  corvane/base/Object.h
  corvane/base/PluginExport.h
  corvane/base/Ref.h
  corvane/base/SharedText.h
  corvane/base/SmallMemory.h
  corvane/base/Text.h
  corvane/base/TextIndex.h
  corvane/base/Variant.h

  corvane/core/CorvaneMain.h
  corvane/core/Framework.h
  corvane/core/Library.h
  corvane/core/Preferences.h
  corvane/core/Singleton.h

  corvane/explorer/ExplorerItemBase.h
  corvane/explorer/ExplorerManager.h
  corvane/explorer/IExplorerItem.h
  corvane/explorer/IExplorerItemAccess.h
  corvane/explorer/NavigationManager.h

  corvane/menus/ActionItem.h
  corvane/menus/IActionsProvider.h
  corvane/menus/MenuManager.h
  corvane/menus/MenuSection.h

  corvane/platform/Entering.h
  corvane/platform/Handlers.h
  corvane/platform/IClassFinder.h
  corvane/platform/IFileSystem.h
  corvane/platform/IIniReader.h
  corvane/platform/IJobs.h
  corvane/platform/IMessageBox.h
  corvane/platform/IObjectFactory.h
  corvane/platform/IPictureLoader.h
  corvane/platform/IScreen.h
  corvane/platform/IScreenPrinter.h
  corvane/platform/ISettingsStore.h
  corvane/platform/ITimers.h
  corvane/platform/IUtilities.h
  corvane/platform/IWindowMessages.h
  corvane/platform/IXmlService.h
  corvane/platform/ObjectKeyProvider.h
  corvane/platform/Platform.h

  corvane/platform/controls/ActiveBar.h
  corvane/platform/controls/BarText.h
  corvane/platform/controls/Form.h
  corvane/platform/controls/ImageList.h
  corvane/platform/controls/MdiForm.h
  corvane/platform/controls/NodeTable.h
  corvane/platform/controls/PanelForm.h
  corvane/platform/controls/TabStrip.h
  corvane/platform/controls/TreeView.h

  corvane/services/ActionItemDef.h
  corvane/services/DefinitionEnums.h
  corvane/services/ExplorerItemDef.h
  corvane/services/IService.h
  corvane/services/IServiceAccess.h
  corvane/services/MenuItemDef.h
  corvane/services/PageDef.h
  corvane/services/ServiceBase.h
  corvane/services/ServiceDef.h
  corvane/services/ServiceManager.h
  corvane/services/WindowDef.h

  corvane/windows/CVProgressBar.h
  corvane/windows/IForm.h
  corvane/windows/IPage.h
  corvane/windows/IPageAccess.h
  corvane/windows/IWindowController.h
  corvane/windows/IWindowExitHandler.h
  corvane/windows/IWindowForm.h
  corvane/windows/IWindowFormController.h
  corvane/windows/IWindowFormFactory.h
  corvane/windows/PageBase.h
  corvane/windows/ProgressScope.h
  corvane/windows/Window.h
  corvane/windows/WindowEnums.h
  corvane/windows/WindowManager.h

  # Pages that are Qt widgets, and what they write.
  desktop/Drawing.h
  desktop/IPrintout.h
  desktop/IQtPage.h
  desktop/QtPage.h
  desktop/WholeFile.h)

# What plug-ins with a database of their own include beside them.
set(CORVANE_DATABASE_HEADERS
  database/Database.h
  database/SharedLock.h
  database/UndoLog.h)

# What tests of applications include beside them.
set(CORVANE_TESTING_HEADERS
  corvane/Testing.h
  adapters/messages/WindowMessages.h
  adapters/process/ProcessMonitor.h
  headless/Dialogs.h
  headless/Document.h
  headless/Expectation.h
  headless/ModelHost.h
  headless/Recording.h
  headless/StandIns.h
  headless/Steps.h
  testing/Application.h
  testing/FormPage.h)
