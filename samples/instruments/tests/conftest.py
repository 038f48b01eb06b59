import os
import sys

import pytest

APPLICATION = os.environ["APPLICATION_FOLDER"]
for service in ("Instruments", "Measurements"):
    sys.path.insert(0, os.path.join(APPLICATION, "plugins", service))


@pytest.fixture
def laboratory(corvane_application, tmp_path, monkeypatch):
    """The application over data of its own, which stays from one ``take`` to the next."""
    monkeypatch.setenv("INSTRUMENTS_DATA", str(tmp_path))
    return corvane_application(APPLICATION)
