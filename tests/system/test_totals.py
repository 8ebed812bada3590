"""The monthly totals on a real display, on a day in August: each month and profile by mouse and keyboard against the
records in the file, opening again, and the change of language. Pictures are taken for people to look at."""

import datetime
import os
import unittest

from harness.desktop import Desktop
from harness.history import History, duration
from harness.host import Host
from harness.layout import faults
from harness.texts import text
from harness.waiting import wait_until

# The clock is loaded before the address sanitizer, where there is one: the other way round the two wait for each other.
TODAY = {'LD_PRELOAD': os.environ['NETINFO_FAKETIME_LIBRARY'], 'FAKETIME': '2026-08-15 12:00:00',
         'FAKETIME_DONT_FAKE_MONOTONIC': '1', 'NO_FAKE_STAT': '1',
         # A sanitizer's library is then not the first one any more, which is fine.
         'ASAN_OPTIONS': os.environ.get('ASAN_OPTIONS', '') + ':verify_asan_link_order=0'}
MONTHS = ['2026-08', '2026-07', '2026-06']
MONTH_KEYS = ['IDS_COMBO_THISMONTH', 'IDS_COMBO_LASTMONTH', 'IDS_COMBO_BEFORELASTMONTH']
RANGES = ['01/08/2026 - 31/08/2026', '01/07/2026 - 31/07/2026', '01/06/2026 - 30/06/2026']
MB = 1 << 20
RECORDS = [('internet.example', '2026-08-01T00:00:00Z', 3725, 3 * MB, 70 * MB),
           ('internet.example', '2026-08-14T09:30:00Z', 80000, 5 * MB + 5000, 11 * MB),
           ('work.example', '2026-08-02T10:00:00Z', 61, MB // 2, MB // 3),
           ('internet.example', '2026-07-31T23:59:59Z', 100, 7 * MB, 13 * MB),
           ('spare.example', '2026-07-01T00:00:00Z', 200, 17 * MB, 19 * MB),
           ('work.example', '2026-06-15T12:00:00Z', 300, 23 * MB, 29 * MB),
           ('work.example', '2026-05-31T23:59:59Z', 400, 31 * MB, 37 * MB)]


class Totals(unittest.TestCase):

    def start(self, language='en'):
        self.language = language
        self.desktop = self.enterContext(Desktop())
        self.history = History(self.desktop)
        for record in RECORDS:
            self.history.add_one(*record)
        self.host = self.enterContext(Host(self.desktop, '--trace', language=language, environment=TODAY))

    def text(self, key):
        return text(key, self.language)

    # -- steps ---------------------------------------------------------------------------------------------------

    def title(self, month=0):
        return f'{self.text("IDS_TITLE_TOTAL")} ( {RANGES[month]} ) '

    def open(self):
        bar = self.host.wait_for(self.host.main_window, 'the window').find(kind='QMenuBar')
        self.host.click_entry(bar, self.text('IDS_HOST_MENU_TOOLS'))
        menu = self.host.wait_for(self.host.menu, 'the menu')
        self.host.click_entry(menu, self.text('IDS_MENU_MONTHLYTOTALS'))
        return self.host.wait_for_window(self.title())

    def window(self):
        """The open window, whatever month its title names."""
        for window in self.host.windows():
            if window.title.startswith(self.text('IDS_TITLE_TOTAL')):
                return window
        raise LookupError('no window with monthly totals')

    def combo(self, name):
        return self.host.wait_for(lambda: self.window().find(name=name), name)

    def pick(self, name, entry):
        """With the mouse, from the opened list."""
        self.host.click(self.combo(name))
        entries = self.host.wait_for(lambda: self.host.menu().find(kind='QComboBoxListView'), 'the list')
        self.assertIn(entry, [item['text'] for item in entries.entries])
        self.host.click_entry(entries, entry)
        wait_until(lambda: self.window().find(name=name).text == entry, f'{entry} to be chosen')

    def focus(self, name):
        for _ in range(6):
            if self.combo(name).focus:
                return
            before = [widget.name for widget in self.window().everything() if widget.focus]
            self.host.press('Tab')
            wait_until(lambda: [widget.name for widget in self.window().everything() if widget.focus] != before,
                       'the focus to move')
        self.fail(f'{name} is not reached with Tab')

    def press_until(self, name, key, entry):
        """With the keyboard, one step."""
        self.host.press(key)
        wait_until(lambda: self.combo(name).text == entry, f'{entry} to be chosen by {key}')

    def figures(self):
        """The window's captions and values, row by row."""
        labels = [label for label in self.window().find(name='m_pStatisticsGrp').find_all(kind='QLabel')]
        by_row = {}
        for label in sorted(labels, key=lambda label: label.rect[0]):
            by_row.setdefault(label.centre[1], []).append(label.text)
        return [by_row[row] for row in sorted(by_row)]

    def expected(self, month, profile=None):
        """The same from the records in the file."""
        chosen = [record for record in self.history.records() if record['start'].startswith(MONTHS[month])
                  and profile in (None, record['profile'])]
        sums = {name: sum(record[name] for record in chosen)
                for name in ('bytes_uploaded', 'bytes_downloaded', 'connected_seconds')}
        unit = self.text('IDS_STC_SINGLEPACKET_UNIT')
        return [[self.text('IDS_TREE_UPLOADED_DATA'), f'{sums["bytes_uploaded"] / MB:.2f} {unit}'],
                [self.text('IDS_TREE_DOWNLOADED_DATA'), f'{sums["bytes_downloaded"] / MB:.2f} {unit}'],
                [self.text('IDS_TREE_TIME_TRANSFER'), duration(sums['connected_seconds'])]]

    def wait_for_figures(self, month, profile=None):
        expected = self.expected(month, profile)
        wait_until(lambda: self.figures() == expected, f'{expected} to be shown')
        self.assertEqual(self.window().title, self.title(month))

    def profiles(self, month):
        return sorted({record['profile'] for record in self.history.records()
                       if record['start'].startswith(MONTHS[month])})

    def ok(self):
        self.host.click(self.window().find(kind='QPushButton', text=self.text('IDS_BTN_OK')))
        self.wait_until_closed()

    def wait_until_closed(self):
        wait_until(lambda: not [window for window in self.host.windows()
                                if window.title.startswith(self.text('IDS_TITLE_TOTAL'))], 'the window to close')

    def runs(self, function):
        """How often a slot has run, as the trace tells."""
        return sum(line.startswith('Enter:') and f' {function}:' in line for line in self.host.log().splitlines())

    # -- what a user does ----------------------------------------------------------------------------------------

    def test_every_month_and_profile_with_the_mouse(self):
        self.start()
        self.open()
        self.wait_for_figures(0)
        for month, key in enumerate(MONTH_KEYS):
            self.pick('m_pMonthSelectionComboBox', text(key))
            self.wait_for_figures(month)
            for profile in self.profiles(month):
                self.pick('m_pProfileSelectionComboBox', profile)
                self.wait_for_figures(month, profile)
        self.ok()

    def test_every_month_and_profile_with_the_keyboard(self):
        self.start()
        self.open()
        for month, key in enumerate(MONTH_KEYS):
            if month:
                self.focus('m_pMonthSelectionComboBox')
                self.press_until('m_pMonthSelectionComboBox', 'Down', text(key))
            self.wait_for_figures(month)
            self.focus('m_pProfileSelectionComboBox')
            for profile in self.profiles(month):
                self.press_until('m_pProfileSelectionComboBox', 'Down', profile)
                self.wait_for_figures(month, profile)
        self.host.press('Escape')
        self.wait_until_closed()

    def test_opening_again_doubles_nothing(self):
        self.start()
        close = [self.ok, lambda: (self.host.press('Escape'), self.wait_until_closed()),
                 lambda: (self.desktop.click(*self.desktop.close_button(int(self.window().id))),
                          self.wait_until_closed())]
        for way in close:
            self.open()
            self.wait_for_figures(0)
            before = self.runs('onSelectComboItemOfTime')
            self.pick('m_pMonthSelectionComboBox', text('IDS_COMBO_LASTMONTH'))
            self.wait_for_figures(1)
            self.assertEqual(self.runs('onSelectComboItemOfTime') - before, 1)
            before = self.runs('onSelectComboItemOfProfile')
            self.pick('m_pProfileSelectionComboBox', 'spare.example')
            self.wait_for_figures(1, 'spare.example')
            self.assertEqual(self.runs('onSelectComboItemOfProfile') - before, 1)
            way()

    def test_records_added_meanwhile_are_there_on_opening(self):
        self.start()
        self.open()
        self.ok()
        self.history.add_one('new.example', '2026-08-15T08:00:00Z', 60, MB, MB)
        self.open()
        self.wait_for_figures(0)
        self.pick('m_pProfileSelectionComboBox', 'new.example')
        self.wait_for_figures(0, 'new.example')

    def test_language_change(self):
        self.start()
        self.open()
        self.take_pictures()
        self.ok()
        pages = self.host.wait_for(self.host.main_window, 'the window').find(name='Navigation')
        self.host.click_entry(pages, text('IDS_HOST_PAGE_SETTINGS'))
        self.host.click(self.host.wait_for(lambda: self.host.main_window().find(name='Language'), 'the choice'))
        languages = self.host.wait_for(lambda: self.host.menu().find(kind='QComboBoxListView'), 'the list')
        self.host.click_entry(languages, 'Deutsch')
        self.language = 'de'
        wait_until(lambda: self.text('IDS_HOST_APP_NAME') in self.desktop.windows().values(), 'the German window')
        self.open()
        self.take_pictures()
        self.wait_for_figures(0)
        self.pick('m_pMonthSelectionComboBox', self.text('IDS_COMBO_BEFORELASTMONTH'))
        self.wait_for_figures(2)
        self.ok()

    def take_pictures(self):
        self.desktop.screenshot(f'totals-{self.language}')
        self.assertEqual(faults(self.window()), [])

    def test_usage_page(self):
        for language in ('en', 'de'):
            with self.subTest(language):
                self.start(language)
                pages = self.host.wait_for(self.host.main_window, 'the window').find(name='Navigation')
                self.host.click_entry(pages, self.text('IDS_HOST_PAGE_USAGE'))
                page = self.host.wait_for(lambda: self.host.main_window().find(name='UsageChart'), 'the chart')
                self.host.click(page)
                wait_until(lambda: 'IDS' not in self.host.main_window().find(name='UsageDay').text
                           and '2026' in self.host.main_window().find(name='UsageDay').text, 'the day that was clicked')
                shown = {name: self.host.main_window().find(name=name).text
                         for name in ('UsageDownloaded', 'UsageUploaded', 'UsageTime', 'UsageConnections')}
                self.assertEqual(shown, {'UsageDownloaded': '81.33 MB', 'UsageUploaded': '8.50 MB',
                                         'UsageTime': '23:16:26', 'UsageConnections': '3'})
                self.desktop.screenshot(f'usage-{language}')
                self.assertEqual(faults(self.host.main_window()), [])
                self.doCleanups()


if __name__ == '__main__':
    unittest.main()
