#!/usr/bin/env python3
"""Documents dragged from the viewer to another program."""
import subprocess
import time
import unittest

from viewercase import ViewerCase, session_folder
from viewerdriver import BUILD, PATIENCE, PROGRAM
from wineprogram import windows_path

TARGET = (1050, 800)
PAGE = 'MXOVDocumentPane'


class DragOutTest(ViewerCase):
    def setUp(self):
        super().setUp()
        self.received = self.folder / 'received'
        self.received.mkdir()

    def start_target(self):
        target = subprocess.Popen(['wine', windows_path(BUILD / 'tests/DropTarget.exe'), *map(str, TARGET),
                                   windows_path(self.received)])
        self.addCleanup(lambda: target.poll() is None and target.kill())
        time.sleep(2)
        return target

    def select(self, viewer, number, name):
        shown = viewer.snapshot()
        row = [row[0] for row in shown.lists()[number].rows].index(name)
        viewer.click(*self.row_place(shown.lists()[number], row))
        viewer.wait('the page', lambda s: s.frame.find(class_name=PAGE).visible
                    and s.frame.find(class_name=PAGE).text.split('\n')[0] == name)
        viewer.press('alt+F4')
        return viewer.wait_for_no_dialog('the properties are closed').frame.find(class_name=PAGE)

    def drag(self, viewer, start, end):
        """As a hand does: past the distance that counts as a drag, then to the other window."""
        viewer.point(*start)
        viewer.do('mousedown', 1)
        for x, y in ((start[0] + 12, start[1] + 4), (start[0] + 30, start[1] + 30), (end[0] - 5, end[1] - 5), end):
            viewer.do('mousemove', x, y)
            time.sleep(0.3)
        viewer.photograph('e2e-drag-out')
        viewer.do('mouseup', 1)

    def test_a_document_is_dragged_to_another_program_as_a_copy(self):
        target = self.start_target()
        viewer, _ = self.open_sample()
        page = self.select(viewer, 3, 'inspection-plan.pdf')
        self.drag(viewer, (page.rect[0] + 40, page.top + 30), (TARGET[0] + 70, TARGET[1] + 70))
        self.assertEqual(target.wait(PATIENCE), 0)
        original = session_folder() / 'ReferanceFiles/inspection-plan.pdf'
        self.assertEqual((self.received / 'inspection-plan.pdf').read_bytes(), original.read_bytes())
        self.assertEqual(viewer.snapshot().frame.text, f'bracket.mxov - {PROGRAM}')
        self.finish(viewer)

    def test_dropped_on_the_viewer_itself_nothing_happens(self):
        viewer, _ = self.open_sample()
        page = self.select(viewer, 3, 'inspection-plan.pdf')
        self.drag(viewer, (page.rect[0] + 40, page.top + 30), (page.rect[0] + 200, page.rect[3] - 60))
        shown = viewer.wait('nothing is asked', lambda s: not s.others)
        self.assertEqual(len(shown.lists()[3].rows), 3)
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
