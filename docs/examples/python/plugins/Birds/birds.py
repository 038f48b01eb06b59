import asyncio
from typing import Dict

import corvane

counts: Dict[str, int] = {"Blackbird": 3, "Wren": 1}


class Bird(corvane.Item):
    def OnOpen(self) -> None:
        self.open_window("BirdWindow", self, key=self.name, caption=self.name)


class Aviary(corvane.Item):
    def OnInitialize(self) -> None:
        for name in counts:
            self.add_child(Bird(name))


class BirdPage(corvane.Page):
    Name: str = ""
    Count: int = 0

    def OnInitialize(self) -> None:
        self.Name = self.about.name
        self.Count = counts[self.Name]

    def OnSave(self) -> None:
        counts[self.Name] = self.Count


class Birds(corvane.Service):
    def Start(self) -> None:
        corvane.explorer().Populate()

    def OnTotal(self) -> None:
        corvane.set_status(f"{sum(counts.values())} birds")

    def OnAdd(self) -> None:
        name = corvane.ask_text("Which bird?")
        if name is None:
            return
        if name in counts:
            raise corvane.Failure(f"There is a {name} already. Count it in its window")
        counts[name] = 0
        corvane.explorer().AddToExplorer(Bird(name), "Bird", None)

    @corvane.job("Listen for birds")
    async def OnListen(self, progress: corvane.Progress) -> None:
        for second in range(3):
            progress.set_part(second, 3)
            await asyncio.sleep(1)
        corvane.set_status("Nothing heard")


corvane.run()
