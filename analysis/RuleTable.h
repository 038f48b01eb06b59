// The texts of the rules. Only Rules.cpp includes it.
#pragma once

#include "analysis/Rules.h"

#include <array>

namespace corvane::check {

// In order of the enumeration.
inline constexpr auto ruleTable = std::to_array<RuleText>({
    {Rule::NotWellFormed, "not-well-formed", Severity::Error, "The file isn't well-formed XML.",
     "The library leaves the whole file out. While a file can't be read, nothing is said about what other files expect "
     "of it.",
     R"(<ActionItems><ActionItem Name="Greet"></ActionItems>)",
     R"(<ActionItems><ActionItem Name="Greet"/></ActionItems>)"},
    {Rule::NoServiceElement, "no-service-element", Severity::Error,
     "The root element isn't Service, or has a namespace.",
     "The library looks for the element Service without a namespace and leaves other files out.",
     R"(<service Name="Example" ProgID="ExampleSvc.ExampleService" Active="True"/>)",
     R"(<Service Name="Example" ProgID="ExampleSvc.ExampleService" Active="True"/>)"},
    {Rule::Schema, "schema", Severity::Error, "The schema of the application refuses the file.",
     "The file is valid by the reference of definition files, but not by the application's own Services/Service.xdr. "
     "The "
     "library goes by the latter and leaves the file out. Correct the file, or take the schema that comes with "
     "Corvane.",
     "", ""},
    {Rule::SchemaFile, "schema-file", Severity::Error, "Services/Service.xdr is missing or isn't a schema.",
     "Without it the application doesn't start. Copy the Service.xdr that comes with Corvane there.", "", ""},
    {Rule::UnknownElement, "unknown-element", Severity::Error, "An element that the format doesn't know at that place.",
     "Names of elements are case-sensitive. The library leaves the whole file out.",
     R"(<ActionItems><Actionitem Name="Greet"/></ActionItems>)",
     R"(<ActionItems><ActionItem Name="Greet"/></ActionItems>)"},
    {Rule::UnknownAttribute, "unknown-attribute", Severity::Error, "An attribute that the element doesn't have.",
     "Names of attributes are case-sensitive. The library leaves the whole file out.",
     R"(<ActionItems><ActionItem Name="Greet" Descripton="Says hello"/></ActionItems>)",
     R"(<ActionItems><ActionItem Name="Greet" Description="Says hello"/></ActionItems>)"},
    {Rule::Utf8Bytes, "utf8-bytes", Severity::Warning,
     "Bytes that look like UTF-8, in a file that is read as Windows-1252.",
     "Every byte of a definition file is one character, whatever the XML declaration says, so a letter that was saved "
     "as "
     "UTF-8 is shown as two or three others. Save the file as Windows-1252, or write character references.",
     "<ActionItems><ActionItem Name=\"Greet\" Description=\"\xC3\x9C"
     "ber\"/></ActionItems>",
     R"(<ActionItems><ActionItem Name="Greet" Description="&#xDC;ber"/></ActionItems>)"},
    {Rule::BadWord, "bad-word", Severity::Error, "A word that isn't one of those that the attribute may have.",
     "The library leaves the file out. The case of the letters doesn't matter.",
     R"(<Windows><Window Name="Plot" Type="Windw" State="Normal" IsMDIChild="False">
<Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False" IsResizable="True"/></Window></Windows>)",
     R"(<Windows><Window Name="Plot" Type="window" State="Normal" IsMDIChild="False">
<Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False" IsResizable="True"/></Window></Windows>)"},
    {Rule::BadValue, "bad-value", Severity::Error,
     "A value that is neither true nor false, or not a number, or too large a number.",
     "Booleans are True, False or a number; numbers have a decimal point. An empty attribute isn't a missing one. The "
     "library leaves the file out.",
     R"(<ActionItems><ActionItem Name="Greet" Visible="yes"/></ActionItems>)",
     R"(<ActionItems><ActionItem Name="Greet" Visible="0"/></ActionItems>)"},
    {Rule::MissingAttribute, "missing-attribute", Severity::Error, "An attribute is missing that has no default.",
     "A MenuItem needs Type, ActionItem and PositionOrder, an ExplorerItem Type, a Window Type and State, and a Page "
     "IsOptional and IsResizable. Without them the library leaves the file out.",
     R"(<Windows><Window Name="Plot" Type="Window" State="Normal" IsMDIChild="False">
  <Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False"/></Window></Windows>)",
     R"(<Windows><Window Name="Plot" Type="Window" State="Normal" IsMDIChild="False">
  <Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False" IsResizable="True"/></Window></Windows>)"},
    {Rule::MissingName, "missing-name", Severity::Warning, "Something has no name by which it could be found.",
     "The library takes the empty text for the name. Nothing can then refer to it, and a second one of its kind fails.",
     R"(<ActionItems><ActionItem Action="OnGreet"/></ActionItems>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>)"},
    {Rule::StrayBlank, "stray-blank", Severity::Warning, "A name begins or ends with a blank, or holds two in a row.",
     "Blanks count when names are compared, and can't be seen. A name with a blank too many isn't found by those who "
     "write "
     "it without.",
     R"(<ActionItems><ActionItem Name="Greet " Action="OnGreet"/></ActionItems>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>)"},
    {Rule::NoEffect, "no-effect", Severity::Warning, "Something that has no effect at that place.",
     "The library reads it and does nothing with it. Context menus belong to explorer items, and a Path doesn't divide "
     "them. Buttons have no separators and shortcuts of their own, menus no tips, titles neither shortcuts nor "
     "procedures. "
     "Of several places of one action the first one built gives it its shortcut; of several who share a place the "
     "first one "
     "draws its lines. The menu bar has no lines, and what a modal window's page has in menus can't be reached while "
     "it is "
     "open. Kinds of objects have no class of their own, and kinds below a parent no order.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="ContextMenuItem" ActionItem="Greet" PositionOrder="10" Caption="Greet"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Greet"/></Menus>)"},
    {Rule::DuplicateName, "duplicate-name", Severity::Error, "Two of a kind have the same name.",
     "Services, explorer items and windows have names of their own in the whole application, actions in their service, "
     "item or page, pages in their window. Names are case-insensitive. In an explorer item or a page, two entries of "
     "one path and action fail, too.",
     R"(<ActionItems><ActionItem Name="Greet"/><ActionItem Name="greet"/></ActionItems>)",
     R"(<ActionItems><ActionItem Name="Greet"/><ActionItem Name="GreetAll"/></ActionItems>)"},
    {Rule::DuplicateTitle, "duplicate-title", Severity::Error, "Two titles have the same key or the same action.",
     "The application doesn't start. Let one service define a title; the others only use its path. Give each title an "
     "action of its own.",
     R"(<ActionItems><ActionItem Name="File"/></ActionItems>
<Menus><MenuItem Type="MenuTitle" ActionItem="File" PositionOrder="50" Caption="File"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Open" Action="OnOpen"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Open" Path="File" PositionOrder="50" Caption="Open"/></Menus>)"},
    {Rule::UnknownAction, "unknown-action", Severity::Error,
     "A place refers to an action that its own element doesn't define.",
     "A MenuItem finds its action among those of the same service, explorer item or page, wherever else there is one "
     "of "
     "that name. The library leaves the file out.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Gret" Path="File" PositionOrder="10" Caption="Greet"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="GREET" Path="File" PositionOrder="10" Caption="Greet"/></Menus>)"},
    {Rule::UnknownParent, "unknown-parent", Severity::Error, "The Parent of an explorer item doesn't exist.",
     "The application doesn't start. A Parent is the Name of an explorer item in any active file.",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" Image="folder.svg"/>
<ExplorerItem Name="Plot" Type="Default" Parent="Plot s" Image="folder.svg"/></ExplorerItems>)",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" Image="folder.svg"/>
<ExplorerItem Name="Plot" Type="Default" Parent="plots" Image="folder.svg"/></ExplorerItems>)"},
    {Rule::ParentCycle, "parent-cycle", Severity::Error, "Explorer items are each other's Parent.",
     "No tab shows them. Remove the Parent of the item that is meant to be on top.",
     R"(<ExplorerItems><ExplorerItem Name="A" Type="Folder" Parent="B" Image="folder.svg"/>
<ExplorerItem Name="B" Type="Folder" Parent="A" Image="folder.svg"/></ExplorerItems>)",
     R"(<ExplorerItems><ExplorerItem Name="A" Type="Folder" Image="folder.svg"/>
<ExplorerItem Name="B" Type="Folder" Parent="A" Image="folder.svg"/></ExplorerItems>)"},
    {Rule::UnknownDefaultAction, "unknown-default-action", Severity::Error,
     "The DefaultAction isn't one of the item's actions.", "A double click on the item fails with 5.",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="ExampleSvc.Plots" DefaultAction="Opn" Image="folder.svg">
  <ActionItems><ActionItem Name="Open" Action="OnOpen"/></ActionItems></ExplorerItem></ExplorerItems>)",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="ExampleSvc.Plots" DefaultAction="open" Image="folder.svg">
  <ActionItems><ActionItem Name="Open" Action="OnOpen"/></ActionItems></ExplorerItem></ExplorerItems>)"},
    {Rule::TwoChildKinds, "two-child-kinds", Severity::Error, "Two kinds of objects below one explorer item.",
     "The object above hands out its children once, and each kind of Type Default or FolderChild takes all of them. "
     "The "
     "second one finds their keys in use: the explorer isn't filled. Give each kind a Folder of its own.",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="ExampleSvc.Plots" Image="folder.svg"/>
<ExplorerItem Name="Plot" Type="Default" Parent="Plots" Image="folder.svg"/>
<ExplorerItem Name="Table" Type="Default" Parent="Plots" Image="folder.svg"/></ExplorerItems>)",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="ExampleSvc.Plots" Image="folder.svg"/>
<ExplorerItem Name="Plot" Type="Default" Parent="Plots" Image="folder.svg"/>
<ExplorerItem Name="Tables" Type="Folder" Parent="Plots" ProgID="ExampleSvc.Plots" Image="folder.svg"/></ExplorerItems>)"},
    {Rule::NoObject, "no-object", Severity::Error, "Actions of a folder that has no object.",
     "A Folder without a ProgID is only a name in the tree. It has no procedures, so whatever is chosen on it fails.",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" Image="folder.svg">
<ActionItems><ActionItem Name="Open" Action="OnOpen"/></ActionItems>
<Menus><MenuItem Type="ContextMenuItem" ActionItem="Open" PositionOrder="10" Caption="Open"/></Menus></ExplorerItem></ExplorerItems>)",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="ExampleSvc.Plots" Image="folder.svg">
<ActionItems><ActionItem Name="Open" Action="OnOpen"/></ActionItems>
<Menus><MenuItem Type="ContextMenuItem" ActionItem="Open" PositionOrder="10" Caption="Open"/></Menus></ExplorerItem></ExplorerItems>)"},
    {Rule::ReservedName, "reserved-name", Severity::Error,
     "A title or a tab has the name of something that the host has.",
     "The host's bars have the names Main, StatusBar and Explorer, and its explorer has the controls tabExplorer and "
     "ExplorerImageList. A title or tab of such a name fails at the start.",
     R"(<ActionItems><ActionItem Name="Explorer"/><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuTitle" ActionItem="Explorer" PositionOrder="60" Caption="Explorer"/>
<MenuItem Type="MenuItem" ActionItem="Greet" Path="Explorer" PositionOrder="10" Caption="Greet"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Explorers"/><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuTitle" ActionItem="Explorers" PositionOrder="60" Caption="Explorers"/>
<MenuItem Type="MenuItem" ActionItem="Greet" Path="Explorers" PositionOrder="10" Caption="Greet"/></Menus>)"},
    {Rule::NameOfHost, "name-of-host", Severity::Warning,
     "An entry or window has the name of something that the host has.",
     "An entry takes the tool of the host in place of its command, or is on a bar that isn't a menu: the host's tools "
     "are "
     "Separator and WindowList, its bars StatusBar and Explorer. The list of toolbars is View.Toolbars.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="StatusBar" PositionOrder="10" Caption="Greet"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="View" PositionOrder="20" Caption="Greet"/></Menus>)"},
    {Rule::NameCollision, "name-collision", Severity::Warning,
     "An entry of a context menu has the name of a menu or command that has nothing to do with it.",
     "The entry looks for a tool by its key before it makes one. When a title of the menu bar has that key, it opens "
     "the "
     "title's menu; the action of the explorer item is never called.",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="ExampleSvc.Plots" Image="folder.svg">
<ActionItems><ActionItem Name="View" Action="OnView"/></ActionItems>
<Menus><MenuItem Type="ContextMenuItem" ActionItem="View" PositionOrder="10" Caption="View"/></Menus></ExplorerItem></ExplorerItems>)",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="ExampleSvc.Plots" Image="folder.svg">
<ActionItems><ActionItem Name="ViewPlots" Action="OnView"/></ActionItems>
<Menus><MenuItem Type="ContextMenuItem" ActionItem="ViewPlots" PositionOrder="10" Caption="View"/></Menus></ExplorerItem></ExplorerItems>)"},
    {Rule::SimilarName, "similar-name", Severity::Warning, "Two toolbars whose names are nearly the same.",
     "A toolbar comes into being with the first button that names it, so a slip in a Path makes one more, with a "
     "single "
     "button.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/><ActionItem Name="Leave" Action="OnLeave"/></ActionItems>
<Menus><MenuItem Type="ToolbarItem" ActionItem="Greet" Path="Standard" PositionOrder="10" Caption="Greet"/>
<MenuItem Type="ToolbarItem" ActionItem="Leave" Path="Standrad" PositionOrder="20" Caption="Leave"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/><ActionItem Name="Leave" Action="OnLeave"/></ActionItems>
<Menus><MenuItem Type="ToolbarItem" ActionItem="Greet" Path="Standard" PositionOrder="10" Caption="Greet"/>
<MenuItem Type="ToolbarItem" ActionItem="Leave" Path="Plots" PositionOrder="20" Caption="Leave"/></Menus>)"},
    {Rule::SharedClass, "shared-class", Severity::Warning, "Two services have one class.",
     "Files of one ProgID share its one object. It is initialised once for each of them, and its ActionItems are those "
     "of "
     "the file that is read last: what the code does to an action of the other fails.",
     R"(<Service Name="Example" ProgID="ExampleSvc.ExampleService" Active="True"/>
<Service Name="Other" ProgID="ExampleSvc.ExampleService" Active="True"/>)",
     R"(<Service Name="Example" ProgID="ExampleSvc.ExampleService" Active="True"/>
