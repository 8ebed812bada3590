"""The host starts on a real display and shows what is in the history file."""

import unittest

from harness.desktop import Desktop
from harness.history import History
from harness.host import Host
from harness.layout import faults
from harness.texts import text


class Smoke(unittest.TestCase):

    def test_shows_the_history(self):
        with Desktop() as desktop:
            history = History(desktop)
            history.add('internet.example', 'Café Zürich', '東京モバイル')
            with Host(desktop) as host:
                self.assertEqual(host.shown(), history.shown())
                self.assertEqual(len(host.shown()), 3)
                self.assertIn(text('IDS_HOST_APP_NAME'), desktop.windows().values())
                self.assertEqual([column['text'] for column in host.table().columns],
                                 [text('IDS_LIST_' + name) for name in
                                  ('APN', 'STARTTIME', 'ENDTIME', 'CONNECTEDTIME', 'UPLOADED', 'DOWNLOADED')])
                self.assertEqual(faults(host.main_window()), [])
                desktop.screenshot('history-en')


if __name__ == '__main__':
    unittest.main()
