# What a plug-in, a test or a host of somebody else may include, and so what is installed: everything declared in these
# headers is exported, and each includes only headers that are listed, too. scripts/check_public_headers sees to both.
set(CORVANE_PUBLIC_HEADERS
  # One a subject, for plug-ins and their tests; the others are what they are made of.
  corvane/Explorer.h
  corvane/Page.h
  corvane/Service.h
  corvane/Testing.h

  corvane/author/Client.h
  corvane/author/ExplorerItem.h
  corvane/author/Host.h
  corvane/author/Methods.h
  corvane/author/Page.h
  corvane/author/Service.h

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

  corvane/platform/Entering.h
  corvane/platform/Handlers.h
  corvane/platform/IFileSystem.h
  corvane/platform/IIniReader.h
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
  corvane/windows/IPage.h
  corvane/windows/IPageAccess.h
  corvane/windows/IWindowController.h
  corvane/windows/IWindowExitHandler.h
  corvane/windows/IWindowForm.h
  corvane/windows/IWindowFormController.h
  corvane/windows/IWindowFormFactory.h
  corvane/windows/PageBase.h
  corvane/windows/Window.h
  corvane/windows/WindowEnums.h
  corvane/windows/WindowManager.h

  # Applications in tests.
  headless/Document.h
  headless/Expectation.h
  headless/ModelHost.h
  headless/Recording.h
  headless/StandIns.h
  headless/Steps.h
  adapters/messages/WindowMessages.h
  testing/Application.h)

# The same for pages that are Qt widgets.
set(CORVANE_PUBLIC_QT_HEADERS desktop/IQtPage.h desktop/QtPage.h)
