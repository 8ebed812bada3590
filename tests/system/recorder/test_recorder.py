"""The recorder with the real NetworkManager, real links and real bytes. Run inside in-namespaces. After each connection
the record holds what the kernel counted, to the byte."""
import os
import signal
import sys
import time
import unittest

import world as w
from world import History, Program, Recorder, Window, kernel, transfer, wait

MB = 1_000_000
SOME = 3 * MB
THE_WORLD = None


def setUpModule():
    global THE_WORLD
    THE_WORLD = w.World()


def tearDownModule():
    THE_WORLD.end()


class Case(unittest.TestCase):
    def setUp(self):
        self.history = History()
        self.programs = []

    def tearDown(self):
        for program in self.programs:
            w.stop(program.process, signal.SIGKILL)
        failed = any(error for _, error in self._outcome.errors) if hasattr(self._outcome, "errors") else \
            bool(self._outcome.result.failures or self._outcome.result.errors)
        if failed:
            for program in self.programs:
                print(f"--- {program.log}\n" + "\n".join(program.lines()), file=sys.stderr)
        THE_WORLD.forget_profiles()

    def recorder(self, **options):
        self.programs.append(Recorder(self.history, **options))
        return self.programs[-1]

    def window(self):
        self.programs.append(Window(self.history))
        return self.programs[-1]

    def bring_up(self, profile, interface):
        """Brings a connection up and returns what the kernel had counted when counting started."""
        before = kernel(interface)
        open_before = len(self.history.open_rows()) if os.path.exists(self.history.path) else 0
        THE_WORLD.up(profile)
        row = self.history.wait_for_open(open_before + 1)[-1]
        after = kernel(interface)
        start = (row["tx"] - row["up"], row["rx"] - row["down"])
        for i in (0, 1):
            self.assertTrue(before[i] <= start[i] <= after[i], f"{before} <= {start} <= {after}")
        return start

    def assert_bytes(self, record, start, end):
        self.assertEqual((record["up"], record["down"]), (end[0] - start[0], end[1] - start[1]))


class Cable(Case):
    """A link that the service merely uses: its counters outlive the connection."""

    def setUp(self):
        super().setUp()
        THE_WORLD.add_cable_profile("Home Line")

    def test_connection_that_the_user_ends(self):
        self.recorder()
        begin = time.time()
        start = self.bring_up("Home Line", "v0")
        transfer("v0", up=SOME, down=MB)
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("v0"))
        self.assertGreater(record["up"], SOME)
        self.assertGreater(record["down"], MB)
        self.assertEqual((record["profile"], record["quality"], record["reason"], record["origin"]),
                         ("Home Line", "exact", "user", "recorded"))
        self.assertTrue(int(begin) <= record["start"] <= record["end"] <= time.time())
        self.assertEqual(self.history.open_rows(), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
