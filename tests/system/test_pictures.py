"""Pictures of what a user meets, in English and German, for people to look at; and what a program can find by itself:
nothing is clipped, nothing overlaps."""

import unittest

from harness.desktop import Desktop
from harness.history import History
from harness.host import Host
from harness.layout import faults
from harness.texts import text


class Pictures(unittest.TestCase):

    def test_english(self):
        self.take('en')

    def test_german(self):
        self.take('de')

    def take(self, language):
        self.desktop = self.enterContext(Desktop())
        History(self.desktop).add('internet.example', 'Café Zürich', 'Büro (Gäste-WLAN)', 'mobil.example')
        self.host = self.enterContext(Host(self.desktop, '--simulate-connection', '2', language=language))
        box = self.host.wait_for_window(text('IDS_TITLE_SINGLE', language))
        self.picture(box, f'summary-{language}')
        self.host.click(box.find(kind='QPushButton', text=text('IDS_BTN_OK', language)))
        self.host.wait_until_gone(text('IDS_TITLE_SINGLE', language))

        self.host.select_rows(1, 2)
        self.picture(self.host.main_window(), f'page-{language}')
        x, y, _, height = self.host.table().rows[2]['rect']
        self.desktop.click(x + 60, y + height // 2, button=3)
        menu = self.host.wait_for(self.host.menu, 'the context menu')
        self.assertEqual([entry['text'] for entry in menu.entries],
                         [text('IDS_MENU_DELETE', language), text('IDS_MENU_DELETEALL', language)])
        self.picture(menu, f'menu-{language}')

        self.host.press('a')
        question = self.host.wait_for_window(text('IDS_PROMPT_CAPTION', language))
        self.picture(question, f'question-{language}')
        self.host.press('Escape')
        self.host.wait_until_gone(question.title)

    def picture(self, window, name):
        self.desktop.screenshot(name)
        self.assertEqual(faults(window), [])


if __name__ == '__main__':
    unittest.main()
