"""``python3 -m corvane describe FILE`` prints the classes of a service's program as JSON, without an application."""

from __future__ import annotations

import os
import runpy
import sys
from typing import List


def main(words: List[str]) -> int:
    if len(words) != 2 or words[0] != "describe":
        print("usage: python3 -m corvane describe FILE", file=sys.stderr)
        return 2
    os.environ["CORVANE_DESCRIBE"] = "1"
    sys.path.insert(0, os.path.dirname(os.path.abspath(words[1])))
    runpy.run_path(words[1], run_name="__main__")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
