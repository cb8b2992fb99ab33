#!/usr/bin/env python3
"""The page of the package's history, and saving with a note."""
import unittest

from viewercase import SAVE, UPDATE, ViewerCase, information
from viewerdriver import PROGRAM

PANE, TABS, LIST = 'MXOVHistoryPane', 'SysTabControl32', 'SysListView32'
NOTE = 'Save with note'


def entries(shown):
    """The rows of the page; None while another one is in front."""
    pane = shown.frame.find(class_name=PANE)
    return [row[:4] for row in pane.find(class_name=LIST).rows] if pane.visible else None


def remarks(shown):
    return shown.frame.find(class_name=PANE).find(class_name='Edit').text


class HistoryTest(ViewerCase):
    def saved_entries(self):
        """What the package file has, the newest first."""
        file = information(self.sample)
        return [tuple(file[name][key] for key in ('Time', 'Operation', 'By', 'Remarks'))
                for name in reversed(self.history())]

    def open_history(self, viewer):
        viewer.press('F6')
        viewer.wait('the focus on the tabs', lambda s: s.frame.find(handle=s.focus).class_name == TABS)
        viewer.press('Right')
        return viewer.wait('the history', lambda s: entries(s) is not None)

    def test_all_entries_with_their_remarks(self):
        viewer, shown = self.open_sample()
        self.assertIsNone(entries(shown))
        shown = self.open_history(viewer)
        expected = self.saved_entries()
        self.assertEqual(entries(shown), expected)
        self.assertEqual(len(expected), 4)
        self.assertEqual(remarks(shown), expected[0][3])
        self.assertEqual([title for title, _ in shown.frame.find(class_name=PANE).find(class_name=LIST).columns],
                         ['Time (local)', 'Operation', 'By', 'Remarks'])
        viewer.photograph('e2e-history')
        viewer.press('Tab', 'Down', 'Down')
        viewer.wait('the remarks of the third', lambda s: remarks(s) == expected[2][3])
        self.finish(viewer)

    def test_a_note_becomes_the_remarks(self):
        viewer, _ = self.open_sample()
        self.open_history(viewer)
        before = self.saved_entries()
        viewer.press('ctrl+shift+s')
        shown = viewer.wait('the question', lambda s: s.others and s.dialog().text == NOTE)
        self.assertIn('bracket.mxov', shown.texts())
        viewer.type('Threads 2 mm deeper')
        viewer.photograph('e2e-note')
        viewer.press('Return')
        shown = viewer.wait('the entry', lambda s: not s.others and len(entries(s)) == len(before) + 1)
        saved = self.saved_entries()
        self.assertEqual(entries(shown), saved)
        self.assertEqual((saved[0][3], saved[1:]), ('Threads 2 mm deeper', before))
        self.assertEqual((shown.frame.text, shown.item(SAVE).enabled), (f'bracket.mxov - {PROGRAM}', False))
        viewer.press('ctrl+shift+s')
        viewer.wait('the question', lambda s: s.others and s.dialog().text == NOTE)
        viewer.press('Escape')
        viewer.wait_for_no_dialog('the question is gone')
        self.assertEqual(self.saved_entries(), saved)
        viewer.dump('press', UPDATE)
        viewer.wait('the package counts as changed', lambda s: s.item(SAVE).enabled)
        self.save(viewer)
        viewer.wait('the entry', lambda s: len(entries(s)) == len(saved) + 1)
        self.assertEqual(self.saved_entries()[0][3], '', 'the note is used once')
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
