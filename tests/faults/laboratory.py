"""A Wine prefix in which chosen file system calls fail, and the driver that runs there."""
import ctypes
import mmap
import os
import pathlib
import shutil
import subprocess
import tempfile
import typing

from wineprogram import windows_path

HERE = pathlib.Path(__file__).resolve().parent
BUILD = pathlib.Path(os.environ['MXOV_BUILD'])
DRIVER = BUILD / 'tests' / 'fault_driver.exe'
(COUNT, KILL, HALF_AND_KILL, NO_SPACE, IO_ERROR, SHORT, READ_ONLY, FLUSH_ERROR, INFORMATION_FLUSH_ERROR,
 DISK_FULL) = range(10)


class Control(ctypes.Structure):
    _fields_ = [*((name, ctypes.c_int32) for name in ('armed', 'target', 'mode', 'count', 'fired', 'victim')),
                ('spoilt', ctypes.c_char * 64)]


class Act(typing.NamedTuple):
    """One line of the driver: two acts, the first of which a fault may have hit."""
    calls: int  # of the first
    fired: int
    told: int  # messages to the user
    told_again: int  # in the second act
    spoilt: str  # the file that the fault was about


class Outcome(typing.NamedTuple):
    """What became of one run of the driver."""
    code: int  # of its end; -9 when it was killed
    lines: list
    errors: str  # what it and Wine said besides
    count: int  # how many calls it made of those that can be spoilt
    fired: bool  # whether one was

    def acts(self):
        lines = [line.split(' ', 4) for line in self.lines]
        return [Act(*map(int, numbers), spoilt) for *numbers, spoilt in lines]


class Laboratory:
    """A Wine prefix of its own with the shim in its server, and a folder in which things go wrong."""

    def __init__(self, driver=DRIVER):
        self.driver = driver
        self.home = pathlib.Path(tempfile.mkdtemp(prefix='mxov-faults-'))
        self.root = self.home / 'root'
        self.root.mkdir()
        shim = self.home / 'shim.so'
        subprocess.run(['clang', '-shared', '-fPIC', '-O1', '-o', shim, HERE / 'Shim.c', '-ldl'], check=True)
        subprocess.run([HERE.parents[1] / 'tools/copy-prefix', self.home / 'wine'], check=True)
        self.control_file = self.home / 'control'
        self.control_file.write_bytes(bytes(ctypes.sizeof(Control)))
        with open(self.control_file, 'r+b') as file:
            self.memory = mmap.mmap(file.fileno(), 0)
        self.control = Control.from_buffer(self.memory)
        self.environment = dict(os.environ, WINEPREFIX=str(self.home / 'wine'), LD_PRELOAD=str(shim),
                                MXOV_FAULT_CONTROL=str(self.control_file), MXOV_FAULT_ROOT=str(self.root))
        self.environment.pop('DISPLAY', None)
        subprocess.run(['wineserver', '-p'], env=self.environment, check=True)
        self.source = self.home / 'source.txt'
        self.source.write_bytes(b'a document to attach\r\n' * 1000)

    def close(self):
        subprocess.run(['wineserver', '-k'], env=self.environment, check=False)
        subprocess.run(['wineserver', '-w'], env=self.environment, check=False)
        shutil.rmtree(self.home, ignore_errors=True)

    def arm(self, mode, target):
        self.control.target, self.control.mode, self.control.count, self.control.fired = target, mode, 0, 0
        self.control.armed = 1

    def drive(self, action, folder, package, *faults):
        """Runs the driver to its end."""
        # A file, since what Wine starts in the background keeps a pipe open.
        with open(self.home / 'errors.txt', 'w+', encoding='utf-8', errors='replace') as errors:
            run = subprocess.run(
                ['wine', str(self.driver), windows_path(self.control_file), action, windows_path(folder), windows_path(package),
                 windows_path(self.source), *map(str, faults)],
                env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=errors, timeout=300,
                preexec_fn=self.become_victim, check=False)
            self.control.armed = 0
            errors.seek(0)
            return Outcome(run.returncode, run.stdout.decode().splitlines(), errors.read(), self.control.count,
                           bool(self.control.fired))

    def become_victim(self):
        """Called in the new process, which Wine's loader replaces: no other program that Wine starts is meant."""
        self.control.victim = os.getpid()
