#!/usr/bin/env python3
"""The viewer on a computer that does not know the control."""
import unittest

from viewercase import ViewerCase, session_entries
from viewerdriver import BUILD, Viewer
from wineprogram import run_wine, windows_path


class UnregisteredTest(ViewerCase):
    def test_without_the_control_it_says_how_to_register_it(self):
        control = windows_path(BUILD / 'bin/MXOVDocViewCtrl.ocx')
        run_wine('regsvr32', '/s', '/u', control).expect()
        self.addCleanup(lambda: run_wine('regsvr32', '/s', control).expect())
        viewer = self.use(Viewer(windows_path(self.sample)))
        shown = viewer.wait_for_dialog('the message')
        self.assertIn(f'regsvr32 "{control}"', shown.texts())
        self.assertFalse(shown.frame.visible)
        viewer.photograph('e2e-not-registered')
        viewer.press('Return')
        self.assertEqual(viewer.process.wait(30), 1)
        self.assertEqual(session_entries(), [])


if __name__ == '__main__':
    unittest.main(verbosity=2)
