#!/usr/bin/env python3
"""Closing packages, changed ones too."""
import pathlib
import unittest
import zipfile

from viewercase import ADD, LIBRARY, NO, SAVE, YES, ViewerCase, session_entries
from viewerdriver import PATIENCE, PROGRAM


class ClosingTest(ViewerCase):
    def test_close_package_and_open_it_again(self):
        viewer, before = self.open_sample()
        viewer.press('ctrl+w')
        shown = viewer.wait('the package is closed', lambda s: s.frame.text == PROGRAM)
        self.assertEqual([item.rows for item in shown.lists()], [[], [], [], []])
        self.assertFalse(shown.item(ADD).visible, 'there is nothing to attach documents to')
        self.wait_for_sessions(viewer, 0)
        viewer.press('alt+f', 'r', '1')
        shown = viewer.wait_for_package('bracket.mxov')
        self.assertEqual([(item.rows, item.rect, item.visible) for item in shown.lists()],
                         [(item.rows, item.rect, item.visible) for item in before.lists()])
        self.assertTrue(shown.item(ADD).visible)
        self.finish(viewer)

    def answer_question(self, viewer, button):
        viewer.wait('the question', lambda s: s.others and s.dialog().text == LIBRARY)
        viewer.photograph('e2e-question')
        self.answer(viewer, button)

    def test_closing_a_changed_package_without_saving_leaves_the_file(self):
        before = pathlib.Path(self.sample).read_bytes()
        viewer = self.open_changed_sample()
        viewer.press('ctrl+w')
        self.answer_question(viewer, NO)
        viewer.wait('the package is closed', lambda s: s.frame.text == PROGRAM and not s.others)
        self.assertEqual(pathlib.Path(self.sample).read_bytes(), before)
        self.finish(viewer)

    def test_ending_with_a_changed_package_saves_it(self):
        history = self.history()
        viewer = self.open_changed_sample()
        viewer.press('alt+F4')
        self.answer_question(viewer, YES)
        self.assertEqual(viewer.process.wait(PATIENCE), 0)
        self.assertEqual(len(self.history()), len(history) + 1)
        with zipfile.ZipFile(self.sample) as archive:
            self.assertIsNone(archive.testzip())
        self.assertEqual(session_entries(), [])

    def test_refreshing_a_changed_package_saves_it_first(self):
        history = self.history()
        viewer = self.open_changed_sample()
        viewer.press('F5')
        self.answer_question(viewer, YES)
        shown = viewer.wait('the package is there again', lambda s: not s.item(SAVE).enabled and not s.others)
        self.assertEqual(shown.frame.text, f'bracket.mxov - {PROGRAM}')
        self.assertEqual(len(self.history()), len(history) + 1)
        self.assertEqual(shown.lists()[3].rows, self.expected_sample_rows()[3])
        self.wait_for_sessions(viewer, 2)
        self.finish(viewer)

    def test_opening_another_asks_for_the_changed_one_and_not_again(self):
        viewer = self.open_changed_sample()
        self.choose_file(viewer, self.legacy)
        self.answer_question(viewer, NO)
        viewer.wait_for_package('legacy.mxov')
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
