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
        THE_WORLD.make_sure()
        self.history = History()
        self.programs = []

    def tearDown(self):
        for program in self.programs:
            w.stop(program.process, signal.SIGKILL)
        result = self._outcome.result
        failed = any(test is self for test, _ in result.failures + result.errors)
        if failed:
            for program in self.programs:
                print(f"--- {program.log}\n" + "\n".join(program.lines()), file=sys.stderr)
        THE_WORLD.forget_profiles()

    def recorder(self, **options):
        self.programs.append(Recorder(self.history, **options))
        return self.programs[-1]

    def window(self, **options):
        self.programs.append(Window(self.history, **options))
        self.programs[-1].wait_for("status")  # it listens, or records
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

    def test_a_new_activation_replaces_it(self):
        THE_WORLD.add_cable_profile("Other Line", address=3)
        self.recorder()
        first = self.bring_up("Home Line", "v0")
        transfer("v0", up=SOME)
        THE_WORLD.up("Other Line")
        self.history.wait_for_records(1)
        (second,) = self.history.wait_for_open()
        switch = (second["tx"] - second["up"], second["rx"] - second["down"])
        transfer("v0", down=MB)
        THE_WORLD.down("Other Line")
        one, other = self.history.wait_for_records(2)
        self.assertEqual((one["profile"], one["reason"]), ("Home Line", "user"))
        self.assertEqual((other["profile"], other["reason"]), ("Other Line", "user"))
        self.assert_bytes(other, switch, kernel("v0"))
        total = one["up"] + other["up"], one["down"] + other["down"]
        whole = tuple(end - begin for begin, end in zip(first, kernel("v0")))
        self.assertTrue(all(0 <= w_ - t <= 1000 for w_, t in zip(whole, total)), f"{total} of {whole}")

    def test_link_deleted_in_the_middle_of_a_transfer(self):
        self.recorder()
        start = self.bring_up("Home Line", "v0")
        transfer("v0", up=2 * SOME)
        end = kernel("v0")
        w.remove_link("v0")
        try:
            (record,) = self.history.wait_for_records(1)
        finally:
            w.make_link("v0")
        # What was received may be short by what came after the last look: a link of this kind says zero when it goes.
        self.assertEqual(record["up"], end[0] - start[0])
        self.assertLessEqual(record["down"], end[1] - start[1])
        self.assertEqual((record["reason"], record["quality"]), ("unplugged", "exact"))

    def test_carrier_lost(self):
        self.recorder()
        start = self.bring_up("Home Line", "v0")
        transfer("v0", up=SOME)
        peer = ("nsenter", "-t", w.PEER, "-n", "ip", "link", "set", "p-v0")
        w.run(*peer, "down")
        try:
            (record,) = self.history.wait_for_records(1)  # the service waits six seconds before it believes it
        finally:
            w.run(*peer, "up")
        self.assert_bytes(record, start, kernel("v0"))
        self.assertEqual(record["reason"], "carrier")

    def test_profile_renamed_while_up(self):
        self.recorder()
        start = self.bring_up("Home Line", "v0")
        transfer("v0", up=MB)
        w.run("nmcli", "connection", "modify", "Home Line", "connection.id", "Attic Line")
        transfer("v0", up=MB)
        THE_WORLD.down("Attic Line")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("v0"))
        self.assertEqual(record["profile"], "Home Line")  # as it was called when it came up

    def test_fifty_connections_in_a_row(self):
        self.recorder()
        window = self.window()
        first = kernel("v0")
        for _ in range(50):
            THE_WORLD.up("Home Line")
            THE_WORLD.down("Home Line")
        last = kernel("v0")
        records = self.history.wait_for_records(50)
        window.wait_for("ended", 50)
        self.assertEqual(len(self.history.records()), 50)
        self.assertEqual(self.history.open_rows(), [])
        self.assertEqual({record["reason"] for record in records}, {"user"})
        self.assertLessEqual(sum(record["up"] for record in records), last[0] - first[0])
        events = [(event["event"], event["connection"]) for event in window.events("established", "ended")]
        self.assertEqual([kind for kind, _ in events], ["established", "ended"] * 50)
        self.assertEqual(len({key for _, key in events}), 50)

    def test_up_before_the_recorder_starts(self):
        THE_WORLD.up("Home Line")
        transfer("v0", up=SOME)
        w.settle("v0")
        start = kernel("v0")
        self.recorder()
        self.history.wait_for_open()
        transfer("v0", up=MB)
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("v0"))

    def test_activation_that_fails_is_no_connection(self):
        self.recorder()
        # It fails late, when the link has its addresses: a tunnel that belongs to it does not exist.
        THE_WORLD.add_cable_profile("Broken", address=3)
        w.run("nmcli", "connection", "modify", "Broken", "+connection.secondaries",
              "11111111-2222-3333-4444-555555555555")
        said = w.run("nmcli", "connection", "up", "Broken", check=False)
        self.assertIn("failed", said)
        self.bring_up("Home Line", "v0")
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assertEqual(record["profile"], "Home Line")


