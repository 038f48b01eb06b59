"""A request that comes behind an answer, in the same bytes, is answered while a job goes on."""

import json
import os
import pathlib
import socket
import subprocess
import sys
import tempfile

SERVICE = """
import asyncio
import corvane

class Birds(corvane.Service):
    async def OnListen(self):
        corvane.set_status("listening")
        await asyncio.Event().wait()

    def Count(self):
        return 7

corvane.run()
"""


def main(source):
    ours, theirs = socket.socketpair()
    ours.settimeout(60)  # only for a service that never answers
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, "birds.py").write_text(SERVICE)
        known = {**os.environ, "CORVANE_SOCKET": str(theirs.fileno()), "PYTHONPATH": source + "/python"}
        with subprocess.Popen([sys.executable, "birds.py"], cwd=folder, env=known, pass_fds=[theirs.fileno()]):
            theirs.close()
            with ours, ours.makefile("rb") as lines:

                def say(*messages):
                    ours.sendall("".join(json.dumps(message) + "\n" for message in messages).encode())

                def hear():
                    return json.loads(lines.readline())

                say({"hello": "corvane", "protocol": 1, "plugin": "Birds"}, {"id": 1, "create": "Birds"})
                assert "hello" in hear()
                assert hear()["result"]["process"] == 1
                say({"id": 2, "on": 1, "call": "OnListen", "arguments": []})
                started = hear()
                assert started["call"] == "StartJob", started
                say({"id": started["id"], "result": None})
                assert hear() == {"id": 2, "result": None}
                say({"job": 1, "begin": True})
                status = hear()
                assert status["value"] == "listening", status
                say({"id": status["id"], "result": None}, {"id": 3, "on": 1, "call": "Count", "arguments": []})
                assert hear() == {"id": 3, "result": 7}
                ours.shutdown(socket.SHUT_RDWR)


if __name__ == "__main__":
    main(sys.argv[1])
