#!/usr/bin/env python3
"""Whether every text of the viewer has its place in every language, with more dots per inch than usual."""
import os
import unittest
from unittest import mock

from viewercase import ViewerCase
from viewerdriver import BUILD
from wineprogram import run_wine, windows_path


class TextFitTest(ViewerCase):
    def check(self, percent):
        dots = 96 * percent // 100
        self.set_dots_per_inch(dots)
        self.enterContext(mock.patch.dict(os.environ, MXOV_DOTS=str(dots)))
        ended = run_wine(windows_path(BUILD / 'tests/viewer_window_tests.exe'), '--gtest_filter=*FitTest*')
        self.assertIn('[  PASSED  ] 55 tests.', ended.output, ended)
        ended.expect()

    def test_at_125_percent(self):
        self.check(125)

    def test_at_150_percent(self):
        self.check(150)

    def test_at_200_percent(self):
        self.check(200)


if __name__ == '__main__':
    unittest.main(verbosity=2)
