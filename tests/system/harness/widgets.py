"""What is on the screen, as the probe inside the program tells it."""

import json
import socket


class Widget:
    """One visible widget at one moment. Attributes are the probe's: text, rect, enabled, focus, rows, entries ..."""

    def __init__(self, data, parent=None):
        self.data = data
        self.parent = parent
        self.children = [Widget(child, self) for child in data['children']]

    def __getattr__(self, name):
        try:
            return self.data[name]
        except KeyError:
            raise AttributeError(f'{self} has no "{name}"') from None

    def __repr__(self):
        return f'{self.data["class"]}({self.data["name"]!r}, {self.data["text"]!r})'

    @property
    def kind(self):
        return self.data['class']

    @property
    def centre(self):
        return centre(self.rect)

    def everything(self):
        yield self
        for child in self.children:
            yield from child.everything()

    def find(self, kind=None, name=None, text=None):
        """The one widget below this one that has all of these properties; LookupError when there is none."""
        found = self.find_all(kind, name, text)
        if not found:
            raise LookupError(f'{self} shows no {kind or "widget"} {name or ""} {text or ""}')
        return found[0]

    def find_all(self, kind=None, name=None, text=None):
        return [widget for widget in self.everything()
                if kind in (None, widget.kind) and name in (None, widget.data['name'])
                and (text is None or plain(widget.data['text']) == text)]

    def entry(self, text):
        """The entry of a menu or list that shows this text."""
        for entry in self.entries:
            if plain(entry['text']) == text:
                return entry
        raise LookupError(f'{self} has no entry {text!r} among {[entry["text"] for entry in self.entries]}')


def centre(rect):
    x, y, width, height = rect
    return x + width // 2, y + height // 2


def plain(text):
    """A text without the marks of its keyboard mnemonics."""
    return text.replace('&&', '\0').replace('&', '').replace('\0', '&')


def ask(path):
    """The visible windows of the program whose probe listens on this socket."""
    with socket.socket(socket.AF_UNIX) as connection:
        connection.settimeout(30)
        connection.connect(str(path))
        parts = []
        while part := connection.recv(1 << 16):
            parts.append(part)
    return [Widget(window) for window in json.loads(b''.join(parts))['windows']]
