"""The real host on a test's desktop: started, looked at, used with mouse and keys, and stopped."""

import os
import pathlib
import signal
import subprocess
import time

from .history import moment
from .waiting import PATIENCE, wait_until
from .widgets import ask, centre

BUILD = pathlib.Path(os.environ['NETINFO_BUILD_DIR'])
PROGRAM = pathlib.Path(os.environ['NETINFO_BIN_DIR']) / 'netinfo-host'
TABLE = 'QTableWidget'


class Host:
    """Use as a context manager. Every look asks the program anew; nothing is remembered between looks."""

    def __init__(self, desktop, *arguments, language='en', summary=True, environment=None):
        self.desktop = desktop
        self.arguments = arguments
        self._probe = desktop.root / 'probe'
        self._log = desktop.root / 'host.log'
        self._settings = desktop.root / 'config' / 'netinfo' / 'netinfo.ini'
        self._language = language
        self._summary = summary
        self._environment = environment or {}
        self._process = None
        self._ask_again = {}

    def __enter__(self):
        self._settings.parent.mkdir(parents=True, exist_ok=True)
        self._settings.write_text(f'[Host]\nLanguage={self._language}\n\n[NetInfoRecordUIPlugin]\n'
                                  f'WhetherShowNotesbox={"true" if self._summary else "false"}\n')
        self._probe.unlink(missing_ok=True)
        environment = {**self.desktop.environment, **self._environment,
                       'QT_PLUGIN_PATH': str(BUILD / 'tests' / 'qtplugins'),
                       'QT_QPA_GENERIC_PLUGINS': f'netinfoprobe:{self._probe}'}
        with open(self._log, 'w') as log:
            self._process = self.desktop.start([str(PROGRAM), *self.arguments], env=environment, stdout=log,
                                               stderr=subprocess.STDOUT)
        try:
            self.wait_for(self._main_window_in_use, 'the history page in a window with the focus')
        except AssertionError as error:
            self.__exit__()
            raise AssertionError(f'{error}\nThe host said:\n{self.log()}') from None
        return self

    def __exit__(self, *_):
        if self._process.poll() is None:
            self._process.send_signal(signal.SIGTERM)
            try:
                self._process.wait(timeout=PATIENCE)
            except subprocess.TimeoutExpired:
                self._process.kill()
                self._process.wait()
        self.desktop.forget(self._process)

    def _main_window_in_use(self):
        """The main window with the history page, once the window manager has placed it and given it the focus."""
        window = self.main_window()
        window.find(kind=TABLE)
        return self._if_in_use(window)

    def _if_in_use(self, window):
        """The window if it has the focus and is on the display where the program believes it to be. On a busy machine
        the window manager may give a new window neither; then it is asked again after some seconds, as a user's click
        on a task bar would."""
        number = int(window.id)
        if number not in self.desktop.windows():
            return None
        is_placed = self.desktop.place(window.id) == window.rect
        if window.active and is_placed:
            return window
        if time.monotonic() > self._ask_again.setdefault(number, time.monotonic() + 5):
            del self._ask_again[number]
            move = [] if is_placed else ['windowmove', str(number), '60', '60']
            self.desktop.run('xdotool', *move, 'windowactivate', str(number))
        return None

    # -- looking -------------------------------------------------------------------------------------------------

    def log(self):
        """Everything that the host has written."""
        return self._log.read_text(errors='replace')

    def windows(self):
        if self._process.poll() is not None:
            raise AssertionError(f'The host ended with {self._process.returncode}:\n{self.log()}')
        return ask(self._probe)

    def main_window(self):
        """The main window, whichever page it shows."""
        for window in self.windows():
            if window.kind == 'MainWindow':
                return window
        raise LookupError('no main window')

    def settings(self):
        """The text of the settings file."""
        return self._settings.read_text()

    def table(self):
        return self.main_window().find(kind=TABLE)

    def shown(self):
        """The six values of each row of the table, dates as date-times; compare with History.shown()."""
        return [[name, moment(start), moment(end), *rest]
                for name, start, end, *rest in (row['values'] for row in self.table().rows)]

    def wait_until_shown(self, history):
        """Waits until the table shows what is in the file, no more and no less."""
        wait_until(lambda: self.shown() == history.shown(), 'the page to show what is in the file')

    def window(self, title):
        """The visible window of this title; LookupError when there is none."""
        for window in self.windows():
            if window.title == title:
                return window
        raise LookupError(f'no window {title!r}')

    def menu(self):
        """The open popup menu; LookupError when none is open."""
        for window in self.windows():
            if window.popup:
                return window
        raise LookupError('no menu is open')

    def wait_for(self, look, what):
        """Waits until look() finds something that has come to rest: twice the same, at the same place."""
        def resting():
            first = look()
            return first if first and vars_of(look()) == vars_of(first) else None
        return wait_until(resting, what)

    def wait_for_window(self, title):
        """Waits for a window that has the focus and is where it will stay."""
        def look():
            return self._if_in_use(self.window(title))
        return self.wait_for(look, f'an active window {title!r}')

    def wait_until_gone(self, title):
        wait_until(lambda: title not in [window.title for window in self.windows()], f'{title!r} to go')

    # -- using ---------------------------------------------------------------------------------------------------

    def click(self, widget, button=1, modifier=None):
        self.desktop.click(*widget.centre, button, modifier)

    def click_entry(self, menu, text):
        self.desktop.click(*centre(menu.entry(text)['rect']))

    def press(self, *keys):
        self.desktop.key(*keys)

    def select_rows(self, *rows):
        """Clicks the first of these rows, and the others with Ctrl held down, until exactly they are selected."""
        table = self.wait_for(self.table, 'the table')
        for count, row in enumerate(rows):
            x, y, _, height = table.rows[row]['rect']
            self.desktop.click(x + 20, y + height // 2, modifier='ctrl' if count else None)
            expected = sorted(rows[:count + 1])
            wait_until(lambda: self.selected_rows() == expected, f'rows {expected} to be selected')

    def selected_rows(self):
        return [number for number, row in enumerate(self.table().rows) if row['selected']]


def vars_of(widget):
    """All that is known of a widget, for comparing two looks."""
    return widget.data if hasattr(widget, 'data') else widget
