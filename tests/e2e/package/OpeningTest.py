#!/usr/bin/env python3
"""Opening packages in every way, and what cannot be opened."""
import functools
import io
import pathlib
import unittest
import zipfile

import dragsource
from viewercase import ADD, DELETE, MISSING, PREFIX, ViewerCase, information, packed_rows, session_entries
from viewerdriver import PROGRAM, Viewer
from wineprogram import query_registry, windows_path


@functools.cache
def large_content(size):
    """A package of so many files that unpacking it takes a while, and of a first one with so many bytes."""
    content = io.BytesIO()
    with zipfile.ZipFile(content, 'w') as archive:
        archive.writestr('mxinfo.ini', '[FILEINFO]\nMaxtlreVersion=Package Writer 2024\n')
        archive.writestr('GCode/first.nc', bytes(size))
        for number in range(30000):
            archive.writestr(f'GCode/{number % 300}/op{number}.nc', f'N{number} G0 X0 Y0\n')
    return content.getvalue()


class OpeningTest(ViewerCase):
    def test_another_package_with_the_keyboard(self):
        viewer, _ = self.open_sample()
        viewer.press('alt+f', 'o')
        viewer.wait_for_dialog('the open dialog')
        viewer.photograph('e2e-open')
        self.type_path(viewer, self.legacy)
        viewer.press('Return')
        shown = viewer.wait_for_package('legacy.mxov')
        part, programs, sheets, additional = shown.lists()
        cad = information(self.legacy, 'Private/mxinfo.ini')['FILEINFO']
        self.assertEqual(part.rows, [(cad['CADFilePath'].rsplit('\\', 1)[1], '0 KB', cad['CADFileLastModifiedTime'],
                                      MISSING)])
        self.assertEqual(sorted(programs.rows), packed_rows(self.legacy, 'GCode'))
        self.assertEqual(sorted(sheets.rows), packed_rows(self.legacy, 'SetupSheets'))
        self.assertEqual((additional.rows, additional.visible), ([], False))
        self.assertFalse(shown.item(ADD).visible or shown.item(DELETE).visible or shown.boxes()[3].visible)
        self.assertIn('no preview', shown.frame.find(class_name='MXOVPreviewPane').text)
        self.assertEqual(len(session_entries()), 2, 'one folder and its session file')
        viewer.photograph('e2e-legacy')
        self.finish(viewer)

    def test_a_dropped_package_is_opened(self):
        viewer, shown = self.open_sample()
        pane = shown.frame.find(class_name='MXOVPreviewPane')
        for window, package in ((pane, self.legacy), (shown.lists()[2], self.sample)):
            name = pathlib.Path(package).name
            dragsource.drop(viewer.snapshot().frame.display, (window.rect[0] + 20, window.top + 20), package)
            viewer.wait_for_package(name)
        self.finish(viewer)

    def test_a_recent_package_that_is_gone_is_told_and_forgotten(self):
        viewer, _ = self.open_sample()
        self.choose_file(viewer, self.legacy)
        viewer.wait_for_package('legacy.mxov')
        pathlib.Path(self.sample).unlink()
        viewer.press('alt+f', 'r', '2')
        shown = viewer.wait_for_dialog('the message')
        self.assertIn('cannot be found', shown.texts())
        self.assertIn('bracket.mxov', shown.texts())
        viewer.press('Return')
        viewer.wait_for_package('legacy.mxov')
        recent = query_registry(r'HKCU\Software\MXOVDocView\Viewer', '/v', 'RecentPackages')
        self.assertIn('legacy.mxov', recent)
        self.assertNotIn('bracket.mxov', recent)
        self.finish(viewer)

    def test_a_package_that_does_not_exist(self):
        viewer = self.use(Viewer(windows_path(self.folder / 'none.mxov')))
        shown = viewer.wait_for_dialog('the message')
        self.assertIn('cannot be found', shown.texts())
        self.assertIn('none.mxov', shown.texts())
        viewer.press('Return')
        shown = viewer.wait('the window is empty', lambda s: s.frame.text == PROGRAM and not s.others)
        self.assertFalse(shown.item(ADD).visible, 'there is nothing to attach documents to')
        self.finish(viewer)

    def test_a_folder_is_no_package(self):
        viewer = self.use(Viewer(windows_path(self.folder)))
        viewer.wait('the message', lambda s: f'{self.folder.name} is a folder' in s.texts())
        viewer.press('Return')
        viewer.wait_for_no_dialog('the message is read')
        self.finish(viewer)

    def refuse(self, path, *words):
        """With the sample open, a message with these words refuses `path`, and nothing else changes."""
        viewer, before = self.open_sample()
        sessions = session_entries()
        self.choose_file(viewer, path)
        shown = viewer.wait('the message', lambda s: 'cannot be opened' in s.texts())
        for word in (pathlib.Path(path).name, *words):
            self.assertIn(word, shown.texts())
        self.assertRegex(shown.texts(), r'(?m)^["A-Z].*\.$', 'the reason is a sentence')
        viewer.photograph(f'e2e-refused-{pathlib.Path(path).stem}')
        viewer.press('Return')
        shown = viewer.wait_for_package('bracket.mxov')
        self.assertEqual([item.rows for item in shown.lists()], [item.rows for item in before.lists()])
        self.wait_for_sessions(viewer, len(sessions))
        self.assertEqual(session_entries(), sessions)
        self.finish(viewer)

    def test_a_file_that_is_no_package_is_refused(self):
        letter = self.folder / 'letter.mxov'
        letter.write_text('Dear Sir or Madam\n' * 40, encoding='ascii')
        self.refuse(letter)

    def test_a_hostile_package_is_refused(self):
        hostile = self.folder / 'hostile.mxov'
        with zipfile.ZipFile(hostile, 'w') as archive:
            archive.writestr('mxinfo.ini', '[FILEINFO]\n')
            archive.writestr('../outside.txt', 'outside')
        self.refuse(hostile, 'outside.txt')
        self.assertEqual(list(PREFIX.glob('drive_c/users/*/**/outside.txt')), [])

    def large_package(self, size=0):
        path = self.folder / 'large.mxov'
        path.write_bytes(large_content(size))
        return path

    def test_a_long_opening_shows_progress_and_can_be_cancelled(self):
        large = self.large_package()
        viewer, before = self.open_sample()
        sessions = session_entries()
        self.choose_file(viewer, large)
        shown = viewer.wait('the progress', lambda s: 'Opening large.mxov' in s.texts() and '.nc' in s.texts())
        self.assertTrue(shown.frame.enabled)
        viewer.photograph('e2e-progress')
        viewer.press('Escape')
        shown = viewer.wait_for_package('bracket.mxov')
        self.assertEqual([item.rows for item in shown.lists()], [item.rows for item in before.lists()])
        self.wait_for_sessions(viewer, len(sessions))
        self.assertEqual(session_entries(), sessions)
        self.finish(viewer)

    def test_a_hundred_megabytes_named_at_the_start_show_the_window_and_cancel_leaves_it_empty(self):
        viewer = self.use(Viewer(windows_path(self.large_package(100_000_000))))
        shown = viewer.wait('the progress', lambda s: 'Opening large.mxov' in s.texts())
        self.assertTrue(shown.frame.visible and shown.frame.enabled)
        self.assertEqual(shown.frame.text, PROGRAM)
        viewer.photograph('e2e-progress-at-the-start')
        viewer.click(*shown.dialog().find(text='Cancel').middle)
        shown = viewer.wait('the window is empty', lambda s: s.frame.text == PROGRAM and not s.others)
        self.assertFalse(shown.item(ADD).visible)
        self.wait_for_sessions(viewer, 0)
        self.finish(viewer)

    def test_closing_while_a_package_is_being_opened(self):
        large = self.large_package()
        viewer = self.use(Viewer(windows_path(large)))
        viewer.wait('the progress', lambda s: 'Opening large.mxov' in s.texts())
        viewer.do('windowactivate', '--sync', viewer.snapshot().frame.display)
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
