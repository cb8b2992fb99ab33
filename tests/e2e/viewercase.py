"""What the end-to-end tests share: the viewer on copies of the sample packages, and what the samples hold."""
import configparser
import datetime
import functools
import math
import os
import pathlib
import re
import shutil
import struct
import subprocess
import tempfile
import time
import unittest
import zipfile

from informationfile import decoded
from viewerdriver import BUILD, ROOT, Viewer, WindowReader
from wineprogram import change_registry, query_registry, run_wine, windows_path

PREFIX = pathlib.Path(os.environ['WINEPREFIX'])
LOCAL_DATA = next(PREFIX.glob('drive_c/users/*/AppData/Local'))
TEMPORARY = next(path for path in (LOCAL_DATA / 'Temp', LOCAL_DATA.parents[1] / 'Temp') if path.is_dir())
SESSIONS, EARLIER_SESSIONS = LOCAL_DATA / 'MXOVViewer', TEMPORARY / 'MXOVViewer'
VERSIONS = LOCAL_DATA / 'MXOVVersions'
HEADER_HEIGHT, FOLDED_HEIGHT = 20, 30
SAVE, ADD, DELETE, UPDATE = 1039, 1040, 1041, 1042
DESCRIPTION = 1037
YES, NO = 6, 7  # buttons of the platform's messages
DOTS = int(os.environ.get('MXOV_DOTS', 96))  # per inch
SCREEN = tuple(map(int, os.environ.get('MXOV_SCREEN', '1280x1024').split('x')))
LINKED, MISSING, PACKAGED = 0, 1, 2
LIBRARY = 'Maxtrel Orvando Document Manager'
LINK_LABEL = 'Link instead of copying'
PROPERTIES = 'Document Properties'
DESKTOP = r'HKCU\Control Panel\Desktop'
HELP_ENGINE = r'HKCR\CLSID\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\InprocServer32'


def properties_of(shown):
    """The properties of a document; None while they are not shown."""
    return next((window for window in shown.others if window.text == PROPERTIES), None)


def news(shown):
    """What the bar reports; empty when it is hidden."""
    bar = shown.frame.find(class_name='MXOVNewsBar')
    return bar.text if bar.visible else ''


def session_entries():
    """What the viewer has unpacked and kept among the user's local application data."""
    return sorted(path.name for path in SESSIONS.glob('*'))


def session_folder():
    """The folder of the open package."""
    return next(path for path in SESSIONS.iterdir() if path.is_dir())


def profile_value(file, section, key):
    """A value as the platform's profile functions read it."""
    return run_wine(windows_path(BUILD / 'tests/ProfileValue.exe'), windows_path(file), section, key).expect().output


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
        parser.read_string(decoded(archive.read(name)))
    return parser


@functools.cache
def registry():
    """What deletes keys without starting a program for each."""
    return WindowReader()


