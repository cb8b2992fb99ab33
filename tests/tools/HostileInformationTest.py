#!/usr/bin/env python3
"""What reading a package may cost that was made to be dear: memory below three times what it unpacks to and 16 MB,
which those that are refused do not need."""
import itertools
import os
import string
import unittest
import zlib

from hostilecase import IS_WORTHWHILE, HostileCase, forge
from packageprogram import ON_WINDOWS

MEGABYTE = 1 << 20
LONGEST = 11 * MEGABYTE
FIXED = 16 * MEGABYTE
TIMES = 3 if ON_WINDOWS else 4  # whose characters take two bytes, else four
SECTIONS, LINES = 25_000, 100_000  # the most that are read
CHECK, READERS = (('check',),), (('check',), ('text',), ('history',))
OTHERS = (('list', '--json'), ('check', '--json'), ('history', '--json'), ('diff', 'other.mxov', '--json'))
ALL = READERS + OTHERS if os.environ.get('MXOV_LONG') else CHECK
REFUSERS = READERS if os.environ.get('MXOV_LONG') else CHECK


def short_names():
    """Different names, none longer than another, as bytes."""
    letters = [letter.encode() for letter in string.ascii_uppercase + string.digits]
    return map(b''.join, itertools.product(letters, repeat=5))


def lines(before, after, size):
    """That many bytes of short lines, each with another name."""
    text = b''.join(before + name + after for name in itertools.islice(short_names(), size // (len(before + after) + 5)))
    return text + b';' * (size - len(text))


def wide(text):
    return b'\xff\xfe' + text.decode('latin-1').encode('utf-16-le')


@unittest.skipUnless(IS_WORTHWHILE, 'only with MXOV_LONG')
class HostileInformationTest(HostileCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.write(lambda: b'[FILEINFO]\r\n')
        (cls.work / 'p.mxov').rename(cls.work / 'other.mxov')
        cls.write(lambda: b'[FILEINFO]\r\n')
        cls.base = {command: cls.read(command).memory for command in ALL}

    @classmethod
    def write(cls, make, files=()):
        """Makes the package in a process of its own: a program that is started counts what its parent has in memory at
        that moment as its own."""
        child = os.fork()
        if child == 0:
            content = [(b'mxinfo.ini', make()), *files]
            forge(cls.work / 'p.mxov', [(name, len(data), data, zlib.crc32(data), 0) for name, data in content])
            os._exit(0)
        assert os.waitpid(child, 0)[1] == 0

    @classmethod
    def read(cls, command):
        return cls.run_program(command[0], 'p.mxov', *command[1:])

    def expect(self, code, reason, make, *, files=(), commands=REFUSERS):
        self.write(make, files)
        size = (self.work / 'p.mxov').stat().st_size  # nothing in it is compressed
        for command in commands:
            with self.subTest(command=command):
                cost = self.read(command)
                self.assertEqual(cost.code, code, cost.errors)
                self.assertIn(reason, cost.errors)
                memory = (cost.memory - self.base[command]) << 10
                print(f'{" ".join(command)}: {memory / size:.2f} times {size >> 20} MB, {cost.seconds:.1f} s', end='; ',
                      flush=True)
                self.assertLess(memory, TIMES * size + (FIXED if code == 0 else 0))

    def expect_sound(self, make, files=()):
        self.expect(0, '', make, files=files, commands=ALL)

    def test_many_short_sections(self):
        self.expect(1, f'more than {SECTIONS} sections', lambda: lines(b'[', b']\n', LONGEST))
        self.expect(1, f'more than {SECTIONS} sections', lambda: wide(lines(b'[', b']\n', LONGEST // 2)))

    def test_many_short_keys(self):
        self.expect(1, f'{LINES} lines', lambda: b'[FILEINFO]\n' + lines(b'', b'=\n', LONGEST))
        self.expect(1, f'{LINES} lines', lambda: b'[FILEINFO]\n' + b'a\n' * MEGABYTE + b'\n' * (LONGEST - 2 * MEGABYTE))

    def test_longer_than_any(self):
        for times in (2, 9):
            self.expect(1, 'longer than 12288 KB', lambda: lines(b'[', b']\n', LONGEST) * times)
        self.expect(1, 'a line longer than 1024 KB', lambda: b'[REFERANCE_FILE_1]\nFilePath=' + b'x' * LONGEST)

    def test_as_many_documents_as_are_read(self):
        for path in (b'a\\' * 200, b'a' * 400, b'a'):
            self.expect_sound(lambda: b''.join(b'[REFERANCE_FILE_%d]\nIsReferencedFile=NO\nFilePath=%s%d\n' % (i, path, i)
                                               for i in range(SECTIONS - 10)))

    def test_as_many_keys_as_are_read(self):
        for value in (b'x' * 100, b''):
            self.expect_sound(lambda: b'[FILEINFO]\n' + b''.join(b'%d=%s\n' % (i, value) for i in range(LINES - 10)))

    def test_as_many_entries_of_the_history_as_are_read(self):
        self.expect_sound(lambda: b''.join(b'[FILE_HISTORY_%d]\nRemarks=%s\n' % (i, b'x' * 400)
                                           for i in range(SECTIONS - 10)))

    def test_long_lines(self):
        self.expect_sound(lambda: b''.join(b'[REFERANCE_FILE_%d]\nFilePath=%s\n' % (i, b'x' * 1_000_000)
                                           for i in range(11)))

    def test_many_documents(self):
        names = [b'ReferanceFiles/%d.txt' % i for i in range(15_000)]
        self.expect_sound(lambda: b''.join(b'[REFERANCE_FILE_%d]\nIsReferencedFile=NO\nTimestamp=2024-01-01 00:00:00\n'
                                           b'FilePath=%s\n' % (i, name.replace(b'/', b'\\')) for i, name in enumerate(names)),
                          [(name, b'') for name in names])

    def test_a_folder_of_many_programs(self):
        self.expect_sound(lambda: b'[FILEINFO]\nGCode=N\\0.nc\n', [(b'N/%d.nc' % i, b'') for i in range(100_000)])

    def test_a_long_text(self):
        self.expect_sound(lambda: b'[FILEINFO]\n', [(b'long.nc', b'G1 X1\r\n' * (2 * MEGABYTE - 1))])

    def test_a_long_name_widens_no_other_line(self):
        names = [b'x' * 500_000] + [b'a%d.txt' % i for i in range(1000)]
        self.write(lambda: b''.join(b'[REFERANCE_FILE_%d]\nFilePath=%s\n' % (i, name) for i, name in enumerate(names)))
        self.assertEqual(self.run_program('check', 'p.mxov').code, 0)
        longest, second = sorted(map(len, (self.work / 'output').read_bytes().splitlines()))[:-3:-1]
        self.assertGreater(longest, 500_000)
        self.assertLess(second, 200)


if __name__ == '__main__':
    unittest.main(verbosity=2)
