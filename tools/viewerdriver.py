"""Drives a running viewer from outside with a real mouse and keyboard, and reads its windows.

Runs inside tools/with-desktop.
"""
import atexit
import functools
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time

import xdisplay
from wineprogram import Ended, windows_path

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = pathlib.Path(os.environ.get('MXOV_BUILD', ROOT / 'build'))
SCREENSHOTS = BUILD / 'screenshots'
PROGRAM = 'MXOV Viewer'
SECTIONS = (1000, 1001, 1002, 1003)
LISTS = (1004, 1005, 1006, 1007)
PATIENCE = 60  # seconds


class Window:
    """One window at the time of the snapshot."""

    def __init__(self, data, lists):
        self.handle, self.class_name, self.id = data['handle'], data['class'], data['id']
        self.text, self.visible, self.enabled = data['text'], data['visible'], data['enabled']
        self.display = data['display']  # its number on the X display; 0 for what lies inside another
        self.rect = tuple(data['rect'])
        content = lists.get(str(self.handle), {'columns': [], 'rows': [], 'rowHeight': 0})
        self.columns = [(column['title'], column['width']) for column in content['columns']]
        self.rows = [(*row['texts'], row['image']) for row in content['rows']]
        self.row_height = content['rowHeight']
        self.selected = [index for index, row in enumerate(content['rows']) if row['selected']]
        self.children = [Window(child, lists) for child in data['children']]

    @property
    def top(self):
        return self.rect[1]

    @property
    def size(self):
        return self.rect[2] - self.rect[0], self.rect[3] - self.rect[1]

    @property
    def middle(self):
        return (self.rect[0] + self.rect[2]) // 2, (self.rect[1] + self.rect[3]) // 2

    def walk(self):
        yield self
        for child in self.children:
            yield from child.walk()

    def find(self, **wanted):
        """The first window at or below this one with these attributes, or None."""
        return next((window for window in self.walk()
                     if all(getattr(window, name) == value for name, value in wanted.items())), None)


class Snapshot:
    """The viewer's frame and its other visible top-level windows at one moment."""

    def __init__(self, data):
        self.focus = data['focus']
        self.frame, *self.others = [Window(window, data['lists']) for window in data['windows']]

    def item(self, number):
        """A control of the embedded dialog by its number."""
        return self.frame.find(id=number)

    def lists(self):
        return [self.item(number) for number in LISTS]

    def boxes(self):
        return [self.item(number) for number in SECTIONS]

    def dialog(self):
        """The first other window, such as a message box, or None."""
        return self.others[0] if self.others else None

    def texts(self):
        """All texts of the first other window."""
        return '\n'.join(window.text for window in self.dialog().walk()) if self.others else ''


class WindowReader:
    """The program that reads a viewer's windows. It keeps running, since a test calls it some hundred times, but not longer than
    the viewer: when the desktop's own process ends in between, the next viewer has another desktop that it would not see."""
    END = b'\x04'

    def __init__(self):
        self.errors = tempfile.TemporaryFile('w+', encoding='utf-8', errors='replace')
        self.process = subprocess.Popen(['wine', windows_path(BUILD / 'tools/WindowDump.exe'), 'serve'],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=self.errors)
        atexit.register(self.close)

    def close(self):
        """It ends with its input."""
        self.process.stdin.close()
        self.process.wait()
        self.process.stdout.close()
        self.errors.close()

    def ask(self, *words):
        """The output of a command, and its code."""
        self.process.stdin.write('\t'.join(words).encode() + b'\n')
        self.process.stdin.flush()
        output = b''
        while not (line := self.process.stdout.readline()).startswith(self.END):
            if not line:
                self.errors.seek(0)
                raise AssertionError(f'WindowDump ended with {self.process.wait()}: {self.errors.read() or "no word"}')
            output += line
        return Ended(words, int(line[1:]), output.decode().replace('\r\n', '\n'), '')


