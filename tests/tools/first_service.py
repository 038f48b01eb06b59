"""usage: first_service.py CORVANE APP STEPS -- the example's command reaches its procedure, once a choice."""

import json
import subprocess
import sys

corvane, app, steps = sys.argv[1:]


def inspect(*options):
    return subprocess.run([corvane, "inspect", app, *options], check=True, capture_output=True, text=True).stdout


def expect(text, wanted):
    if wanted not in text:
        sys.exit(f"expected\n{wanted}\nin\n{text}")


before = inspect()
expect(before, "Greeting  GreetingSvc.GreetingService  (start service)")
expect(before, "    Say Hello  [Control+H]\n    --------\n    Exit\n")
expect(before, "Status\n  Ready\n")

after = inspect("--steps", steps)
expect(after, "    Say Hello  [Control+H]  (checked)\n")
expect(after, "Status\n  Hello, number 2\n")

document = json.loads(inspect("--steps", steps, "--json"))
tool = next(tool for tool in document["tools"] if tool["name"] == "File.Greet")
if tool["action"]["procedure"] != "OnGreet" or document.get("log") or document.get("failure"):
    sys.exit(json.dumps(document, indent=1))
