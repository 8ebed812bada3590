"""A small world for the recorder's tests, inside in-namespaces: buses, the real NetworkManager, stand-ins for the modem
and login services, the far end of two links, and the recorder's programs."""
import json
import os
import shutil
import signal
import socket
import struct
import subprocess
import time

import dbus
import dbus.bus

WORLD = os.environ["WORLD"]
PEER = os.environ["PEER"]
HERE = os.path.dirname(os.path.abspath(__file__))
RECORDER = os.path.join(os.environ["NETINFO_BIN_DIR"], "netinfo-recorder")
PROBE = os.path.join(os.environ["NETINFO_BUILD_DIR"], "tests", "bin", "recorder-probe")
PYTHON = "/usr/bin/python3"
PATIENCE = 20.0

BUS_CONFIG = """<busconfig><type>custom</type><listen>unix:path=%s</listen><auth>EXTERNAL</auth>
<policy context="default"><allow user="*"/><allow own="*"/><allow send_destination="*" eavesdrop="true"/>
<allow receive_sender="*" eavesdrop="true"/></policy></busconfig>
"""

NM_CONFIG = """[main]
plugins=keyfile
dns=none
rc-manager=unmanaged
systemd-resolved=false
auth-polkit=false
no-auto-default=*
hostname-mode=none
firewall-backend=none
[connectivity]
enabled=false
"""

FAKETIME = ["/usr/lib/x86_64-linux-gnu/faketime/libfaketimeMT.so.1",
            "/usr/lib/aarch64-linux-gnu/faketime/libfaketimeMT.so.1"]

LINKS = {"v0": "192.0.2", "wwan0": "198.51.100"}


def wait(condition, what, patience=PATIENCE):
    """The first true result of `condition`; fails when there is none in time."""
    deadline = time.monotonic() + patience
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > deadline:
            raise AssertionError(f"not within {patience:.0f} s: {what}")
        time.sleep(0.01)


def run(*command, check=True):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=60)
    if check and done.returncode != 0:
        raise AssertionError(f"{' '.join(command)}: {done.stdout}")
    return done.stdout


def start(*command, log, environment=None):
    with open(os.path.join(WORLD, log), "ab") as output:
        return subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output, stderr=output, env=environment)


def stop(process, how=signal.SIGTERM):
    if process and process.poll() is None:
        process.send_signal(how)
    if process:
        process.wait(PATIENCE)


def start_bus(path):
    config = path + ".conf"
    with open(config, "w") as file:
        file.write(BUS_CONFIG % path)
    daemon = start("dbus-daemon", "--config-file=" + config, "--nofork", "--nopidfile", log="bus.log")
    wait(lambda: os.path.exists(path), "the bus's socket")
    return daemon


def kernel(interface):
    """What the kernel has counted: (sent, received)."""

    def count(name):
        with open(f"/sys/class/net/{interface}/statistics/{name}") as file:
            return int(file.read())

    return count("tx_bytes"), count("rx_bytes")


def make_link(interface):
    network, peer = LINKS[interface], "p-" + interface
    run("ip", "link", "add", interface, "type", "veth", "peer", "name", peer, "netns", PEER)
    run("nsenter", "-t", PEER, "-n", "ip", "addr", "add", network + ".1/24", "dev", peer)
    run("nsenter", "-t", PEER, "-n", "ip", "link", "set", peer, "up")


def remove_link(interface):
    run("ip", "link", "del", interface)


def transfer(interface, up=0, down=0):
    """Sends and receives payload over the link; the kernel counts a little more."""
    with socket.create_connection((LINKS[interface] + ".1", 5001), timeout=PATIENCE) as connection:
        connection.sendall(struct.pack("!Q", down))
        connection.sendall(bytes(up))
        connection.shutdown(socket.SHUT_WR)
        left = down
        while left:
            left -= len(connection.recv(1 << 16)) or left
        assert connection.recv(1) == b"" or down == 0
    settle(interface)


def settle(interface):
    """Waits until the last acknowledgements have been counted."""
    last = [None, 0]

    def quiet():
        now = kernel(interface)
        last[1] = last[1] + 1 if now == last[0] else 0
        last[0] = now
        return last[1] >= 10

    wait(quiet, "silence on the link")


