#!/usr/bin/env python3
"""The viewer with the sample packages, driven by a real mouse and keyboard."""
import configparser
import datetime
import math
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import zipfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / 'tools'))

import dragsource  # noqa: E402
import viewerdriver  # noqa: E402
from viewerdriver import BUILD, LISTS, PROGRAM, ROOT, Viewer, windows_path  # noqa: E402

PREFIX = pathlib.Path(os.environ['WINEPREFIX'])
HEADER_HEIGHT, FOLDED_HEIGHT = 20, 30
SAVE, ADD, DELETE, UPDATE = 1039, 1040, 1041, 1042
LINKED, MISSING, PACKAGED = 0, 1, 2
MENU = '#32768'


def session_entries():
    """What the viewer has in the user's temporary folder."""
    return sorted(path.name for path in PREFIX.glob('drive_c/users/*/**/MXOVViewer/*'))


def linked_file(name):
    return PREFIX / 'drive_c/users/Public/Documents/Bracket' / name


def size_text(size):
    return f'{math.ceil(size / 1024)} KB'


def time_text(entry):
    """The last-write time of an archive's entry in UTC, from its extended time stamp."""
    extra = entry.extra
    while extra:
        kind, length = struct.unpack('<HH', extra[:4])
        if kind == 0x5455:
            seconds = struct.unpack('<i', extra[5:9])[0]
            when = datetime.datetime.fromtimestamp(seconds, datetime.timezone.utc)
            return f'{when.year}-{when:%m-%d %H:%M:%S}'
        extra = extra[4 + length:]
    raise AssertionError(f'{entry.filename} has no extended time stamp')


def packed_rows(package, folder):
    """The rows of the documents that lie in a folder of the package, sorted."""
    with zipfile.ZipFile(package) as archive:
        return sorted((pathlib.PurePosixPath(entry.filename).name, size_text(entry.file_size), time_text(entry),
                       PACKAGED)
                      for entry in archive.infolist()
                      if entry.filename.startswith(folder + '/') and not entry.is_dir())


def information(package, name='mxinfo.ini'):
    parser = configparser.ConfigParser(interpolation=None, strict=False)
    parser.optionxform = str
    with zipfile.ZipFile(package) as archive:
        parser.read_string(archive.read(name).decode('utf-8-sig'))
    return parser


