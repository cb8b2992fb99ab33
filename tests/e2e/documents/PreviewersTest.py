#!/usr/bin/env python3
"""Documents that the system's preview handlers show on the page of the selected document."""
import unittest

from openingcase import DocumentOpeningCase
from viewercase import news, session_folder
from viewerdriver import BUILD
from wineprogram import change_registry, windows_path

HANDLER = '{5A1F39C4-61F2-4A0E-930D-2E6F117BD05C}'
HANDLERS = '{8895b1c6-b41f-4c1c-a560-0d564250836f}'
PAGE, HOST, TABS = 'MXOVDocumentPane', 'MXOVPreviewHost', 'SysTabControl32'
NAME = 'inspection-plan.pdf'


def preview(shown):
    """The window that the handler shows the document in; None while there is none."""
    host = shown.frame.find(class_name=HOST)
    return host.find(class_name='Edit') if host.visible else None


class PreviewersTest(DocumentOpeningCase):
    def setUp(self):
        super().setUp()
        self.register(rf'HKCR\.pdf\shellex\{HANDLERS}', HANDLER)

    def register_module(self):
        server = rf'HKCR\CLSID\{HANDLER}\InprocServer32'
        self.register(server, windows_path(BUILD / 'tests/TextPreviewer.dll'))
        change_registry('add', server, '/v', 'ThreadingModel', '/d', 'Apartment', '/f')

    def select(self, viewer, number, name):
        shown = viewer.snapshot()
        row = [row[0] for row in shown.lists()[number].rows].index(name)
        viewer.click(*self.row_place(shown.lists()[number], row))
        viewer.wait('the page', lambda s: s.frame.find(class_name=PAGE).text.split('\n')[0] == name)
        viewer.press('alt+F4')
        return viewer.wait_for_no_dialog('the properties are closed')

    def test_a_document_is_shown_by_the_handler_of_its_kind(self):
        self.register_module()
        viewer, _ = self.open_sample()
        self.select(viewer, 3, NAME)
        file = session_folder() / 'ReferanceFiles' / NAME
        shown = viewer.wait('the preview', preview)
        self.assertTrue(preview(shown).text.startswith('%PDF'))
        self.assertEqual(preview(shown).size, shown.frame.find(class_name=HOST).size)
        viewer.photograph('e2e-document-preview')
        file.write_bytes(b'%PDF another content')
        viewer.wait('the change', lambda s: preview(s) and preview(s).text == '%PDF another content')
        viewer.wait('the news of the change', news)
        viewer.press('F6', 'F6')
        viewer.wait('the focus on the tabs', lambda s: s.frame.find(handle=s.focus).class_name == TABS)
        for class_name in ('Button', 'Button', 'Button', 'Button', 'Button', 'Edit', TABS):
            before = viewer.snapshot().focus
            viewer.press('Tab')
            shown = viewer.wait('the focus moves', lambda s: s.focus != before)
            self.assertEqual(shown.frame.find(handle=shown.focus).class_name, class_name)
        viewer.press('shift+Tab')
        viewer.wait('the focus in the preview', lambda s: s.focus == preview(s).handle)
        file.write_bytes(b'%PDF a third content')
        viewer.wait('the change, which leaves the focus there', lambda s: preview(s) and s.focus == preview(s).handle
                    and preview(s).text == '%PDF a third content')
        viewer.do('windowsize', shown.frame.display, 1150, 900)
        viewer.wait('it follows the size', lambda s: preview(s).size == s.frame.find(class_name=HOST).size
                    and s.frame.size != shown.frame.size)
        self.select(viewer, 1, 'op10-face-pocket.nc')
        viewer.wait('the program', lambda s: not preview(s))
        viewer.press('ctrl+s')
        viewer.wait('it is saved', lambda s: s.frame.text.startswith('bracket'))
        self.finish(viewer)

    def test_a_handler_that_never_returns_leaves_the_window_alive(self):
        self.register_module()
        viewer, _ = self.open_sample()
        (session_folder() / 'ReferanceFiles' / NAME).write_bytes(b'never shown')
        viewer.wait('the news of the change', news)
        self.select(viewer, 3, NAME)
        shown = viewer.wait('the handler starts', lambda s: s.frame.find(class_name=HOST).visible)
        viewer.press('F6', 'F6')
        viewer.wait('the window answers', lambda s: s.frame.find(handle=s.focus).class_name == TABS)
        shown = viewer.wait('the limit', lambda s: not s.frame.find(class_name=HOST).visible)
        viewer.photograph('e2e-document-preview-hangs')
        self.assertTrue(shown.frame.find(class_name=PAGE).find(text='&Open').visible)
        self.select(viewer, 1, 'op10-face-pocket.nc')
        viewer.press('ctrl+s')
        viewer.wait('it is saved', lambda s: s.frame.text.startswith('bracket'))
        self.finish(viewer)

    def test_a_handler_that_no_longer_answers_lets_the_viewer_close(self):
        self.register_module()
        viewer, _ = self.open_sample()
        (session_folder() / 'ReferanceFiles' / NAME).write_bytes(b'stuck when its size changes')
        viewer.press('ctrl+s')
        viewer.wait('it is saved', lambda s: s.frame.text.startswith('bracket'))
        self.select(viewer, 3, NAME)
        shown = viewer.wait('the preview', preview)
        before = viewer.display().area(shown.frame.display)
        viewer.do('windowsize', shown.frame.display, 1150, 900)
        # The windows of the handler cannot be read any more.
        viewer.wait_until_nothing_hinders('the window is larger', lambda: (
            None if viewer.display().area(shown.frame.display) != before else 'the size before'))
        self.assertEqual(viewer.close(), 0)

    def test_a_handler_that_cannot_be_loaded_leaves_the_facts_and_buttons(self):
        self.register(rf'HKCR\CLSID\{HANDLER}\InprocServer32', windows_path(self.folder / 'gone.dll'))
        viewer, _ = self.open_sample()
        shown = self.select(viewer, 3, NAME)
        page = shown.frame.find(class_name=PAGE)
        self.assertRegex(page.text, r'^inspection-plan\.pdf\n[\d.,]+ KB, ')
        self.assertEqual(page.find(text='&Open').visible, True)
        self.assertIsNone(preview(viewer.snapshot()))
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
