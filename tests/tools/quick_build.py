"""How the tests build applications of other authors: quickly, and then each source on its own."""

import json
import pathlib
import shlex
import subprocess

ENVIRONMENT = {"CMAKE_TOOLCHAIN_FILE": str(pathlib.Path(__file__).with_name("QuickBuild.cmake"))}


def compile_alone(build, sources, environment):
    """What the compiler says of those sources, each compiled alone without precompiled headers; nothing if all is well."""
    unit = next(entry for entry in json.loads((build / "compile_commands.json").read_text())
                if "Unity" in entry["file"] and "Svc.dir" in entry.get("output", entry["command"]))
    words = iter(shlex.split(unit["command"]))
    flags = []
    for word in words:
        if word == "-include" or word == "-o":
            next(words)
        elif word.startswith(("-I", "-D", "-std", "-W", "-f")) and word != "-Winvalid-pch":
            flags.append(word)
        elif word == "-isystem":
            flags += [word, next(words)]
    compiler = shlex.split(unit["command"])[0]
    done = subprocess.run([compiler, *flags, "-fsyntax-only", *map(str, sources)], capture_output=True, text=True,
                          cwd=unit["directory"], env=environment)
    return done.stderr if done.returncode else ""
