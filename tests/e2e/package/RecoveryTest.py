#!/usr/bin/env python3
"""Unsaved changes when the viewer dies, when saving fails, and when somebody else changed the package file."""
import os
import pathlib
import unittest
import zipfile

from viewercase import EARLIER_SESSIONS, LIBRARY, NO, SAVE, SESSIONS, YES, ViewerCase, information, session_entries
from viewerdriver import PATIENCE, PROGRAM, Viewer
from wineprogram import windows_path


class RecoveryTest(ViewerCase):
    def add_document(self, viewer, name='note.txt'):
        """Attaches a document as a copy with the "+" dialog and returns its path."""
        note = self.folder / name
        note.write_text('check the bore\n', encoding='ascii')
        self.attach(viewer, note, linked=False)
        return note

    def rows(self, shown):
        return [row[0] for row in shown.lists()[3].rows]

    def crash_with_changes(self):
        viewer, _ = self.open_sample()
        self.add_document(viewer)
        before = pathlib.Path(self.sample).read_bytes()
        viewer.kill()
        self.assertEqual(pathlib.Path(self.sample).read_bytes(), before)
        self.assertEqual(len(session_entries()), 2)

    def test_a_crash_without_changes_leaves_nothing_to_ask(self):
        viewer, _ = self.open_sample()
        viewer.kill()
        self.assertEqual(len(session_entries()), 2)
        viewer = self.use(Viewer())
        viewer.wait('the window is empty', lambda s: s.frame.text == PROGRAM and not s.others)
        self.wait_for_sessions(viewer, 0)
        self.finish(viewer)

    def test_after_a_crash_the_changes_are_continued_and_saved(self):
        self.crash_with_changes()
        viewer = self.restart_and_answer('alt+c')
        shown = viewer.wait_for_package('bracket.mxov')
        self.assertEqual(self.rows(shown)[3], 'note.txt')
        self.assertTrue(shown.item(SAVE).enabled)
        self.click_item(viewer, SAVE)
        viewer.wait('it is saved', lambda s: not s.item(SAVE).enabled and not s.others)
        self.check_package(self.sample, 'ReferanceFiles/note.txt')
        self.finish(viewer)

    def test_a_package_named_at_the_start_waits_for_the_answer(self):
        self.crash_with_changes()
        viewer = self.use(Viewer(windows_path(self.legacy)))
        viewer.wait('the offer', lambda s: 'unsaved changes' in s.texts())
        viewer.press('alt+l')
        viewer.wait_for_package('legacy.mxov')
        self.assertEqual(viewer.close(), 0)
        self.assertEqual(len(session_entries()), 2)
        viewer = self.restart_and_answer('alt+d')
        viewer.wait('the window is empty', lambda s: s.frame.text == PROGRAM and not s.others)
        self.wait_for_sessions(viewer, 0)
        self.finish(viewer)

    def test_what_an_earlier_version_left_in_the_temporary_folder_is_offered_once(self):
        self.crash_with_changes()
        SESSIONS.rename(EARLIER_SESSIONS)
        viewer = self.restart_and_answer('alt+c')
        shown = viewer.wait_for_package('bracket.mxov')
        self.assertEqual(self.rows(shown)[3], 'note.txt')
        self.save(viewer)
        self.check_package(self.sample, 'ReferanceFiles/note.txt')
        self.finish(viewer)
        self.assertFalse(EARLIER_SESSIONS.exists())
        viewer = self.use(Viewer())
        viewer.wait('the window is empty', lambda s: s.frame.text == PROGRAM and not s.others)
        self.finish(viewer)

    def replace_package(self):
        """The package file as another program rewrites it, with an entry more."""
        other = self.folder / 'other'
        with zipfile.ZipFile(self.sample) as old, zipfile.ZipFile(other, 'w') as new:
            for entry in old.infolist():
                new.writestr(entry, old.read(entry))
            new.writestr('theirs.txt', 'theirs')
        os.replace(other, self.sample)

    def names(self):
        with zipfile.ZipFile(self.sample) as archive:
            return archive.namelist()

    def test_saving_asks_when_the_package_file_was_changed_by_another(self):
        viewer, _ = self.open_sample()
        self.add_document(viewer)
        self.replace_package()
        self.click_item(viewer, SAVE)
        viewer.wait('the question', lambda s: 'changed by somebody else' in s.texts())
        viewer.photograph('e2e-changed-by-another')
        self.answer(viewer, NO)
        viewer.wait('the message', lambda s: 'was not saved' in s.texts())
        viewer.press('Return')
        viewer.wait('it can be saved again', lambda s: s.item(SAVE).enabled and not s.others)
        self.assertIn('theirs.txt', self.names())
        self.click_item(viewer, SAVE)
        viewer.wait('the question', lambda s: 'changed by somebody else' in s.texts())
        self.answer(viewer, YES)
        viewer.wait('it is saved', lambda s: not s.item(SAVE).enabled and not s.others)
        self.assertNotIn('theirs.txt', self.names())
        self.check_package(self.sample, 'ReferanceFiles/note.txt')
        self.finish(viewer)

    def test_recovered_changes_do_not_silently_replace_what_another_saved(self):
        self.crash_with_changes()
        self.replace_package()
        viewer = self.restart_and_answer('alt+c')
        viewer.wait_for_package('bracket.mxov')
        self.click_item(viewer, SAVE)
        viewer.wait('the question', lambda s: 'changed by somebody else' in s.texts())
        self.answer(viewer, YES)
        viewer.wait('it is saved', lambda s: not s.item(SAVE).enabled and not s.others)
        self.finish(viewer)

    def fail_to_save_on_close(self):
        """The package with changes, closed while its folder takes no new file, up to the viewer's question."""
        viewer, _ = self.open_sample()
        self.add_document(viewer)
        self.refuse_saving()
        viewer.press('alt+F4')
        viewer.wait('the question', lambda s: s.others and s.dialog().text == LIBRARY)
        self.answer(viewer, YES)
        shown = viewer.wait('the message', lambda s: 'was not saved' in s.texts())
        self.assertIn('bracket.mxov', shown.texts())
        viewer.photograph('e2e-save-refused')
        viewer.press('Return')
        viewer.wait('what becomes of the changes', lambda s: 'are not saved' in s.texts())
        viewer.photograph('e2e-unsaved')
        return viewer

    def test_a_failed_save_on_close_keeps_the_changes_for_later(self):
        viewer = self.fail_to_save_on_close()
        viewer.press('alt+k')
        self.assertEqual(viewer.process.wait(PATIENCE), 0)
        self.assertEqual(len(session_entries()), 2)
        self.allow_saving()
        viewer = self.restart_and_answer('alt+c')
        shown = viewer.wait_for_package('bracket.mxov')
        self.assertEqual(self.rows(shown)[3], 'note.txt')
        viewer.press('alt+F4')
        viewer.wait('the question', lambda s: s.others and s.dialog().text == LIBRARY)
        self.answer(viewer, YES)
        self.assertEqual(viewer.process.wait(PATIENCE), 0)
        self.check_package(self.sample, 'ReferanceFiles/note.txt')
        self.assertEqual(session_entries(), [])

    def test_a_failed_save_on_close_can_go_on_and_save_a_copy(self):
        viewer = self.fail_to_save_on_close()
        viewer.press('alt+g')
        viewer.wait('it can be saved again', lambda s: s.item(SAVE).enabled and not s.others)
        viewer.press('alt+F4')
        viewer.wait('the question', lambda s: s.others and s.dialog().text == LIBRARY)
        self.answer(viewer, YES)
        viewer.wait('the message', lambda s: 'was not saved' in s.texts())
        viewer.press('Return')
        viewer.wait('what becomes of the changes', lambda s: 'are not saved' in s.texts())
        viewer.press('alt+c')
        viewer.wait('the save dialog', lambda s: s.others and s.dialog().text == 'Save a copy')
        copy = self.folder.with_suffix('.mxov')
        self.addCleanup(lambda: copy.unlink(missing_ok=True))
        viewer.press('ctrl+a')
        self.type_path(viewer, copy)
        viewer.press('Return')
        self.assertEqual(viewer.process.wait(PATIENCE), 0)
        self.check_package(copy, 'ReferanceFiles/note.txt')
        self.assertNotIn('ReferanceFiles/note.txt', self.names())
        self.assertEqual(session_entries(), [])

    def test_a_failed_save_leaves_the_button_for_another_try(self):
        viewer = self.open_changed_sample()
        before = len(information(self.sample).sections())
        self.refuse_saving()
        self.click_item(viewer, SAVE)
        viewer.wait('the message', lambda s: 'was not saved' in s.texts())
        viewer.press('Return')
        viewer.wait('it can be saved again', lambda s: s.item(SAVE).enabled and not s.others)
        self.allow_saving()
        self.click_item(viewer, SAVE)
        viewer.wait('it is saved', lambda s: not s.item(SAVE).enabled and not s.others)
        self.assertEqual(len(information(self.sample).sections()), before + 1)
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
