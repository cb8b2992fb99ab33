#!/usr/bin/env python3
"""The properties of a document: shown by a click, edited with the keyboard, closed by a click elsewhere."""
import pathlib
import shutil
import unittest

from viewercase import NO, PREFIX, PROPERTIES, SAVE, ViewerCase, information, linked_file, properties_of
from viewerdriver import BUILD
from wineprogram import change_registry, windows_path

NAME, PATH, SIZE, BROWSE, DESCRIPTION, HISTORY, STATUS, HELP = 1033, 1034, 1035, 1036, 1037, 1032, 1046, 1049
UNDECORATED = 'undecorated.exe'
DRAWING = rf'HKCU\Software\Wine\AppDefaults\{UNDECORATED}\X11 Driver'
CAPTION_MIDDLE = 12  # pixels below the window's top


def live_information():
    """The information file of the package that is open."""
    return next(PREFIX.glob('drive_c/users/*/**/MXOVViewer/*/mxinfo.ini')).read_text(encoding='utf-8-sig')


class PopupTest(ViewerCase):
    def click_row(self, viewer, shown, index, row=0):
        """Clicks a row of a list and returns the popup that opens."""
        before = properties_of(shown)
        viewer.click(*self.row_place(shown.lists()[index], row))
        now = viewer.wait('the popup', lambda s: properties_of(s) and (
            not before or properties_of(s).handle != before.handle))
        return now, properties_of(now)

    def click_item(self, viewer, window, number):
        rect = window.find(id=number).rect
        viewer.click((rect[0] + rect[2]) // 2, (rect[1] + rect[3]) // 2)

    def test_each_list_shows_its_documents(self):
        viewer, shown = self.open_sample()
        file = information(self.sample)
        linked = file['FILEINFO']['CADFilePath']
        third = file['REFERANCE_FILE_2']
        expected = {
            (0, 0): (file['FILEINFO']['CADFileDescription'], linked),
            (1, 0): (file['FILEINFO']['GCodeFileDescription'], ''),
            (2, 0): (file['FILEINFO']['SetupSheetsFileDescription'], ''),
            (3, 0): (file['REFERANCE_FILE_1']['Description'], file['REFERANCE_FILE_1']['FilePath']),
            (3, 1): (third['Description'], ''),
        }
        history = [(file[name]['Operation'], file[name]['Time'], file[name]['By'])
                   for name in file.sections() if name.startswith('FILE_HISTORY')]
        for (index, row), (description, path) in expected.items():
            with self.subTest(list=index, row=row):
                shown, popup = self.click_row(viewer, shown, index, row)
                document = shown.lists()[index].rows[row]
                self.assertEqual(popup.find(id=NAME).text, document[0])
                self.assertEqual(popup.find(id=SIZE).text, document[1])
                self.assertEqual(popup.find(id=DESCRIPTION).text, description)
                self.assertEqual(popup.find(id=PATH).text, path)
                self.assertEqual(popup.find(id=BROWSE).enabled, bool(path))
                self.assertTrue(popup.find(id=DESCRIPTION).enabled)
                self.assertEqual([cells[:3] for cells in popup.find(id=HISTORY).rows], history)
                self.assertEqual(popup.find(id=STATUS).text, '')
                self.assertEqual(shown.lists()[index].selected, [row])
        viewer.photograph('e2e-popup')
        self.close_outside(viewer, shown)
        self.finish(viewer)

    def close_outside(self, viewer, shown):
        """Clicks an empty place of the control."""
        box = shown.boxes()[0]
        viewer.click(box.rect[0] + 3, box.rect[3] + 1)
        return viewer.wait('the popup is closed', lambda s: not properties_of(s))

    def test_every_keystroke_is_in_the_file(self):
        viewer, shown = self.open_sample()
        before = information(self.sample)['FILEINFO']['CADFileDescription']
        shown, popup = self.click_row(viewer, shown, 0)
        self.assertFalse(shown.item(SAVE).enabled)
        self.click_item(viewer, popup, DESCRIPTION)
        viewer.press('ctrl+End')
        typed = ''
        for key in 'ok7':
            viewer.press(key)
            typed += key
            shown = viewer.wait('the keystroke', lambda s: (
                properties_of(s).find(id=DESCRIPTION).text == before + typed))
            self.assertIn(f'CADFileDescription={before}{typed}\n', live_information().replace('\r\n', '\n'))
        viewer.wait('Save comes on', lambda s: s.item(SAVE).enabled)
        # Inside, and on a label, it stays.
        self.click_item(viewer, popup, NAME)
        self.assertTrue(properties_of(viewer.snapshot()))
        shown = self.close_outside(viewer, shown)
        self.discard(viewer)

    def discard(self, viewer):
        viewer.press('alt+F4')
        viewer.wait('the question', lambda s: s.others)
        self.answer(viewer, NO)
        self.assertEqual(viewer.process.wait(60), 0)

    def assert_survives(self, text, enter):
        """Enters a description, saves, ends the viewer and opens the package again."""
        viewer, shown = self.open_sample()
        shown, popup = self.click_row(viewer, shown, 0)
        self.click_item(viewer, popup, DESCRIPTION)
        viewer.press('ctrl+a', 'Delete')
        # Text inserted by a message would overtake the queued keys.
        viewer.wait('the field is empty', lambda s: not properties_of(s).find(id=DESCRIPTION).text)
        enter(viewer)
        shown = viewer.wait('the text', lambda s: properties_of(s).find(id=DESCRIPTION).text == text and
                            s.item(SAVE).enabled)
        self.click_item(viewer, shown.frame, SAVE)
        viewer.wait('the package is saved', lambda s: not s.item(SAVE).enabled and not s.others)
        self.finish(viewer)
        viewer, shown = self.open_sample()
        shown, popup = self.click_row(viewer, shown, 0)
        self.assertEqual(popup.find(id=DESCRIPTION).text, text)
        self.close_outside(viewer, shown)
        self.finish(viewer)

    def test_typed_text_is_there_again_after_saving_and_opening(self):
        lines = ['  "quoted"; [x] = 50 % & more', "it's #2"]

        def enter(viewer):
            viewer.type(lines[0])
            viewer.press('Return')
            viewer.type(lines[1])
            viewer.press('space', 'Return')

        self.assert_survives('\r\n'.join([lines[0], lines[1] + ' ', '']), enter)

    def test_pasted_text_is_there_again_too(self):
        file = self.folder / 'text.txt'
        wide = '\u9bae\u5ea6 \u65e5\u672c\u8a9e \U0001F527\r\n'
        for text in (wide + '"; [x]" ', (wide + 'x' * 90) * 300):
            file.write_bytes(text.encode('utf-8'))
            with self.subTest(length=len(text)):
                self.assert_survives(text, lambda viewer: viewer.dump(
                    'insert', str(DESCRIPTION), windows_path(file)))

    def browse(self, viewer, popup):
        self.click_item(viewer, popup, BROWSE)
        return viewer.wait('the file dialog', lambda s: len(s.others) == 2 and
                           any(w.find(class_name='SHELLDLL_DefView') for w in s.others))

    def test_browsing_with_and_without_cancelling(self):
        viewer, shown = self.open_sample()
        shown, popup = self.click_row(viewer, shown, 0)
        path = popup.find(id=PATH).text
        during = self.browse(viewer, popup)
        # A click elsewhere meanwhile leaves the popup.
        box = during.boxes()[0]
        viewer.click(box.rect[0] + 3, box.rect[3] + 1)
        self.assertTrue(properties_of(viewer.snapshot()))
        self.focus_dialog(viewer)
        viewer.press('Escape')
        shown = viewer.wait('the file dialog is gone', lambda s: len(s.others) == 1)
        self.assertEqual(properties_of(shown).find(id=PATH).text, path)
        self.assertFalse(shown.item(SAVE).enabled)
        other = linked_file('other.sldprt')
        other.write_bytes(b'x' * 1025)
        self.addCleanup(other.unlink)
        chosen = path.rsplit('\\', 1)[0] + '\\other.sldprt'
        self.browse(viewer, properties_of(shown))
        self.focus_dialog(viewer)
        viewer.type(chosen)
        viewer.press('Return')
        shown = viewer.wait('the other file', lambda s: len(s.others) == 1 and
                            properties_of(s).find(id=NAME).text == 'other.sldprt' and s.item(SAVE).enabled)
        # The dialog returns the folder as it is spelled on disk.
        self.assertEqual(properties_of(shown).find(id=PATH).text.lower(), chosen.lower())
        self.assertEqual(properties_of(shown).find(id=SIZE).text, '2 KB')
        self.assertIn(f'CADFilePath={properties_of(shown).find(id=PATH).text}', live_information())
        self.close_outside(viewer, shown)
        self.discard(viewer)

    def focus_dialog(self, viewer):
        """Into the file dialog's name field."""
        dialog = next(w for w in viewer.snapshot().others if w.text != PROPERTIES)
        edit = next(w for w in dialog.walk() if w.class_name == 'Edit' and w.visible)
        viewer.click(edit.rect[0] + 10, (edit.rect[1] + edit.rect[3]) // 2)

    def test_an_older_package_cannot_be_edited(self):
        viewer, shown = self.open_sample()
        self.choose_file(viewer, self.legacy)
        shown = viewer.wait_for_package('legacy.mxov')
        shown, popup = self.click_row(viewer, shown, 0)
        for number in (PATH, BROWSE, DESCRIPTION):
            self.assertFalse(popup.find(id=number).enabled, number)
        self.close_outside(viewer, shown)
        self.finish(viewer)

    def test_alt_keys(self):
        viewer, shown = self.open_sample()
        before = information(self.sample)['FILEINFO']['CADFileDescription']
        shown, popup = self.click_row(viewer, shown, 0)
        self.click_item(viewer, popup, DESCRIPTION)
        viewer.press('ctrl+End', 'x')
        viewer.wait('Save comes on', lambda s: s.item(SAVE).enabled)
        # The popup has no mnemonics: these keys neither type nor reach the window behind it.
        viewer.press('alt+Down', 'alt+s', 'alt+x', 'y')
        shown = viewer.wait('the key after them', lambda s: (
            properties_of(s).find(id=DESCRIPTION).text == before + 'xy'))
        self.assertTrue(shown.item(SAVE).enabled)
        self.assertEqual(information(self.sample)['FILEINFO']['CADFileDescription'], before)
        # It closes the popup and not the viewer; then the keys are the viewer's again.
        viewer.press('alt+F4')
        viewer.wait('the popup is closed', lambda s: not s.others)
        self.assertIsNone(viewer.process.poll())
        viewer.press('alt+s')
        viewer.wait('the package is saved', lambda s: not s.item(SAVE).enabled and not s.others)
        self.assertEqual(information(self.sample)['FILEINFO']['CADFileDescription'], before + 'xy')
        self.finish(viewer)

    def test_alt_s_saves_while_the_popup_is_up(self):
        viewer, shown = self.open_sample()
        shown, popup = self.click_row(viewer, shown, 0)
        self.click_item(viewer, popup, DESCRIPTION)
        viewer.press('ctrl+a', 'z')
        viewer.wait('Save comes on', lambda s: s.item(SAVE).enabled)
        # The window manager keeps a press on the viewer's caption, so that the popup stays.
        viewer.click(*self.title_bar(viewer))
        viewer.wait('the viewer is active', lambda s: s.focus in [w.handle for w in s.frame.walk()])
        viewer.press('alt+s')
        shown = viewer.wait('the package is saved', lambda s: not s.item(SAVE).enabled)
        self.assertEqual(properties_of(shown).find(id=DESCRIPTION).text, 'z')
        self.assertEqual(information(self.sample)['FILEINFO']['CADFileDescription'], 'z')
        # An edited popup reports the change once more when it closes, saved or not.
        shown = self.close_outside(viewer, shown)
        viewer.wait('Save comes on again', lambda s: s.item(SAVE).enabled)
        self.discard(viewer)

    def test_a_click_on_the_caption_closes_it(self):
        # The popup's caption is drawn by the system and not by the window manager, which keeps its clicks. That is
        # set by the program's name: one of its own keeps the viewers of all other tests as they are.
        copy = pathlib.Path(shutil.copy2(BUILD / 'bin/viewer.exe', BUILD / 'bin' / UNDECORATED))
        self.addCleanup(copy.unlink)
        change_registry('add', DRAWING, '/v', 'Decorated', '/d', 'N', '/f')
        self.addCleanup(change_registry, 'delete', DRAWING, '/f')
        viewer, shown = self.open_sample(UNDECORATED)
        for row in (0, 1):
            shown, popup = self.click_row(viewer, shown, 3, row)
            viewer.photograph('e2e-caption')
            left, top, right, _ = popup.rect
            viewer.click((left + right) // 2, top + CAPTION_MIDDLE)
            shown = viewer.wait('the popup is closed', lambda s: not properties_of(s))
            self.assertEqual(shown.lists()[3].selected, [row])
        self.finish(viewer)

    def test_the_icon_opens_help(self):
        record = self.record_help()
        viewer, shown = self.open_sample()
        shown, popup = self.click_row(viewer, shown, 0)
        self.click_item(viewer, popup, HELP)
        viewer.wait('the call', lambda s: record.exists() and record.stat().st_size)
        command, topic, path = record.read_text(encoding='utf-16-le').strip().split(' ', 2)
        help_file = pathlib.Path(BUILD / 'bin/plugins/etc/mx/lang/english/Orvando.chm')
        expected = ('7018', windows_path(help_file)) if help_file.exists() else (
            '7806', windows_path(BUILD / 'bin/lang/English/KVT.chm'))
        self.assertEqual(command, '15')
        self.assertEqual((topic, path.lower()), (expected[0], expected[1].lower()))
        self.assertTrue(properties_of(viewer.snapshot()))
        self.close_outside(viewer, shown)
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
