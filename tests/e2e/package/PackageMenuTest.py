#!/usr/bin/env python3
"""The File menu: saving to another file and what there is to know of a package; and the names of all parts."""
import json
import pathlib
import re
import unittest

from openingcase import DocumentOpeningCase
from viewercase import ROOT, SAVE, UPDATE, information, menu_item_place
from viewerdriver import PROGRAM
from wineprogram import query_registry, windows_path

WITHOUT_OBJECT = {'SysListView32', 'SysTabControl32', 'msctls_statusbar32'}  # Wine's interface does not know these


def status(shown):
    return shown.frame.find(class_name='msctls_statusbar32').text


def file_menu():
    """The texts of the File menu; separators have none."""
    script = (ROOT / 'viewer/resources/viewer.rc').read_text(encoding='utf-8')
    menu = script[script.index('POPUP "&File"'):script.index('POPUP "&Edit"')]
    texts = re.findall(r'^        (?:MENUITEM|POPUP) "([^"\\]*)', menu, re.MULTILINE)
    return texts


class PackageMenuTest(DocumentOpeningCase):
    def test_save_as_continues_with_the_new_file(self):
        viewer, _ = self.open_sample()
        before = pathlib.Path(self.sample).read_bytes()
        viewer.dump('press', UPDATE)
        viewer.wait('the package counts as changed', lambda s: s.item(SAVE).enabled)
        viewer.press('F12')
        viewer.wait('the dialog', lambda s: s.others and s.dialog().text == 'Save package as')
        copy = self.folder / 'clamp.mxov'
        viewer.press('ctrl+a')
        self.type_path(viewer, copy)
        viewer.press('Return')
        shown = viewer.wait_for_package('clamp.mxov')
        self.assertEqual((shown.frame.text, shown.item(SAVE).enabled), (f'clamp.mxov - {PROGRAM}', False))
        self.assertEqual(pathlib.Path(self.sample).read_bytes(), before)
        self.check_package(copy, 'mxinfo.ini')
        self.assertEqual(information(copy)['FILE_HISTORY_5']['Operation'], 'Saved as clamp.mxov')
        self.assertIn('clamp.mxov', query_registry(r'HKCU\Software\MXOVDocView\Viewer', '/v', 'RecentPackages'))
        viewer.dump('press', UPDATE)
        viewer.wait('the package counts as changed', lambda s: s.item(SAVE).enabled)
        self.save(viewer)
        self.assertIn('FILE_HISTORY_6', information(copy))
        self.assertEqual(pathlib.Path(self.sample).read_bytes(), before)
        self.finish(viewer)

    def test_open_folder_shows_the_package_file(self):
        self.skip_with_long_paths('no folder is shown')
        viewer, shown = self.open_sample()
        lines = file_menu()
        self.assertIn('Open fol&der', lines)
        viewer.click(shown.frame.find(class_name='AtlAxWin').rect[0] + 12, shown.frame.find(class_name='AtlAxWin').top - 8)
        menu = viewer.wait('the menu', lambda s: s.others).dialog()
        viewer.photograph('e2e-file-menu')
        index = lines.index('Open fol&der')
        separators = lines[:index].count(''), lines.count('')
        viewer.click(*menu_item_place(menu, index, separators, len(lines)))
        self.wait_for_folder_window(viewer, windows_path(self.sample))
        self.finish(viewer)

    def test_messages_pass(self):
        viewer, shown = self.open_sample()
        path = status(shown)
        self.assertIn('bracket.mxov', path)
        viewer.press('ctrl+s')
        viewer.wait('the message', lambda s: status(s) == 'There is nothing to save')
        viewer.wait('it passes', lambda s: status(s) == path)
        self.finish(viewer)

    def test_the_properties_of_the_package(self):
        viewer, _ = self.open_sample()
        viewer.press('alt+f', 'p')
        shown = viewer.wait('the properties', lambda s: 'Written by' in s.texts())
        for part in (windows_path(self.sample), 'Maxtrel Orvando 2024', 'Released by M. Keller', '9 files', '(local time)',
                     'document lists are UTC'):
            self.assertIn(part, shown.texts())
        viewer.photograph('e2e-package-properties')
        viewer.press('Return')
        viewer.wait_for_no_dialog('they are read')
        self.finish(viewer)

    def test_every_part_has_a_name_for_screen_readers(self):
        """As the platform's accessibility interface reports it. Headers of lists and plain containers need none."""
        viewer, _ = self.open_sample()
        viewer.press('F6')
        without_object = set()
        for title in ('Picture', 'History', 'Document'):
            with self.subTest(page=title):
                names = [(part['class'], part['id'], part['name']) for part in json.loads(viewer.dump('names'))
                         if part['class'] not in ('SysHeader32', '#32770', 'Static')]
                self.assertEqual([part for part in names if part[2] is not None and not part[2].strip()], [])
                for name, number, _ in (part for part in names if part[2] is None):
                    without_object.add(name)
                    window = viewer.snapshot().frame.find(class_name=name, id=number)
                    self.assertTrue(window.text.strip(), (name, number))
                self.assertGreater(len([part for part in names if part[2]]), 8, names)
            viewer.press('Right')
        self.assertEqual(without_object - WITHOUT_OBJECT, set())
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
