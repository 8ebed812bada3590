"""What the recorder costs while it waits and while one connection is up: processor time, memory, wake-ups. Run inside
tests/system/recorder/in-namespaces, see cost.sh. Exit status 1 when a bound is exceeded."""
import argparse
import os
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../tests/system/recorder"))
import world as w  # noqa: E402

CPU_PERCENT = 0.1
RESIDENT_MIB = 20.0
WAKES_PER_SECOND_UP = 1.5  # one for the clock tick; the rest is what the network service has to say
WAKES_PER_SECOND_IDLE = 0.2


def threads(pid):
    return [f"/proc/{pid}/task/{thread}" for thread in os.listdir(f"/proc/{pid}/task")]


def field(path, name):
    with open(path) as file:
        return next(int(line.split()[1]) for line in file if line.startswith(name + ":"))


def first_number(path):
    with open(path) as file:
        return int(file.read().split()[0])


def look(pid):
    """Processor time in seconds to the nanosecond, and how often a thread went to sleep, over all threads."""
    return (time.monotonic(), sum(first_number(thread + "/schedstat") for thread in threads(pid)) / 1e9,
            sum(field(thread + "/status", "voluntary_ctxt_switches") for thread in threads(pid)))


def measure(pid, seconds):
    """Per cent of one core, and wake-ups a second, over a while."""
    begin = look(pid)
    time.sleep(seconds)
    end = look(pid)
    lasted = end[0] - begin[0]
    return 100 * (end[1] - begin[1]) / lasted, (end[2] - begin[2]) / lasted


def resident(pid):
    """MiB resident (Rss), and MiB of it that are the process's own share (Pss)."""
    rollup = f"/proc/{pid}/smaps_rollup"
    return field(rollup, "Rss") / 1024, field(rollup, "Pss") / 1024


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--seconds", type=float, default=600, help="with one connection up (default: ten minutes)")
    parser.add_argument("--idle-seconds", type=float, default=10, help="with none")
    arguments = parser.parse_args()
    world = w.World()
    world.add_cable_profile("Home Line")
    history = w.History()
    recorder = w.Recorder(history)
    pid = recorder.process.pid
    idle_cpu, idle_wakes = measure(pid, arguments.idle_seconds)
    world.up("Home Line")
    history.wait_for_open()
    w.transfer("v0", up=3_000_000, down=3_000_000)
    cpu, wakes = measure(pid, arguments.seconds)
    rss, pss = resident(pid)
    world.down("Home Line")
    history.wait_for_records(1)
    recorder.end()
    world.end()
    figures = [("processor, connection up", cpu, CPU_PERCENT, "% of a core"),
               ("processor, waiting", idle_cpu, CPU_PERCENT, "% of a core"),
               ("wake-ups, connection up", wakes, WAKES_PER_SECOND_UP, "a second"),
               ("wake-ups, waiting", idle_wakes, WAKES_PER_SECOND_IDLE, "a second"),
               ("resident memory (Rss)", rss, RESIDENT_MIB, "MiB")]
    print(f"measured over {arguments.seconds:g} s with one connection up, {arguments.idle_seconds:g} s with none")
    for what, figure, bound, unit in figures:
        print(f"{what:26} {figure:9.4f}  at most {bound:5.1f} {unit}{'' if figure <= bound else '   EXCEEDED'}")
    print(f"{'own share of it (Pss)':26} {pss:9.4f}                MiB")
    return int(any(figure > bound for _, figure, bound, _ in figures))


sys.exit(main())