class ViewerCase(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        registry().ask('forget', r'Software\MXOVDocView').expect()
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix='mxov-e2e-'))
        self.addCleanup(shutil.rmtree, self.folder)
        self.sample = shutil.copy2(BUILD / 'bin/bracket.mxov', self.folder)
        self.legacy = shutil.copy2(BUILD / 'bin/legacy.mxov', self.folder)
        # What a failed test left by ending its viewer.
        for folder in (SESSIONS, EARLIER_SESSIONS, VERSIONS):
            shutil.rmtree(folder, ignore_errors=True)

    def set_dots_per_inch(self, dots):
        self.addCleanup(self.log_off)
        self.addCleanup(change_registry, *self.dots_per_inch(DOTS))
        change_registry(*self.dots_per_inch(dots))
        self.log_off()

    @staticmethod
    def dots_per_inch(dots):
        return 'add', DESKTOP, '/v', 'LogPixels', '/t', 'REG_DWORD', '/d', str(dots), '/f'

    @staticmethod
    def log_off():
        """Programs that are aware of the system's dots see those of the time when the user logged on."""
        subprocess.run(['wineserver', '-k'], check=True)
        subprocess.run(['wineserver', '-p'], check=True)
        registry.cache_clear()  # it ended with the server

    def open_sample(self, program='viewer.exe'):
        viewer = self.use(Viewer(windows_path(self.sample), program=program))
        return viewer, viewer.wait_for_package('bracket.mxov')

    def restart_and_answer(self, key):
        """A new viewer after one that died with changes to the sample; its question is answered with a key."""
        viewer = self.use(Viewer())
        shown = viewer.wait('the offer', lambda s: 'unsaved changes to bracket.mxov' in s.texts())
        self.assertIn(windows_path(self.sample), shown.texts())
        self.assertRegex(shown.texts(), r'last made on .*20\d\d.*\d:\d\d')
        viewer.photograph('e2e-left-work')
        viewer.press(key)
        return viewer

    def record(self, name):
        """A file for the test that a program writes which knows no long paths."""
        self.addCleanup((PREFIX / name).unlink, missing_ok=True)
        return PREFIX / name

    def record_help(self):
        """Records calls for help until the end of the test; returns the file that they are written to."""
        record = self.record('help.txt')
        os.environ['MXOV_HELP_RECORD'] = windows_path(record)
        self.addCleanup(os.environ.pop, 'MXOV_HELP_RECORD')
        registered = query_registry(HELP_ENGINE, '/ve')
        engine = re.search(r'REG_(?:EXPAND_)?SZ\s+(\S.*)', registered)
        self.assertTrue(engine, registered)
        self.addCleanup(change_registry, 'add', HELP_ENGINE, '/ve', '/d', engine.group(1).strip(), '/f')
        change_registry('add', HELP_ENGINE, '/ve', '/d', windows_path(BUILD / 'tests/recording_engine.dll'), '/f')
        return record

    def refuse_saving(self):
        """The folder of the samples takes no new file from now on (tools/with-desktop sees to it that this holds
        for root too)."""
        self.folder.chmod(0o555)
        self.addCleanup(self.allow_saving)

    def allow_saving(self):
        self.folder.chmod(0o755)

    def history(self):
        """The names of the entries in the history of the sample."""
        return [name for name in information(self.sample).sections() if name.startswith('FILE_HISTORY')]

    def open_changed_sample(self):
        """The sample, marked as changed the way the properties of a document do it."""
        viewer, _ = self.open_sample()
        viewer.dump('press', UPDATE)
        viewer.wait('the package counts as changed', lambda s: s.item(SAVE).enabled)
        return viewer

    @staticmethod
    def wait_for_sessions(viewer, count):
        """The viewer removes folders in the background: waits until it has no more than these."""
        viewer.wait_until_nothing_hinders(f'{count} entries are left', lambda: (
            None if len(session_entries()) == count else str(session_entries())))

    def use(self, context):
        self.addCleanup(context.__exit__, None, None, None)
        return context.__enter__()

    def finish(self, viewer):
        """Closes the viewer as a user does; nothing stays behind."""
        self.assertEqual(viewer.close(), 0)
        self.assertEqual(session_entries(), [])

    def type_path(self, viewer, path):
        """Types a path in the platform's dialog for files."""
        self.skip_with_long_paths('the dialog for files crashes')
        viewer.type(windows_path(path))

    def skip_with_long_paths(self, reason):
        if os.environ.get('MXOV_PLACE') == 'long_path':
            self.skipTest(f'the platform: {reason}')

    def choose_file(self, viewer, path):
        """File > Open with the keyboard."""
        viewer.press('ctrl+o')
        viewer.wait_for_dialog('the open dialog')
        self.type_path(viewer, path)
        viewer.press('Return')

    @staticmethod
    def click_item(viewer, number):
        """Clicks in the middle of a control of the embedded dialog."""
        viewer.click(*viewer.snapshot().item(number).middle)

    @staticmethod
    def answer(viewer, button):
        """Presses the underlined letter of a button, whose text is in the user's language."""
        text = next(filter(None, (w.find(id=button, class_name='Button') for w in viewer.snapshot().others))).text
        viewer.press('alt+' + text[text.index('&') + 1].lower())

    @staticmethod
    def title_bar(viewer):
        """A place on the viewer's title bar, which the window manager draws above the window."""
        left, top, _, _ = viewer.display().area(viewer.snapshot().frame.display)
        return left + 60, top - 8

    @staticmethod
    def row_place(shown_list, row):
        """A point on the name in a row of a list that stands at its beginning."""
        header = shown_list.find(class_name='SysHeader32')
        return shown_list.rect[0] + 60, header.rect[3] + shown_list.row_height * row + shown_list.row_height // 2

    def choose_to_attach(self, viewer, path, linked, key='Return'):
        """A file chosen in the "+" dialog: the path typed, the box clicked for a copy, ended with `key`."""
        self.click_item(viewer, ADD)
        shown = viewer.wait('the "+" dialog', lambda s: s.others and s.dialog().find(text=LINK_LABEL))
        box = shown.dialog().find(text=LINK_LABEL)
        if not linked:
            viewer.click(box.rect[0] + 6, (box.top + box.rect[3]) // 2)
            edit = next(w for w in shown.dialog().walk() if w.class_name == 'Edit' and w.visible)
            viewer.click(edit.rect[0] + 20, (edit.top + edit.rect[3]) // 2)
        self.type_path(viewer, path)
        viewer.photograph('e2e-attach')
        viewer.press(key)

    def attach(self, viewer, path, linked, key='Return'):
        """A file attached with the "+" dialog."""
        rows = len(viewer.snapshot().lists()[3].rows) + (key == 'Return')
        self.choose_to_attach(viewer, path, linked, key)
        return viewer.wait('the dialog is done', lambda s: not s.others and len(s.lists()[3].rows) == rows)

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

    @staticmethod
    def save(viewer):
        viewer.press('ctrl+s')
        return viewer.wait('it is saved', lambda s: not s.item(SAVE).enabled and not s.others)

    def check_package(self, package, *names):
        """Independent programs find the package intact, and it holds these entries."""
        subprocess.run(['unzip', '-tqq', package], check=True, stdout=subprocess.DEVNULL)
        listed = subprocess.run(['zipinfo', '-1', package], check=True, capture_output=True, text=True).stdout
        for name in names:
            self.assertIn(name, listed.splitlines())
        with zipfile.ZipFile(package) as archive:
            self.assertIsNone(archive.testzip())

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


def menu_item_place(menu, index, separators, count):
    """A point on an item of a popup menu that has so many separators before the item and so many lines in all;
    `separators` is a pair: those before the item, and all."""
    border, line = 3, 5  # pixels at the top, and of a separator
    before, all_separators = separators
    left, top, right, bottom = menu.rect
    height = (bottom - top - 2 * border - line * all_separators) / (count - all_separators)
    return (left + right) // 2, round(top + border + (index - before + 0.5) * height + before * line)
