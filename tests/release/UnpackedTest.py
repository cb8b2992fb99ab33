#!/usr/bin/env python3
"""The unpacked archive on a computer that does not know the product."""
import os
import shutil
import unittest

from releasecase import ReleaseCase
from viewerdriver import Viewer
from wineprogram import run_wine, windows_path


class UnpackedTest(ReleaseCase):
    def setUp(self):
        # Nothing is found but what is beside the program.
        os.environ.pop('WINEPATH', None)

    def test_the_viewer_starts_and_opens_the_sample(self):
        with Viewer(windows_path(self.unpacked / 'samples/bracket.mxov'), program=self.unpacked / 'viewer.exe') as viewer:
            shown = viewer.wait('the package is open', lambda s: 'bracket.mxov' in s.frame.text)
            self.assertEqual([len(shown_list.rows) for shown_list in shown.lists()], [1, 3, 3, 3])
            self.assertEqual(viewer.close(), 0)

    def test_the_command_line_checks_the_samples(self):
        program = windows_path(self.unpacked / 'mxovpkg.exe')
        for name in ('bracket', 'legacy'):
            package = self.folder / f'{name}.mxov'
            shutil.copy(self.unpacked / f'samples/{name}.mxov', package)
            run_wine(program, 'check', windows_path(package)).expect()

    def test_the_check_for_windows_runs(self):
        ended = run_wine('cscript', '//nologo', windows_path(self.unpacked / 'check-windows.js'), '/auto').expect()
        self.assertEqual([line.split()[0] for line in ended.output.splitlines() if line.startswith(('passed', 'skipped'))],
                         ['passed', 'passed', 'skipped', 'skipped'], 'Wine has neither activation contexts for scripts nor AppActivate')
        self.assertIn('nothing failed', ended.output)


if __name__ == '__main__':
    unittest.main(verbosity=2)
