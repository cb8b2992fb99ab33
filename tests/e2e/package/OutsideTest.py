#!/usr/bin/env python3
"""Documents of an open package that other programs change in its folder, as an editor does that was started with a
double click: the user is asked before anything of it is lost, and once only."""
import os
import pathlib
import unittest
import zipfile

from viewercase import LIBRARY, NO, SAVE, YES, ViewerCase, information, session_entries, session_folder
from viewerdriver import PATIENCE, PROGRAM

PROGRAM_FILE = 'GCode/op10-face-pocket.nc'


class OutsideTest(ViewerCase):
    def setUp(self):
        super().setUp()
        self.before = pathlib.Path(self.sample).read_bytes()
        self.edited = f'(edited {os.getpid()})\r\n'.encode()

    def packed(self, name):
        with zipfile.ZipFile(self.sample) as archive:
            return archive.read(name) if name in archive.namelist() else None

    def edit(self, name=PROGRAM_FILE):
        """What an editor does with a document in the folder of the open package."""
        with open(session_folder() / name, 'ab') as document:
            document.write(self.edited)

    def edit_and_close(self, *keys):
        viewer, _ = self.open_sample()
        self.edit()
        viewer.press(*keys)
        return viewer, self.question(viewer)

    def question(self, viewer):
        shown = viewer.wait('the question', lambda s: 'changed by another program' in s.texts())
        viewer.photograph('e2e-outside')
        return shown

    def check_saved(self, *names):
        self.check_package(self.sample, *names)
        for name in names:
            self.assertTrue(self.packed(name).endswith(self.edited))

    def check_left_alone(self):
        self.assertEqual(pathlib.Path(self.sample).read_bytes(), self.before)

    def test_save_puts_the_edited_document_into_the_package(self):
        viewer, shown = self.edit_and_close('alt+F4')
        self.assertIn(r'GCode\op10-face-pocket.nc', shown.texts())
        self.assertNotIn('mxinfo', shown.texts())
        self.check_left_alone()
        viewer.press('alt+s')
        self.assertEqual(viewer.process.wait(PATIENCE), 0)
        self.check_saved(PROGRAM_FILE)
        self.assertEqual(session_entries(), [])

    def test_discard_leaves_the_package(self):
        viewer, _ = self.edit_and_close('ctrl+w')
        viewer.press('alt+d')
        viewer.wait('the package is closed', lambda s: s.frame.text == PROGRAM and not s.others)
        self.check_left_alone()
        self.wait_for_sessions(viewer, 0)
        self.finish(viewer)

    def test_going_on_keeps_everything_and_asks_again(self):
        viewer, _ = self.edit_and_close('alt+F4')
        viewer.press('alt+g')
        viewer.wait_for_package('bracket.mxov')
        self.check_left_alone()
        self.assertTrue((session_folder() / PROGRAM_FILE).read_bytes().endswith(self.edited))
        viewer.press('alt+F4')
        self.question(viewer)
        viewer.press('alt+F4')
        viewer.wait_for_package('bracket.mxov')
        viewer.press('ctrl+w')
        self.question(viewer)
        viewer.press('alt+s')
        viewer.wait('the package is closed', lambda s: s.frame.text == PROGRAM and not s.others)
        self.check_saved(PROGRAM_FILE)
        self.finish(viewer)

    def test_opening_another_package_asks_too(self):
        viewer, _ = self.open_sample()
        self.edit()
        self.choose_file(viewer, self.legacy)
        self.question(viewer)
        viewer.press('alt+g')
        viewer.wait_for_package('bracket.mxov')
        self.choose_file(viewer, self.legacy)
        self.question(viewer)
        viewer.press('alt+s')
        viewer.wait_for_package('legacy.mxov')
        self.check_saved(PROGRAM_FILE)
        self.finish(viewer)

    def test_refreshing_saves_what_was_edited_and_shows_it(self):
        viewer, shown = self.open_sample()
        size = shown.lists()[1].rows[0][1]
        with open(session_folder() / PROGRAM_FILE, 'ab') as document:
            document.write(b'(more)\r\n' * 1000)
        viewer.press('F5')
        self.question(viewer)
        viewer.press('alt+s')
        viewer.wait('the new size is shown', lambda s: not s.others and s.lists()[1].rows[0][1] != size)
        self.assertTrue(self.packed(PROGRAM_FILE).endswith(b'(more)\r\n'))
        self.finish(viewer)

    def test_yes_to_the_question_of_the_control_covers_it(self):
        viewer = self.open_changed_sample()
        self.edit()
        viewer.press('alt+F4')
        viewer.wait('the question', lambda s: s.others and s.dialog().text == LIBRARY)
        self.answer(viewer, YES)
        self.assertEqual(viewer.process.wait(PATIENCE), 0)
        self.check_saved(PROGRAM_FILE)

    def close_after_attaching(self, edit):
        """Attaches a copy, closes the viewer and declines to save."""
        viewer, _ = self.open_sample()
        note = self.folder / 'note.txt'
        note.write_text('check the bore\n', encoding='ascii')
        self.attach(viewer, note, linked=False)
        if edit:
            self.edit()
        viewer.press('alt+F4')
        viewer.wait('the question', lambda s: s.others and s.dialog().text == LIBRARY)
        self.answer(viewer, NO)
        return viewer

    def test_no_to_the_question_of_the_control_is_not_asked_again(self):
        viewer = self.close_after_attaching(edit=False)
        self.assertEqual(viewer.process.wait(PATIENCE), 0)
        self.check_left_alone()

    def test_after_no_only_what_others_edited_is_asked(self):
        viewer = self.close_after_attaching(edit=True)
        shown = self.question(viewer)
        self.assertIn('op10-face-pocket.nc', shown.texts())
        self.assertIn('other changes', shown.texts())
        self.assertNotIn('note.txt', shown.texts())
        self.assertNotIn('mxinfo.ini', shown.texts())
        viewer.press('alt+s')
        self.assertEqual(viewer.process.wait(PATIENCE), 0)
        self.check_saved(PROGRAM_FILE)
        self.check_package(self.sample, 'ReferanceFiles/note.txt')

    def test_a_document_that_is_still_open_elsewhere(self):
        viewer, _ = self.open_sample()
        lock = session_folder() / 'SetupSheets/.~lock.setup.html#'
        lock.touch()

        def close():
            viewer.press('alt+F4')
            return viewer.wait('the question', lambda s: 'still open in another program' in s.texts())
        shown = close()
        self.assertIn(r'SetupSheets\setup.html', shown.texts())
        viewer.photograph('e2e-still-open')
        viewer.press('alt+g')
        viewer.wait_for_package('bracket.mxov')
        close()
        self.edit('SetupSheets/setup.html')
        lock.unlink()
        viewer.press('alt+t')
        self.question(viewer)
        viewer.press('alt+s')
        self.assertEqual(viewer.process.wait(PATIENCE), 0)
        self.check_saved('SetupSheets/setup.html')

        viewer, _ = self.open_sample()
        lock = session_folder() / lock.relative_to(lock.parents[1])
        lock.touch()
        close()
        viewer.press('alt+c')
        self.assertEqual(viewer.process.wait(PATIENCE), 0)
        self.assertEqual(session_entries(), [])

    def test_a_save_that_fails_keeps_the_edited_document(self):
        viewer, _ = self.open_sample()
        self.edit()
        self.refuse_saving()
        viewer.press('alt+F4')
        self.question(viewer)
        viewer.press('alt+s')
        viewer.wait('the message', lambda s: 'was not saved' in s.texts())
        viewer.press('Return')
        viewer.wait('what becomes of the changes', lambda s: 'are not saved' in s.texts())
        viewer.press('alt+g')
        viewer.wait('it can be saved again', lambda s: s.item(SAVE).enabled and not s.others)
        self.allow_saving()
        self.click_item(viewer, SAVE)
        viewer.wait('it is saved', lambda s: not s.item(SAVE).enabled and not s.others)
        self.check_saved(PROGRAM_FILE)
        self.finish(viewer)

    def test_the_menu_saves_what_was_edited(self):
        history = self.history()
        viewer, shown = self.open_sample()
        self.assertFalse(shown.item(SAVE).enabled)
        viewer.press('ctrl+s')
        def status(shown):
            return shown.frame.find(class_name='msctls_statusbar32').text
        viewer.wait('the note', lambda s: status(s) == 'There is nothing to save')
        viewer.wait('the note passes', lambda s: status(s).endswith('bracket.mxov'))
        self.check_left_alone()
        self.edit()
        viewer.press('alt+f', 's')
        viewer.wait('it is saved', lambda s: self.packed(PROGRAM_FILE).endswith(self.edited) and not s.others)
        self.check_saved(PROGRAM_FILE)
        self.assertEqual(len(self.history()), len(history) + 1)
        self.assertFalse(viewer.snapshot().item(SAVE).enabled)
        latest = information(self.sample)[self.history()[-1]]
        viewer.wait('the preview tells of it', lambda s: s.frame.find(class_name='MXOVPreviewPane').text.endswith(
            f"{latest['Operation']} by {latest['By']}, {latest['Time'].rpartition(':')[0]}"))
        self.finish(viewer)

    def test_the_menu_saves_what_the_control_knows_of(self):
        history = self.history()
        viewer = self.open_changed_sample()
        viewer.press('ctrl+s')
        viewer.wait('it is saved', lambda s: not s.item(SAVE).enabled and not s.others)
        self.assertEqual(len(self.history()), len(history) + 1)
        self.finish(viewer)

    def test_what_was_edited_before_a_crash_is_offered(self):
        viewer, _ = self.open_sample()
        self.edit()
        viewer.kill()
        viewer = self.restart_and_answer('alt+c')
        viewer.wait_for_package('bracket.mxov')
        viewer.press('ctrl+s')
        viewer.wait('it is saved', lambda s: not s.item(SAVE).enabled and not s.others)
        self.check_saved(PROGRAM_FILE)
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
