"""Waiting for something to become true."""

import time

# Long enough for a machine that is busy with other tests; a test that passes does not wait it out.
SECONDS = 20


def wait_for(condition, what, seconds=SECONDS):
    """Asks until the condition gives something true, and gives that; fails with the words of `what`."""
    deadline = time.monotonic() + seconds
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > deadline:
            raise AssertionError(f"After {seconds} seconds: {what() if callable(what) else what}")
        time.sleep(0.03)
