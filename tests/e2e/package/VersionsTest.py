#!/usr/bin/env python3
"""The earlier versions of a package: kept at each save, looked at, compared, and taken back."""
import unittest
import zipfile

from viewercase import SAVE, SESSIONS, VERSIONS, ViewerCase, information, session_folder
from viewerdriver import PROGRAM, Viewer
from wineprogram import query_registry, windows_path

TITLE = 'Earlier versions'
LIST, DOCUMENTS, LOOK, COMPARE, TAKE_DOCUMENT, TAKE_ALL, KEEP = 259, 261, 262, 263, 264, 265, 266
SETTINGS = r'HKCU\Software\MXOVDocView\Viewer'


def stored():
    """Names and sizes of all that is kept."""
    return sorted((path.relative_to(VERSIONS).as_posix(), path.stat().st_size) for path in VERSIONS.rglob('*')
                  if path.is_file())


def kept():
    """How many versions there are of all packages."""
    return sum(name.endswith('.ini') for name, _ in stored())


def versions(shown):
    """The lines of the time line; None while it is not shown."""
    window = next((window for window in shown.others if window.text == TITLE), None)
    return [row[1:4] for row in window.find(id=LIST).rows] if window else None


def documents(shown):
    return [row[:2] for row in shown.dialog().find(id=DOCUMENTS).rows]


