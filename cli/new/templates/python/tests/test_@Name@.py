"""The service @Name@ in its application, without a display."""

import os


def test_adds_items_and_opens_them(corvane_application):
    application = corvane_application(os.environ["APPLICATION_FOLDER"])
    screen = application.take("click @Name@.New@Name@")
    assert screen.status == "Added Item 2"
    assert not screen.log
