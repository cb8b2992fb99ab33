#!/usr/bin/env python3
"""What reading an information file may cost that was made to be dear: memory below three times its size and a fixed
amount, which those that are refused do not need."""
import itertools
import os
import string
import unittest
import zlib

from hostilecase import HostileCase, forge

MEGABYTE = 1 << 20
LONGEST = 11 * MEGABYTE
FIXED = 64 * MEGABYTE
READERS = ('check', 'text', 'history')


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


class HostileInformationTest(HostileCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.write(lambda: b'[FILEINFO]\r\n')
        cls.base = {command: cls.run_program(command, 'p.mxov').memory for command in READERS}

    @classmethod
    def write(cls, make):
        """Makes the information file in a process of its own: a program that is started counts what its parent has in
        memory at that moment as its own."""
        child = os.fork()
        if child == 0:
            information = make()
            forge(cls.work / 'p.mxov', [(b'mxinfo.ini', len(information), information, zlib.crc32(information), 0)])
            os._exit(0)
        assert os.waitpid(child, 0)[1] == 0

    def expect(self, code, reason, make):
        self.write(make)
        size = (self.work / 'p.mxov').stat().st_size
        for command in READERS:
            with self.subTest(command=command):
                cost = self.run_program(command, 'p.mxov')
                self.assertEqual(cost.code, code, cost.errors)
                self.assertIn(reason, cost.errors)
                memory = (cost.memory - self.base[command]) << 10
                print(f'{command}: {memory / size:.2f} times {size >> 20} MB, {cost.seconds:.1f} s', end='; ', flush=True)
                self.assertLess(memory, 3 * size + (FIXED if code == 0 else 0))

    def test_many_short_sections(self):
        self.expect(1, 'more than 50000 sections', lambda: lines(b'[', b']\n', LONGEST))
        self.expect(1, 'more than 50000 sections', lambda: wide(lines(b'[', b']\n', LONGEST // 2)))

    def test_many_short_keys(self):
        self.expect(1, '250000 lines', lambda: b'[FILEINFO]\n' + lines(b'', b'=\n', LONGEST))
        self.expect(1, '250000 lines', lambda: b'[FILEINFO]\n' + b'a\n' * MEGABYTE + b'\n' * (LONGEST - 2 * MEGABYTE))

    def test_longer_than_any(self):
        for times in (2, 9):
            self.expect(1, 'longer than 12288 KB', lambda: lines(b'[', b']\n', LONGEST) * times)
        self.expect(1, 'a line longer than 1024 KB', lambda: b'[REFERANCE_FILE_1]\nFilePath=' + b'x' * LONGEST)

    def test_as_many_documents_as_are_read(self):
        for path in (b'a\\' * 95, b'a' * 190):
            self.expect(0, '', lambda: b''.join(b'[REFERANCE_FILE_%d]\nFilePath=%s\n' % (i, path) for i in range(49_990)))

    def test_as_many_keys_as_are_read(self):
        self.expect(0, '', lambda: b'[FILEINFO]\n' + b''.join(b'%d=%s\n' % (i, b'x' * 38) for i in range(249_990)))

    def test_long_lines(self):
        self.expect(0, '', lambda: b''.join(b'[REFERANCE_FILE_%d]\nFilePath=%s\n' % (i, b'x' * 1_000_000) for i in range(11)))

    def test_a_long_name_widens_no_other_line(self):
        names = [b'x' * 500_000] + [b'a%d.txt' % i for i in range(1000)]
        self.write(lambda: b''.join(b'[REFERANCE_FILE_%d]\nFilePath=%s\n' % (i, name) for i, name in enumerate(names)))
        self.assertEqual(self.run_program('check', 'p.mxov').code, 0)
        longest, second = sorted(map(len, (self.work / 'output').read_bytes().splitlines()))[:-3:-1]
        self.assertGreater(longest, 500_000)
        self.assertLess(second, 200)


if __name__ == '__main__':
    unittest.main(verbosity=2)
