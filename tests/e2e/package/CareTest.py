#!/usr/bin/env python3
"""The care of the open package: the check with its cures, and the portable copy."""
import unittest
import zipfile

from carecase import CareCase, findings, missing
from viewercase import LIBRARY, LINKED, MISSING, NO, PACKAGED, SAVE, YES, information
from viewerdriver import PROGRAM

SUMMARY, DETAILS = 240, 242
FIND, REMOVE, ATTACH = 243, 246, 247


class CareTest(CareCase):
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
        self.answer(viewer, YES)
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
        self.answer(viewer, NO)
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
        self.type_path(viewer, copy)
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

    def test_the_open_package_is_not_replaced_by_its_portable_copy(self):
        viewer = self.open_package()
        before = self.package.read_bytes()
        viewer.press('alt+f', 'b')
        viewer.wait('the dialog', lambda s: s.others and s.dialog().text == 'Save portable copy')
        viewer.press('ctrl+a')
        self.type_path(viewer, self.package)
        viewer.press('Return')
        viewer.wait('the question of the system', lambda s: len(s.others) == 2)
        self.answer(viewer, YES)
        viewer.wait('the refusal', lambda s: 'cannot take the place of the open package' in s.texts())
        viewer.press('Return')
        viewer.wait_for_no_dialog('it is read')
        self.assertEqual(self.package.read_bytes(), before)
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
