"""What the tests share in which the viewer opens documents in their programs, or shows them in the system's folder windows."""
import pathlib
import re
import subprocess
import time

from viewercase import ViewerCase
from viewerdriver import BUILD, PATIENCE
from wineprogram import change_registry, query_registry, windows_path


def explorer_windows():
    """The display's visible folder windows of the system, and what is selected in each."""
    shown = {}
    for process in pathlib.Path('/proc').iterdir():
        try:
            words = (process / 'cmdline').read_bytes().decode('utf-8', 'replace').split('\0')
        except (OSError, NotADirectoryError):
            continue
        if words[0].lower().endswith('explorer.exe') and len(words) > 1 and words[1].startswith('/select,'):
            found = subprocess.run(['xdotool', 'search', '--all', '--onlyvisible', '--pid', process.name, '.'], check=False,
                                   capture_output=True, text=True)
            selected = words[1].removeprefix('/select,').strip('"')
            shown |= {int(window): selected for window in found.stdout.split()}
    return shown


class DocumentOpeningCase(ViewerCase):
    """Records the documents that are opened in their programs."""
    KINDS = ('.nc', '.html', '.pdf')
    CLASS = 'MXOVTestDocument'

    def setUp(self):
        super().setUp()
        self.log = self.record('opened.txt')
        self.log.touch()
        command = f'"{windows_path(BUILD / "tests/OpenRecorder.exe")}" "{windows_path(self.log)}" "%1"'
        self.register(rf'HKCR\{self.CLASS}\shell\open\command', command)
        for kind in self.KINDS:
            self.register(rf'HKCR\{kind}', self.CLASS)

    def register(self, key, value):
        """Sets a key's own value until the end of the test."""
        before = re.search(r'REG_SZ\s+(\S.*)', query_registry(key, '/ve'))
        if before:
            self.addCleanup(change_registry, 'add', key, '/ve', '/d', before[1], '/f')
        else:
            self.addCleanup(change_registry, 'delete', key, '/f')
        change_registry('add', key, '/ve', '/d', value, '/f')

    def wait_for_folder_window(self, viewer, path):
        """A window of the system comes up that shows a folder with this file selected, and is closed."""
        viewer.wait_until_nothing_hinders(f'the folder with {path}', lambda: (
            None if path in explorer_windows().values() else str(explorer_windows())))
        viewer.photograph('e2e-shown-in-folder')
        for window in [window for window, selected in explorer_windows().items() if selected == path]:
            viewer.display().close(window)
        viewer.wait_until_nothing_hinders('the window is closed', lambda: (
            str(explorer_windows()) if explorer_windows() else None))

    def opened(self, count):
        """The documents that were opened, when there are so many."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            lines = self.log.read_text(encoding='utf-8').splitlines()
            if len(lines) >= count:
                return lines
            time.sleep(0.05)
        raise AssertionError(f'{count} documents opened: not within {PATIENCE} seconds; {lines}')