<Service Name="Other" ProgID="ExampleSvc.OtherService" Active="True"/>)"},
    {Rule::PathWithoutTitle, "path-without-title", Severity::Warning, "A Path names a title that isn't defined.",
     "The entry is put below a hidden placeholder and never shown. Toolbars need a title View, for the menu which "
     "shows and hides them.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="Fil" PositionOrder="10" Caption="Greet"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="file" PositionOrder="10" Caption="Greet"/></Menus>)"},
    {Rule::PathWithoutRoot, "path-without-root", Severity::Error, "There is nothing yet at the first part of a Path.",
     "A path of several parts whose title isn't defined needs at least a menu for its first part, which is built "
     "before it. Without it the application doesn't start.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="Tools.Export" PositionOrder="10" Caption="Greet"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Export"/><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuTitle" ActionItem="Export" Path="File" PositionOrder="150" Caption="Export"/>
<MenuItem Type="MenuItem" ActionItem="Greet" Path="File.Export" PositionOrder="10" Caption="Greet"/></Menus>)"},
    {Rule::TitleWithoutEntries, "title-without-entries", Severity::Warning, "A title has nothing below it.",
     "Its menu is empty, unless a plug-in adds entries at run time. The title Window gets the list of open windows and "
     "may do without.",
     R"(<ActionItems><ActionItem Name="Tools"/></ActionItems>
<Menus><MenuItem Type="MenuTitle" ActionItem="Tools" PositionOrder="60" Caption="Tools"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Window"/></ActionItems>
<Menus><MenuItem Type="MenuTitle" ActionItem="Window" PositionOrder="60" Caption="Window"/></Menus>)"},
    {Rule::RedeclaredTitle, "redeclared-title", Severity::Warning, "A page declares the title of a service again.",
     "Both share the one menu. When the page leaves the front, its title is hidden or greyed out, and with it the menu "
     "of "
     "the service. Entries of a page need no title of their own: their Path is enough.",
     R"(<Windows><Window Name="ExampleWindow" Type="Window" State="Normal" IsMDIChild="False">
<Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False" IsResizable="True">
<ActionItems><ActionItem Name="File"/></ActionItems>
<Menus><MenuItem Type="MenuTitle" ActionItem="File" PositionOrder="50" Caption="File"/></Menus></Page></Window></Windows>)",
     R"(<Windows><Window Name="ExampleWindow" Type="Window" State="Normal" IsMDIChild="False">
<Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False" IsResizable="True">
<ActionItems><ActionItem Name="Save" Action="OnSave"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Save" Path="File" PositionOrder="50" Caption="Save"/></Menus></Page></Window></Windows>)"},
    {Rule::VanishingEntry, "vanishing-entry", Severity::Warning,
     "An entry doesn't appear, because another one has the same rank.",
     "Of two places with one rank the first one read owns the place. The second joins it when path and action are the "
     "same, and is lost otherwise. The order of a title is part of the rank of its entries, so titles of the same "
     "order cause this, too.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/><ActionItem Name="Leave" Action="OnLeave"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Greet"/>
<MenuItem Type="MenuItem" ActionItem="Leave" Path="File" PositionOrder="10.001" Caption="Leave"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/><ActionItem Name="Leave" Action="OnLeave"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Greet"/>
<MenuItem Type="MenuItem" ActionItem="Leave" Path="File" PositionOrder="10.01" Caption="Leave"/></Menus>)"},
    {Rule::SharedPosition, "shared-position", Severity::Warning, "Two titles or two buttons have the same position.",
     "The second title comes after all others, the second button before all others.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/><ActionItem Name="Leave" Action="OnLeave"/></ActionItems>
<Menus><MenuItem Type="ToolbarItem" ActionItem="Greet" Path="Standard" PositionOrder="10" Caption="Greet"/>
<MenuItem Type="ToolbarItem" ActionItem="Leave" Path="Standard" PositionOrder="10" Caption="Leave"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/><ActionItem Name="Leave" Action="OnLeave"/></ActionItems>
<Menus><MenuItem Type="ToolbarItem" ActionItem="Greet" Path="Standard" PositionOrder="10" Caption="Greet"/>
<MenuItem Type="ToolbarItem" ActionItem="Leave" Path="Standard" PositionOrder="20" Caption="Leave"/></Menus>)"},
    {Rule::NoOrder, "no-order", Severity::Note, "The order of the explorer's tabs, or of pages, isn't given.",
     "Without PositionOrder the tabs of several files are in the order in which the files are read. Those of one file, "
     "and the pages of a window, are in the order in which they are written.",
     R"(<Service Name="Example" ProgID="ExampleSvc.ExampleService" Active="True"><ExplorerItems>
<ExplorerItem Name="Plots" Type="Folder" Image="folder.svg"/></ExplorerItems></Service>
<Service Name="Other" ProgID="ExampleSvc.OtherService" Active="True"><ExplorerItems>
<ExplorerItem Name="Tables" Type="Folder" Image="folder.svg"/></ExplorerItems></Service>)",
     R"(<Service Name="Example" ProgID="ExampleSvc.ExampleService" Active="True"><ExplorerItems>
