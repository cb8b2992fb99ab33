#!/usr/bin/env python3
"""The viewer's shortcuts, also while the properties of a document have the focus, and the help they open."""
import unittest

from viewercase import DESCRIPTION, LIBRARY, NO, SAVE, ViewerCase, properties_of
from viewerdriver import BUILD, PROGRAM, Viewer
from wineprogram import windows_path


class ShortcutsTest(ViewerCase):
    def expect_help(self, viewer, record, language, calls=1):
        """The main topic of the viewer's help in a language was asked for."""
        viewer.wait('the help', lambda s: record.exists() and record.read_bytes().count(b'\n\0') == calls)
        help_file = windows_path(BUILD / f'bin/plugins/etc/mx/lang/{language}/Orvando.chm')
        last = record.read_text(encoding='utf-16-le').splitlines()[-1]
        self.assertEqual(last.lower(), f'15 7018 {help_file}'.lower())

    def open_properties(self, viewer, shown):
        """A click on the part; the focus is in its description then."""
        viewer.click(*self.row_place(shown.lists()[0], 0))
        shown = viewer.wait('the properties', properties_of)
        edit = properties_of(shown).find(id=DESCRIPTION)
        viewer.click(*edit.middle)
        viewer.wait('the focus in the description', lambda s: s.focus == edit.handle)
        return edit

    def test_f1_opens_the_help_in_the_language_of_the_viewer(self):
        record = self.record_help()
        for language, folder, keys in (('English', 'english', ('alt+h', 'h')),
                                       ('Portuguese', 'portuguese-brazilian', ('alt+u', 't'))):
            with self.subTest(language=language):
                record.unlink(missing_ok=True)
                viewer = self.use(Viewer('--language', language))
                viewer.wait('the window', lambda s: s.frame.visible and s.frame.text == PROGRAM)
                viewer.press('F1')
                self.expect_help(viewer, record, folder)
                # The first item of the last menu does the same.
                for key in keys:
                    viewer.press(key)
                self.expect_help(viewer, record, folder, calls=2)
                self.finish(viewer)

    def test_f1_in_the_properties(self):
        record = self.record_help()
        viewer, shown = self.open_sample()
        edit = self.open_properties(viewer, shown)
        viewer.press('F1')
        self.expect_help(viewer, record, 'english')
        shown = viewer.snapshot()
        self.assertEqual(shown.focus, edit.handle)
        self.assertFalse(shown.item(SAVE).enabled)
        viewer.press('ctrl+w')
        viewer.wait('the package is closed', lambda s: s.frame.text == PROGRAM and not s.others)
        self.finish(viewer)

    def test_ctrl_w_in_the_properties_closes_the_package(self):
        viewer, shown = self.open_sample()
        self.open_properties(viewer, shown)
        viewer.press('ctrl+w')
        shown = viewer.wait('the package is closed', lambda s: s.frame.text == PROGRAM and not s.others)
        self.assertEqual([item.rows for item in shown.lists()], [[], [], [], []])
        self.finish(viewer)

    def test_f5_in_the_properties_opens_the_package_anew(self):
        viewer, shown = self.open_sample()
        edit = self.open_properties(viewer, shown)
        viewer.press('F5')
        shown = viewer.wait('no properties', lambda s: not s.others)
        self.assertIsNone(shown.frame.find(handle=edit.handle))
        viewer.wait_for_package('bracket.mxov')
        self.finish(viewer)

    def test_ctrl_o_in_the_properties_asks_for_a_package(self):
        viewer, shown = self.open_sample()
        self.open_properties(viewer, shown)
        viewer.press('ctrl+o')
        viewer.wait('the open dialog', lambda s: [window.text for window in s.others] == ['Open package'])
        self.type_path(viewer, self.legacy)
        viewer.press('Return')
        viewer.wait_for_package('legacy.mxov')
        self.finish(viewer)

    def test_no_shortcut_works_behind_a_message(self):
        record = self.record_help()
        viewer = self.open_changed_sample()
        viewer.press('ctrl+w')
        viewer.wait('the question', lambda s: s.others and s.dialog().text == LIBRARY)
        viewer.press('ctrl+o', 'F1')
        self.answer(viewer, NO)
        viewer.wait('the package is closed', lambda s: s.frame.text == PROGRAM and not s.others)
        self.finish(viewer)
        self.assertFalse(record.exists())


if __name__ == '__main__':
    unittest.main(verbosity=2)