class Crashes(Case):
    """Recorder or service die; bytes that the kernel counted are found again."""

    def setUp(self):
        super().setUp()
        THE_WORLD.add_cable_profile("Home Line")

    def up_with_bytes_and_checkpoint(self):
        """Returns the start and what the last checkpoint saw."""
        start = self.bring_up("Home Line", "v0")
        transfer("v0", up=MB)
        seen = kernel("v0")
        wait(lambda: [row for row in self.history.open_rows() if row["tx"] == seen[0]], "a checkpoint")
        return start, seen

    def test_recorder_killed_and_back_while_up(self):
        recorder = self.recorder()
        start, _ = self.up_with_bytes_and_checkpoint()
        recorder.kill()
        transfer("v0", up=2 * MB, down=MB)
        self.recorder()
        transfer("v0", up=MB)
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("v0"))
        self.assertEqual((record["quality"], record["reason"]), ("resumed", "user"))

    def test_recorder_ended_politely_and_back_while_up(self):
        recorder = self.recorder()
        start, _ = self.up_with_bytes_and_checkpoint()
        transfer("v0", up=MB)
        at_end = kernel("v0")
        self.assertEqual(recorder.end(), 0)
        (row,) = self.history.open_rows()
        self.assertEqual((row["tx"], row["rx"]), at_end)  # the last checkpoint was written on the way out
        self.recorder()
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("v0"))

    def test_connection_ends_while_the_recorder_is_dead(self):
        recorder = self.recorder()
        start, _ = self.up_with_bytes_and_checkpoint()
        recorder.kill()
        transfer("v0", up=2 * MB)
        THE_WORLD.down("Home Line")
        end = kernel("v0")
        self.recorder()
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, end)
        self.assertEqual((record["quality"], record["reason"]), ("recovered", "unknown"))

    def test_link_replaced_while_the_recorder_is_dead(self):
        recorder = self.recorder()
        start, seen = self.up_with_bytes_and_checkpoint()
        recorder.kill()
        transfer("v0", up=2 * MB)
        w.remove_link("v0")
        w.make_link("v0")
        wait(lambda: "v0:ethernet:disconnected" in w.run("nmcli", "-t", "-f", "DEVICE,TYPE,STATE", "device"), "the link")
        THE_WORLD.up("Home Line")
        w.settle("v0")
        second = kernel("v0")
        self.recorder()
        (old,) = self.history.wait_for_records(1)
        self.assert_bytes(old, start, seen)  # exact up to the last checkpoint
        self.assertEqual(old["quality"], "recovered")
        self.history.wait_for_open()
        transfer("v0", up=MB)
        THE_WORLD.down("Home Line")
        _, new = self.history.wait_for_records(2)
        self.assert_bytes(new, second, kernel("v0"))

    def test_dialled_anew_while_the_recorder_is_dead(self):
        recorder = self.recorder()
        start, _ = self.up_with_bytes_and_checkpoint()
        recorder.kill()
        transfer("v0", up=2 * MB)
        THE_WORLD.down("Home Line")
        THE_WORLD.up("Home Line")
        transfer("v0", up=MB)
        self.recorder()
        (old,) = self.history.wait_for_records(1)
        self.assertEqual(old["quality"], "recovered")
        (row,) = self.history.wait_for_open()
        THE_WORLD.down("Home Line")
        _, new = self.history.wait_for_records(2)
        self.assertEqual(new["quality"], "exact")
        # What went over the link from the checkpoint until the new beginning is in neither or in one, never in both.
        self.assertLessEqual(old["up"] + new["up"], kernel("v0")[0] - start[0])

    def manager_dies(self, how):
        self.recorder()
        window = self.window()
        start, _ = self.up_with_bytes_and_checkpoint()
        window.wait_for("established")
        THE_WORLD.stop_manager(how)
        transfer("v0", up=MB)
        THE_WORLD.start_manager()
        transfer("v0", up=MB)
        wait(lambda: "Home Line:activated" in w.run("nmcli", "-t", "-f", "NAME,STATE", "connection", "show", "--active"),
             "NetworkManager takes the link over")
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("v0"))
        self.assertEqual((record["quality"], record["reason"]), ("resumed", "user"))
        window.wait_for("ended")
        self.assertEqual(len(window.events("established")), 1)

    def test_manager_killed(self):
        self.manager_dies(signal.SIGKILL)

    def test_manager_ended(self):
        self.manager_dies(signal.SIGTERM)

    def test_manager_killed_and_link_deleted(self):
        recorder = self.recorder()
        start, _ = self.up_with_bytes_and_checkpoint()
        THE_WORLD.stop_manager(signal.SIGKILL)
        recorder.wait_for_line("NetworkManager is not running")
        transfer("v0", up=2 * MB)
        end = kernel("v0")
        w.remove_link("v0")
        try:
            (record,) = self.history.wait_for_records(1)  # nobody but the kernel says so
        finally:
            w.make_link("v0")
            THE_WORLD.start_manager()
        self.assertEqual(record["up"], end[0] - start[0])
        self.assertEqual(record["reason"], "unplugged")

    def test_both_killed(self):
        recorder = self.recorder()
        start, _ = self.up_with_bytes_and_checkpoint()
        recorder.kill()
        THE_WORLD.stop_manager(signal.SIGKILL)
        transfer("v0", up=2 * MB)
        self.recorder(ready=False).wait_for_line("NetworkManager is not running")
        THE_WORLD.start_manager()
        self.programs[-1].wait_for_line("recording; connections that are up: 1")
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("v0"))
        self.assertEqual(record["quality"], "resumed")