class ViewerTest(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        subprocess.run([ROOT / 'tools/install-in-prefix'], check=True)

    def setUp(self):
        subprocess.run(['wine', 'reg', 'delete', r'HKCU\Software\MXOVDocView', '/f'], check=False,
                       capture_output=True)
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix='mxov-e2e-'))
        self.addCleanup(shutil.rmtree, self.folder)
        self.sample = shutil.copy2(BUILD / 'bin/bracket.mxov', self.folder)
        self.legacy = shutil.copy2(BUILD / 'bin/legacy.mxov', self.folder)
        # What a failed test left by ending its viewer.
        for folder in PREFIX.glob('drive_c/users/*/**/MXOVViewer'):
            shutil.rmtree(folder)

    def open_sample(self):
        viewer = self.use(Viewer(windows_path(self.sample)))
        return viewer, viewer.wait_for_package('bracket.mxov')

    def use(self, context):
        self.addCleanup(context.__exit__, None, None, None)
        return context.__enter__()

    def finish(self, viewer):
        """Closes the viewer as a user does; nothing stays behind."""
        self.assertEqual(viewer.close(), 0)
        self.assertEqual(session_entries(), [])

    def choose_file(self, viewer, path):
        """File > Open with the keyboard."""
        viewer.press('ctrl+o')
        viewer.wait_for_dialog('the open dialog')
        viewer.type(windows_path(path))
        viewer.press('Return')

    def expected_sample_rows(self):
        sections = information(self.sample)
        cad = sections['FILEINFO']['CADFilePath'].rsplit('\\', 1)[1]
        part = (cad, size_text(linked_file(cad).stat().st_size), sections['FILEINFO']['CADFileLastModifiedTime'],
                LINKED)
        additional = []
        for name in sections.sections():
            if not name.startswith('REFERANCE_FILE'):
                continue
            path = sections[name]['FilePath']
            file_name = path.rsplit('\\', 1)[1]
            if sections[name]['IsReferencedFile'] == 'NO':
                with zipfile.ZipFile(self.sample) as archive:
                    size, image = archive.getinfo(path.replace('\\', '/')).file_size, PACKAGED
            elif linked_file(file_name).exists():
                size, image = linked_file(file_name).stat().st_size, LINKED
            else:
                size, image = 0, MISSING
            additional.append((file_name, size_text(size), sections[name]['Timestamp'], image))
        return [part], packed_rows(self.sample, 'GCode'), packed_rows(self.sample, 'SetupSheets'), additional

    def test_catalogue_of_the_sample(self):
        viewer, shown = self.open_sample()
        part, programs, sheets, additional = self.expected_sample_rows()
        lists = shown.lists()
        self.assertEqual(lists[0].rows, part)
        self.assertEqual(sorted(lists[1].rows), programs)
        self.assertEqual(sorted(lists[2].rows), sheets)
        self.assertEqual(lists[3].rows, additional)
        self.assertEqual([row[3] for row in additional], [LINKED, PACKAGED, MISSING])
        self.assertEqual((len(programs), len(sheets)), (3, 3))
        for shown_list in lists:
            self.assertEqual([width for _, width in shown_list.columns], [150, 40, 150])
            self.assertTrue(shown_list.visible)
        self.assertEqual([box.text for box in shown.boxes()],
                         ['Part / Assembly', 'G Code', 'Setup Sheets', 'Additional Documents'])
        pane = shown.frame.find(class_name='MXOVPreviewPane')
        self.assertEqual(pane.text, 'bracket\n' + information(self.sample)['FILEINFO']['MaxtlreVersion'])
        viewer.photograph('e2e-catalogue')
        self.finish(viewer)

    def test_control_fills_its_place_at_the_left(self):
        viewer, shown = self.open_sample()
        container = shown.frame.find(class_name='AtlAxWin')
        dialog = shown.frame.find(class_name='#32770')
        pane = shown.frame.find(class_name='MXOVPreviewPane')
        self.assertEqual(dialog.rect, container.rect)
        self.assertLess(container.rect[0], pane.rect[0])
        for number in LISTS:
            self.assertLessEqual(shown.item(number).rect[2], container.rect[2])
        self.finish(viewer)

    def test_sections_fold_and_unfold(self):
        viewer, before = self.open_sample()
        for index, box in enumerate(before.boxes()):
            with self.subTest(section=box.text):
                viewer.click(box.rect[0] + 60, box.top + HEADER_HEIGHT // 2)
                folded = viewer.wait('the section is folded', lambda s: not s.lists()[index].visible)
                self.assert_folded(before, folded, index)
                viewer.photograph(f'e2e-folded-{index + 1}')
                # Elsewhere on the header, so that the two clicks are no double click.
                viewer.click(box.rect[2] - 12, box.top + HEADER_HEIGHT // 2)
                unfolded = viewer.wait('the section is unfolded', lambda s: s.lists()[index].visible)
                self.assertEqual(self.places(unfolded), self.places(before))
        self.finish(viewer)

    def places(self, shown):
        items = [*shown.boxes(), *shown.lists(), *(shown.item(number) for number in (SAVE, ADD, DELETE))]
        return {item.id: (item.rect, item.visible) for item in items}

    def assert_folded(self, before, folded, index):
        box = before.boxes()[index]
        saved = box.size[1] - FOLDED_HEIGHT
        self.assertEqual(folded.boxes()[index].size, (box.size[0], FOLDED_HEIGHT))
        for number, (rect, visible) in self.places(before).items():
            now_rect, now_visible = self.places(folded)[number]
            if rect[1] > box.rect[3]:
                self.assertEqual(now_rect, (rect[0], rect[1] - saved, rect[2], rect[3] - saved), number)
            elif number != box.id:
                self.assertEqual(now_rect, rect, number)
            inside = number != box.id and box.rect[1] - 5 <= rect[1] and rect[3] <= box.rect[3] + 5
            self.assertEqual(now_visible, visible and not inside, number)

    def test_double_click_on_a_header_folds_once(self):
        viewer, before = self.open_sample()
        box = before.boxes()[1]
        viewer.do('mousemove', box.rect[0] + 60, box.top + 8, 'click', '--repeat', 2, '--delay', 30, 1)
        viewer.wait('the section is folded', lambda s: not s.lists()[1].visible)
        other = before.boxes()[0]
        viewer.click(other.rect[0] + 60, other.top + 8)
        shown = viewer.wait('the first section is folded too', lambda s: not s.lists()[0].visible)
        self.assertFalse(shown.lists()[1].visible)
        self.finish(viewer)

    def test_only_a_release_inside_the_header_folds(self):
        viewer, before = self.open_sample()
        box = before.boxes()[1]
        viewer.do('mousemove', box.rect[0] + 60, box.top + 8, 'mousedown', 1,
                  'mousemove', box.rect[0] + 60, box.rect[3] + 40, 'mouseup', 1)
        other = before.boxes()[0]
        viewer.do('mousemove', other.rect[0] + 60, other.top + 8, 'mousedown', 1,
                  'mousemove', other.rect[0] + 160, other.top + 12, 'mouseup', 1)
        shown = viewer.wait('the first section is folded', lambda s: not s.lists()[0].visible)
        self.assertTrue(shown.lists()[1].visible)
        self.finish(viewer)

    def test_right_click_shows_no_menu(self):
        viewer, shown = self.open_sample()
        points = [((item.rect[0] + item.rect[2]) // 2, item.rect[3] - 6) for item in shown.lists()]
        save = shown.item(SAVE)
        points.append((save.rect[2] + 30, save.top + 3))
        for point in points:
            viewer.click(*point, button=3)
        # A menu would take the click that folds.
        box = shown.boxes()[0]
        viewer.click(box.rect[0] + 60, box.top + 8)
        shown = viewer.wait('the section is folded', lambda s: not s.lists()[0].visible)
        self.assertEqual([window.class_name for window in shown.others], [])
        self.finish(viewer)

    def test_control_follows_the_window(self):
        viewer, before = self.open_sample()
        window = viewer.display_window('bracket.mxov')
        for width, height in ((1150, 900), (900, 700), (1100, 640)):
            viewer.do('windowsize', window, width, height)
            shown = viewer.wait('the control has followed', lambda s: (
                s.frame.size != before.frame.size
                and s.frame.find(class_name='#32770').rect == s.frame.find(class_name='AtlAxWin').rect
                and s.frame.find(class_name='AtlAxWin').size[1] != before.frame.find(class_name='AtlAxWin').size[1]))
            self.assertEqual(shown.frame.find(class_name='AtlAxWin').size[0],
                             before.frame.find(class_name='AtlAxWin').size[0])
            self.assertGreater(shown.frame.find(class_name='MXOVPreviewPane').size[0], 200)
            before = shown
        viewer.photograph('e2e-resized')
        self.finish(viewer)

    def test_another_package_with_the_keyboard(self):
        viewer, _ = self.open_sample()
        viewer.press('alt+f', 'o')
        viewer.wait_for_dialog('the open dialog')
        viewer.photograph('e2e-open')
        viewer.type(windows_path(self.legacy))
        viewer.press('Return')
        shown = viewer.wait_for_package('legacy.mxov')
        part, programs, sheets, additional = shown.lists()
        cad = information(self.legacy, 'Private/mxinfo.ini')['FILEINFO']
        self.assertEqual(part.rows, [(cad['CADFilePath'].rsplit('\\', 1)[1], '0 KB', cad['CADFileLastModifiedTime'],
                                      MISSING)])
        self.assertEqual(sorted(programs.rows), packed_rows(self.legacy, 'GCode'))
        self.assertEqual(sorted(sheets.rows), packed_rows(self.legacy, 'SetupSheets'))
        self.assertEqual((additional.rows, additional.visible), ([], False))
        self.assertFalse(shown.item(ADD).visible or shown.item(DELETE).visible or shown.boxes()[3].visible)
        self.assertIn('no preview', shown.frame.find(class_name='MXOVPreviewPane').text)
        self.assertEqual(len(session_entries()), 2, 'one folder and its session file')
        viewer.photograph('e2e-legacy')
        self.finish(viewer)

    def refuse(self, path, *words):
        """With the sample open, `path` is refused in a message that holds the words, and nothing else changes."""
        viewer, before = self.open_sample()
        sessions = session_entries()
        self.choose_file(viewer, path)
        shown = viewer.wait('the message', lambda s: 'cannot be opened' in s.texts())
        for word in (pathlib.Path(path).name, *words):
            self.assertIn(word, shown.texts())
        viewer.photograph(f'e2e-refused-{pathlib.Path(path).stem}')
        viewer.press('Return')
        shown = viewer.wait_for_package('bracket.mxov')
        self.assertEqual([item.rows for item in shown.lists()], [item.rows for item in before.lists()])
        self.assertEqual(session_entries(), sessions)
        self.finish(viewer)

    def test_a_file_that_is_no_package_is_refused(self):
        letter = self.folder / 'letter.mxov'
        letter.write_text('Dear Sir or Madam\n' * 40, encoding='ascii')
        self.refuse(letter)

    def test_a_hostile_package_is_refused(self):
        hostile = self.folder / 'hostile.mxov'
        with zipfile.ZipFile(hostile, 'w') as archive:
            archive.writestr('mxinfo.ini', '[FILEINFO]\n')
            archive.writestr('../outside.txt', 'outside')
        self.refuse(hostile, 'outside.txt')
        self.assertEqual(list(PREFIX.glob('drive_c/users/*/**/outside.txt')), [])

    def test_close_package_and_open_it_again(self):
        viewer, before = self.open_sample()
        viewer.press('ctrl+w')
        shown = viewer.wait('the package is closed', lambda s: s.frame.text == PROGRAM)
        self.assertEqual([item.rows for item in shown.lists()], [[], [], [], []])
        self.assertEqual(session_entries(), [])
        viewer.press('alt+f', 'r', '1')
        shown = viewer.wait_for_package('bracket.mxov')
        self.assertEqual([item.rows for item in shown.lists()], [item.rows for item in before.lists()])
        self.finish(viewer)

    def open_changed_sample(self):
        """The sample, marked as changed the way the properties of a document do it."""
        viewer, _ = self.open_sample()
        viewer.dump('press', str(UPDATE))
        viewer.wait('the package counts as changed', lambda s: s.item(SAVE).enabled)
        return viewer

    def answer_question(self, viewer, key):
        viewer.wait('the question',
                    lambda s: s.others and s.dialog().text == 'Maxtrel Orvando Document Manager')
        viewer.photograph('e2e-question')
        viewer.press(key)

    def history(self):
        return [name for name in information(self.sample).sections() if name.startswith('FILE_HISTORY')]

    def test_closing_a_changed_package_without_saving_leaves_the_file(self):
        before = pathlib.Path(self.sample).read_bytes()
        viewer = self.open_changed_sample()
        viewer.press('ctrl+w')
        self.answer_question(viewer, 'n')
        viewer.wait('the package is closed', lambda s: s.frame.text == PROGRAM and not s.others)
        self.assertEqual(pathlib.Path(self.sample).read_bytes(), before)
        self.finish(viewer)

    def test_ending_with_a_changed_package_saves_it(self):
        history = self.history()
        viewer = self.open_changed_sample()
        viewer.press('alt+F4')
        self.answer_question(viewer, 'y')
        self.assertEqual(viewer.process.wait(viewerdriver.PATIENCE), 0)
        self.assertEqual(len(self.history()), len(history) + 1)
        with zipfile.ZipFile(self.sample) as archive:
            self.assertIsNone(archive.testzip())
        self.assertEqual(session_entries(), [])

    def test_refreshing_a_changed_package_saves_it_first(self):
        history = self.history()
        viewer = self.open_changed_sample()
        viewer.press('F5')
        self.answer_question(viewer, 'y')
        shown = viewer.wait('the package is there again', lambda s: not s.item(SAVE).enabled and not s.others)
        self.assertEqual(shown.frame.text, f'bracket.mxov - {PROGRAM}')
        self.assertEqual(len(self.history()), len(history) + 1)
        self.assertEqual(shown.lists()[3].rows, self.expected_sample_rows()[3])
        self.assertEqual(len(session_entries()), 2)
        self.finish(viewer)

    def test_opening_another_asks_for_the_changed_one_and_not_again(self):
        viewer = self.open_changed_sample()
        self.choose_file(viewer, self.legacy)
        self.answer_question(viewer, 'n')
        viewer.wait_for_package('legacy.mxov')
        self.finish(viewer)

    def test_a_recent_package_that_is_gone_is_told_and_forgotten(self):
        viewer, _ = self.open_sample()
        self.choose_file(viewer, self.legacy)
        viewer.wait_for_package('legacy.mxov')
        pathlib.Path(self.sample).unlink()
        viewer.press('alt+f', 'r', '2')
        shown = viewer.wait_for_dialog('the message')
        self.assertIn('cannot be found', shown.texts())
        self.assertIn('bracket.mxov', shown.texts())
        viewer.press('Return')
        viewer.wait_for_package('legacy.mxov')
        recent = subprocess.run(['wine', 'reg', 'query', r'HKCU\Software\MXOVDocView\Viewer', '/v', 'RecentPackages'],
                                capture_output=True, text=True, check=True).stdout
        self.assertIn('legacy.mxov', recent)
        self.assertNotIn('bracket.mxov', recent)
        self.finish(viewer)

    def test_refresh_shows_a_link_that_has_come_back(self):
        certificate = linked_file('material-certificate.pdf')
        hidden = certificate.with_suffix('.away')
        certificate.rename(hidden)
        self.addCleanup(lambda: hidden.exists() and hidden.rename(certificate))
        viewer, shown = self.open_sample()
        self.assertEqual([row[3] for row in shown.lists()[3].rows], [MISSING, PACKAGED, MISSING])
        hidden.rename(certificate)
        viewer.press('F5')
        viewer.wait('the link is there', lambda s: [row[3] for row in s.lists()[3].rows] == [LINKED, PACKAGED, MISSING])
        self.finish(viewer)

    def test_a_dropped_package_is_opened(self):
        viewer, shown = self.open_sample()
        pane = shown.frame.find(class_name='MXOVPreviewPane')
        for window, package in ((pane, self.legacy), (shown.lists()[2], self.sample)):
            name = pathlib.Path(package).name
            title = 'bracket.mxov' if name == 'legacy.mxov' else 'legacy.mxov'
            dragsource.drop(viewer.display_window(title), (window.rect[0] + 20, window.top + 20), package)
            viewer.wait_for_package(name)
        self.finish(viewer)

    def large_package(self):
        """A package of so many files that unpacking it takes a while."""
        path = self.folder / 'large.mxov'
        with zipfile.ZipFile(path, 'w') as archive:
            archive.writestr('mxinfo.ini', '[FILEINFO]\nMaxtlreVersion=Package Writer 2024\n')
            for number in range(30000):
                archive.writestr(f'GCode/{number % 300}/op{number}.nc', f'N{number} G0 X0 Y0\n')
        return path

    def test_a_long_opening_shows_progress_and_can_be_cancelled(self):
        large = self.large_package()
        viewer, before = self.open_sample()
        sessions = session_entries()
        self.choose_file(viewer, large)
        shown = viewer.wait('the progress', lambda s: 'Opening large.mxov' in s.texts() and '.nc' in s.texts())
        self.assertTrue(shown.frame.enabled)
        viewer.photograph('e2e-progress')
        viewer.press('Escape')
        shown = viewer.wait_for_package('bracket.mxov')
        self.assertEqual([item.rows for item in shown.lists()], [item.rows for item in before.lists()])
        self.assertEqual(session_entries(), sessions)
        self.finish(viewer)

    def test_closing_while_a_package_is_being_opened(self):
        large = self.large_package()
        viewer = self.use(Viewer(windows_path(large)))
        viewer.wait('the progress', lambda s: 'Opening large.mxov' in s.texts())
        viewer.do('windowactivate', '--sync', viewer.display_window())
        self.finish(viewer)

    def test_what_a_crash_left_is_kept(self):
        viewer, _ = self.open_sample()
        left = session_entries()
        viewer.process.kill()
        viewer.process.wait()
        viewer, _ = self.open_sample()
        self.assertTrue(set(left) < set(session_entries()))
        self.assertEqual(viewer.close(), 0)
        self.assertEqual(session_entries(), left)

    def test_tab_reaches_the_lists_in_turn(self):
        viewer, _ = self.open_sample()
        self.assertEqual(self.focused(viewer.snapshot()), LISTS[0])
        self.assertEqual([self.focus_after(viewer, 'Tab') for _ in range(5)], [*LISTS[1:3], ADD, LISTS[3], LISTS[0]])
        self.assertEqual(self.focus_after(viewer, 'shift+Tab'), LISTS[3])
        viewer.press('Down')
        viewer.wait('a row is selected', lambda s: s.lists()[3].selected == [0])
        self.finish(viewer)

    def focused(self, shown):
        return shown.frame.find(handle=shown.focus).id

    def focus_after(self, viewer, key):
        before = viewer.snapshot().focus
        viewer.press(key)
        return self.focused(viewer.wait('the focus moves', lambda s: s.focus != before))

    def test_without_the_control_it_says_how_to_register_it(self):
        control = windows_path(BUILD / 'bin/MXOVDocViewCtrl.ocx')
        subprocess.run(['wine', 'regsvr32', '/s', '/u', control], check=True)
        self.addCleanup(subprocess.run, ['wine', 'regsvr32', '/s', control], check=True)
        viewer = self.use(Viewer(windows_path(self.sample)))
        shown = viewer.wait_for_dialog('the message')
        self.assertIn(f'regsvr32 "{control}"', shown.texts())
        self.assertFalse(shown.frame.visible)
        viewer.photograph('e2e-not-registered')
        viewer.press('Return')
        self.assertEqual(viewer.process.wait(30), 1)
        self.assertEqual(session_entries(), [])

    def test_a_package_that_does_not_exist(self):
        viewer = self.use(Viewer(windows_path(self.folder / 'none.mxov')))
        shown = viewer.wait_for_dialog('the message')
        self.assertIn('cannot be found', shown.texts())
        self.assertIn('none.mxov', shown.texts())
        viewer.press('Return')
        viewer.wait('the window is empty', lambda s: s.frame.text == PROGRAM and not s.others)
        self.finish(viewer)

    def test_help_from_the_menu_names_the_program(self):
        viewer, _ = self.open_sample()
        viewer.press('alt+h', 'a')
        shown = viewer.wait_for_dialog('the message')
        self.assertIn(PROGRAM, shown.texts())
        viewer.photograph('e2e-about')
        viewer.press('Return')
        viewer.wait_for_package('bracket.mxov')
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
