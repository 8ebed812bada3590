"""Faults of a picture that a program can find by itself: texts cut off, widgets on top of each other or outside."""

READABLE = ('QLabel', 'QPushButton', 'QCheckBox', 'QRadioButton', 'QComboBox', 'QGroupBox', 'QToolButton')


def faults(window):
    """Sentences about everything in `window` that is clipped or overlaps; empty when nothing is."""
    found = []
    for widget in window.everything():
        found += _clipped(widget) + _clipped_columns(widget) + _overlapping(widget.children)
        found += [f'{child} reaches out of {widget}' for child in widget.children
                  if _is_readable(child) and not _within(child.rect, widget.rect)]
    return found


def _is_readable(widget):
    return widget.kind in READABLE and widget.text != ''


def _clipped(widget):
    if not _is_readable(widget):
        return []
    (_, _, width, height), (needed_width, needed_height) = widget.rect, widget.needs
    if width >= needed_width and height >= needed_height:
        return []
    return [f'{widget} is {width} x {height} and needs {needed_width} x {needed_height}']


def _clipped_columns(widget):
    if 'columns' not in widget.data:
        return []
    found = [f'Column {column["text"]!r} is {column["width"]} wide and needs {column["needs"]}'
             for column in widget.columns if column['width'] < column['needs']]
    for row in widget.rows:
        found += [f'Cell {cell!r} is {column["width"]} wide and needs {needed}'
                  for cell, needed, column in zip(row['cells'], row['needs'], widget.columns)
                  if column['width'] < needed]
    return found


def _overlapping(widgets):
    readable = [widget for widget in widgets if _is_readable(widget)]
    return [f'{first} and {second} overlap' for position, first in enumerate(readable)
            for second in readable[position + 1:] if _touch(first.rect, second.rect)]


def _touch(first, second):
    return (first[0] < second[0] + second[2] and second[0] < first[0] + first[2]
            and first[1] < second[1] + second[3] and second[1] < first[1] + first[3])


def _within(inner, outer):
    return (inner[0] >= outer[0] and inner[1] >= outer[1]
            and inner[0] + inner[2] <= outer[0] + outer[2] and inner[1] + inner[3] <= outer[1] + outer[3])
