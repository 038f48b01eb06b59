"""Does the tasks and reports them, see scripts/walk."""
import argparse
import pathlib
import sys
import traceback

from desk import Desk, Display
from tasks import TASKS


def walk(task, way, arguments):
    """Whether the task is done that way; prints its line."""
    desk, acts = None, 0
    try:
        desk = Desk(arguments.build, arguments.pictures, f"{task.name}-{way}", task.environment)
        task.before(desk)
        desk.acts = 0
        getattr(task, way)(desk)
        acts = desk.acts
        task.check(desk)
        fault = f"more than {task.most} acts" if task.most and acts > task.most else ""
    except Exception as error:  # noqa: BLE001 -- whatever it is, the other tasks are still done
        fault = str(error) or type(error).__name__
        acts = acts or (desk.acts if desk else 0)
        if arguments.verbose:
            traceback.print_exc()
    if desk:
        desk.picture("failed" if fault else "done")
        desk.close()
    print(f"{task.title:36} {way:8} {acts:4}  {'NOT DONE: ' + fault if fault else 'done'}", flush=True)
    return not fault


def main():
    parser = argparse.ArgumentParser(prog="scripts/walk", description="Does tasks in Studies as a user would.")
    names = [task.name for task in TASKS]
    parser.add_argument("tasks", nargs="*", metavar="TASK", help=", ".join(names) + "; all of them by default")
    parser.add_argument("--build", default="build/release", help="the folder of the build (build/release)")
    parser.add_argument("--pictures", default="build/walk", help="where the pictures go (build/walk)")
    parser.add_argument("--way", choices=["keyboard", "mouse"], help="only by keyboard or only by mouse")
    parser.add_argument("--verbose", action="store_true", help="where in the script a task ended")
    arguments = parser.parse_args()
    if unknown := set(arguments.tasks) - set(names):
        parser.error(f"there is no task {', '.join(sorted(unknown))}")
    arguments.build = pathlib.Path(arguments.build).resolve()
    if not (arguments.build / "bin" / "corvane-desktop").exists():
        parser.error(f"there is no bin/corvane-desktop in {arguments.build}; build it first, for example by ./run")
    pathlib.Path(arguments.pictures).mkdir(parents=True, exist_ok=True)
    ways = [arguments.way] if arguments.way else ["keyboard", "mouse"]
    failed = 0
    with Display():
        for task in TASKS:
            if arguments.tasks and task.name not in arguments.tasks:
                continue
            for way in ways:
                failed += not walk(task, way, arguments)
    print(f"{failed} failed; pictures in {arguments.pictures}" if failed else f"all done; pictures in {arguments.pictures}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
