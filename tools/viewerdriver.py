"""Drives a running viewer from outside with a real mouse and keyboard, and reads what its windows show.

Needs a display and the Wine prefix of the build tree (tools/with-display, tools/install-in-prefix).
"""
import json
import os
import pathlib
import subprocess
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = pathlib.Path(os.environ.get('MXOV_BUILD', ROOT / 'build'))
SCREENSHOTS = BUILD / 'screenshots'
PROGRAM = 'MXOV Viewer'
SECTIONS = (1000, 1001, 1002, 1003)
LISTS = (1004, 1005, 1006, 1007)
PATIENCE = 60  # seconds


def windows_path(path):
    """The name under which a Wine program sees a file of this system."""
    return 'Z:' + str(pathlib.Path(path).absolute()).replace('/', '\\')


def run_wine(*words, errors=subprocess.DEVNULL):
    """Runs a Wine program to its end; gives its exit code and output. Through a file: services that Wine starts on
    the way would hold a pipe open for ever."""
    with tempfile.TemporaryFile() as output:
        code = subprocess.run(['wine', *words], stdout=output, stderr=errors, check=False).returncode
        output.seek(0)
        return code, output.read().decode('utf-8', 'replace').replace('\r\n', '\n')


def change_registry(*words):
    """Runs `reg`, which has to succeed: a change that stays out unnoticed shows up as the fault of another test."""
    code, output = run_wine('reg', *words, errors=subprocess.STDOUT)
    if code != 0:
        raise AssertionError(f'reg {" ".join(words)} ended with {code}: {output}')


class Window:
    """One window as it was when the snapshot was taken."""

    def __init__(self, data):
        self.handle, self.class_name, self.id = data['handle'], data['class'], data['id']
        self.text, self.visible, self.enabled = data['text'], data['visible'], data['enabled']
        self.rect = tuple(data['rect'])
        self.columns = [(column['title'], column['width']) for column in data.get('columns', [])]
        self.rows = [(*row['texts'], row['image']) for row in data.get('rows', [])]
        self.selected = [index for index, row in enumerate(data.get('rows', [])) if row['selected']]
        self.children = [Window(child) for child in data['children']]

    @property
    def top(self):
        return self.rect[1]

    @property
    def size(self):
        return self.rect[2] - self.rect[0], self.rect[3] - self.rect[1]

    def walk(self):
        yield self
        for child in self.children:
            yield from child.walk()

    def find(self, **wanted):
        """The first window inside, this one included, with these attributes; None when there is none."""
        return next((window for window in self.walk()
                     if all(getattr(window, name) == value for name, value in wanted.items())), None)


class Snapshot:
    """The viewer's frame and its other visible top-level windows at one moment."""

    def __init__(self, data):
        self.focus = data['focus']
        self.frame, *self.others = [Window(window) for window in data['windows']]

    def item(self, number):
        """A control of the embedded dialog by its number."""
        return self.frame.find(id=number)

    def lists(self):
        return [self.item(number) for number in LISTS]

    def boxes(self):
        return [self.item(number) for number in SECTIONS]

    def dialog(self):
        """The first other window, such as a message box; None when there is none."""
        return self.others[0] if self.others else None

    def texts(self):
        """Everything written in the first other window."""
        return '\n'.join(window.text for window in self.dialog().walk()) if self.others else ''


class Viewer:
    """A viewer process. `with Viewer(...)` ends it in any case; `close` ends it as a user does."""

    def __init__(self, *arguments, program='viewer.exe'):
        self.log = open(BUILD / 'viewer.log', 'w+', encoding='utf-8', errors='replace')
        self.process = subprocess.Popen(['wine', windows_path(BUILD / 'bin' / program), *arguments],
                                        stdout=self.log, stderr=subprocess.STDOUT)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        self.log.close()

    @staticmethod
    def dump(*words):
        """What WindowDump prints; None when it fails."""
        code, output = run_wine(windows_path(BUILD / 'tests/WindowDump.exe'), *words)
        return output if code == 0 else None

    def snapshot(self):
        """What is shown now; None while there is no window."""
        text = self.dump('windows')
        return Snapshot(json.loads(text)) if text else None

    def wait(self, what, condition):
        """Waits until the condition holds for a snapshot, and gives that snapshot."""
        end = time.monotonic() + PATIENCE
        snapshot = None
        while time.monotonic() < end:
            ended = self.process.poll()
            snapshot = self.snapshot()
            if snapshot and condition(snapshot):
                return snapshot
            if ended is not None:
                self.log.seek(0)
                raise AssertionError(f'{what}: the viewer ended with {ended}: {self.log.read()}')
            time.sleep(0.05)
        self.photograph('failure')
        shown = [window.text for window in [snapshot.frame, *snapshot.others]] if snapshot else 'no window'
        raise AssertionError(f'{what}: not within {PATIENCE} seconds; shown: {shown}')

    def wait_for_package(self, name):
        return self.wait(f'{name} is open', lambda s: (
            s.frame.visible and s.frame.text == f'{name} - {PROGRAM}' and not s.others))

    def wait_for_dialog(self, what):
        return self.wait(what, lambda s: s.dialog() is not None)

    def wait_for_no_dialog(self, what):
        return self.wait(what, lambda s: s.dialog() is None)

    @staticmethod
    def do(*words):
        subprocess.run(['xdotool', *map(str, words)], check=True)

    @staticmethod
    def display_window(package=None):
        """The display's number of the viewer's window."""
        title = f'{package} - {PROGRAM}' if package else PROGRAM
        run = subprocess.run(['xdotool', 'search', '--onlyvisible', '--name', f'^{title}$'], check=True,
                             capture_output=True, text=True)
        return int(run.stdout.split()[0])

    def click(self, x, y, button=1):
        self.do('mousemove', x, y, 'click', button)

    def press(self, *keys):
        self.do('key', '--clearmodifiers', *keys)

    def type(self, text):
        self.do('type', '--delay', 5, text)

    def kill(self):
        """Ends the viewer's process at once, as a crash does."""
        self.process.kill()
        self.process.wait(PATIENCE)

    @staticmethod
    def photograph(name):
        SCREENSHOTS.mkdir(parents=True, exist_ok=True)
        subprocess.run(['import', '-window', 'root', SCREENSHOTS / f'{name}.png'], check=True)

    def close(self):
        """Closes the window with the keyboard; gives the exit code."""
        self.press('alt+F4')
        return self.process.wait(PATIENCE)
