"""The texts of the user interface, from the language files that the program is built with."""

import functools
import os
import pathlib
import xml.etree.ElementTree

from .widgets import plain

SOURCE = pathlib.Path(os.environ['NETINFO_SOURCE_DIR'])


@functools.lru_cache
def _translations(language):
    tree = xml.etree.ElementTree.parse(SOURCE / 'host' / 'languages' / f'netinfo_{language}.ts')
    return {message.findtext('source'): message.findtext('translation') for message in tree.iter('message')}


def text(key, language='en'):
    """The display text of a string ID, without the marks of its keyboard mnemonic."""
    return plain(_translations(language)[key])