<ExplorerItem Name="Plots" Type="Folder" Image="folder.svg"/>
<ExplorerItem Name="Tables" Type="Folder" Image="folder.svg"/></ExplorerItems></Service>
<Service Name="Other" ProgID="ExampleSvc.OtherService" Active="True"/>)"},
    {Rule::DuplicateEntry, "duplicate-entry", Severity::Warning, "One command is in one menu or toolbar twice.",
     "Give all that are to share one entry the same path, action name and order.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Greet"/>
<MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="20" Caption="Greet"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Greet"/>
<MenuItem Type="MenuItem" ActionItem="Greet" Path="View" PositionOrder="20" Caption="Greet"/></Menus>)"},
    {Rule::SharedCommand, "shared-command", Severity::Warning,
     "Two services share one entry, and one of them is never called.",
     "Services are current all the time, so of two the one read last gets the clicks. Sharing is for explorer items "
     "and pages. A service whose action has no procedure may reserve the place for them.",
     R"(<ActionItems><ActionItem Name="Exit" Action="OnExit"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Exit" Path="File" PositionOrder="900" Caption="Exit"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Exit"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Exit" Path="File" PositionOrder="900" Caption="Exit"/></Menus>)"},
    {Rule::EntryWithoutProcedure, "entry-without-procedure", Severity::Warning, "A command has no procedure.",
     "The attribute Action names the procedure. Without it a click does nothing. An action without a procedure may "
     "share "
     "its entry with one that has one.",
     R"(<ActionItems><ActionItem Name="Greet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Greet"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Greet"/></Menus>)"},
    {Rule::UnusedAction, "unused-action", Severity::Note, "An action that users can't choose.",
     "It is in no menu, toolbar or context menu, and isn't the DefaultAction of its item. Code may call it; a plug-in "
     "that names it is believed to.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/><ActionItem Name="Leave" Action="OnLeave"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="#Greet"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/><ActionItem Name="Leave" Action="OnLeave"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="#Greet"/>
<MenuItem Type="MenuItem" ActionItem="Leave" Path="File" PositionOrder="20" Caption="#Leave"/></Menus>)"},
    {Rule::HiddenAction, "hidden-action", Severity::Warning,
     "An action begins hidden or disabled, and no plug-in changes that.",
     "Visible and Enabled are states to begin with, which code changes by SetVisible and SetEnabled. Found where all "
     "plug-ins of the application are there and none of them calls these functions.",
     "", ""},
    {Rule::RootCommand, "root-command", Severity::Warning, "A command of the root object that does nothing, or fails.",
     "WindowAction goes by the Name of its action: Cascade, TileHorizontally, TileVertically, ArrangeIcons and "
     "CloseAll. "
     "ViewToolbars goes by the name of a toolbar. EnableStatusBar inverts Checked, and the status bar is shown at "
     "first.",
     R"(<Service Name="Example" ProgID="Corvane.Framework" Active="True">
<ActionItems><ActionItem Name="Navigation"/><ActionItem Name="Tile" Action="WindowAction" PassActionItemParam="True"/></ActionItems></Service>)",
     R"(<Service Name="Example" ProgID="Corvane.Framework" Active="True">
