#!/usr/bin/env python3
"""Packages that hold programs: the bar names them, and a policy refuses them."""
import unittest
import zipfile

from viewercase import SESSIONS, ViewerCase, news, session_entries, session_folder
from viewerdriver import PROGRAM, Viewer
from wineprogram import change_registry, windows_path

PROGRAMS = ('Tools/setup.exe', 'Tools/report.hta', 'macro.js', 'link.lnk', 'values.reg')
NOTICE = (r'This package holds programs: Tools\setup.exe, Tools\report.hta, macro.js and 2 more. '
          'Open them only if you trust their origin.')
POLICIES = r'Software\Policies\MXOVDocView'


class ProgramsTest(ViewerCase):
    def add_programs(self):
        """Programs in the sample package."""
        with zipfile.ZipFile(self.sample, 'a') as package:
            for name in PROGRAMS:
                package.writestr(name, 'program')

    def set_policy(self, root, *value):
        self.addCleanup(change_registry, 'delete', rf'{root}\{POLICIES}', '/f')
        change_registry('add', rf'{root}\{POLICIES}', *value, '/f')

    def wait_for_notice(self, viewer):
        return viewer.wait('the programs are named', lambda s: news(s) == NOTICE and not s.others)

    def test_the_bar_names_programs_and_gives_way_to_other_news(self):
        self.add_programs()
        viewer, _ = self.open_sample()
        shown = self.wait_for_notice(viewer)
        self.assertEqual(shown.frame.text, f'bracket.mxov - {PROGRAM}', 'programs are no change')
        self.assertIsNone(shown.frame.find(class_name='MXOVNewsBar').find(class_name='Button'))
        viewer.photograph('e2e-programs')
        document = session_folder() / 'GCode/op10-face-pocket.nc'
        content = document.read_bytes()
        document.write_bytes(content + b'(edited)\r\n')
        viewer.wait('other news', lambda s: 'was changed by another program' in news(s))
        document.write_bytes(content)
        self.wait_for_notice(viewer)
        viewer.press('ctrl+w')
        viewer.wait('the notice goes with the package', lambda s: news(s) == '' and s.frame.text == PROGRAM)
        self.finish(viewer)

    def test_a_package_without_programs_has_no_notice(self):
        viewer, shown = self.open_sample()
        self.assertEqual(news(shown), '')
        self.finish(viewer)

    def test_a_policy_refuses_packages_that_hold_programs(self):
        self.add_programs()
        self.set_policy('HKLM', '/v', 'RefusePrograms', '/t', 'REG_DWORD', '/d', '1')
        viewer = self.use(Viewer(windows_path(self.sample)))
        shown = viewer.wait('the message', lambda s: 'your administrator does not allow' in s.texts())
        self.assertIn('It holds programs, which your administrator does not allow: '
                      r'Tools\setup.exe, Tools\report.hta, macro.js and 2 more.', shown.texts())
        viewer.photograph('e2e-programs-refused')
        viewer.press('Return')
        viewer.wait('the window is empty', lambda s: s.frame.text == PROGRAM and not s.others)
        self.wait_for_sessions(viewer, 0)
        self.choose_file(viewer, self.legacy)
        viewer.wait_for_package('legacy.mxov')
        self.finish(viewer)

    def test_a_policy_states_where_packages_are_unpacked(self):
        self.set_policy('HKCU', '/v', 'UnpackFolder', '/t', 'REG_SZ', '/d', windows_path(self.folder / 'unpacked/here'))
        viewer, _ = self.open_sample()
        self.assertEqual(session_entries(), [])
        self.assertFalse(SESSIONS.exists())
        unpacked = self.folder / 'unpacked/here/MXOVViewer'
        self.assertEqual(len(list(unpacked.glob('*/mxinfo.ini'))), 1)
        self.finish(viewer)
        self.assertFalse(unpacked.exists())


if __name__ == '__main__':
    unittest.main(verbosity=2)
