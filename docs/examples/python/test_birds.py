import os

import pytest


@pytest.fixture
def birds(corvane_application):
    return corvane_application(os.environ["APPLICATION_FOLDER"])


def test_counts_birds(birds):
    screen = birds.take("click Birds.Total")
    assert screen.status == "4 birds"


def test_saves_what_is_entered(birds):
    screen = birds.take(
        "node 0 Bird.Wren", "dblclick", "set Wren 0 Count 5", "command Wren OK", "click Birds.Total"
    )
    assert screen.status == "8 birds"


def test_listens_until_it_is_cancelled(birds):
    screen = birds.take("click Birds.Listen", "cancel Listen for birds at 30%", "expect jobs[0].state cancelled")
    assert screen.status == ""


def test_refuses_a_bird_twice(birds):
    screen = birds.take("answer Wren", "click Birds.Add")
    assert "There is a Wren already" in screen.log[0]["description"]