<ActionItems><ActionItem Name="Navigation"/><ActionItem Name="Cascade" Action="WindowAction" PassActionItemParam="True"/></ActionItems></Service>)"},
    {Rule::PositionOverflow, "position-overflow", Severity::Error, "A PositionOrder leads to a rank above 2147483647.",
     "The rank of an entry is the order of its title times 1000000 and its own times 100. Keep titles that have "
     "entries at "
     "2147 or below. With a larger one the application doesn't start.",
     R"(<ActionItems><ActionItem Name="Tools"/><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuTitle" ActionItem="Tools" PositionOrder="2148" Caption="Tools"/>
<MenuItem Type="MenuItem" ActionItem="Greet" Path="Tools" PositionOrder="10" Caption="Greet"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Tools"/><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuTitle" ActionItem="Tools" PositionOrder="2147" Caption="Tools"/>
<MenuItem Type="MenuItem" ActionItem="Greet" Path="Tools" PositionOrder="10" Caption="Greet"/></Menus>)"},
    {Rule::ToolbarOrder, "toolbar-order", Severity::Warning, "Buttons are in another order than their numbers.",
     "Toolbars are sorted by the text of the order, in which 10 comes before 9. Write orders with the same number of "
     "digits.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/><ActionItem Name="Leave" Action="OnLeave"/></ActionItems>
<Menus><MenuItem Type="ToolbarItem" ActionItem="Greet" Path="Standard" PositionOrder="9" Caption="Greet"/>
<MenuItem Type="ToolbarItem" ActionItem="Leave" Path="Standard" PositionOrder="10" Caption="Leave"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/><ActionItem Name="Leave" Action="OnLeave"/></ActionItems>
<Menus><MenuItem Type="ToolbarItem" ActionItem="Greet" Path="Standard" PositionOrder="90" Caption="Greet"/>
<MenuItem Type="ToolbarItem" ActionItem="Leave" Path="Standard" PositionOrder="91" Caption="Leave"/></Menus>)"},
    {Rule::SubmenuOrder, "submenu-order", Severity::Warning, "A submenu comes before entries of a lower order.",
     "The entries of a submenu are placed by the order of its title alone. If that is below the order of the title "
     "above, the submenu is created first, whatever else is in the menu. Give it a higher order than the title above "
     "has, and so for the entries that are meant to come after it.",
     R"(<ActionItems><ActionItem Name="More"/><ActionItem Name="A" Action="OnA"/><ActionItem Name="B" Action="OnB"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="A" Path="File" PositionOrder="10" Caption="A"/>
<MenuItem Type="MenuTitle" ActionItem="More" Path="File" PositionOrder="20" Caption="More"/>
<MenuItem Type="MenuItem" ActionItem="B" Path="File.More" PositionOrder="10" Caption="B"/></Menus>)",
     R"(<ActionItems><ActionItem Name="More"/><ActionItem Name="A" Action="OnA"/><ActionItem Name="B" Action="OnB"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="A" Path="File" PositionOrder="10" Caption="A"/>