class Viewer:
    """A viewer process. `with Viewer(...)` always ends it; `close` ends it as a user does."""

    def __init__(self, *arguments, program='viewer.exe'):
        self.log = tempfile.TemporaryFile('w+', encoding='utf-8', errors='replace')
        self.process = subprocess.Popen(['wine', windows_path(BUILD / 'bin' / program), *arguments],
                                        stdout=self.log, stderr=subprocess.STDOUT)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        self.log.close()
        if 'reader' in vars(self):
            self.reader.close()

    @functools.cached_property
    def reader(self):
        return WindowReader()

    def run_dump(self, *words):
        return self.reader.ask(*map(str, words))

    def dump(self, *words):
        """The output of WindowDump, which has to succeed."""
        return self.run_dump(*words).expect().output

    def snapshot(self):
        """The current windows."""
        return self.wait('the window', lambda s: True)

    def wait(self, what, condition):
        """Waits until the condition holds for a snapshot, and returns that snapshot."""
        snapshot = None

        def look():
            nonlocal snapshot
            ended = self.run_dump('windows')
            snapshot = Snapshot(json.loads(ended.output)) if ended.code == 0 else None
            if snapshot and condition(snapshot):
                return None
            return (f'shown: {[window.text for window in [snapshot.frame, *snapshot.others]]}' if snapshot
                    else str(ended))
        self.wait_until_nothing_hinders(what, look)
        return snapshot

    def wait_until_nothing_hinders(self, what, look):
        """Waits until `look` returns None; until then it returns the obstacle."""
        end = time.monotonic() + PATIENCE
        while (start := time.monotonic()) < end:
            ended = self.process.poll()
            hindrance = look()
            if hindrance is None:
                return
            if ended is not None:
                self.log.seek(0)
                raise AssertionError(f'{what}: the viewer ended with {ended}: {self.log.read() or "no word"}')
            # Reading the windows takes the viewer's time as well: as long as it took it is left alone, also on a busy machine.
            time.sleep(max(0.05, time.monotonic() - start))
        self.photograph('-'.join(filter(None, ('failure', os.environ.get('MXOV_PLACE'), pathlib.Path(sys.argv[0]).stem))))
        raise AssertionError(f'{what}: not within {PATIENCE} seconds; {hindrance}')

    def wait_for_package(self, name):
        """Waits until a package is shown, with or without the mark of unsaved changes."""
        return self.wait(f'{name} is open', lambda s: (
            s.frame.visible and s.frame.text.removeprefix('*') == f'{name} - {PROGRAM}' and not s.others))

    def wait_for_dialog(self, what):
        return self.wait(what, lambda s: s.dialog() is not None)

    def wait_for_no_dialog(self, what):
        return self.wait(what, lambda s: s.dialog() is None)

    @staticmethod
    def do(*words):
        subprocess.run(['xdotool', *map(str, words)], check=True)

    @staticmethod
    @functools.cache
    def display():
        return xdisplay.Display()

    def input_state(self, x=0, y=0):
        """The targets of keys and of a click at a point; a text if nothing must be pressed now."""
        ended = self.run_dump('input', x, y)
        if ended.code != 0:
            return str(ended)
        state = json.loads(ended.output)
        return 'a modifier key still counts as held down' if state['held'] else state

    def hindrance_for_keys(self):
        """Why a key would not reach the viewer, or None. The window manager assigns the focus asynchronously; keys pressed
        before that are lost."""
        state = self.input_state()
        if isinstance(state, str):
            return state
        window, name = state['foreground'], f'"{state["foreground"]["text"]}"'
        if not (state['viewer'] and window['enabled'] and window['display']):
            return f'the foreground window {name} takes no keys'
        if not state['focused']:
            return f'nothing in {name} has the focus'
        return None if self.display().focus() == window['display'] else f'the display has not given {name} the focus yet'

    def hindrance_for_clicks(self, x, y):
        """Why a click at the mouse would not reach the viewer's window there, or None. The window manager maps and moves
        windows asynchronously."""
        state = self.input_state(x, y)
        if isinstance(state, str):
            return state
        window, name, display = state['at'], f'"{state["at"]["text"]}"', self.display()
        area = display.area(window['display'])
        if not area or display.mouse() != (display.outermost(window['display']), (x, y)):
            return f'the mouse is not over {name} yet'
        # The display's window excludes the borders, which are equally wide at the left, at the right and at the bottom.
        borders = {area[0] - window['rect'][0], window['rect'][2] - area[2], window['rect'][3] - area[3]}
        return None if len(borders) == 1 else f'{name} is on its way to another place'

    def point(self, x, y):
        """Moves the mouse into a window of the viewer, once that can take a click."""
        self.do('mousemove', x, y)
        self.wait_until_nothing_hinders('the mouse reaches the viewer', lambda: self.hindrance_for_clicks(x, y))

    def click(self, x, y, button=1):
        self.point(x, y)
        self.do('click', button)

    def double_click(self, x, y):
        self.point(x, y)
        self.display().double_click()

    def drag(self, start, end):
        """Presses the button at one point and releases it at another."""
        self.point(*start)
        self.do('mousedown', 1, 'mousemove', *end, 'mouseup', 1)

    def press(self, *keys):
        self.wait_until_nothing_hinders(f'{" ".join(keys)} reaches the viewer', self.hindrance_for_keys)
        self.do('key', '--clearmodifiers', *keys)

    def type(self, text):
        self.wait_until_nothing_hinders('typing reaches the viewer', self.hindrance_for_keys)
        self.do('type', '--delay', 5, text)

    def kill(self):
        """Kills the viewer's process, as a crash would."""
        self.process.kill()
        self.process.wait(PATIENCE)

    def photograph(self, name):
        SCREENSHOTS.mkdir(parents=True, exist_ok=True)
        (SCREENSHOTS / f'{name}.png').write_bytes(self.display().picture(compression=1))

    def close(self):
        """Closes the window with the keyboard; returns the exit code."""
        self.press('alt+F4')
        return self.process.wait(PATIENCE)
