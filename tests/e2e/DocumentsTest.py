#!/usr/bin/env python3
"""A double click opens a document with the program that is registered for its kind."""
import re
import time
import unittest

from viewercase import BUILD, ViewerCase, session_folder
from viewerdriver import PATIENCE, run_wine, windows_path

KINDS = ('.nc', '.html', '.pdf')
CLASS = 'MXOVTestDocument'


class DocumentsTest(ViewerCase):
    def setUp(self):
        super().setUp()
        self.log = self.folder / 'opened.txt'
        self.log.touch()
        command = f'"{windows_path(BUILD / "tests/OpenRecorder.exe")}" "{windows_path(self.log)}" "%1"'
        self.register(rf'HKCR\{CLASS}\shell\open\command', command)
        for kind in KINDS:
            self.register(rf'HKCR\{kind}', CLASS)

    def register(self, key, value):
        """Sets a key's own value until the end of the test."""
        _, text = run_wine('reg', 'query', key, '/ve')
        before = re.search(r'REG_SZ\s+(\S.*)', text)
        if before:
            self.addCleanup(run_wine, 'reg', 'add', key, '/ve', '/d', before[1], '/f')
        else:
            self.addCleanup(run_wine, 'reg', 'delete', key, '/f')
        self.assertEqual(run_wine('reg', 'add', key, '/ve', '/d', value, '/f')[0], 0)

    def double_click(self, viewer, number, row):
        """A double click on a row's name; gives what is written there."""
        shown = viewer.snapshot().lists()[number]
        x, y = self.row_place(shown, row)
        viewer.do('mousemove', x, y, 'click', '--repeat', 2, '--delay', 60, 1)
        return shown.rows[row][0]

    def opened(self, count):
        """The documents that were opened, when there are so many."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            lines = self.log.read_text(encoding='utf-8').splitlines()
            if len(lines) >= count:
                return lines
            time.sleep(0.05)
        raise AssertionError(f'{count} documents opened: not within {PATIENCE} seconds; {lines}')

    def test_a_program_opens(self):
        viewer, _ = self.open_sample()
        folder = session_folder()
        program = self.double_click(viewer, 1, 0)
        opened = self.opened(1)[0]
        self.assertEqual(opened.rsplit('\\', 1)[1], program)
        self.assertIn(folder.name, opened)
        self.finish(viewer)

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
