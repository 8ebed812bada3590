"""Deleting connections as a user does it, with mouse and keys. After each way the file is compared with the page."""

import unittest

from harness.desktop import Desktop
from harness.history import History
from harness.host import Host
from harness.texts import text
from harness.waiting import wait_until

QUESTION = text('IDS_PROMPT_CAPTION')
PROFILES = ['one.example', 'two.example', 'three.example', 'four.example', 'five.example', 'six.example']


class Deletion(unittest.TestCase):

    def setUp(self):
        self.desktop = self.enterContext(Desktop())
        self.history = History(self.desktop)
        self.history.add(*PROFILES)
        self.host = self.enterContext(Host(self.desktop))
        self.host.wait_until_shown(self.history)

    # -- steps ---------------------------------------------------------------------------------------------------

    def right_click(self, row):
        x, y, _, height = self.host.wait_for(self.host.table, 'the table').rows[row]['rect']
        self.desktop.click(x + 60, y + height // 2, button=3)
        return self.host.wait_for(self.host.menu, 'the context menu')

    def question(self, key):
        """Waits for the question with this text."""
        box = self.host.wait_for_window(QUESTION)
        self.assertEqual([label.text for label in box.find_all(name='qt_msgbox_label')], [text(key)])
        return box

    def answer(self, box, button):
        self.host.click(box.find(kind='QPushButton', text=text(button)))
        self.host.wait_until_gone(QUESTION)

    def assert_left(self, *profiles):
        """Exactly these are left, in the file and on the page."""
        self.host.wait_until_shown(self.history)
        self.assertEqual(self.history.profiles(), list(profiles))

    def assert_nothing_deleted(self):
        self.assert_left(*PROFILES)

    # -- the Delete key ------------------------------------------------------------------------------------------

    def test_delete_key_removes_the_selection(self):
        self.host.select_rows(4, 1, 3)
        self.host.press('Delete')
        self.answer(self.question('IDS_STR_DELETE'), 'IDS_OK')
        self.assert_left('one.example', 'three.example', 'six.example')

    def test_enter_confirms(self):
        self.host.select_rows(0)
        self.host.press('Delete')
        self.question('IDS_STR_DELETE')
        self.host.press('Return')
        self.host.wait_until_gone(QUESTION)
        self.assert_left(*PROFILES[1:])

    def test_every_other_answer_refuses(self):
        self.host.select_rows(2, 3)
        for refuse in (lambda box: self.host.press('Escape'),
                       lambda box: self.answer(box, 'IDS_CANCEL'),
                       lambda box: self.desktop.click(*self.desktop.close_button(int(box.id)))):
            self.host.press('Delete')
            refuse(self.question('IDS_STR_DELETE'))
            self.host.wait_until_gone(QUESTION)
            self.assert_nothing_deleted()
            self.assertEqual(self.host.selected_rows(), [2, 3])

    def test_two_deletions_in_a_row(self):
        for _ in range(2):
            self.host.select_rows(0)
            self.host.press('Delete')
            self.answer(self.question('IDS_STR_DELETE'), 'IDS_OK')
            wait_until(lambda: self.host.selected_rows() == [], 'the selection to go with its row')
        self.assertEqual(len(self.host.shown()), 4)

    # -- the context menu ----------------------------------------------------------------------------------------

    def test_menu_deletes_the_selection(self):
        self.host.select_rows(5, 0)
        menu = self.right_click(5)
        self.assertEqual(len(menu.entries), 2)
        self.host.click_entry(menu, text('IDS_MENU_DELETE'))
        self.answer(self.question('IDS_STR_DELETE'), 'IDS_OK')
        self.assert_left(*PROFILES[1:5])

    def test_menu_deletes_all(self):
        self.host.click_entry(self.right_click(1), text('IDS_MENU_DELETEALL'))
        self.answer(self.question('IDS_STR_CLEARALL'), 'IDS_OK')
        self.assert_left()

    def test_right_click_on_an_unselected_row_means_that_row(self):
        self.host.select_rows(0)
        self.host.click_entry(self.right_click(3), text('IDS_MENU_DELETE'))
        self.answer(self.question('IDS_STR_DELETE'), 'IDS_OK')
        self.assert_left(*PROFILES[:3], *PROFILES[4:])

    def test_d_in_the_menu(self):
        self.right_click(2)
        self.host.press('d')
        self.answer(self.question('IDS_STR_DELETE'), 'IDS_OK')
        self.assert_left(*PROFILES[:2], *PROFILES[3:])
        self.assert_no_menu()

    def test_delete_in_the_menu(self):
        self.right_click(2)
        self.host.press('Delete')
        self.answer(self.question('IDS_STR_DELETE'), 'IDS_OK')
        self.assert_left(*PROFILES[:2], *PROFILES[3:])
        self.assert_no_menu()

    def test_a_in_the_menu(self):
        self.right_click(2)
        self.host.press('a')
        self.answer(self.question('IDS_STR_CLEARALL'), 'IDS_OK')
        self.assert_left()
        self.assert_no_menu()

    def test_keys_in_the_menu_may_be_refused(self):
        for key, asked in (('d', 'IDS_STR_DELETE'), ('Delete', 'IDS_STR_DELETE'), ('a', 'IDS_STR_CLEARALL')):
            self.right_click(4)
            self.host.press(key)
            self.answer(self.question(asked), 'IDS_CANCEL')
            self.assert_no_menu()
        self.assert_nothing_deleted()

    def test_escape_closes_the_menu(self):
        self.right_click(1)
        self.host.press('Escape')
        self.assert_no_menu()
        self.assertNotIn(QUESTION, self.desktop.windows().values())
        self.assert_nothing_deleted()

    def test_no_menu_below_the_last_row(self):
        x, y, width, height = self.host.table().viewport
        self.desktop.click(x + width // 2, y + height - 5, button=3)
        # The host takes events in their order: once this later key is answered, the click has been, too.
        self.host.press('ctrl+a')
        wait_until(lambda: len(self.host.selected_rows()) == len(PROFILES), 'all rows to be selected')
        self.assert_no_menu()
        self.assert_nothing_deleted()

    def assert_no_menu(self):
        wait_until(lambda: not [window for window in self.host.windows() if window.popup], 'the menu to go')

    # -- other processes -----------------------------------------------------------------------------------------

    def test_another_process_adds_meanwhile(self):
        self.host.select_rows(1, 4)
        self.host.press('Delete')
        box = self.question('IDS_STR_DELETE')
        self.history.add('late.example', 'later.example')
        self.answer(box, 'IDS_OK')
        # What was asked about is gone, and nothing else; what came meanwhile is there, unseen until the next loading.
        kept = ['one.example', 'three.example', 'four.example', 'six.example']
        wait_until(lambda: [row[0] for row in self.host.shown()] == kept, 'the two rows to go')
        self.assertEqual(self.history.profiles(), kept + ['late.example', 'later.example'])

    def test_another_process_removes_meanwhile(self):
        self.host.select_rows(0, 5)
        self.host.press('Delete')
        box = self.question('IDS_STR_DELETE')
        self.history.remove(self.history.records()[0]['key'])
        self.history.remove(self.history.records()[0]['key'])
        self.answer(box, 'IDS_OK')
        # The first record was gone already: its position must not take the neighbour with it.
        wait_until(lambda: len(self.host.shown()) == 4, 'the two rows to go')
        self.assertEqual(self.history.profiles(), ['three.example', 'four.example', 'five.example'])


if __name__ == '__main__':
    unittest.main()
