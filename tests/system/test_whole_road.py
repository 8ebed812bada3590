"""The whole road once: the real NetworkManager brings a connection up and down, the host shows it. Run inside
recorder/in-namespaces, so that nothing touches the machine's own network."""

import os
import pathlib
import random
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent / 'recorder'))
import world as w

from harness.desktop import Desktop
from harness.history import History, values
from harness.host import Host
from harness.texts import text
from harness.waiting import wait_until

BOX = text('IDS_TITLE_SINGLE')
RECORDING = text('IDS_HOST_STATUS_RECORDING').replace('%1', 'internet.example')


class WholeRoad(unittest.TestCase):

    @classmethod
    def setUpClass(cls):
        cls.world = w.World()
        cls.addClassCleanup(cls.world.end)
        cls.world.start_modem()

    def setUp(self):
        self.addCleanup(self.world.forget_profiles)
        self.world.add_mobile_profile('Web Mobile', 'internet.example')
        self.desktop = self.enterContext(Desktop(display=random.randrange(1000, 30000)))
        self.history = History(self.desktop)

    def open_host(self):
        system_bus = {'DBUS_SYSTEM_BUS_ADDRESS': os.environ['DBUS_SYSTEM_BUS_ADDRESS']}
        return self.enterContext(Host(self.desktop, environment=system_bus))

    def wait_for_status(self, host, line):
        def shown():
            return [label.text for label in host.main_window().find(kind='QStatusBar').find_all(kind='StatusLine')]
        wait_until(lambda: shown() == [line], f'the status line {line!r}; it is {shown()!r}')

    def assert_shown(self, host, earliest, latest):
        """The box and the page show the file's figures, and those are what the kernel has counted since a moment
        between `earliest` and `latest`: while a link comes up, it carries a few bytes of its own."""
        box = host.wait_for_window(BOX)
        (record,) = self.history.records()
        self.assertEqual(record['profile'], 'internet.example')
        for name, now, first, last in zip(('bytes_uploaded', 'bytes_downloaded'), w.kernel('wwan0'), earliest, latest):
            self.assertTrue(now - last <= record[name] <= now - first, f'{now - last} <= {record} <= {now - first}')
        labels = [label.text for label in box.find_all(kind='QLabel')]
        for figure in values(record)[3:]:
            self.assertIn(figure, labels)
        host.wait_until_shown(self.history)
        return box

    def test_session_up_and_down_under_an_open_host(self):
        host = self.open_host()
        self.wait_for_status(host, '')
        before = w.kernel('wwan0')
        self.world.up('Web Mobile')
        self.wait_for_status(host, RECORDING)
        after = w.kernel('wwan0')
        w.transfer('wwan0', up=3_000_000, down=5_000_000)
        self.world.down('Web Mobile')

        box = self.assert_shown(host, before, after)
        self.desktop.screenshot('whole-road')
        host.click(box.find(kind='QPushButton', text=text('IDS_BTN_OK')))
        host.wait_until_gone(BOX)
        self.wait_for_status(host, '')

    def test_host_opened_while_a_session_is_up(self):
        self.world.up('Web Mobile')
        host = self.open_host()
        self.wait_for_status(host, RECORDING)
        start = w.kernel('wwan0')
        w.transfer('wwan0', up=100_000, down=2_000_000)
        self.world.down('Web Mobile')
        self.assert_shown(host, start, start)

    def test_status_line_says_why_nothing_is_recorded(self):
        host = self.open_host()
        self.wait_for_status(host, '')
        self.world.stop_manager()
        self.wait_for_status(host, text('IDS_HOST_STATUS_NO_NETWORK_MANAGER'))
        self.world.start_manager()
        self.wait_for_status(host, '')


if __name__ == '__main__':
    unittest.main()