class Several(Case):
    """Several recorders and windows: nothing is recorded or announced twice."""

    def setUp(self):
        super().setUp()
        THE_WORLD.add_cable_profile("Home Line")

    def test_two_recorders_started_together(self):
        both = [self.recorder(ready=False), self.recorder(ready=False)]
        wait(lambda: any(program.process.poll() is not None for program in both), "one gives way")
        (loser,) = [program for program in both if program.process.poll() is not None]
        (winner,) = [program for program in both if program is not loser]
        self.assertEqual(loser.process.returncode, 2)
        loser.wait_for_line("another recorder is at work already")
        winner.wait_for_line("recording; ")
        start = self.bring_up("Home Line", "v0")
        transfer("v0", up=MB)
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("v0"))

    def test_windows_hear_of_everything_once_whoever_records(self):
        recorder = self.recorder()
        windows = [self.window(), self.window()]
        start = self.bring_up("Home Line", "v0")
        for window in windows:
            window.wait_for("established")
        windows.append(self.window())
        windows[2].wait_for("established")  # it was up before this window came
        recorder.kill()
        wait(lambda: any(window.events("status") and window.events("status")[-1]["here"] for window in windows),
             "a window takes over")
        transfer("v0", up=MB)
        recorder = self.recorder()  # takes it back
        for window in windows:
            window.wait_until_recording(here=False)
        transfer("v0", up=MB)
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("v0"))
        self.assertEqual(record["quality"], "resumed")
        for window in windows:
            (ended,) = window.wait_for("ended")
            self.assertEqual(ended["stored"]["up"], record["up"])  # durable before it was announced
            self.assertEqual(len(window.events("established")), 1)
            self.assertEqual(window.events("leftover"), [])

    def test_second_window_without_recorder(self):
        first, second = self.window(), self.window()
        wait(lambda: any(window.events("status") for window in (first, second)), "one records")
        start = self.bring_up("Home Line", "v0")
        transfer("v0", up=MB)
        recording = first if first.events("status") and first.events("status")[-1]["here"] else second
        listening = second if recording is first else first
        listening.wait_for("established")
        recording.end()  # closed by the user
        listening.wait_until_recording()
        transfer("v0", up=MB)
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("v0"))
        listening.wait_for("ended")
        self.assertEqual(len(listening.events("established")), 1)

    def test_recorder_killed_and_connection_over_before_the_window_takes_over(self):
        recorder = self.recorder()
        window = self.window()
        self.bring_up("Home Line", "v0")
        window.wait_for("established")
        window.process.send_signal(signal.SIGSTOP)  # a busy desktop
        recorder.kill()
        THE_WORLD.down("Home Line")
        window.process.send_signal(signal.SIGCONT)
        self.history.wait_for_records(1)
        window.wait_for("ended")

    def test_without_session_bus_the_lock_keeps_two_apart(self):
        environment = dict(os.environ, DBUS_SESSION_BUS_ADDRESS="unix:path=/run/world/none")
        recorder = self.recorder(environment=environment)
        recorder.wait_for_line("no session bus")
        start = self.bring_up("Home Line", "v0")
        second = self.recorder(ready=False, environment=environment)
        second.wait_for_line(f"another recorder is at work already (process {recorder.process.pid})")
        self.assertEqual(second.process.wait(5), 2)
        third = self.recorder(ready=False)  # with a bus, on which nobody has the name
        third.wait_for_line("another recorder is at work already")
        self.assertEqual(third.process.wait(5), 2)
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("v0"))


