#!/usr/bin/env python3
"""A double click opens a document with the program that is registered for its kind."""
import time
import unittest

from openingcase import DocumentOpeningCase
from viewercase import session_folder

DOUBLE_CLICK = 0.5  # seconds


class DocumentsTest(DocumentOpeningCase):
    def double_click(self, viewer, number, row):
        """Double-clicks the name in a row and returns it."""
        shown = viewer.snapshot().lists()[number]
        x, y = self.row_place(shown, row)
        viewer.double_click(x, y)
        return shown.rows[row][0]

    def test_one_after_another_while_the_popup_of_the_last_is_up(self):
        viewer, shown = self.open_sample()
        folder = session_folder().name
        places = ((1, 0), (2, [row[0] for row in shown.lists()[2].rows].index('setup.html')), (3, 0), (3, 1), (1, 1))
        for count, (number, row) in enumerate(places, 1):
            with self.subTest(list=number, row=row):
                name = self.double_click(viewer, number, row)
                opened = self.opened(count)
                self.assertEqual(len(opened), count)
                linked = (number, row) == (3, 0)
                self.assertTrue(opened[-1].endswith(f'\\{name}'), opened)
                self.assertIn(r'C:\Users\Public\Documents\Bracket' if linked else folder, opened[-1])
                self.show_properties(viewer, number, row)
        self.assertEqual(len(self.opened(len(places))), len(places))
        self.close_popup(viewer)
        self.finish(viewer)

    def show_properties(self, viewer, number, row):
        """A single click on a row, and the popup it brings. Later than a second half of the click before."""
        time.sleep(2 * DOUBLE_CLICK)
        viewer.click(*self.row_place(viewer.snapshot().lists()[number], row))
        viewer.wait('the popup', lambda s: any(w.text == 'Document Properties' for w in s.others))
        time.sleep(2 * DOUBLE_CLICK)

    def close_popup(self, viewer):
        box = viewer.snapshot().boxes()[0]
        viewer.click(box.rect[0] + 3, box.rect[3] + 1)
        viewer.wait('the popup is gone', lambda s: not s.others)

    def test_a_missing_link_is_told_and_nothing_opened(self):
        viewer, _ = self.open_sample()
        self.double_click(viewer, 3, 2)
        shown = viewer.wait_for_dialog('the message')
        self.assertEqual(shown.dialog().text, 'Maxtrel Orvando Document Manager')
        viewer.press('Return')
        viewer.wait_for_package('bracket.mxov')
        self.assertEqual(self.log.read_text(), '')
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