class World:
    """Starts what every test needs. Links: v0 for cable, wwan0 for the modem."""

    def __init__(self):
        self.system_bus_path = WORLD + "/system-bus"
        self.session_bus_path = WORLD + "/session-bus"
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=" + self.system_bus_path
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + self.session_bus_path
        os.environ["XDG_CONFIG_HOME"] = WORLD + "/config"
        self.processes = [start_bus(self.system_bus_path), start_bus(self.session_bus_path)]
        self.bus = dbus.bus.BusConnection(os.environ["DBUS_SYSTEM_BUS_ADDRESS"])
        far_end = subprocess.Popen(["nsenter", "-t", PEER, "-n", PYTHON, HERE + "/internet.py"],
                                   stdout=subprocess.PIPE, text=True)
        with far_end.stdout as output:
            output.readline()
        self.processes.append(far_end)
        for interface in LINKS:
            make_link(interface)
        self.manager = None
        self.modem = None
        self.login = None
        self.start_manager()

    def start_manager(self):
        config = WORLD + "/nm.conf"
        with open(config, "w") as file:
            file.write(NM_CONFIG)
        self.manager = start("NetworkManager", "--no-daemon", "--debug", "--config=" + config, "--log-level=INFO",
                             log="nm.log")
        wait(lambda: "running" in run("nmcli", "-t", "-f", "RUNNING", "general", check=False).split(),
             "NetworkManager answers")

    def stop_manager(self, how=signal.SIGTERM):
        stop(self.manager, how)

    def make_sure(self):
        """What a test that failed has left behind must not fail the next one."""
        if self.manager.poll() is not None:
            self.start_manager()
        for interface in LINKS:
            if not os.path.exists("/sys/class/net/" + interface):
                make_link(interface)

    def mock(self, service, path):
        return dbus.Interface(self.bus.get_object(service, path), "org.freedesktop.DBus.Mock")

    def start_modem(self):
        self.modem = start(PYTHON, "-m", "dbusmock", "--system", "-t", HERE + "/modem_service.py", log="modem.log")
        wait(lambda: self.bus.name_has_owner("org.freedesktop.ModemManager1"), "the modem service")
        self.tell_modem("Plug")
        self.wait_for_modem()

    def tell_modem(self, method, *arguments):
        getattr(self.mock("org.freedesktop.ModemManager1", "/org/freedesktop/ModemManager1"), method)(*arguments)

    def wait_for_modem(self):
        wait(lambda: "cdc-wdm0:gsm:disconnected" in run("nmcli", "-t", "-f", "DEVICE,TYPE,STATE", "device"),
             "NetworkManager has the modem")

    def start_login(self):
        self.login = start(PYTHON, "-m", "dbusmock", "--system", "--template", "logind", log="login.log")
        wait(lambda: self.bus.name_has_owner("org.freedesktop.login1"), "the login service")

    def prepare_for_sleep(self, before):
        self.mock("org.freedesktop.login1", "/org/freedesktop/login1").EmitSignal(
            "org.freedesktop.login1.Manager", "PrepareForSleep", "b", [before])

    def add_cable_profile(self, name, interface="v0", address=2):
        network = LINKS[interface]
        run("nmcli", "connection", "add", "type", "ethernet", "con-name", name, "ifname", interface, "autoconnect",
            "no", "ipv4.method", "manual", "ipv4.addresses", f"{network}.{address}/24", "ipv6.method", "disabled")

    def add_mobile_profile(self, name, apn):
        run("nmcli", "connection", "add", "type", "gsm", "con-name", name, "ifname", "*", "apn", apn, "autoconnect",
            "no")

    def up(self, name):
        run("nmcli", "connection", "up", name)

    def down(self, name):
        run("nmcli", "connection", "down", name)

    def forget_profiles(self):
        for line in run("nmcli", "-t", "-f", "UUID,TYPE", "connection").splitlines():
            uuid, kind = line.split(":")
            if kind != "loopback":
                run("nmcli", "connection", "delete", uuid, check=False)

    def manager_log(self):
        with open(WORLD + "/nm.log") as file:
            return file.read()

    def end(self):
        for process in [self.login, self.modem, self.manager] + self.processes[::-1]:
            stop(process, signal.SIGKILL)


class History:
    """A history file of one test."""

    count = 0

    def __init__(self):
        History.count += 1
        self.folder = f"{WORLD}/history-{History.count}"
        self.path = self.folder + "/history.sqlite"

    def read(self, kind):
        lines = run(PROBE, "records", self.path).splitlines()
        return [entry for entry in map(json.loads, lines) if entry["kind"] == kind]

    def records(self):
        return self.read("record")

    def open_rows(self):
        return self.read("open")

    def wait_for_records(self, count):
        return wait(lambda: (lambda found: found if len(found) >= count else None)(self.records()),
                    f"{count} records in {self.path}; there are {self.records()}")

    def wait_for_open(self, count=1):
        return wait(lambda: (lambda found: found if len(found) == count else None)(self.open_rows()),
                    f"{count} open rows")

    def remove(self):
        shutil.rmtree(self.folder, ignore_errors=True)


class Program:
    """A process whose lines of output can be waited for."""

    def __init__(self, *command, environment=None, count=[0]):
        count[0] += 1
        self.log = f"{WORLD}/program-{count[0]}.log"
        self.process = start(*command, log=os.path.basename(self.log), environment=environment)

    def lines(self):
        with open(self.log, errors="replace") as file:
            text = file.read()
        return text[:text.rfind("\n") + 1].splitlines()  # the last line may be half written

    def wait_for_line(self, part, patience=PATIENCE):
        return wait(lambda: [line for line in self.lines() if part in line] or self.fail_if_dead(part),
                    f'"{part}" in {self.log}: {self.lines()}', patience)

    def fail_if_dead(self, part):
        if self.process.poll() is not None and not any(part in line for line in self.lines()):
            raise AssertionError(f'ended with {self.process.returncode} without "{part}": {self.lines()}')

    def kill(self):
        stop(self.process, signal.SIGKILL)

    def end(self):
        stop(self.process)
        return self.process.returncode


class Recorder(Program):
    def __init__(self, history, ready=True, environment=None):
        super().__init__(RECORDER, "--foreground", "--history", history.path, environment=environment)
        if ready:
            self.wait_for_line("recording; ")


class Window(Program):
    """A program that listens to the recorder, or records while there is none."""

    def __init__(self, history, sample_ms=1000):
        super().__init__(PROBE, "client", history.path, str(sample_ms))

    def events(self, *kinds):
        return [event for event in map(json.loads, self.lines()) if event["event"] in kinds]

    def wait_for(self, kind, count=1):
        return wait(lambda: (lambda found: found if len(found) >= count else None)(self.events(kind)),
                    f"{count} {kind} in {self.lines()}")

    def wait_until_recording(self, here=True):
        wait(lambda: (self.events("status") or [{"here": None}])[-1]["here"] is here, "who records")
