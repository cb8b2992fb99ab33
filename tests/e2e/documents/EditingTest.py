#!/usr/bin/env python3
"""The whole cycle with mouse and keyboard: attach, remove, save, close, open again; the files checked after each
step by programs that know nothing of ours."""
import pathlib
import unittest
import zipfile

from viewercase import (DELETE, LINKED, MISSING, NO, PACKAGED, SAVE, YES, ViewerCase, information, profile_value,
                        session_folder)
from viewerdriver import PROGRAM
from wineprogram import windows_path


class EditingTest(ViewerCase):
    def setUp(self):
        super().setUp()
        self.before = pathlib.Path(self.sample).read_bytes()

    def stored(self, number):
        """An additional document in the information file of the open package, as the platform reads it."""
        return [profile_value(session_folder() / 'mxinfo.ini', f'REFERANCE_FILE_{number}', key)
                for key in ('IsReferencedFile', 'FilePath', 'Description')]

    def document(self, name, text):
        path = self.folder / name
        path.write_text(text, encoding='ascii')
        return path

    def names(self, shown):
        return [row[0] for row in shown.lists()[3].rows]

    def select(self, viewer, row):
        """Clicks a row of the additional documents in its first column."""
        viewer.click(*self.row_place(viewer.snapshot().lists()[3], row))
        return viewer.wait(f'row {row} is selected', lambda s: s.lists()[3].selected == [row])

    def test_attach_remove_save_and_open_again(self):
        tools, note = self.document('tools.csv', 'T1;10\n'), self.document('note.txt', 'check the bore\n')
        viewer, shown = self.open_sample()
        self.assertFalse(shown.item(SAVE).enabled)

        self.attach(viewer, self.folder / 'never.txt', linked=True, key='Escape')
        self.assertFalse(viewer.snapshot().item(SAVE).enabled)
        self.assertEqual(self.stored(5), ['', '', ''])

        shown = self.attach(viewer, tools, linked=True)
        self.assertEqual(shown.lists()[3].rows[3][0::3], ('tools.csv', LINKED))
        self.assertTrue(shown.item(SAVE).enabled)
        self.assertEqual(self.stored(5), ['YES', windows_path(tools), '-'])
        self.assertFalse((session_folder() / 'ReferanceFiles/tools.csv').exists())

        shown = self.attach(viewer, note, linked=False)
        self.assertEqual(shown.lists()[3].rows[4][0::3], ('note.txt', PACKAGED))
        self.assertEqual(self.stored(6), ['NO', r'ReferanceFiles\note.txt', '-'])
        self.assertEqual((session_folder() / 'ReferanceFiles/note.txt').read_text(), 'check the bore\n')

        shown = self.select(viewer, 1)
        removed = shown.lists()[3].rows[1][0]
        viewer.wait('it can be removed', lambda s: s.item(DELETE).enabled)
        self.click_item(viewer, DELETE)
        shown = viewer.wait('it is removed', lambda s: removed not in self.names(s))
        self.assertFalse(shown.item(DELETE).enabled)
        self.assertEqual(self.stored(2), ['', '', ''])
        self.assertFalse((session_folder() / 'ReferanceFiles' / removed).exists())
        viewer.photograph('e2e-edited')

        self.assertEqual(pathlib.Path(self.sample).read_bytes(), self.before)
        self.click_item(viewer, SAVE)
        viewer.wait('it is saved', lambda s: not s.item(SAVE).enabled and not s.others)
        self.check_saved(removed, tools)
        self.finish(viewer)

        viewer, shown = self.open_sample()
        self.assertEqual([row[0::3] for row in shown.lists()[3].rows],
                         [('material-certificate.pdf', LINKED), ('jaws-7mm.pdf', MISSING), ('tools.csv', LINKED),
                          ('note.txt', PACKAGED)])
        self.finish(viewer)
        self.check_saved(removed, tools)

    def check_saved(self, removed, tools):
        self.check_package(self.sample, 'mxinfo.ini', 'ReferanceFiles/note.txt')
        sections = information(self.sample)
        self.assertNotIn('REFERANCE_FILE_2', sections)
        self.assertEqual(sections['REFERANCE_FILE_5']['FilePath'], windows_path(tools))
        self.assertEqual(sections['REFERANCE_FILE_6']['FilePath'], r'ReferanceFiles\note.txt')
        self.assertEqual(len([name for name in sections if name.startswith('FILE_HISTORY')]), 5)
        with zipfile.ZipFile(self.sample) as archive:
            self.assertNotIn(f'ReferanceFiles/{removed}', archive.namelist())

    def close_changed(self, button):
        viewer, _ = self.open_sample()
        self.attach(viewer, self.document('note.txt', 'check the bore\n'), linked=False)
        viewer.press('ctrl+w')
        viewer.wait('the question', lambda s: 'Maxtrel' in s.texts())
        self.answer(viewer, button)
        viewer.wait('the package is closed', lambda s: s.frame.text == PROGRAM and not s.others)
        self.wait_for_sessions(viewer, 0)
        self.finish(viewer)

    def test_no_at_the_question_on_close_leaves_the_package(self):
        self.close_changed(NO)
        self.assertEqual(pathlib.Path(self.sample).read_bytes(), self.before)

    def test_yes_at_the_question_on_close_saves_the_package(self):
        self.close_changed(YES)
        self.check_package(self.sample, 'ReferanceFiles/note.txt')


if __name__ == '__main__':
    unittest.main(verbosity=2)