<MenuItem Type="MenuTitle" ActionItem="More" Path="File" PositionOrder="120" Caption="More"/>
<MenuItem Type="MenuItem" ActionItem="B" Path="File.More" PositionOrder="10" Caption="B"/></Menus>)"},
    {Rule::ShortcutUnreadable, "shortcut-unreadable", Severity::Warning, "A ShortCutKey that can't be read.",
     "It has no effect. Write names joined by +: Control, Shift, Alt, Meta, then one key.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" ShortCutKey="Contrl+G" Caption="Greet"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" ShortCutKey="control + g" Caption="Greet"/></Menus>)"},
    {Rule::ForeignShortcut, "foreign-shortcut", Severity::Note, "A shortcut in words of another language.",
     "The Qt host reads Strg as Control; other hosts needn't.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Greet" ShortCutKey="Strg+G"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Greet" ShortCutKey="Ctrl+G"/></Menus>)"},
    {Rule::TakenKey, "taken-key", Severity::Warning, "A key that a desktop, a host or a field takes for itself.",
     "The command is not chosen, or only sometimes: the desktop has keys such as Alt+F4 and those with Meta, a field "
     "those "
     "that write or move in it, the menu bar Alt with the marked letters of its titles.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Greet" ShortCutKey="Alt+F4"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Greet" ShortCutKey="Ctrl+F5"/></Menus>)"},
    {Rule::ShortcutClash, "shortcut-clash", Severity::Warning,
     "Two commands that may be current together have the same shortcut.",
     "The first that is visible and enabled is chosen. Two explorer items may use the same shortcut, as only one is "
     "current, and so may two pages.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" ShortCutKey="Ctrl+Q" Caption="Greet"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" ShortCutKey="Ctrl+Shift+Q" Caption="Greet"/></Menus>)"},
    {Rule::MnemonicClash, "mnemonic-clash", Severity::Warning, "Two entries of a menu open by the same letter.",
     "The # of a Caption marks the letter that opens the entry from the keyboard. With the same letter twice, the key "
     "only moves between the entries.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="E#xpress Greeting"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Express #Greeting"/></Menus>)"},
    {Rule::SameCaption, "same-caption", Severity::Warning,
     "Two entries of a menu, or two pages of a window, read the same.",
     "Users can't tell which is which. Entries that are never shown at one time, as those of two pages, may read the "
     "same; so may the steps of a wizard.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="#Exit"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="#Greet"/></Menus>)"},
    {Rule::BadMnemonic, "bad-mnemonic", Severity::Warning,
     "A mark in a Caption that marks nothing, or a sign that isn't shown.",
     "One # comes before the letter that opens the entry. A second one, one at the end or before a blank marks "
     "nothing. A "
     "single & is such a mark, too, and isn't shown: && shows one.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Greet#"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="Greet &amp;&amp; #Go"/></Menus>)"},
    {Rule::MissingCaption, "missing-caption", Severity::Note, "An entry, or one of several pages, has no Caption.",
     "A host shows the action's name instead, which is written for programs. A button with a picture may do without.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Greet" Path="File" PositionOrder="10" Caption="#Greet"/></Menus>)"},
    {Rule::TipRepeatsCaption, "tip-repeats-caption", Severity::Note,
     "The Tip of a button says no more than its Caption.",
     "The Caption is the tip of a button that has none. A Tip is there to say what the command does.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="ToolbarItem" ActionItem="Greet" Path="Standard" PositionOrder="10" Caption="Greet" Tip="Greet"/></Menus>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>
<Menus><MenuItem Type="ToolbarItem" ActionItem="Greet" Path="Standard" PositionOrder="10" Caption="Greet" Tip="Says hello"/></Menus>)"},
    {Rule::InactiveFile, "inactive-file", Severity::Warning,
     "A file has no effect, because Active or ProgID is missing.",
     "Active is false by default. A file that says Active=\"False\" isn't reported.",
     R"(<Service Name="Example" ProgID="ExampleSvc.ExampleService"/>)",
     R"(<Service Name="Example" ProgID="ExampleSvc.ExampleService" Active="False"/>)"},
    {Rule::UnreadFile, "unread-file", Severity::Warning, "A file that nothing reads.",
     "Definitions are the files of Services that end in .xml, without its folders; pictures are looked for in Images, "
     "plug-ins in plugins, forms in Forms, catalogues in Services/translations. What lies elsewhere, or has another "
     "ending, is passed over without a message. Copies that "
     "editors keep beside a file are left alone.",
     "", ""},
    {Rule::UnreadableFile, "unreadable-file", Severity::Error, "A definition file that can't be opened.",
     "The library shows a message and leaves it out.", "", ""},
    {Rule::SameFileName, "same-file-name", Severity::Warning, "Two files whose names differ in case alone.",
     "Names of files are found without regard to case where nothing fits exactly, so one of both is easily taken for "
     "the "
     "other. On some file systems they can't be together.",
     "", ""},
    {Rule::MissingFramework, "missing-framework", Severity::Warning, "No active file has the ProgID Corvane.Framework.",
     "The Qt host then provides one. Without such a host, as in tests and in corvane "
     "inspect, "
     "the explorer finds no action \"Navigation\", and the application doesn't start.",
     "", ""},
    {Rule::FrameworkLeftOut, "framework-left-out", Severity::Error,
     "The application's file of the root object doesn't count.",
     "It has no Active, or its ProgID isn't Corvane.Framework. Without a host that brings one, as in tests and in "
     "corvane "
     "inspect, the application doesn't start; the Qt host starts it with its own menus, and those of the file are "
     "missing. A file that says Active=\"False\" is left alone.",
     "", ""},
    {Rule::MissingNavigation, "missing-navigation", Severity::Error, "The root object has no action \"Navigation\".",
     "The file of Corvane.Framework has to define it, with the procedure ViewNavigation; of several such files the "
     "last one "
     "counts. Without it the application doesn't start.",
     R"(<Service Name="Example" ProgID="Corvane.Framework" Active="True">
<ActionItems><ActionItem Name="Navigaton"/></ActionItems></Service>)",
     R"(<Service Name="Example" ProgID="Corvane.Framework" Active="True">
<ActionItems><ActionItem Name="Navigation"/></ActionItems></Service>)"},
    {Rule::StartServiceFramework, "start-service-framework", Severity::Error,
     "The root object is made the start service.",
     "Its own Start starts all services, so it would call itself endlessly. Make another service the start "
     "service.",
     R"(<Service Name="Example" ProgID="Corvane.Framework" Active="True" IsStartService="True">
<ActionItems><ActionItem Name="Navigation"/></ActionItems></Service>)",
     R"(<Service Name="Example" ProgID="Corvane.Framework" Active="True" IsStartService="False">
<ActionItems><ActionItem Name="Navigation"/></ActionItems></Service>)"},
    {Rule::SeveralStartServices, "several-start-services", Severity::Warning, "Several files say IsStartService.",
     "Start is called on the service of the last file only.",
     R"(<Service Name="Example" ProgID="ExampleSvc.ExampleService" Active="True" IsStartService="True"/>
<Service Name="Other" ProgID="ExampleSvc.OtherService" Active="True" IsStartService="True"/>)",
     R"(<Service Name="Example" ProgID="ExampleSvc.ExampleService" Active="True" IsStartService="True"/>
<Service Name="Other" ProgID="ExampleSvc.OtherService" Active="True"/>)"},
    {Rule::HelpWithoutAbout, "help-without-about", Severity::Error,
     "The help service has no entry \"About\", or none with a caption.",
     "In the file of TavelinSvc.TavelinService the library writes the product's name into the entry whose ActionItem "
     "is "
     "About, in exactly these letters. Without that entry or its Caption it leaves the file out.",
     R"(<Service Name="Example" ProgID="TavelinSvc.TavelinService" Active="True">
<ActionItems><ActionItem Name="about" Action="OnAbout"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="about" Path="File" PositionOrder="10" Caption="about"/></Menus></Service>)",
     R"(<Service Name="Example" ProgID="TavelinSvc.TavelinService" Active="True">
