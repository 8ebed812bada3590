"""Waiting for facts instead of for time."""

import time

PATIENCE = 30.0


def wait_until(fact, what, patience=PATIENCE):
    """Asks fact() until it answers something true, and returns that. After `patience` seconds the wait fails with
    `what` was expected and what fact() answered or raised last."""
    deadline = time.monotonic() + patience
    while True:
        last = None
        try:
            last = fact()
            if last:
                return last
        except (LookupError, OSError, AssertionError) as error:
            last = error
        if time.monotonic() > deadline:
            raise AssertionError(f'Waited {patience:g} s in vain for {what}. Last answer: {last!r}')
        time.sleep(0.02)