class Clocks(Case):
    """Somebody sets the clock: durations are the boot clock's, and the record says so."""

    def setUp(self):
        super().setUp()
        THE_WORLD.add_cable_profile("Home Line")

    def record_with_step(self, seconds):
        step = w.WORLD + "/step"
        with open(step, "w") as file:
            file.write("+0")
        (library,) = [path for path in w.FAKETIME if os.path.exists(path)][:1]
        sanitizer = os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"  # the other clock comes first
        self.recorder(environment=dict(os.environ, ASAN_OPTIONS=sanitizer, LD_PRELOAD=library,
                                       FAKETIME_TIMESTAMP_FILE=step,
                                       FAKETIME_NO_CACHE="1", FAKETIME_DONT_FAKE_MONOTONIC="1"))
        begin = time.monotonic()
        start = self.bring_up("Home Line", "v0")
        transfer("v0", up=MB)
        with open(step + ".new", "w") as file:
            file.write(f"{seconds:+d}")
        os.rename(step + ".new", step)
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        lasted = time.monotonic() - begin
        self.assert_bytes(record, start, kernel("v0"))
        self.assertEqual(record["quality"], "clock-changed")
        self.assertLessEqual(record["seconds"], lasted + 1)
        self.assertEqual(record["end"] - record["start"], record["seconds"])
        self.assertLess(abs(record["end"] - (time.time() + seconds)), 5)

    def test_back_an_hour(self):
        self.record_with_step(-3600)

    def test_forward_a_day(self):
        self.record_with_step(86400)