<ActionItems><ActionItem Name="About" Action="OnAbout"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="About" Path="File" PositionOrder="10" Caption="#About"/></Menus></Service>)"},
    {Rule::MissingWindowList, "missing-window-list", Severity::Note,
     "There are windows, and no menu Window that lists them.",
     "The list of open windows is added to the menu of a title with the key Window. Without one, users can't reach a "
     "hidden window by the menu. The Qt host adds one to an application without a file of the root object.",
     R"(<Windows><Window Name="Plot" Type="Window" State="Normal">
<Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False" IsResizable="True"/></Window></Windows>)",
     R"(<ActionItems><ActionItem Name="Window"/></ActionItems>
<Menus><MenuItem Type="MenuTitle" ActionItem="Window" PositionOrder="60" Caption="Window"/></Menus>
<Windows><Window Name="Plot" Type="Window" State="Normal">
<Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False" IsResizable="True"/></Window></Windows>)"},
    {Rule::UnreachableItem, "unreachable-item", Severity::Warning, "An explorer item of Type Default has no Parent.",
     "Only a Folder or a FolderChild may be a tab of its own. A Default shows the children of the item above it.",
     R"(<ExplorerItems><ExplorerItem Name="Plot" Type="Default" Image="folder.svg"/></ExplorerItems>)",
     R"(<ExplorerItems><ExplorerItem Name="Plot" Type="Folder" Image="folder.svg"/></ExplorerItems>)"},
    {Rule::ModalMdiChild, "modal-mdi-child", Severity::Error, "A window is modal and an MDI child.",
     "Opening it fails, unless the caller overrides one of them. IsMDIChild is true by default.",
     R"(<Windows><Window Name="Plot" Type="Dialog" State="Normal" IsModal="True">
<Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False" IsResizable="True"/></Window></Windows>)",
     R"(<Windows><Window Name="Plot" Type="Dialog" State="Normal" IsModal="True" IsMDIChild="False">
<Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False" IsResizable="True"/></Window></Windows>)"},
    {Rule::WindowWithoutPages, "window-without-pages", Severity::Warning, "A window has no Page.",
     "It opens empty; a wizard has no step.",
     R"(<Windows><Window Name="ExampleWindow" Type="Dialog" State="Normal" IsMDIChild="False"/></Windows>)",
     R"(<Windows><Window Name="ExampleWindow" Type="Dialog" State="Normal" IsMDIChild="False">
<Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False" IsResizable="True"/></Window></Windows>)"},
    {Rule::UnreachableWindow, "unreachable-window", Severity::Warning, "No plug-in of the application names a window.",
     "Windows are opened by their names. With --plugins the files of the application's plug-ins are searched for them. "
     "A name that is composed at run time isn't found; ignore such a finding.",
     R"(<Windows><Window Name="NobodyOpensThis" Type="Dialog" State="Normal" IsMDIChild="False">
<Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False" IsResizable="True"/></Window></Windows>)",
     R"(<Windows><Window Name="ExampleWindow" Type="Dialog" State="Normal" IsMDIChild="False">
<Page PageProgID="ExampleSvc.PlotPage" Caption="Plot" IsOptional="False" IsResizable="True"/></Window></Windows>)"},
    {Rule::MissingImage, "missing-image", Severity::Warning, "A picture is missing from the folder Images.",
     "The button or item then has no picture. GenericExplorerItem.ico is the picture of explorer items that name none.",
     R"(<ActionItems><ActionItem Name="Greet" Image="greet.svg"/></ActionItems>)",
     R"(<ActionItems><ActionItem Name="Greet" Image="FOLDER.svg"/></ActionItems>)"},
    {Rule::UnreadableImage, "unreadable-image", Severity::Warning,
     "A file in the folder Images isn't a supported picture.",
     "Pictures are PNG, BMP, ICO, GIF, JPEG or SVG by their contents, whatever the file's extension.",
     R"(<ActionItems><ActionItem Name="Greet" Image="broken.png"/></ActionItems>)",
     R"(<ActionItems><ActionItem Name="Greet" Image="folder.svg"/></ActionItems>)"},
    {Rule::BadProgId, "bad-progid", Severity::Error, "A ProgID doesn't have the form Library.Class.",
     "The part before the first point names the plug-in, plugins/lib<Library>.so, and the whole its class.",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="PlotsFolder" Image="folder.svg"/></ExplorerItems>)",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="ExampleSvc.PlotsFolder" Image="folder.svg"/></ExplorerItems>)"},
    {Rule::MissingPlugin, "missing-plugin", Severity::Error, "The plug-in of a ProgID is missing.",
     "Nothing is reported if the application has no folder plugins at all, unless --plugins is given: then nothing has "
     "been built yet.",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="ExmpleSvc.Plots" Image="folder.svg"/></ExplorerItems>)",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="examplesvc.Plots" Image="folder.svg"/></ExplorerItems>)"},
    {Rule::UnusablePlugin, "unusable-plugin", Severity::Error, "A plug-in can't be loaded.",
     "Found with --plugins. The text gives the reason: the file isn't a shared library, a dependency is missing, "
     "another compiler, an older interface.",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="BrokenSvc.Plots" Image="folder.svg"/></ExplorerItems>)",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="ExampleSvc.Plots" Image="folder.svg"/></ExplorerItems>)"},
    {Rule::UnknownClass, "unknown-class", Severity::Error, "The plug-in has no such class.", "Found with --plugins.",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="ExampleSvc.Plot" Image="folder.svg"/></ExplorerItems>)",
     R"(<ExplorerItems><ExplorerItem Name="Plots" Type="Folder" ProgID="ExampleSvc.plots" Image="folder.svg"/></ExplorerItems>)"},
    {Rule::UnknownMember, "unknown-member", Severity::Error,
     "The class doesn't have the procedure that an action calls.",
     "Found with --plugins, for Corvane.Framework always. A start service needs a procedure Start. The objects of "
     "items of Type Default and FolderChild are created by plug-ins, so their class isn't known: it is enough that any "
     "class of a plug-in may have the procedure.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGret"/></ActionItems>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="ongreet"/></ActionItems>)"},
    {Rule::WrongArguments, "wrong-arguments", Severity::Error, "A procedure takes other arguments than it is given.",
     "Found with --plugins, for Corvane.Framework always. With PassActionItemParam a procedure has one parameter, "
     "otherwise none. TakesSeveral, CanDrop, Drop and LazyChildren, which the host calls on explorer items that have "
     "them, take one.",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet" PassActionItemParam="True"/></ActionItems>)",
     R"(<ActionItems><ActionItem Name="Greet" Action="OnGreet"/></ActionItems>)"},
    {Rule::NoServiceAccess, "no-service-access", Severity::Error, "The class of a service isn't one.",
     "Found with --plugins. The class has to implement IServiceAccess; without it the start fails with 13, and the "
     "services "
     "behind it are never initialised.",
     R"(<Service Name="Example" ProgID="ExampleSvc.Plots" Active="True"/>)",
     R"(<Service Name="Example" ProgID="ExampleSvc.ExampleService" Active="True"/>)"},
    {Rule::StartNeverCalled, "start-never-called", Severity::Note,
     "A service has a procedure Start that is never called.",
     "Found with --plugins. Start is called on the one service whose file says IsStartService.",
     R"(<Service Name="Example" ProgID="ExampleSvc.StartService" Active="True"/>)",
     R"(<Service Name="Example" ProgID="ExampleSvc.StartService" Active="True" IsStartService="True"/>)"},
    {Rule::ChildrenNeverAdded, "children-never-added", Severity::Warning,
     "A kind of explorer item of which no object is ever added.",
     "Found with --plugins. The objects of a kind of Type Default or FolderChild come from the class above, which "
     "fills "
     "colChildren in its InitializeEvent, or from AddToExplorer. The code of the plug-in does neither.",
     "", ""},
    {Rule::UnknownNameInCode, "unknown-name-in-code", Severity::Warning,
     "The code of a plug-in names a service, window or explorer item with a slip.",
     "Found with --plugins. A text in the plug-in is one letter away from a name of the definitions that the plug-in "
     "doesn't have otherwise.",
     "", ""},
    {Rule::FormUnreadable, "form-unreadable", Severity::Error, "No form comes of a file in Forms.",
     "The file isn't well-formed XML, or isn't a form of Designer. The page shows the reason in its place.", "", ""},
    {Rule::FormUnknown, "form-unknown", Severity::Warning,
     "A widget, layout, property or element that forms don't know.",
     "A widget or layout is left out or replaced, a property has no effect. Forms know a part of what Designer offers; "
     "a widget of your own goes into a place, by the dynamic property \"place\".",
     "", ""},
    {Rule::FormBadValue, "form-bad-value", Severity::Warning, "A property of a form has a value that it can't have.",
     "It isn't of the type, is out of range, or is a pattern that can't be used. The property counts as absent.", "",
     ""},
    {Rule::FormName, "form-name", Severity::Error,
     "Two fields of one name, or a field, place or group of radio buttons without a name.",
     "A field is bound to the property of its name. The second of two, and one without a name, are bound to nothing.",
     "", ""},
    {Rule::FormLabel, "form-label", Severity::Warning, "A field has neither a label nor an accessible name.",
     "Users of a screen reader don't learn what it is, and messages call it by its name. A label in front of it in a "
     "form or grid layout does, or one whose buddy it is.",
     "", ""},
    {Rule::FormMnemonic, "form-mnemonic", Severity::Warning,
     "Two parts of a form, or one and a button of its window, have the same mnemonic.",
     "The key then only moves between both.", "", ""},
    {Rule::FormTabOrder, "form-tab-order", Severity::Warning, "The tab order jumps back, or names what isn't a field.",
     "The Tab key should go through a form as it is read.", "", ""},
    {Rule::FormLayout, "form-layout", Severity::Warning, "A widget lies in no layout, or in the cell of another one.",
     "Forms have no fixed positions, as texts and fonts differ. A widget without a layout is shown below the others; "
     "of two in one cell, one covers the other.",
     "", ""},
    {Rule::FormDefault, "form-default", Severity::Warning, "The value that a form gives a field can't be accepted.",
     "It is out of range, doesn't match the pattern, or is none of the choices. The page isn't valid until the user "
     "has changed it.",
     "", ""},
    {Rule::FormRequired, "form-required", Severity::Warning, "A field is required and read-only.",
     "When it is empty, the page can never become valid.", "", ""},
    {Rule::FormIdle, "form-idle", Severity::Warning, "A field with which users can do nothing.",
     "A combo box or list without entries gets them from the member NAMEChoices, and a table its rows from the class; "
     "without columns it shows nothing of them. "
     "Fields that are disabled or hidden wait for NAMEEnabled or NAMEVisible. Found with --plugins, and for pages of "
     "the "
     "preferences that have no class.",
     "", ""},
    {Rule::FormUnused, "form-unused", Severity::Warning, "No page has the form.",
     "The file has the name of the page's PageProgID, with .ui behind it.", "", ""},
    {Rule::FormMember, "form-member", Severity::Error,
     "A field or button of a form has no member in the class of its page.",
     "Found with --plugins, and for pages of the preferences that no plug-in can have a class for. A field keeps what "
     "is "
     "entered to itself, a button fails with 438.",
     "", ""},
    {Rule::FormType, "form-type", Severity::Warning,
     "A property can't hold every value of its field, or a button's member has parameters.",
     "Found with --plugins. What doesn't convert is a problem at the field, which the user can't put right.", "", ""},
    {Rule::FormPlace, "form-place", Severity::Warning, "A place for a widget stays empty.",
     "Found with --plugins. In a page of the preferences without a class, nothing makes the widget.", "", ""},
    {Rule::FormText, "form-text", Severity::Note, "A text of a form isn't translated.",
     "Found for the catalogues that are there. corvane translate takes the texts into them.", "", ""},
    {Rule::Welcome, "welcome", Severity::Warning,
     "The start page can't show something of the file welcome.xml, or that file can't be read.",
     "A step or a sample names a command or a file that isn't there, has no text, or the file has an element or an "
     "attribute that isn't known.",
     "", ""},
    {Rule::ProgressWithoutExplorer, "progress-without-explorer", Severity::Error,
     "A plug-in shows the progress bar in an application without an explorer tab.",
     "Found with --plugins. While the bar is shown the explorer's tree is disabled. Without a tree the call fails, "
     "after "
     "it has disabled all commands. An ExplorerItem of Type Folder without a Parent is a tab.",
     "", ""},
});

} // namespace corvane::check
