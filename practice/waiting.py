"""Waiting for what another program does, with an end to the patience."""
import time

PATIENCE = 30.0  # seconds
PAUSE = 0.05


class Trouble(RuntimeError):
    pass


def wait_for(what, holds, patience=PATIENCE):
    """The first true result of `holds`; Trouble if there is none in time."""
    end = time.monotonic() + patience
    while time.monotonic() < end:
        found = holds()
        if found:
            return found
        time.sleep(PAUSE)
    raise Trouble(f"not within {patience:.0f} s: {what}")