class Choice(Case):
    """Which connections are recorded."""

    def setUp(self):
        super().setUp()
        self.settings = os.environ["XDG_CONFIG_HOME"] + "/netinfo/netinfo.ini"

    def tearDown(self):
        super().tearDown()
        if os.path.exists(self.settings):
            os.unlink(self.settings)

    def choose(self, word):
        os.makedirs(os.path.dirname(self.settings), exist_ok=True)
        with open(self.settings + ".new", "w") as file:
            file.write(f"[Recorder]\nConnections={word}\n")
        os.rename(self.settings + ".new", self.settings)

    def test_setting_is_followed_while_running(self):
        THE_WORLD.add_cable_profile("Home Line")
        recorder = self.recorder()
        start = self.bring_up("Home Line", "v0")
        transfer("v0", up=MB)
        end = kernel("v0")
        self.choose("mobile")
        (record,) = self.history.wait_for_records(1)  # ends with what it has
        self.assert_bytes(record, start, end)
        transfer("v0", up=MB)
        start = kernel("v0")
        self.choose("all")
        self.history.wait_for_open()
        transfer("v0", up=MB)
        self.choose("nonsense")
        recorder.wait_for_line('[Recorder] Connections="nonsense" is none of all, mobile, metered')
        self.assertEqual(len(self.history.open_rows()), 1)
        THE_WORLD.down("Home Line")
        _, record = self.history.wait_for_records(2)
        self.assert_bytes(record, start, kernel("v0"))

    def test_only_metered(self):
        self.choose("metered")
        THE_WORLD.add_cable_profile("Home Line")
        THE_WORLD.add_cable_profile("Paid Line", address=3)
        w.run("nmcli", "connection", "modify", "Paid Line", "connection.metered", "yes")
        self.recorder()
        THE_WORLD.up("Home Line")
        THE_WORLD.down("Home Line")
        THE_WORLD.up("Paid Line")
        THE_WORLD.down("Paid Line")
        (record,) = self.history.wait_for_records(1)
        self.assertEqual(record["profile"], "Paid Line")

    def test_bridge_is_counted_at_its_port(self):
        w.run("nmcli", "connection", "add", "type", "bridge", "con-name", "Bridge", "ifname", "br0", "autoconnect", "no",
              "ipv4.method", "manual", "ipv4.addresses", "192.0.2.2/24", "ipv6.method", "disabled", "bridge.stp", "no")
        w.run("nmcli", "connection", "add", "type", "ethernet", "con-name", "Port", "ifname", "v0", "autoconnect", "no",
              "master", "br0", "slave-type", "bridge")
        self.recorder()
        start = self.bring_up("Port", "v0")  # brings the bridge up, too
        wait(lambda: "Bridge:activated" in w.run("nmcli", "-t", "-f", "NAME,STATE", "connection", "show", "--active"),
             "the bridge")
        transfer("v0", up=MB)
        self.assertGreater(kernel("br0")[0], MB)
        THE_WORLD.down("Bridge")
        (record,) = self.history.wait_for_records(1)
        self.assertEqual(record["profile"], "Port")
        self.assert_bytes(record, start, kernel("v0"))
        self.assertEqual(self.history.open_rows(), [])

    def test_vlan_is_counted_below(self):
        THE_WORLD.add_cable_profile("Home Line")
        w.run("nmcli", "connection", "add", "type", "macvlan", "con-name", "Upper", "ifname", "mv0", "dev", "v0", "mode",
              "bridge", "autoconnect", "no", "ipv4.method", "manual", "ipv4.addresses", "192.0.2.9/24", "ipv6.method",
              "disabled")
        self.recorder()
        self.bring_up("Home Line", "v0")
        THE_WORLD.up("Upper")
        transfer("v0", up=MB)
        THE_WORLD.down("Upper")
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assertEqual(record["profile"], "Home Line")

    def test_links_that_others_bring_up(self):
        recorder = self.recorder()
        w.run("ip", "link", "set", "v0", "up")
        w.run("ip", "addr", "add", "192.0.2.2/24", "dev", "v0")
        wait(lambda: "v0:connected (externally)" in w.run("nmcli", "-t", "-f", "DEVICE,STATE", "device"), "an external link")
        THE_WORLD.add_cable_profile("Home Line", interface="wwan0")
        self.bring_up("Home Line", "wwan0")
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assertEqual(record["profile"], "Home Line")
        w.run("ip", "addr", "flush", "dev", "v0")
        w.run("ip", "link", "set", "v0", "down")
        self.assertEqual(self.history.open_rows(), [])
        self.assertIsNone(recorder.process.poll())


