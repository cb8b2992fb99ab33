#!/usr/bin/env python3
"""Files that are dropped on the viewer or pasted: packages open, others are attached to the open package."""
import pathlib
import unittest
import zipfile

import dragsource
from viewercase import (DELETE, DESCRIPTION, LINKED, PACKAGED, PROPERTIES, SAVE, ViewerCase, information, news, properties_of,
                        session_folder)
from viewerdriver import PROGRAM
from wineprogram import windows_path


def live_sections():
    """The sections of the additional documents in the open package."""
    lines = (session_folder() / 'mxinfo.ini').read_text(encoding='utf-8-sig').splitlines()
    return [line for line in lines if line.startswith('[REFERANCE_FILE')]


class AttachTest(ViewerCase):
    def setUp(self):
        super().setUp()
        self.notes = []
        for name in ('plan.pdf', 'tools.txt', 'bore.txt'):
            path = self.folder / name
            path.write_text(f'{name}\n', encoding='ascii')
            self.notes.append(path)

    def drop(self, viewer, *paths):
        window = viewer.snapshot().lists()[3]
        dragsource.drop(viewer.snapshot().frame.display, (window.rect[0] + 20, window.top + 40), *paths)

    def wait_for_rows(self, viewer, *rows):
        """Waits until the last additional documents are these."""
        return viewer.wait('the documents are attached', lambda s: not s.others and [
            (row[0], row[3]) for row in s.lists()[3].rows[3:]] == list(rows))

    def remove(self, viewer, row):
        """Removes an additional document with "x"."""
        viewer.click(*self.row_place(viewer.snapshot().lists()[3], row))
        viewer.wait('the delete button', lambda s: s.item(DELETE).enabled)
        viewer.press('alt+F4')
        viewer.wait_for_no_dialog('the properties are closed')
        self.click_item(viewer, DELETE)

    def test_dropped_documents_are_attached_as_copies_and_saved(self):
        viewer, _ = self.open_sample()
        self.drop(viewer, *self.notes)
        shown = viewer.wait('the question', lambda s: 'Attach 3 documents to bracket.mxov?' in s.texts())
        for note in self.notes:
            self.assertIn(note.name, shown.texts())
        viewer.photograph('e2e-drop')
        viewer.press('alt+c')
        shown = self.wait_for_rows(viewer, *((note.name, PACKAGED) for note in self.notes))
        self.assertEqual(shown.frame.text, f'*bracket.mxov - {PROGRAM}')
        self.assertTrue(shown.item(SAVE).enabled)
        self.save(viewer)
        self.check_package(self.sample, *(f'ReferanceFiles/{note.name}' for note in self.notes))
        self.finish(viewer)

    def test_a_dropped_document_is_attached_as_a_link_and_removed_again(self):
        viewer, _ = self.open_sample()
        self.drop(viewer, self.notes[0])
        viewer.wait('the question', lambda s: 'Attach a document to bracket.mxov?' in s.texts())
        viewer.press('alt+l')
        self.wait_for_rows(viewer, ('plan.pdf', LINKED))
        self.remove(viewer, 3)
        self.wait_for_rows(viewer)
        self.save(viewer)
        self.assertNotIn(windows_path(self.notes[0]),
                         [section.get('FilePath') for section in information(self.sample).values()])
        self.finish(viewer)

    def test_cancel_attaches_nothing(self):
        viewer, before = self.open_sample()
        self.drop(viewer, *self.notes)
        shown = viewer.wait('the question', lambda s: 'Attach 3 documents' in s.texts())
        viewer.click(*shown.dialog().find(text='Cancel').middle)
        shown = viewer.wait_for_no_dialog('the question is gone')
        self.assertEqual(shown.lists()[3].rows, before.lists()[3].rows)
        self.assertEqual(shown.frame.text, before.frame.text)
        self.finish(viewer)

    def drop_with_key(self, key, image):
        viewer, _ = self.open_sample()
        viewer.do('keydown', key)
        self.addCleanup(viewer.do, 'keyup', key)
        self.drop(viewer, self.notes[1])
        viewer.do('key', 'shift')  # Alt alone would open the menu
        viewer.do('keyup', key)
        self.wait_for_rows(viewer, ('tools.txt', image))
        self.assertEqual((session_folder() / 'ReferanceFiles/tools.txt').exists(), image == PACKAGED)
        self.save(viewer)
        self.finish(viewer)

    def test_with_the_control_key_a_dropped_document_is_copied(self):
        self.drop_with_key('ctrl', PACKAGED)

    def test_with_the_alt_key_a_dropped_document_is_linked(self):
        self.drop_with_key('alt', LINKED)

    def paste(self, viewer, *paths):
        viewer.dump('copy', *map(windows_path, paths))
        viewer.press('ctrl+v')

    def check_refused(self, viewer, path, text, take=None):
        before = viewer.snapshot()
        (take or self.drop)(viewer, path)
        viewer.wait('the message', lambda s: text in s.texts())
        viewer.photograph('e2e-drop-refused')
        viewer.press('Return')
        shown = viewer.wait_for_no_dialog('the message is read')
        self.assertEqual([view.rows for view in shown.lists()], [view.rows for view in before.lists()])

    def test_a_folder_is_not_attached(self):
        viewer, _ = self.open_sample()
        folder = self.folder / 'drawings'
        folder.mkdir()
        for take in (self.drop, self.paste):
            self.check_refused(viewer, folder, 'drawings is a folder; only files can be attached.', take)
        self.finish(viewer)

    def test_an_old_package_takes_no_documents(self):
        viewer, _ = self.open_sample()
        self.choose_file(viewer, self.legacy)
        viewer.wait_for_package('legacy.mxov')
        for take in (self.drop, self.paste):
            self.check_refused(viewer, self.notes[0], 'takes no additional documents', take)
        self.finish(viewer)

    def test_pasted_documents_are_attached(self):
        viewer, _ = self.open_sample()
        self.paste(viewer, *self.notes[:2])
        shown = viewer.wait('the question', lambda s: 'Attach 2 documents to bracket.mxov?' in s.texts())
        self.assertIn(self.notes[1].name, shown.texts())
        viewer.press('alt+c')
        self.wait_for_rows(viewer, ('plan.pdf', PACKAGED), ('tools.txt', PACKAGED))
        viewer.press('alt+e', 'p')
        viewer.wait('the question', lambda s: 'Attach 2 documents to bracket.mxov?' in s.texts())
        viewer.press('alt+l')
        shown = self.wait_for_rows(viewer, ('plan.pdf', PACKAGED), ('tools.txt', PACKAGED), ('plan.pdf', LINKED),
                                   ('tools.txt', LINKED))
        self.assertEqual(shown.frame.text, f'*bracket.mxov - {PROGRAM}')
        self.save(viewer)
        self.finish(viewer)

    def test_in_the_description_text_is_pasted_and_no_file(self):
        viewer, shown = self.open_sample()
        viewer.click(*self.row_place(shown.lists()[0], 0))
        popup = properties_of(viewer.wait('the properties', properties_of))
        viewer.click(*popup.find(id=DESCRIPTION).middle)
        viewer.wait('the focus in the description', lambda s: s.focus == popup.find(id=DESCRIPTION).handle)
        self.paste(viewer, self.notes[0])
        viewer.press('x')
        shown = viewer.wait('the key', lambda s: 'x' in properties_of(s).find(id=DESCRIPTION).text)
        self.assertEqual([window.text for window in shown.others], [PROPERTIES])
        viewer.press('alt+F4')
        viewer.wait_for_no_dialog('the properties are closed')
        self.save(viewer)
        self.finish(viewer)

    def test_what_was_just_added_is_removed_for_good(self):
        viewer, _ = self.open_sample()
        before = live_sections()
        self.attach(viewer, self.notes[1], linked=True)
        self.attach(viewer, self.notes[2], linked=False)
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

    def test_a_package_among_the_files_is_opened(self):
        viewer, _ = self.open_sample()
        self.drop(viewer, self.notes[0], pathlib.Path(self.legacy))
        viewer.wait_for_package('legacy.mxov')
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