class VersionsTest(ViewerCase):
    def setUp(self):
        super().setUp()
        self.package = self.folder / 'job.mxov'
        with zipfile.ZipFile(self.package, 'w', zipfile.ZIP_DEFLATED) as archive:
            archive.writestr('mxinfo.ini', '[FILEINFO]\r\nMaxtlreVersion=Maxtrel Orvando 2024\r\nGCode=GCode\\op10.nc\r\n'
                                           '[REFERANCE_FILE_1]\r\nIsReferencedFile=NO\r\nDescription=The plan\r\n'
                                           'Timestamp=2024-03-01 10:00:00\r\nFilePath=ReferanceFiles\\plan.txt\r\n')
            archive.writestr('GCode/op10.nc', '0')
            archive.writestr('GCode/op20.nc', 'N10 M30')
            archive.writestr('ReferanceFiles/plan.txt', 'a plan')

    def open_package(self):
        viewer = self.use(Viewer(windows_path(self.package)))
        viewer.wait_for_package('job.mxov')
        return viewer

    def packed(self, name):
        with zipfile.ZipFile(self.package) as archive:
            return archive.read(name).decode()

    def change(self, viewer, text):
        """The program is changed by another program."""
        (session_folder() / 'GCode/op10.nc').write_text(text, encoding='ascii')
        viewer.wait('it counts as unsaved', lambda s: s.frame.text.startswith('*'))

    def save_with_note(self, viewer, text):
        before = kept()
        self.change(viewer, text)
        if before == 0:
            viewer.wait_until_nothing_hinders('the state before is kept', lambda: None if kept() == 1 else stored())
            before = 1
        viewer.press('ctrl+shift+s')
        viewer.wait_for_dialog('the question')
        viewer.type(f'note {text}')
        viewer.press('Return')
        self.wait_for_saved(viewer, 'GCode/op10.nc', text)
        viewer.wait_until_nothing_hinders('the version is kept', lambda: None if kept() == before + 1 else stored())

    def wait_for_saved(self, viewer, name, text):
        viewer.wait('it is saved', lambda s: not s.others and s.frame.text == f'job.mxov - {PROGRAM}')
        self.assertEqual(self.packed(name), text)

    @staticmethod
    def open_versions(viewer, count):
        viewer.press('alt+f', 'e')
        return viewer.wait(f'{count} versions', lambda s: versions(s) is not None and len(versions(s)) == count)

    def test_saves_are_listed_looked_at_and_taken_back(self):
        viewer = self.open_package()
        for text in ('1', '2', '3'):
            self.save_with_note(viewer, text)
        shown = self.open_versions(viewer, 4)
        user = information(self.package)['FILE_HISTORY_1']['By']
        self.assertEqual(versions(shown), [(user, f'note {text}', 'Changed: op10.nc') for text in '321']
                         + [('', '', 'First version kept')])
        dialog = shown.dialog()
        self.assertTrue(all(row[0] for row in dialog.find(id=LIST).rows), 'the time of each save')
        self.assertEqual([dialog.find(id=number).enabled for number in (LOOK, COMPARE, TAKE_DOCUMENT, TAKE_ALL)],
                         [True, True, False, False], 'the last one is what is open')
        viewer.press('Down')
        shown = viewer.wait('its differences', lambda s: documents(s) == [('op10.nc', 'Changed')])
        viewer.photograph('e2e-versions')
        self.look_at(viewer, '2')
        viewer.press('alt+m')
        shown = viewer.wait('the comparison', lambda s: len(s.others) == 2 and s.dialog().text == 'Compare')
        self.assertIn('What is open differs from job.mxov of ', shown.texts())
        viewer.press('Escape')
        viewer.wait('the time line', lambda s: len(s.others) == 1)
        viewer.press('alt+d')
        viewer.wait('it is as it was', lambda s: len(s.others) == 1 and documents(s) == [])
        self.assertEqual((session_folder() / 'GCode/op10.nc').read_text(), '2')
        self.assertEqual(self.packed('GCode/op10.nc'), '3', 'the package is saved by the user alone')
        viewer.press('Escape')
        viewer.wait('it counts as unsaved', lambda s: not s.others and s.frame.text == f'*job.mxov - {PROGRAM}')
        viewer.press('ctrl+s')
        self.wait_for_saved(viewer, 'GCode/op10.nc', '2')
        self.take_all_back(viewer)
        self.finish(viewer)
        self.assertFalse([name for name, _ in stored() if not name.endswith(('.ini', '.files'))])
        self.check_package(self.package, 'GCode/op10.nc', 'GCode/op20.nc', 'ReferanceFiles/plan.txt', 'mxinfo.ini')

    def look_at(self, viewer, text):
        """A second window shows the selected version, which cannot be saved there."""
        viewer.press('alt+l')
        shown = viewer.wait('the version', lambda s: not s.others and '(earlier version, read-only)' in s.frame.text)
        self.assertRegex(shown.frame.text, r'^job as of \d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d\.mxov \(earlier version')
        self.assertIn(text, [path.read_text() for path in SESSIONS.glob('*/GCode/op10.nc')])
        viewer.photograph('e2e-version-shown')
        viewer.press('ctrl+shift+s')  # opens no question, so that the next key closes the window
        viewer.press('alt+F4')
        viewer.wait('the time line again', lambda s: versions(s) is not None)

    def take_all_back(self, viewer):
        """The state that was opened, with the history of all saves since."""
        self.open_versions(viewer, 5)
        viewer.press('End')
        viewer.wait('its differences', lambda s: documents(s) == [('op10.nc', 'Changed')])
        before = [name for name in information(self.package) if name.startswith('FILE_HISTORY')]
        viewer.press('alt+a')
        viewer.wait('it counts as unsaved', lambda s: not s.others and s.frame.text == f'*job.mxov - {PROGRAM}')
        viewer.press('ctrl+s')
        self.wait_for_saved(viewer, 'GCode/op10.nc', '0')
        after = [name for name in information(self.package) if name.startswith('FILE_HISTORY')]
        self.assertEqual((len(before), after[:-1]), (4, before))

    def test_a_removed_document_is_listed_again(self):
        viewer = self.open_package()
        self.remove(viewer, 0)
        viewer.wait('it is removed', lambda s: not s.others and not s.lists()[3].rows)
        self.save(viewer)
        viewer.wait_until_nothing_hinders('both states are kept', lambda: None if kept() == 2 else stored())
        shown = self.open_versions(viewer, 2)
        self.assertEqual(versions(shown)[0][2], 'Removed: plan.txt')
        viewer.click(*self.row_place(shown.dialog().find(id=LIST), 1))
        viewer.wait('its differences', lambda s: documents(s) == [('plan.txt', 'Removed')])
        viewer.click(*viewer.snapshot().dialog().find(id=TAKE_DOCUMENT).middle)
        viewer.wait('it is as it was', lambda s: documents(s) == [])
        viewer.press('Escape')
        viewer.wait('it is listed', lambda s: not s.others and [row[0] for row in s.lists()[3].rows] == ['plan.txt'])
        self.save(viewer)
        section = information(self.package)['REFERANCE_FILE_1']
        self.assertEqual((section['FilePath'], section['Description'], section['IsReferencedFile']),
                         (r'ReferanceFiles\plan.txt', 'The plan', 'NO'))
        self.assertEqual(self.packed('ReferanceFiles/plan.txt'), 'a plan')
        self.finish(viewer)

    def test_unsaved_changes_are_replaced_only_when_the_user_agrees(self):
        viewer = self.open_package()
        self.save_with_note(viewer, '1')
        self.change(viewer, 'unsaved')
        self.open_versions(viewer, 2)
        for keys in (('alt+d',), ('alt+a',)):
            viewer.press(*keys)
            viewer.wait('the question', lambda s: len(s.others) == 2 and 'unsaved changes to job.mxov' in s.texts())
            viewer.press('Tab', 'Return')
            viewer.wait('the time line', lambda s: len(s.others) == 1)
        self.assertEqual((session_folder() / 'GCode/op10.nc').read_text(), 'unsaved')
        viewer.press('alt+a')
        viewer.wait('the question', lambda s: len(s.others) == 2)
        viewer.press('Return')
        viewer.wait_for_no_dialog('it is taken back')
        self.assertEqual((session_folder() / 'GCode/op10.nc').read_text(), '1')
        self.click_item(viewer, SAVE)
        self.wait_for_saved(viewer, 'GCode/op10.nc', '1')
        self.finish(viewer)

    def test_switched_off_nothing_is_written(self):
        viewer = self.open_package()
        self.save_with_note(viewer, '1')
        before = stored()
        shown = self.open_versions(viewer, 2)
        box = shown.dialog().find(id=KEEP)
        viewer.click(box.rect[0] + 6, (box.top + box.rect[3]) // 2)
        viewer.press('Escape')
        viewer.wait_for_no_dialog('the time line is closed')
        self.assertIn('0x0', query_registry(SETTINGS, '/v', 'KeepVersions'))
        self.change(viewer, '2')
        viewer.press('ctrl+s')
        self.wait_for_saved(viewer, 'GCode/op10.nc', '2')
        self.finish(viewer)
        self.assertEqual(stored(), before)

    def test_what_is_saved_on_closing_is_kept_and_nothing_without_changes(self):
        viewer = self.open_package()
        self.finish(viewer)
        self.assertEqual(stored(), [])
        viewer = self.open_package()
        self.change(viewer, '1')
        viewer.press('alt+F4')
        viewer.wait_for_dialog('the question')
        viewer.press('Return')
        self.assertEqual(viewer.process.wait(60), 0)
        self.assertEqual((self.packed('GCode/op10.nc'), kept()), ('1', 2))

    def test_without_versions_the_list_is_empty(self):
        viewer = self.open_package()
        shown = self.open_versions(viewer, 0)
        self.assertIn('No earlier versions of job.mxov are kept', shown.texts())
        self.assertFalse(any(shown.dialog().find(id=number).enabled for number in (LOOK, COMPARE, TAKE_DOCUMENT, TAKE_ALL)))
        viewer.press('Escape')
        viewer.wait_for_no_dialog('it is closed')
        self.finish(viewer)

    def test_a_damaged_version_is_named_and_missing_content_reported(self):
        viewer = self.open_package()
        self.save_with_note(viewer, '1')
        first, second = sorted(VERSIONS.rglob('*.ini'))
        second.write_bytes(second.read_bytes()[:100])
        first.with_suffix('.files').unlink()
        shown = self.open_versions(viewer, 1)
        self.assertIn('cannot be read: its list of files is damaged.', shown.texts())
        viewer.press('alt+a')
        shown = viewer.wait('the reason', lambda s: len(s.others) == 2)
        self.assertIn('The earlier version cannot be used.', shown.texts())
        self.assertIn(f'{first.stem}.files', shown.texts())
        viewer.press('Return')
        viewer.wait('the time line', lambda s: len(s.others) == 1)
        viewer.press('Escape')
        viewer.wait_for_no_dialog('it is closed')
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
