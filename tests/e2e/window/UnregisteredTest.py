#!/usr/bin/env python3
"""The viewer on a computer that does not know the control, or knows another file of it."""
import pathlib
import shutil
import unittest

from viewercase import ViewerCase, session_entries
from viewerdriver import BUILD, Viewer
from wineprogram import run_wine, windows_path

CONTROL = BUILD / 'bin/MXOVDocViewCtrl.ocx'


def loaded_control(viewer):
    """The file from which the viewer's process has loaded the control."""
    maps = pathlib.Path(f'/proc/{viewer.process.pid}/maps').read_text(encoding='utf-8')
    return {line.split(maxsplit=5)[5] for line in maps.splitlines() if line.endswith('MXOVDocViewCtrl.ocx')}


class UnregisteredTest(ViewerCase):
    def unregister(self):
        run_wine('regsvr32', '/s', '/u', windows_path(CONTROL)).expect()
        self.addCleanup(lambda: run_wine('regsvr32', '/s', windows_path(CONTROL)).expect())

    def copy_program(self, *names):
        """Some of the delivered files in a folder of their own."""
        folder = self.folder / 'unzipped'
        folder.mkdir()
        for name in names:
            shutil.copy2(BUILD / 'bin' / name, folder)
        return folder

    def test_without_registration_it_uses_the_control_beside_it(self):
        self.unregister()
        viewer, shown = self.open_sample()
        part, programs, sheets, additional = self.expected_sample_rows()
        self.assertEqual([sorted(shown_list.rows) for shown_list in shown.lists()],
                         [part, programs, sheets, sorted(additional)])
        self.assertEqual(loaded_control(viewer), {str(CONTROL)})
        viewer.photograph('e2e-not-registered')
        self.finish(viewer)

    def test_another_registered_file_does_not_matter(self):
        self.unregister()
        other = self.copy_program('MXOVDocViewCtrl.ocx', 'mxovshare.dll') / 'MXOVDocViewCtrl.ocx'
        run_wine('regsvr32', '/s', windows_path(other)).expect()
        self.addCleanup(lambda: run_wine('regsvr32', '/s', '/u', windows_path(other)).expect())
        viewer, _ = self.open_sample()
        self.assertEqual(loaded_control(viewer), {str(CONTROL)})
        self.finish(viewer)

    def check_missing(self, name, *present):
        self.unregister()
        folder = self.copy_program(*present)
        viewer = self.use(Viewer(windows_path(self.sample), program=folder / 'viewer.exe'))
        shown = viewer.wait_for_dialog('the message')
        self.assertIn(windows_path(folder / name), shown.texts())
        self.assertFalse(shown.frame.visible)
        viewer.photograph('e2e-missing-file')
        viewer.press('Return')
        self.assertEqual(viewer.process.wait(30), 1)
        self.assertEqual(session_entries(), [])

    def test_a_missing_control_is_named(self):
        self.check_missing('MXOVDocViewCtrl.ocx', 'viewer.exe', 'mxovshare.dll', 'MXOVDocViewCtrl.manifest')

    def test_a_missing_manifest_is_named(self):
        self.check_missing('MXOVDocViewCtrl.manifest', 'viewer.exe', 'mxovshare.dll', 'MXOVDocViewCtrl.ocx')


if __name__ == '__main__':
    unittest.main(verbosity=2)