class Mobile(Case):
    """A modem: a real profile with an access point name, and the ends that only a modem has."""

    @classmethod
    def setUpClass(cls):
        THE_WORLD.start_modem()

    @classmethod
    def tearDownClass(cls):
        w.stop(THE_WORLD.modem)
        wait(lambda: "gsm" not in w.run("nmcli", "-t", "-f", "TYPE", "device"), "the modem goes")

    def setUp(self):
        super().setUp()
        THE_WORLD.wait_for_modem()
        THE_WORLD.add_mobile_profile("Web Mobile", "internet.example")

    def check_end(self, end, reason, plug_again=False, quality="exact"):
        self.recorder()
        start = self.bring_up("Web Mobile", "wwan0")
        (row,) = self.history.open_rows()
        self.assertEqual((row["type"], row["interface"]), ("gsm", "wwan0"))
        transfer("wwan0", up=SOME, down=MB)
        end()
        (record,) = self.history.wait_for_records(1)
        if plug_again:
            THE_WORLD.tell_modem("Plug")
        self.assert_bytes(record, start, kernel("wwan0"))
        self.assertEqual((record["profile"], record["profileName"]), ("internet.example", "Web Mobile"))
        self.assertEqual((record["reason"], record["quality"]), (reason, quality))

    def test_user_disconnects(self):
        self.check_end(lambda: THE_WORLD.down("Web Mobile"), "user")

    def test_network_drops_it(self):
        self.check_end(lambda: THE_WORLD.tell_modem("NetworkDrop"), "network")

    def test_dongle_pulled(self):
        self.check_end(lambda: THE_WORLD.tell_modem("Unplug"), "unplugged", plug_again=True)

    def test_manager_ended(self):
        self.check_end(THE_WORLD.stop_manager, "unknown")
        THE_WORLD.start_manager()

    def test_manager_killed(self):
        def kill_and_start():
            THE_WORLD.stop_manager(signal.SIGKILL)
            THE_WORLD.start_manager()

        # It does not take a modem's session over: nobody saw the end, but the link kept its counters.
        self.check_end(kill_and_start, "unknown", quality="recovered")

    def test_link_made_for_the_connection_counts_from_its_first_byte(self):
        make = (f"ip link del wwan0; ip link add wwan0 type veth peer name p-wwan0 netns {w.PEER};"
                f"nsenter -t {w.PEER} -n ip addr add 198.51.100.1/24 dev p-wwan0;"
                f"nsenter -t {w.PEER} -n ip link set p-wwan0 up; ip link set wwan0 up")
        THE_WORLD.tell_modem("OnConnect", make)
        self.recorder()
        try:
            THE_WORLD.up("Web Mobile")
        finally:
            THE_WORLD.tell_modem("OnConnect", "")
        transfer("wwan0", up=MB)
        THE_WORLD.down("Web Mobile")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, (0, 0), kernel("wwan0"))


