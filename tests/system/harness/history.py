"""The history file behind the host, seen and changed by the command-line tool as another process would."""

import datetime
import json
import os
import pathlib
import subprocess

PROGRAM = pathlib.Path(os.environ['NETINFO_BIN_DIR']) / 'netinfo-records'


class History:
    """The history of a desktop's user."""

    def __init__(self, desktop):
        self._environment = desktop.environment
        self._start = datetime.datetime(2026, 3, 2, 8, 0, 0)

    def _run(self, *arguments):
        done = subprocess.run([PROGRAM, *arguments], env=self._environment, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, timeout=60)
        if done.returncode:
            raise AssertionError(f'netinfo-records {" ".join(arguments)} ended with {done.returncode}: {done.stderr}')
        return done.stdout

    def add(self, *profiles):
        """Adds a connection of each of these profiles, with times and amounts that no other one has."""
        for profile in profiles:
            self._start += datetime.timedelta(hours=7, minutes=3, seconds=5)
            seconds = self._start.hour * 97 + self._start.minute
            self._run('add', '--profile', profile, '--start', self._start.strftime('%Y-%m-%dT%H:%M:%SZ'),
                      '--duration', str(seconds), '--uploaded', str(seconds * 1711), '--downloaded',
                      str(seconds * 900001))

    def add_one(self, profile, start, seconds, uploaded, downloaded):
        """Adds a connection with these figures; `start` such as '2026-08-15T12:00:00Z', amounts in bytes."""
        self._run('add', '--profile', profile, '--start', start, '--duration', str(seconds), '--uploaded',
                  str(uploaded), '--downloaded', str(downloaded))

    def remove(self, key):
        self._run('remove', str(key), '--yes')

    def records(self):
        """What is in the file: a list of dictionaries in the order of adding."""
        return json.loads(self._run('list', '--json'))

    def profiles(self):
        return [record['profile'] for record in self.records()]

    def shown(self):
        """What the history page has to show for the file as it is now: the rows' values, dates as date-times."""
        return [values(record) for record in self.records()]


def values(record):
    """The six values of a record's row."""
    return [record['profile'], moment(record['start']), moment(record['end']), duration(record['connected_seconds']),
            amount(record['bytes_uploaded']), amount(record['bytes_downloaded'])]


def moment(text):
    return datetime.datetime.fromisoformat(text.replace('Z', '+00:00')).replace(tzinfo=None)


def duration(seconds):
    """As the page shows it: a time of day, which begins anew after 24 hours."""
    return str(datetime.timedelta(seconds=seconds % 86400)).rjust(8, '0')


def amount(size):
    if size >= 1 << 30:
        return '%.2f GB' % (size / (1 << 30))
    if size >= 1 << 20:
        return '%.2f MB' % (size / (1 << 20))
    return '%.2f KB' % (size / 1024)
