"""A test case for packages that were made to do harm: what they cost the built package command line."""
import os
import pathlib
import shutil
import struct
import subprocess
import tempfile
import typing
import unittest

from packageprogram import COMMAND, ON_WINDOWS

# Their sizes do not depend on the system, so that the tests of the other program suffice most of the time.
IS_WORTHWHILE = ON_WINDOWS or bool(os.environ.get('MXOV_LONG'))
MOST_TIME = 2  # seconds of the processor


def forge(path, entries):
    """Writes a package of entries that are made of name, size, packed data, checksum and method."""
    directory = []
    with open(path, 'wb') as file:
        for name, size, data, crc, method in entries:
            common = struct.pack('<HHHHIIIHH', 0x800, method, 0, 0x21, crc, len(data), size, len(name), 0)
            directory.append(struct.pack('<IHH', 0x02014B50, 20, 20) + common +
                             struct.pack('<HHHII', 0, 0, 0, 0, file.tell()) + name)
            file.write(struct.pack('<IH', 0x04034B50, 20) + common + name + data)
        start = file.tell()
        file.writelines(directory)
        size, count, end = file.tell() - start, len(entries), file.tell()
        if count >= 0xFFFF:
            file.write(struct.pack('<IQHHIIQQQQ', 0x06064B50, 44, 45, 45, 0, 0, count, count, size, start))
            file.write(struct.pack('<IIQI', 0x07064B50, 0, end, 1))
        narrow = min(count, 0xFFFF)
        file.write(struct.pack('<IHHHHIIH', 0x06054B50, 0, 0, narrow, narrow, size, start, 0))


class Cost(typing.NamedTuple):
    """How one run of the program ended and what it took."""
    code: int
    errors: str
    memory: int  # KB, at most
    seconds: float  # of the processor


class HostileCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.work = pathlib.Path(tempfile.mkdtemp(prefix='mxovpkg-hostile-'))
        cls.addClassCleanup(shutil.rmtree, cls.work)

    @classmethod
    def run_program(cls, *arguments):
        # Files, since what a Wine program leaves running keeps a pipe open.
        with open(cls.work / 'errors', 'w+', encoding='utf-8') as errors, open(cls.work / 'output', 'wb') as output:
            process = subprocess.Popen([*COMMAND, *arguments], cwd=cls.work,
                                       stdin=subprocess.DEVNULL, stdout=output, stderr=errors)
            _, status, usage = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
            errors.seek(0)
            return Cost(process.returncode, errors.read(2000), usage.ru_maxrss, usage.ru_utime + usage.ru_stime)
