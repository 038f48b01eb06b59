"""The service @Name@: the procedures behind its commands, its explorer items, and the page of its window."""

from typing import List

import corvane

# The names of the items that there are.
names: List[str] = ["Item 1"]


class @Name@Item(corvane.Item):
    def OnOpen(self) -> None:
        # The window is opened once an item: its name is the window's key.
        self.open_window("@Name@Window", self, key=self.name)


class @Name@Folder(corvane.Item):
    def OnInitialize(self) -> None:
        for name in names:
            self.add_child(@Name@Item(name))


class @Name@Page(corvane.Page):
    # A field of the form Forms/@Name@Svc.@Name@Page.ui.
    Title: str = ""

    def OnInitialize(self) -> None:
        self.Title = self.about.name if self.about else ""


class @Name@Service(corvane.Service):
    def Start(self) -> None:
        """Called once, after all services are initialized, if the definition says IsStartService."""
        corvane.explorer().Populate()
        corvane.set_status("Ready")

    def OnNew(self) -> None:
        names.append(f"Item {len(names) + 1}")
        corvane.explorer().AddToExplorer(@Name@Item(names[-1]), "@Name@Item", None)
        corvane.set_status("Added " + names[-1])


corvane.run()
