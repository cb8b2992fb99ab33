#!/usr/bin/env python3
"""Files that are dropped on the viewer or pasted: packages open, others are attached to the open package."""
import pathlib
import unittest

import dragsource
from viewercase import (DELETE, DESCRIPTION, LINKED, PACKAGED, PROPERTIES, SAVE, ViewerCase, information, properties_of,
                        session_folder)
from viewerdriver import PROGRAM
from wineprogram import windows_path


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

    def test_a_package_among_the_files_is_opened(self):
        viewer, _ = self.open_sample()
        self.drop(viewer, self.notes[0], pathlib.Path(self.legacy))
        viewer.wait_for_package('legacy.mxov')
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
