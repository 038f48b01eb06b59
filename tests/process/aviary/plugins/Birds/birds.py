"""A service of the tests: what it is asked for goes into the status line."""

import asyncio
import base64
import os
import sys
import time

import corvane

heard = []


class Bird(corvane.Item):
    def OnOpen(self):
        self.open_window("BirdWindow", self, key=self.name, caption="The " + self.name)

    def OnExit(self, window, was_cancelled):
        corvane.set_status(f"{window.Caption} closed, cancelled: {was_cancelled}")

    def OnDisplayName(self, text):
        return f"<{text}>"

    def OnAfterRename(self, name):
        heard.append("Renamed:" + self.name)


class Aviary(corvane.Item):
    def OnInitialize(self):
        for name in ("Blackbird", "Wren"):
            self.add_child(Bird(name))


DOT = base64.b64decode(
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR4nGP4z8DwHwAFAAH/iZk9HQAAAABJRU5ErkJggg=="
)
seen = [[day, day % 7] for day in range(1000)]


def fetch(first, count):
    heard.append(f"Rows:{first}")
    return seen[first : first + count]


def write(row, column, value):
    seen[row][1] = value


class BirdPage(corvane.Page):
    Note: str = ""
    Photo: str = ""

    def OnInitialize(self):
        heard.append(f"Page:{self.about.name}:{self.window.Key}")
        self.Note = "none"
        self.Photo = corvane.picture(DOT)

    @property
    def Seen(self):
        return corvane.Rows(["Day", "Count"], len(seen), fetch, write)

    def OnValidate(self):
        return self.about.name != "Wren"

    def OnSave(self):
        heard.append(f"Save:{self.about.name}:{self.Note}")


class Birds(corvane.Service):
    def __init__(self):
        self._title = "none"

    def OnInitialize(self):
        heard.append("Initialize")
        self.count = 0

    def OnCount(self):
        self.count += 1
        corvane.set_status(f"{self.count} {os.environ['FEED']} {corvane.framework().Status}")

    def OnGreet(self, item):
        item.Enabled = False
        self.action("Fail").Checked = True
        services = corvane.framework().ServiceManager.Services
        names = [services.KeyAt(i + 1) for i in range(len(services))]
        corvane.set_status(f"{item.Name} {'Birds' in services} {','.join(names)} {corvane.ask('Well?', ['Yes', 'No'])}")

    def OnFail(self):
        return {}["wren"]

    def OnNest(self):
        if not corvane.find_service("Birds") is self:
            raise corvane.Failure("not myself")
        corvane.set_status("nested " + corvane.find_service("Stranger").OnEcho("deep"))

    async def OnLater(self):
        corvane.set_status("before")
        await asyncio.sleep(0)
        corvane.set_status("after")

    def OnFly(self):
        self.fly("Africa")

    @corvane.job("Fly to {place}", writes=["air"])
    async def fly(self, place, progress):
        for leg in range(4):
            progress.set_part(leg, 4)
            progress.set_text(f"leg {leg}")
            await asyncio.sleep(0)
        progress.log("landed")
        corvane.set_status(f"landed in {place}")

    @corvane.job()
    def OnNap(self, progress):
        for step in range(200):
            progress.set_part(step, 200)
            progress.stop_if_cancelled()
            time.sleep(0.001)
        corvane.set_status("awake")

    async def OnFall(self):
        raise corvane.Failure("The wing is broken")

    @corvane.job("Crash", can_cancel=False)
    async def OnCrash(self):
        print("so sudden", file=sys.stderr)
        os.abort()

    def OnDie(self):
        print("so tired", file=sys.stderr)
        os.abort()

    def Brood(self, file):
        while not os.path.exists(file):
            time.sleep(0.01)
        return "hatched"

    def Same(self, value):
        return value

    def Two(self, first, second=2):
        return f"{first}{second}"

    def OnDeep(self):
        self.action("Deep").OnAction()

    def Recurse(self):
        return corvane.find_service("Stranger").OnRecurse()

    def List(self):
        return [1, 2]

    def Refuse(self):
        raise corvane.Failure("The cage is closed")

    def Heard(self):
        taken = " ".join(heard)
        heard.clear()
        return taken

    @property
    def Title(self):
        return self._title

    @Title.setter
    def Title(self, title):
        self._title = title

    def OnUnsaved(self):
        return {"Blackbird": Bird("Blackbird")}

    def OnSave(self, item):
        heard.append("Saved:" + item.name)


corvane.run()