class Sleep(Case):
    """The machine sleeps."""

    @classmethod
    def setUpClass(cls):
        THE_WORLD.start_login()
        # The service looks for the login service when it starts.
        THE_WORLD.stop_manager()
        THE_WORLD.start_manager()
        THE_WORLD.start_modem()

    @classmethod
    def tearDownClass(cls):
        w.stop(THE_WORLD.modem)
        w.stop(THE_WORLD.login)

    def tearDown(self):
        THE_WORLD.prepare_for_sleep(False)
        super().tearDown()

    def test_modem_is_taken_down_before(self):
        THE_WORLD.add_mobile_profile("Web Mobile", "internet.example")
        self.recorder()
        start = self.bring_up("Web Mobile", "wwan0")
        transfer("wwan0", up=SOME)
        THE_WORLD.prepare_for_sleep(True)
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("wwan0"))
        self.assertEqual(record["reason"], "sleep")

    def test_link_that_stays_up_has_a_checkpoint_before(self):
        THE_WORLD.add_cable_profile("Home Line")
        self.window(sample_ms=3_600_000).wait_until_recording()  # so that no ordinary checkpoint comes between
        start = self.bring_up("Home Line", "v0")
        transfer("v0", up=SOME)
        asleep = kernel("v0")
        THE_WORLD.prepare_for_sleep(True)
        wait(lambda: [row for row in self.history.open_rows() if (row["tx"], row["rx"]) == asleep], "a checkpoint")
        THE_WORLD.prepare_for_sleep(False)
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("v0"))

    def test_sleep_is_asked_to_wait_and_let_go(self):
        self.recorder()

        def held():
            listed = w.dbus.Interface(THE_WORLD.bus.get_object("org.freedesktop.login1", "/org/freedesktop/login1"),
                                      "org.freedesktop.login1.Manager").ListInhibitors()
            return any("netinfo-recorder" in [str(part) for part in one] for one in listed)

        wait(held, "an inhibitor")
        THE_WORLD.prepare_for_sleep(True)
        wait(lambda: not held(), "the inhibitor is let go")
        THE_WORLD.prepare_for_sleep(False)
        wait(held, "an inhibitor for the next time")


class Trouble(Case):
    """What keeps the recorder from recording is said, and it goes on by itself when the reason goes."""

    def setUp(self):
        super().setUp()
        THE_WORLD.add_cable_profile("Home Line")

    def test_without_network_manager(self):
        THE_WORLD.stop_manager()
        try:
            recorder = self.recorder(ready=False)
            recorder.wait_for_line("Connections are not recorded: NetworkManager is not running")
        finally:
            THE_WORLD.start_manager()
        recorder.wait_for_line("recording; ")
        start = self.bring_up("Home Line", "v0")
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("v0"))

    def test_without_system_bus(self):
        path = w.WORLD + "/late-bus"
        environment = dict(os.environ, DBUS_SYSTEM_BUS_ADDRESS="unix:path=" + path)
        recorder = self.recorder(ready=False, environment=environment)
        recorder.wait_for_line("Connections are not recorded: there is no system bus")
        bus = w.start_bus(path)
        try:
            recorder.wait_for_line("NetworkManager is not running")
        finally:
            w.stop(bus, signal.SIGKILL)
        wait(lambda: sum("there is no system bus" in line for line in recorder.lines()) >= 2, "the bus is missed again")

    def test_history_that_cannot_be_written(self):
        folder = self.history.folder
        with open(folder, "w") as file:
            file.write("in the way")
        recorder = self.recorder(ready=False)
        recorder.wait_for_line("Connections are not recorded: the history cannot be written")
        os.unlink(folder)
        recorder.wait_for_line("recording; ")
        self.bring_up("Home Line", "v0")
        THE_WORLD.down("Home Line")
        self.history.wait_for_records(1)

    def test_arguments(self):
        for arguments, status, text in ((["--version"], 0, "netinfo-recorder"), (["--help"], 0, "--history"),
                                        (["extra"], 1, 'unexpected argument "extra"'), (["--nonsense"], 1, "nonsense")):
            program = Program(w.RECORDER, *arguments)
            self.programs.append(program)
            self.assertEqual(program.process.wait(5), status, arguments)
            self.assertIn(text, "\n".join(program.lines()))

    def test_leaves_the_terminal(self):
        self.assertEqual(w.run(w.RECORDER, "--history", self.history.path).count("history:"), 1)
        # The program that was started has ended with success; the one that records goes on.
        start = self.bring_up("Home Line", "v0")
        second = self.recorder(ready=False)
        second.wait_for_line("another recorder is at work already")
        with open(self.history.path + ".recorder") as file:
            process = int(file.read())
        os.kill(process, signal.SIGTERM)
        wait(lambda: not os.path.exists(f"/proc/{process}"), "the process in the background ends")
        self.recorder()
        THE_WORLD.down("Home Line")
        (record,) = self.history.wait_for_records(1)
        self.assert_bytes(record, start, kernel("v0"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
