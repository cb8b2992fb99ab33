#!/usr/bin/env python3
"""The care of the open package: the check with its cures, the portable copy, and the comparison with another package."""
import shutil
import unittest
import zipfile

from viewercase import LIBRARY, LINKED, MISSING, PACKAGED, PREFIX, SAVE, ViewerCase, information
from viewerdriver import PROGRAM, Viewer
from wineprogram import windows_path

CHECK, LIST, SUMMARY, DETAILS = 'Check package', 241, 240, 242
FIND, REMOVE, ATTACH, DIFFERENCES = 243, 246, 247, 250
SIDE_BY_SIDE, NOISE, STATE, PLAIN, NEXT = 1, 252, 254, 255, 257


def findings(shown):
    """The lines of the list; None while it is not shown."""
    window = next((window for window in shown.others if window.text == CHECK), None)
    return [row[:3] for row in window.find(id=LIST).rows] if window else None


def missing(path):
    return 'Warning', path.rsplit('\\', 1)[1], f'Linked document "{path}" does not exist.'


class CareTest(ViewerCase):
    def setUp(self):
        super().setUp()
        self.disk = PREFIX / 'drive_c/care'  # no personal folder, unlike those for temporary files
        self.addCleanup(shutil.rmtree, self.disk, ignore_errors=True)
        self.package = self.folder / 'care.mxov'

    def place(self, *names):
        for name in names:
            path = self.disk / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(name, encoding='ascii')

    def open_package(self, *links, files=()):
        """A package with links and with files that nothing shows."""
        sections = ''.join(f'[REFERANCE_FILE_{number}]\r\nIsReferencedFile=YES\r\nFilePath={link}\r\n'
                           for number, link in enumerate(links, 1))
        with zipfile.ZipFile(self.package, 'w', zipfile.ZIP_DEFLATED) as archive:
            archive.writestr('mxinfo.ini', '[FILEINFO]\r\nMaxtlreVersion=Maxtrel Orvando 2024\r\n'
                                           'SetupSheets=SetupSheets\\setup.html\r\n' + sections)
            for name in ('SetupSheets/setup.html', *files):
                archive.writestr(name, name)
        viewer = self.use(Viewer(windows_path(self.package)))
        viewer.wait_for_package('care.mxov')
        return viewer

    def check(self, viewer, *expected):
        viewer.press('F7')
        return self.wait_for_findings(viewer, *expected)

    @staticmethod
    def wait_for_findings(viewer, *expected):
        return viewer.wait(f'{len(expected)} findings', lambda s: findings(s) == list(expected))

    def close_findings(self, viewer):
        viewer.press('Escape')
        return viewer.wait_for_no_dialog('the list is closed')

    @staticmethod
    def documents(shown):
        return [(row[0], row[3]) for row in shown.lists()[3].rows]

    def test_findings_are_cured_with_their_buttons(self):
        viewer = self.open_package(r'C:\care\plan.pdf', files=['SetupSheets/setup.docx'])
        unshown = 'Warning', 'setup.docx', r'File "SetupSheets\setup.docx" is not shown.'
        shown = self.check(viewer, missing(r'C:\care\plan.pdf'), unshown)
        dialog = shown.dialog()
        self.assertEqual(dialog.find(id=SUMMARY).text, 'care.mxov: 2 warnings')
        self.assertEqual(dialog.find(id=DETAILS).text,
                         r'Linked document "C:\care\plan.pdf" does not exist. Relink or remove it.')
        self.assertEqual([dialog.find(id=number).enabled for number in (FIND, REMOVE, ATTACH)], [True, True, False])
        viewer.photograph('e2e-check')
        viewer.press('alt+r')
        shown = self.wait_for_findings(viewer, unshown)
        self.assertEqual(shown.frame.text, f'*care.mxov - {PROGRAM}')
        self.assertEqual(self.documents(shown), [])
        self.assertEqual([shown.dialog().find(id=number).enabled for number in (FIND, REMOVE, ATTACH)],
                         [False, True, True])
        viewer.click(*shown.dialog().find(id=ATTACH).middle)
        shown = self.wait_for_findings(viewer)
        self.assertEqual(shown.dialog().find(id=SUMMARY).text, 'No problems were found in care.mxov.')
        self.assertEqual(self.documents(shown), [('setup.docx', PACKAGED)])
        self.close_findings(viewer)
        self.save(viewer)
        self.check_package(self.package, 'SetupSheets/setup.docx')
        self.assertEqual(information(self.package)['REFERANCE_FILE_1']['FilePath'], r'SetupSheets\setup.docx')
        self.finish(viewer)

    def test_a_file_that_nothing_shows_is_removed(self):
        viewer = self.open_package(files=['SetupSheets/setup.docx'])
        self.check(viewer, ('Warning', 'setup.docx', r'File "SetupSheets\setup.docx" is not shown.'))
        viewer.press('alt+r')
        self.wait_for_findings(viewer)
        self.close_findings(viewer)
        viewer.press('ctrl+w')
        viewer.wait('the question', lambda s: any('save' in w.text.lower() for o in s.others for w in o.walk()))
        viewer.press('y')
        viewer.wait('the package is closed', lambda s: s.frame.text == PROGRAM and not s.others)
        with zipfile.ZipFile(self.package) as archive:
            self.assertNotIn('SetupSheets/setup.docx', archive.namelist())
        self.finish(viewer)

    def test_closing_a_changed_package_from_the_list_leaves_the_focus_in_the_window(self):
        viewer = self.open_changed_sample()
        viewer.press('F7')
        viewer.wait('the list', lambda s: s.others)
        viewer.press('ctrl+w')
        viewer.wait('the question', lambda s: any(window.text == LIBRARY for window in s.others))
        viewer.press('n')
        viewer.wait('the package is closed', lambda s: s.frame.text == PROGRAM and not s.others)
        self.finish(viewer)  # which takes keys

    def test_the_list_closes_with_its_package(self):
        viewer = self.open_package(r'C:\care\plan.pdf')
        self.check(viewer, missing(r'C:\care\plan.pdf'))
        viewer.press('ctrl+w')  # works while the list has the focus
        viewer.wait('the package and the list are closed', lambda s: s.frame.text == PROGRAM and not s.others)
        viewer.press('F7')
        self.assertIsNone(findings(viewer.snapshot()))
        self.finish(viewer)

    def test_one_found_link_mends_those_that_moved_with_it(self):
        self.place('new/plan.pdf', 'new/sub/tools.txt')
        links = [r'C:\care\old\plan.pdf', r'C:\care\old\sub\tools.txt', r'C:\care\old\gone.txt']
        viewer = self.open_package(*links)
        self.check(viewer, *map(missing, links))
        viewer.press('alt+f')
        viewer.wait('the dialog', lambda s: any(window.text == 'Find document' for window in s.others))
        viewer.press('ctrl+a')
        viewer.type(r'C:\care\new\plan.pdf')
        viewer.press('Return')
        shown = self.wait_for_findings(viewer, missing(links[2]))
        self.assertEqual(shown.frame.find(class_name='msctls_statusbar32').text, '2 links were mended')
        self.assertEqual(self.documents(shown),
                         [('plan.pdf', LINKED), ('tools.txt', LINKED), ('gone.txt', MISSING)])
        self.close_findings(viewer)
        self.save(viewer)
        self.assertEqual([information(self.package)[f'REFERANCE_FILE_{number}']['FilePath'] for number in (1, 2, 3)],
                         [r'C:\care\new\plan.pdf', r'C:\care\new\sub\tools.txt', links[2]])
        self.finish(viewer)

    def test_a_file_is_searched_below_a_folder(self):
        self.place('new/a/plan.pdf', 'new/b/plan.pdf', 'old/other.pdf')
        viewer = self.open_package(r'C:\care\old\plan.pdf')
        self.check(viewer, missing(r'C:\care\old\plan.pdf'))
        self.search(viewer, r'C:\care\old')
        shown = viewer.wait('the failure', lambda s: any('There is no plan.pdf' in w.text for o in s.others
                                                         for w in o.walk()))
        viewer.press('Return')
        viewer.wait('it is read', lambda s: len(s.others) == 1)
        self.search(viewer, r'C:\care\new')
        viewer.wait('the choice', lambda s: len(s.others) == 2)
        viewer.photograph('e2e-check-choice')
        viewer.press('Down', 'Down', 'Return')
        shown = self.wait_for_findings(viewer)
        self.assertEqual(self.documents(shown), [('plan.pdf', LINKED)])
        self.close_findings(viewer)
        self.save(viewer)
        self.assertEqual(information(self.package)['REFERANCE_FILE_1']['FilePath'], r'C:\care\new\b\plan.pdf')
        self.finish(viewer)

    @staticmethod
    def search(viewer, folder):
        viewer.press('alt+o')
        viewer.wait('the dialog', lambda s: any('below a folder' in window.text for window in s.others))
        viewer.press('ctrl+a')
        viewer.type(folder)
        viewer.press('Return')

    def test_a_portable_copy_takes_the_links_along(self):
        self.place('plan.pdf')
        viewer = self.open_package(r'C:\care\plan.pdf', r'C:\care\gone.pdf')
        before = self.package.read_bytes()
        copy = self.folder / 'travel.mxov'
        viewer.press('alt+f', 'b')
        shown = viewer.wait('the dialog', lambda s: s.others and s.dialog().text == 'Save portable copy')
        self.assertTrue(any('care portable.mxov' in window.text for window in shown.dialog().walk()))
        viewer.press('ctrl+a')
        viewer.type(windows_path(copy))
        viewer.press('Return')
        shown = viewer.wait('the summary', lambda s: 'travel.mxov is saved' in s.texts())
        for text in (r'C:\care\plan.pdf', r'C:\care\gone.pdf does not exist', 'Size: '):
            self.assertIn(text, shown.texts())
        viewer.photograph('e2e-portable')
        viewer.press('Return')
        shown = viewer.wait_for_no_dialog('it is read')
        self.assertEqual(shown.frame.text, f'care.mxov - {PROGRAM}')
        self.assertFalse(shown.item(SAVE).enabled)
        self.assertEqual(self.documents(shown), [('plan.pdf', LINKED), ('gone.pdf', MISSING)])
        self.assertEqual(self.package.read_bytes(), before)
        self.check_package(copy, 'ReferanceFiles/plan.pdf')
        document = information(copy)['REFERANCE_FILE_1']
        self.assertEqual((document['IsReferencedFile'], document['FilePath']), ('NO', r'ReferanceFiles\plan.pdf'))
        self.finish(viewer)

    def compare(self, viewer, package):
        viewer.press('alt+f', 'm')
        viewer.wait('the dialog', lambda s: s.others and s.dialog().text == 'Compare with package')
        viewer.type(windows_path(package))
        viewer.press('Return')

    def test_another_package_is_compared_with_what_is_open(self):
        self.place('plan.pdf')
        viewer = self.open_package(r'C:\care\plan.pdf', files=['SetupSheets/setup.docx'])
        older = shutil.copy2(self.package, self.folder / 'older.mxov')
        self.compare(viewer, older)
        viewer.wait('no difference', lambda s: 'What is open does not differ from older.mxov' in s.texts())
        viewer.press('Return')
        viewer.wait_for_no_dialog('it is read')
        self.check(viewer, ('Warning', 'setup.docx', r'File "SetupSheets\setup.docx" is not shown.'))
        viewer.press('alt+a')
        self.wait_for_findings(viewer)
        self.close_findings(viewer)
        self.compare(viewer, older)
        shown = viewer.wait('the differences', lambda s: s.others and s.dialog().text == 'Compare' and
                            s.dialog().find(id=DIFFERENCES).rows)
        self.assertEqual([row[:3] for row in shown.dialog().find(id=DIFFERENCES).rows],
                         [('Document added', 'setup.docx', r'Copy in the package: SetupSheets\setup.docx')])
        self.assertEqual([shown.dialog().find(id=number).enabled for number in (SIDE_BY_SIDE, NOISE)], [False, False])
        viewer.photograph('e2e-compare')
        viewer.press('Escape')
        viewer.wait_for_no_dialog('the list is closed')
        letter = self.folder / 'letter.mxov'
        letter.write_text('Dear Sir', encoding='ascii')
        self.compare(viewer, letter)
        viewer.wait('the failure', lambda s: 'letter.mxov cannot be compared.' in s.texts())
        viewer.press('Return')
        viewer.wait_for_no_dialog('it is read')
        self.save(viewer)
        self.finish(viewer)

    @staticmethod
    def write_programs(package, **programs):
        """A package with these programs and an additional document."""
        with zipfile.ZipFile(package, 'w', zipfile.ZIP_DEFLATED) as archive:
            archive.writestr('mxinfo.ini', '[FILEINFO]\r\nMaxtlreVersion=Maxtrel Orvando 2024\r\n'
                                           'GCode=GCode\\op10.nc\r\n')
            for name, text in programs.items():
                archive.writestr(f'GCode/{name}.nc', text)
        return package

    @staticmethod
    def wait_for_state(viewer, state):
        return viewer.wait(state, lambda s: s.others and (found := s.dialog().find(id=STATE)) and found.text == state)

    def test_changed_texts_are_shown_beside_each_other(self):
        lines = [f'N{10 * i} G1 X{i}.0 Y{i % 7}.5' for i in range(1, 121)]
        changed = [f'N{5 * i} G1 X{i}.0 Y{i % 7}.5' for i in range(1, 121)]
        changed[20:22] = ['N100 G0 Z50.0 (retract)', 'T12 M6', 'G43 H12']
        del changed[100]
        older = self.write_programs(self.folder / 'older.mxov', op10='\r\n'.join(lines), op20='N10 M30')
        self.write_programs(self.package, op10='\r\n'.join(changed), op20='N20 M30 (end)')
        viewer = self.use(Viewer(windows_path(self.package)))
        viewer.wait_for_package('care.mxov')
        self.compare(viewer, older)
        shown = viewer.wait('the differences', lambda s: s.others and s.dialog().text == 'Compare' and
                            s.dialog().find(id=DIFFERENCES).rows)
        self.assertEqual([row[:2] for row in shown.dialog().find(id=DIFFERENCES).rows], [('Content changed', 'op10.nc')])
        viewer.click(*self.left_end(shown.dialog().find(id=NOISE)))
        viewer.wait('numbers of blocks count', lambda s: [row[:2] for row in s.dialog().find(id=DIFFERENCES).rows] == [
            ('Content changed', 'op10.nc'), ('Only numbers, blanks or comments', 'op20.nc')])
        viewer.photograph('e2e-compare-programs')
        viewer.press('alt+n')
        viewer.wait('they do not', lambda s: len(s.dialog().find(id=DIFFERENCES).rows) == 1)
        viewer.press('Return')
        shown = self.wait_for_state(viewer, 'Difference 1 of 2')
        self.assertEqual(shown.dialog().text, 'op10.nc - Compare')
        texts = [window.text for window in shown.dialog().walk() if window.class_name == 'MXOVTextView']
        self.assertEqual([text.splitlines()[0] for text in texts], [lines[0], changed[0]])
        viewer.photograph('e2e-compare-texts')
        viewer.press('F8')
        self.wait_for_state(viewer, 'Difference 2 of 2')
        viewer.press('F8')
        self.wait_for_state(viewer, 'Difference 1 of 2')
        viewer.press('shift+F8')
        shown = self.wait_for_state(viewer, 'Difference 2 of 2')
        viewer.photograph('e2e-compare-texts-next')
        viewer.click(*shown.dialog().find(id=NEXT).middle)
        shown = self.wait_for_state(viewer, 'Difference 1 of 2')
        viewer.click(*self.left_end(shown.dialog().find(id=PLAIN)))
        self.wait_for_state(viewer, 'Difference 1 of 1')  # every number of a block
        viewer.press('F8')  # the box has the focus
        viewer.press('Escape')
        viewer.wait('the list is there again', lambda s: s.others and s.dialog().text == 'Compare')
        viewer.press('Escape')
        viewer.wait_for_no_dialog('the list is closed')
        self.finish(viewer)

    @staticmethod
    def left_end(box):
        """The place of the mark of a check box."""
        return box.rect[0] + 6, (box.top + box.rect[3]) // 2

    def test_programs_that_differ_in_noise_alone(self):
        older = self.write_programs(self.folder / 'older.mxov', op10='N10 M30')
        self.write_programs(self.package, op10='N20 M30 (end)')
        viewer = self.use(Viewer(windows_path(self.package)))
        viewer.wait_for_package('care.mxov')
        self.compare(viewer, older)
        shown = viewer.wait('the differences', lambda s: s.others and s.dialog().text == 'Compare' and
                            s.dialog().find(id=DIFFERENCES).rows)
        self.assertEqual([row[:2] for row in shown.dialog().find(id=DIFFERENCES).rows],
                         [('Only numbers, blanks or comments', 'op10.nc')])
        viewer.double_click(*self.row_place(shown.dialog().find(id=DIFFERENCES), 0))
        self.wait_for_state(viewer, 'Difference 1 of 1')
        viewer.press('alt+n')
        shown = self.wait_for_state(viewer, 'No difference')
        self.assertFalse(shown.dialog().find(id=NEXT).enabled)
        viewer.press('Escape')
        viewer.wait('the list is there again', lambda s: s.others and s.dialog().text == 'Compare')
        viewer.press('Escape')
        viewer.wait_for_no_dialog('the list is closed')
        self.finish(viewer)

    def test_the_open_package_is_not_replaced_by_its_portable_copy(self):
        viewer = self.open_package()
        before = self.package.read_bytes()
        viewer.press('alt+f', 'b')
        viewer.wait('the dialog', lambda s: s.others and s.dialog().text == 'Save portable copy')
        viewer.press('ctrl+a')
        viewer.type(windows_path(self.package))
        viewer.press('Return')
        viewer.wait('the question of the system', lambda s: len(s.others) == 2)
        viewer.press('alt+y')
        viewer.wait('the refusal', lambda s: 'cannot take the place of the open package' in s.texts())
        viewer.press('Return')
        viewer.wait_for_no_dialog('it is read')
        self.assertEqual(self.package.read_bytes(), before)
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
