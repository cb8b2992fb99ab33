#!/usr/bin/env python3
"""The comparison of the open package with another one, and of changed texts beside each other."""
import shutil
import unittest
import zipfile

from carecase import CareCase
from viewerdriver import Viewer
from wineprogram import windows_path

SIDE_BY_SIDE, DIFFERENCES, NOISE, STATE, PLAIN, NEXT = 1, 250, 252, 254, 255, 257


class CompareTest(CareCase):
    def compare(self, viewer, package):
        viewer.press('alt+f', 'm')
        viewer.wait('the dialog', lambda s: s.others and s.dialog().text == 'Compare with package')
        self.type_path(viewer, package)
        viewer.press('Return')

    @staticmethod
    def wait_for_differences(viewer):
        return viewer.wait('the differences', lambda s: (
            s.others and s.dialog().text == 'Compare' and s.dialog().find(id=DIFFERENCES).rows))

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
        shown = self.wait_for_differences(viewer)
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

    def test_a_folder_is_compared_with_what_is_open(self):
        viewer = self.open_package(files=['SetupSheets/setup.docx'])
        older = self.disk / 'older'
        with zipfile.ZipFile(self.package) as archive:
            archive.extractall(older)
        (older / 'SetupSheets/setup.docx').write_text('the sheet of last week', encoding='ascii')
        viewer.press('alt+f', 'm')
        shown = viewer.wait('the dialog', lambda s: s.others and s.dialog().find(text='&Folder...'))
        viewer.photograph('e2e-compare-choice')
        viewer.click(*shown.dialog().find(text='&Folder...').middle)
        viewer.wait('the dialog for folders', lambda s: s.others and s.dialog().text == 'Compare with folder')
        viewer.press('ctrl+a')
        viewer.type(r'C:\care\older')
        viewer.press('Return')
        shown = self.wait_for_differences(viewer)
        self.assertEqual([row[:2] for row in shown.dialog().find(id=DIFFERENCES).rows], [('Content changed', 'setup.docx')])
        self.assertIn('What is open differs from older:', shown.texts())
        viewer.press('Escape')
        viewer.wait_for_no_dialog('the list is closed')
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
        shown = self.wait_for_differences(viewer)
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
        shown = self.wait_for_differences(viewer)
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


if __name__ == '__main__':
    unittest.main(verbosity=2)
