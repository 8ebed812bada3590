"""A desktop of the test's own: X server, window manager, session bus and home, all gone when the test ends."""

import os
import pathlib
import shutil
import subprocess
import tempfile

from .waiting import wait_until

TOOLS = {'Xvfb': 'xvfb', 'openbox': 'openbox', 'xdotool': 'xdotool', 'xprop': 'x11-utils', 'xwininfo': 'x11-utils',
         'import': 'imagemagick', 'dbus-daemon': 'dbus', 'setpriv': 'util-linux'}
HERE = pathlib.Path(__file__).resolve().parent
BUILD = pathlib.Path(os.environ['NETINFO_BUILD_DIR'])
SCREENSHOTS = BUILD / 'screenshots'


class Desktop:
    """Use as a context manager. `environment` is what a program on this desktop runs with. Without a `display` number
    the X server finds a free one; in a process namespace of its own it cannot, since it would take the locks of
    servers outside for those of dead ones."""

    def __init__(self, width=1280, height=900, display=None):
        self.size = (width, height)
        self._display = [] if display is None else [f':{display}']
        self.root = None
        self.environment = {}
        self._children = []

    def __enter__(self):
        missing = sorted({package for tool, package in TOOLS.items() if not shutil.which(tool)})
        if missing:
            raise RuntimeError('These tests need the Debian packages ' + ', '.join(missing))
        self.root = pathlib.Path(tempfile.mkdtemp(prefix='netinfo-desktop-'))
        try:
            self._make_home()
            self.environment['DISPLAY'] = ':' + self._start_answering(
                ['Xvfb', *self._display, '-displayfd', '{fd}', '-screen', '0', '%dx%dx24' % self.size, '-nolisten',
                 'tcp', '-noreset'])
            self.environment['DBUS_SESSION_BUS_ADDRESS'] = self._start_answering(
                ['dbus-daemon', '--session', '--nofork', '--nopidfile', '--print-address={fd}'])
            self._start_window_manager()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for child in reversed(self._children):
            child.terminate()
            child.wait()
        shutil.rmtree(self.root, ignore_errors=True)

    def _make_home(self):
        self.environment = {name: value for name, value in os.environ.items()
                            if not name.startswith(('XDG_', 'DBUS_', 'WAYLAND_', 'QT_', 'NETINFO_HISTORY', 'LC_'))}
        folders = {'HOME': '', 'XDG_CONFIG_HOME': 'config', 'XDG_DATA_HOME': 'data', 'XDG_CACHE_HOME': 'cache',
                   'XDG_RUNTIME_DIR': 'run'}
        for variable, folder in folders.items():
            path = self.root / folder
            path.mkdir(mode=0o700, exist_ok=True)
            self.environment[variable] = str(path)
        self.environment.update(
            QT_QPA_PLATFORM='xcb', LANG='C.UTF-8', LC_ALL='C.UTF-8', TZ='UTC', NO_AT_BRIDGE='1',
            # Nothing of the machine's own system bus may reach a test.
            DBUS_SYSTEM_BUS_ADDRESS=f'unix:path={self.root}/no-system-bus')

    def start(self, command, **how):
        """Starts a child that dies with this process and with the desktop. `how` goes to subprocess.Popen."""
        how.setdefault('env', self.environment)
        child = subprocess.Popen(['setpriv', '--pdeathsig', 'KILL', *command], stdin=subprocess.DEVNULL, **how)
        self._children.append(child)
        return child

    def forget(self, child):
        """For a child that its starter has already waited for."""
        self._children.remove(child)

    def _start_answering(self, command):
        """Starts a child that writes one line to a descriptor of ours once it is ready, and returns the line."""
        reader, writer = os.pipe()
        log = open(self.root / (command[0] + '.log'), 'w')
        with log:
            self.start([part.format(fd=writer) for part in command], pass_fds=[writer], stdout=log, stderr=log)
        os.close(writer)
        with os.fdopen(reader) as answer:
            line = answer.readline().strip()
        if not line:
            raise RuntimeError(f'{command[0]} did not start: ' + pathlib.Path(log.name).read_text())
        return line

    def _start_window_manager(self):
        with open(self.root / 'openbox.log', 'w') as log:
            self.start(['openbox', '--sm-disable', '--config-file', str(HERE / 'openbox.xml')], stdout=log, stderr=log)
        wait_until(lambda: 'window id' in self.run('xprop', '-root', '_NET_SUPPORTING_WM_CHECK'), 'the window manager')

    def run(self, *command):
        """Runs a tool on this desktop and returns what it printed."""
        done = subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              timeout=60)
        if done.returncode:
            raise AssertionError(f'{" ".join(command)} ended with {done.returncode}: {done.stderr}')
        return done.stdout

    # -- a user's hands ------------------------------------------------------------------------------------------

    def click(self, x, y, button=1, modifier=None):
        """Moves the pointer there and clicks; `modifier` (such as 'ctrl') is held down meanwhile."""
        held = ['keydown', modifier] if modifier else []
        released = ['keyup', modifier] if modifier else []
        self.run('xdotool', 'mousemove', '--sync', str(x), str(y), *held, 'click', str(button), *released)

    def key(self, *keys):
        """Presses keys by their X names, such as 'Delete' or 'ctrl+a', one after the other."""
        self.run('xdotool', 'key', *keys)

    def windows(self):
        """Titles of the windows that the window manager shows, by window number."""
        listed = self.run('xprop', '-root', '_NET_CLIENT_LIST')
        numbers = [int(part, 16) for part in listed.partition('#')[2].split(',') if part.strip()]
        return {number: self.title(number) for number in numbers}

    def title(self, number):
        text = self.run('xprop', '-notype', '-id', str(number), '-f', '_NET_WM_NAME', '8u', '_NET_WM_NAME')
        return text.partition(' = ')[2].strip().strip('"')

    def close_button(self, number):
        """Where the window manager draws the close button of a window: at the right end of the title bar."""
        listed = self.run('xprop', '-notype', '-id', str(number), '_NET_FRAME_EXTENTS').partition('=')[2]
        _, right, top, _ = (int(part) for part in listed.split(','))
        x, y, width, _ = self.place(number)
        return x + width + right - top // 2, y - top // 2

    def place(self, number):
        """Where the display has a window's content: [x, y, width, height]."""
        geometry = {}
        for line in self.run('xwininfo', '-id', str(number)).splitlines():
            name, _, value = line.partition(':')
            geometry[name.strip()] = value.strip()
        return [int(geometry[name]) for name in
                ('Absolute upper-left X', 'Absolute upper-left Y', 'Width', 'Height')]

    def screenshot(self, name):
        """Saves the whole screen as build/<preset>/screenshots/<name>.png and returns the path."""
        SCREENSHOTS.mkdir(parents=True, exist_ok=True)
        path = SCREENSHOTS / f'{name}.png'
        self.run('import', '-silent', '-window', 'root', str(path))
        return path
