"""The end of a connection on a real display: the box with its figures, the row in the table, and what silences both."""

import os
import pathlib
import socket
import tempfile
import unittest

from harness.desktop import Desktop
from harness.history import History, values
from harness.host import Host
from harness.texts import text
from harness.waiting import wait_until

BOX = text('IDS_TITLE_SINGLE')


class Summary(unittest.TestCase):

    def start(self, *arguments, **how):
        self.desktop = self.enterContext(Desktop())
        self.history = History(self.desktop)
        self.history.add('one.example', 'two.example')
        self.host = self.enterContext(Host(self.desktop, *arguments, **how))

    # -- steps ---------------------------------------------------------------------------------------------------

    def choose(self, menu, entry, language='en'):
        """Picks an entry of the menu bar's menu with the mouse."""
        bar = self.host.wait_for(self.host.main_window, 'the window').find(kind='QMenuBar')
        self.host.click_entry(bar, text(menu, language))
        self.host.click_entry(self.host.wait_for(self.host.menu, f'the menu {menu}'), entry)

    def simulate(self, seconds):
        self.choose('IDS_HOST_MENU_DEVELOPER', text('IDS_HOST_MENU_SIMULATE').replace('%1', str(seconds)))

    def open_settings(self):
        pages = self.host.wait_for(self.host.main_window, 'the window').find(name='Navigation')
        self.host.click_entry(pages, text('IDS_HOST_PAGE_SETTINGS'))
        return self.host.wait_for(lambda: self.host.main_window().find(name='SettingsPage'), 'the settings')

    def wait_for_records(self, count):
        wait_until(lambda: len(self.history.records()) == count, f'{count} records in the file')

    def figures(self, box):
        """The box's captions and values, row by row."""
        labels = [label for label in box.find_all(kind='QLabel') if label.text]
        by_row = {}
        for label in sorted(labels, key=lambda label: label.rect[0]):
            by_row.setdefault(label.centre[1], []).append(label.text)
        return dict(by_row[row] for row in sorted(by_row))

    def assert_figures_of(self, record, box, language='en'):
        _, _, _, connected, uploaded, downloaded = values(record)
        self.assertEqual(self.figures(box), {text('IDS_TREE_UPLOADED_DATA', language): uploaded,
                                             text('IDS_TREE_DOWNLOADED_DATA', language): downloaded,
                                             text('IDS_TREE_TIME_TRANSFER', language): connected})

    def boxes(self):
        return [window for window in self.host.windows() if window.title == BOX]

    # -- what a user sees ----------------------------------------------------------------------------------------

    def test_box_and_row(self):
        self.start('--simulate-connection', '2')
        box = self.host.wait_for_window(BOX)
        record = self.history.records()[-1]
        self.assertEqual(record['connected_seconds'], 2)
        self.assert_figures_of(record, box)
        self.assertEqual(box.rect[2:], [382, 217])
        self.host.wait_until_shown(self.history)
        self.assertEqual(len(self.host.shown()), 3)

        self.host.click(box.find(kind='QPushButton', text=text('IDS_BTN_OK')))
        self.host.wait_until_gone(BOX)
        self.assertEqual(len(self.history.records()), 3)

    def test_close_button_and_the_next_connection(self):
        self.start('--simulate-connection', '1', '--developer')
        box = self.host.wait_for_window(BOX)
        self.assert_figures_of(self.history.records()[-1], box)
        self.desktop.click(*self.desktop.close_button(int(box.id)))
        self.host.wait_until_gone(BOX)
        self.host.wait_until_shown(self.history)

        self.simulate(3)
        box = self.host.wait_for_window(BOX)
        self.wait_for_records(4)
        self.assert_figures_of(self.history.records()[-1], box)
        self.host.wait_until_shown(self.history)

    def test_two_ends_in_quick_succession(self):
        self.start('--simulate-connection', '4', '--developer')
        self.simulate(3)
        self.wait_for_records(4)

        # One box remains, and it shows the second connection.
        self.host.wait_until_shown(self.history)
        last = self.history.records()[-1]

        def second():
            box = self.host.wait_for_window(BOX)
            return box if len(self.boxes()) == 1 and values(last)[4] in self.figures(box).values() else None
        self.assert_figures_of(last, wait_until(second, 'the one box of the second connection'))

    def test_an_end_during_a_question_waits_for_the_answer(self):
        self.start('--developer')
        self.simulate(3)
        self.host.select_rows(0)
        self.host.press('Delete')
        question = self.host.wait_for_window(text('IDS_PROMPT_CAPTION'))
        self.wait_for_records(3)
        self.host.click(question.find(kind='QPushButton', text=text('IDS_OK')))

        box = self.host.wait_for_window(BOX)
        self.assertEqual([record['profile'] for record in self.history.records()],
                         ['two.example', 'simulation.example'])
        self.assert_figures_of(self.history.records()[-1], box)
        self.host.wait_until_shown(self.history)

    # -- what silences it ----------------------------------------------------------------------------------------

    def test_without_summaries_there_is_the_row_alone(self):
        self.start('--developer')
        settings = self.open_settings()
        check = settings.find(name='ShowSummary')
        self.desktop.click(check.rect[0] + 8, check.centre[1])  # Beside the text a click does not count.
        wait_until(lambda: 'WhetherShowNotesbox=false' in self.host.settings(), 'the setting to be stored')
        self.choose('IDS_HOST_MENU_VIEW', text('IDS_HOST_PAGE_HISTORY'))
        self.simulate(3)
        self.wait_for_records(3)
        self.host.wait_until_shown(self.history)
        # The box is built before the row is, so it would be there by now.
        self.assertEqual(self.boxes(), [])

    def test_after_suppression_nothing_more(self):
        self.start('--developer', '--trace')
        shown = self.host.shown()
        self.choose('IDS_HOST_MENU_DEVELOPER', text('IDS_HOST_MENU_SUPPRESS'))
        self.simulate(3)
        self.wait_for_records(3)
        wait_until(lambda: 'onConnectionReceived 0' in self.host.log(), 'the plug-in to hear of the end')
        self.assertEqual(self.boxes(), [])
        self.assertEqual(self.host.shown(), shown)

    # -- languages -----------------------------------------------------------------------------------------------

    def test_language_change_with_a_box_open(self):
        """The window under the box changes, the box keeps the texts that it was made with."""
        switch = self.start_with_language_switch()
        box = self.host.wait_for_window(BOX)
        with socket.socket(socket.AF_UNIX) as connection:
            connection.connect(switch)
            connection.sendall(b'de')
        german = text('IDS_HOST_APP_NAME', 'de')
        wait_until(lambda: german in self.desktop.windows().values(), 'the German window')
        self.assertEqual([column['text'] for column in self.host.table().columns][0], text('IDS_LIST_APN', 'de'))
        self.assert_figures_of(self.history.records()[-1], self.host.wait_for_window(BOX))
        self.desktop.screenshot('language-change-under-box')
        self.host.click(box.find(kind='QPushButton', text=text('IDS_BTN_OK')))
        self.host.wait_until_gone(BOX)
        self.host.wait_until_shown(self.history)

    def start_with_language_switch(self):
        """Starts the host with one more plug-in, which changes the language on request; returns its socket."""
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix='netinfo-plugins-')))
        real = pathlib.Path(os.environ['NETINFO_PLUGIN_DIR'])
        extra = pathlib.Path(os.environ['NETINFO_BUILD_DIR']) / 'tests' / 'plugins'
        for library in [*real.glob('*.so'), extra / 'netinfo_test_languageswitch.so']:
            (folder / library.name).symlink_to(library)
        switch = str(folder / 'socket')
        self.start('--simulate-connection', '1',
                   environment={'NETINFO_PLUGIN_DIR': str(folder), 'NETINFO_TEST_LANGUAGE_SOCKET': switch})
        return switch

    def test_choice_of_language_around_an_open_box(self):
        """The box keeps the window under it from being used, the choice of language included; the next box is German."""
        self.start('--simulate-connection', '4', '--developer')
        language = self.open_settings().find(name='Language')
        box = self.host.wait_for_window(BOX)
        self.desktop.click(language.rect[0] + 5, language.centre[1])
        self.host.click(box.find(kind='QPushButton', text=text('IDS_BTN_OK')))
        self.host.wait_until_gone(BOX)
        self.assertEqual(self.host.main_window().title, text('IDS_HOST_APP_NAME'))

        self.host.click(self.host.main_window().find(name='Language'))
        languages = self.host.wait_for(lambda: self.host.menu().find(kind='QComboBoxListView'), 'the list')
        self.host.click_entry(languages, 'Deutsch')
        german = text('IDS_HOST_APP_NAME', 'de')
        wait_until(lambda: german in self.desktop.windows().values(), 'the German window')
        self.assertIn('Language=de', self.host.settings())

        self.choose('IDS_HOST_MENU_DEVELOPER', text('IDS_HOST_MENU_SIMULATE', 'de').replace('%1', '3'), 'de')
        box = self.host.wait_for_window(text('IDS_TITLE_SINGLE', 'de'))
        self.assert_figures_of(self.history.records()[-1], box, 'de')


if __name__ == '__main__':
    unittest.main()
