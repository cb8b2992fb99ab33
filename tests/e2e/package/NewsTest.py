#!/usr/bin/env python3
"""The mark of unsaved changes in the title, and the bar that reports what other programs did to the open package."""
import os
import pathlib
import unittest
import zipfile

from viewercase import DESCRIPTION, LIBRARY, NO, SAVE, UPDATE, ViewerCase, news, properties_of, session_folder
from viewerdriver import PROGRAM

CLEAN, MARKED = f'bracket.mxov - {PROGRAM}', f'*bracket.mxov - {PROGRAM}'
PROGRAM_FILE = 'GCode/op10-face-pocket.nc'
SHEET = 'SetupSheets/setup.html'
CHANGED = 'op10-face-pocket.nc was changed by another program.'


def button(shown, text):
    return shown.frame.find(class_name='MXOVNewsBar').find(class_name='Button', text=text)


class NewsTest(ViewerCase):
    def wait_for_news(self, viewer, text):
        return viewer.wait(f'the bar shows "{text}"', lambda s: news(s) == text and not s.others)

    def press_button(self, viewer, text):
        viewer.click(*button(viewer.snapshot(), text).middle)

    def edit(self, name=PROGRAM_FILE, text=b'(edited)\r\n'):
        with open(session_folder() / name, 'ab') as document:
            document.write(text)

    def packed(self, name):
        with zipfile.ZipFile(self.sample) as archive:
            return archive.read(name)

    def replace_package(self, *lines):
        """The package file as another program rewrites it: a file more, and lines added to the information file."""
        other = self.folder / 'other'
        with zipfile.ZipFile(self.sample) as old, zipfile.ZipFile(other, 'w') as new:
            for entry in old.infolist():
                content = old.read(entry)
                if entry.filename == 'mxinfo.ini':
                    content += ''.join(line + '\r\n' for line in lines).encode()
                new.writestr(entry, content)
            new.writestr('GCode/theirs.nc', 'N10 G0\r\n')
        os.replace(other, self.sample)

    def test_the_title_marks_what_is_not_saved(self):
        viewer, shown = self.open_sample()
        self.assertEqual(shown.frame.text, CLEAN)
        viewer.dump('press', UPDATE)
        viewer.wait('the mark', lambda s: s.frame.text == MARKED)
        viewer.press('ctrl+s')
        viewer.wait('the mark is gone', lambda s: s.frame.text == CLEAN and not s.item(SAVE).enabled)
        viewer.dump('press', UPDATE)
        viewer.wait('the mark', lambda s: s.frame.text == MARKED)
        self.click_item(viewer, SAVE)
        viewer.wait('the mark is gone', lambda s: s.frame.text == CLEAN and not s.item(SAVE).enabled)
        self.assertEqual(news(viewer.snapshot()), '')
        self.finish(viewer)

    def test_the_first_key_in_the_description_sets_the_mark(self):
        viewer, shown = self.open_sample()
        viewer.click(*self.row_place(shown.lists()[0], 0))
        popup = properties_of(viewer.wait('the properties', properties_of))
        viewer.click(*popup.find(id=DESCRIPTION).middle)
        viewer.press('x')
        viewer.wait('the mark', lambda s: s.frame.text == MARKED)
        viewer.press('alt+F4')
        viewer.wait_for_no_dialog('the properties are closed')
        viewer.press('alt+F4')
        viewer.wait('the question', lambda s: s.others and s.dialog().text == LIBRARY)
        self.answer(viewer, NO)
        self.assertEqual(viewer.process.wait(60), 0)

    def test_a_document_that_another_program_changed_is_saved_from_the_bar(self):
        viewer, before = self.open_sample()
        self.assertEqual(news(before), '')
        self.edit()
        shown = self.wait_for_news(viewer, CHANGED)
        self.assertEqual(shown.frame.text, MARKED)
        self.assertEqual(shown.focus, before.focus, 'the bar leaves the focus where it was')
        pages = shown.frame.find(class_name='MXOVPages')
        self.assertEqual(shown.frame.find(class_name='MXOVNewsBar').rect[3], pages.top, 'the bar is above the picture')
        self.assertLess(pages.top, shown.frame.find(class_name='MXOVPreviewPane').top)
        viewer.photograph('e2e-news-changed')
        self.press_button(viewer, 'Save')
        shown = self.wait_for_news(viewer, '')
        self.assertEqual(shown.frame.text, CLEAN)
        self.assertEqual(shown.focus, before.focus)
        self.assertTrue(self.packed(PROGRAM_FILE).endswith(b'(edited)\r\n'))
        self.assertEqual(shown.frame.find(class_name='MXOVPreviewPane').rect,
                         before.frame.find(class_name='MXOVPreviewPane').rect)
        self.finish(viewer)

    def test_the_buttons_of_the_bar_are_reached_with_the_keyboard(self):
        viewer, before = self.open_sample()
        self.edit()
        self.wait_for_news(viewer, CHANGED)
        viewer.press('F6')
        viewer.wait('the focus on the button', lambda s: s.focus == button(s, 'Save').handle)
        viewer.photograph('e2e-news-focus')
        viewer.press('F6')
        viewer.wait('the focus on the tabs', lambda s: s.frame.find(handle=s.focus).class_name == 'SysTabControl32')
        viewer.press('F6', 'F6')
        viewer.wait('the focus on the button', lambda s: s.focus == button(s, 'Save').handle)
        viewer.press('Escape')
        viewer.wait('the focus in the control', lambda s: s.focus == before.focus)
        viewer.press('F6', 'Return')
        shown = self.wait_for_news(viewer, '')
        viewer.wait('the focus in the control', lambda s: s.focus == before.focus)
        self.assertEqual(shown.frame.text, CLEAN)
        self.assertTrue(self.packed(PROGRAM_FILE).endswith(b'(edited)\r\n'))
        self.finish(viewer)

    def test_from_button_to_button_in_the_bar(self):
        viewer, _ = self.open_sample()
        os.utime(self.sample, ns=(0, 0))
        viewer.wait('two buttons', lambda s: button(s, 'Reload') and button(s, 'Compare'))
        viewer.press('F6', 'Tab')
        viewer.wait('the second button', lambda s: s.focus == button(s, 'Compare').handle)
        viewer.press('shift+Tab', 'space')
        viewer.wait('it is loaded again', lambda s: not news(s) and s.frame.text == CLEAN)
        self.finish(viewer)

    def test_the_news_goes_when_its_cause_goes(self):
        viewer, _ = self.open_sample()
        path = session_folder() / PROGRAM_FILE
        content = path.read_bytes()
        self.edit()
        self.wait_for_news(viewer, CHANGED)
        self.edit(SHEET, b'<!-- edited -->')
        self.wait_for_news(viewer, '2 documents were changed by another program.')
        path.write_bytes(content)
        self.wait_for_news(viewer, 'setup.html was changed by another program.')
        (session_folder() / SHEET).unlink()
        self.wait_for_news(viewer, 'setup.html was removed by another program.')
        (session_folder() / SHEET).write_bytes(self.packed(SHEET))
        shown = self.wait_for_news(viewer, '')
        self.assertEqual(shown.frame.text, CLEAN)
        self.finish(viewer)

    def test_locks_of_office_programs_are_no_news(self):
        viewer, _ = self.open_sample()
        for name in ('~$setup.docx', '.~lock.setup.html#'):
            (session_folder() / 'SetupSheets' / name).touch()
        self.edit()
        self.wait_for_news(viewer, CHANGED)
        (session_folder() / PROGRAM_FILE).write_bytes(self.packed(PROGRAM_FILE))
        shown = self.wait_for_news(viewer, '')
        self.assertEqual(shown.frame.text, CLEAN)
        for name in ('~$setup.docx', '.~lock.setup.html#'):
            (session_folder() / 'SetupSheets' / name).unlink()
        self.finish(viewer)

    def test_a_package_that_somebody_else_saved_is_compared_and_reloaded(self):
        viewer, before = self.open_sample()
        self.replace_package('[FILE_HISTORY_90]', 'Operation=Modified', 'By=S. Lindqvist', 'Time=2024-06-01 09:12:00')
        shown = viewer.wait('the news', lambda s: news(s).startswith('S. Lindqvist saved this package at '))
        self.assertRegex(news(shown), r'at \d+:\d\d( [AP]M)?\.$')
        self.assertEqual(shown.focus, before.focus)
        viewer.photograph('e2e-news-saved-elsewhere')
        self.press_button(viewer, 'Compare')
        shown = viewer.wait('the comparison', lambda s: s.others and (found := s.dialog().find(id=250)) and found.rows)
        rows = [row[:2] for row in shown.dialog().find(id=250).rows]
        self.assertIn(('Document added', 'theirs.nc'), rows)
        self.assertIn(('History entry added', '2024-06-01 09:12:00'), rows)
        self.assertNotIn('op10.nc', [row[1] for row in rows])
        viewer.photograph('e2e-news-comparison')
        viewer.press('Escape')
        viewer.wait_for_no_dialog('the comparison is closed')
        self.press_button(viewer, 'Reload')
        shown = self.wait_for_news(viewer, '')
        shown = viewer.wait('the new state', lambda s: 'theirs.nc' in [row[0] for row in s.lists()[1].rows])
        self.assertEqual(shown.frame.text, CLEAN)
        self.finish(viewer)

    def test_a_package_that_another_program_replaced_without_an_entry(self):
        viewer, _ = self.open_sample()
        self.replace_package()
        viewer.wait('the news', lambda s: news(s).startswith('Another program saved this package at '))
        self.finish(viewer)

    def test_a_folder_that_goes_away_and_comes_back(self):
        viewer, _ = self.open_sample()
        away = self.folder.with_suffix('.away')
        self.folder.rename(away)
        shown = viewer.wait('the news', lambda s: news(s).endswith(' is offline.'))
        self.assertIn(self.folder.name, news(shown))
        viewer.photograph('e2e-news-offline')
        away.rename(self.folder)
        self.wait_for_news(viewer, '')
        self.finish(viewer)

    def test_a_package_file_that_is_gone_is_saved_again(self):
        viewer, _ = self.open_sample()
        pathlib.Path(self.sample).unlink()
        self.wait_for_news(viewer, 'bracket.mxov was moved or deleted by another program.')
        self.press_button(viewer, 'Save')
        shown = self.wait_for_news(viewer, '')
        self.assertEqual(shown.frame.text, CLEAN)
        self.check_package(self.sample, 'mxinfo.ini', PROGRAM_FILE)
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
