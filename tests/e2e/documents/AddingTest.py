#!/usr/bin/env python3
"""What the viewer puts right after the "+" button of the control."""
import unittest
import zipfile

from viewercase import LINKED, PACKAGED, ViewerCase, news, session_folder
from viewerdriver import PROGRAM


def live_sections():
    """The sections of the additional documents in the open package."""
    lines = (session_folder() / 'mxinfo.ini').read_text(encoding='utf-8-sig').splitlines()
    return [line for line in lines if line.startswith('[REFERANCE_FILE')]


class AddingTest(ViewerCase):
    def note(self, name):
        path = self.folder / name
        path.write_text(f'{name}\n', encoding='ascii')
        return path

    def test_what_was_just_added_is_removed_for_good(self):
        viewer, _ = self.open_sample()
        before = live_sections()
        self.attach(viewer, self.note('tools.txt'), linked=True)
        self.attach(viewer, self.note('bore.txt'), linked=False)
        self.wait_for_rows(viewer, ('tools.txt', LINKED), ('bore.txt', PACKAGED))
        copy = session_folder() / 'ReferanceFiles/bore.txt'
        self.assertTrue(copy.exists())
        for row, left in ((4, [('tools.txt', LINKED)]), (3, [])):
            self.remove(viewer, row)
            self.wait_for_rows(viewer, *left)
        self.assertEqual(live_sections(), before)
        self.assertFalse(copy.exists())
        self.save(viewer)
        self.finish(viewer)

    def add_namesake(self, viewer, other, answer):
        """Adds a copy with the name of another document, and answers the question."""
        self.choose_to_attach(viewer, other, linked=False)
        shown = viewer.wait('the question', lambda s: 'inspection-plan.pdf is already in the package' in s.texts())
        self.assertEqual(news(shown), '')
        viewer.photograph('e2e-shared-name')
        viewer.click(*shown.dialog().find(text=answer).middle)
        return viewer.wait_for_no_dialog('the question is answered')

    def test_a_copy_whose_name_is_taken(self):
        viewer, before = self.open_sample()
        copies = session_folder() / 'ReferanceFiles'
        first, second = copies / 'inspection-plan.pdf', copies / 'inspection-plan (2).pdf'
        content, sections = first.read_bytes(), live_sections()
        other = self.folder / 'inspection-plan.pdf'
        other.write_bytes(b'another plan')

        shown = self.add_namesake(viewer, other, 'Cancel')
        self.assertEqual(shown.lists()[3].rows, before.lists()[3].rows)
        self.assertEqual((shown.frame.text, live_sections()), (before.frame.text, sections))
        self.assertEqual(first.read_bytes(), content)

        self.add_namesake(viewer, other, '&Keep both')
        shown = self.wait_for_rows(viewer, ('inspection-plan (2).pdf', PACKAGED))
        self.assertEqual(shown.frame.text, f'*bracket.mxov - {PROGRAM}')
        self.assertEqual((first.read_bytes(), second.read_bytes()), (content, b'another plan'))

        self.add_namesake(viewer, other, '&Replace')
        self.wait_for_rows(viewer, ('inspection-plan (2).pdf', PACKAGED))
        self.assertEqual(first.read_bytes(), b'another plan')
        self.remove(viewer, 3)
        self.wait_for_rows(viewer)
        self.assertEqual((live_sections(), second.exists()), (sections, False))
        self.assertEqual(news(viewer.snapshot()), '', 'nothing of it counts as done by another program')
        self.save(viewer)
        with zipfile.ZipFile(self.sample) as archive:
            self.assertEqual(archive.read('ReferanceFiles/inspection-plan.pdf'), b'another plan')
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
