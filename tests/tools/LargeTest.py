#!/usr/bin/env python3
"""The commands that care for packages on more than 4 GB, where numbers of four bytes end: the result, the memory and
the time. Only with MXOV_LONG; needs 14 GB on the disk of the build."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import time
import unittest
import zipfile

from packageprogram import BUILD, COMMAND
from wineprogram import windows_path

MEGABYTE = 1 << 20
MEGABYTES = 4200  # of one document
MOST_MEMORY = 256 << 10  # KB


@unittest.skipUnless(os.environ.get('MXOV_LONG'), 'takes minutes: ./test --long')
class LargeTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.work = pathlib.Path(tempfile.mkdtemp(prefix='mxovpkg-large-', dir=BUILD))
        cls.addClassCleanup(shutil.rmtree, cls.work)
        cls.block = os.urandom(MEGABYTE)  # nothing that deflate finds again
        cls.make('large.mxov', cls.block)

    @classmethod
    def make(cls, name, block, information=''):
        """A package with one document of that many blocks, as they are."""
        with zipfile.ZipFile(cls.work / name, 'w') as archive:
            archive.writestr('mxinfo.ini', '[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\n[REFERANCE_FILE_1]\r\n'
                                           f'IsReferencedFile=NO\r\nFilePath=ReferanceFiles\\large.bin\r\n{information}')
            with archive.open('ReferanceFiles/large.bin', 'w', force_zip64=True) as document:
                for _ in range(MEGABYTES):
                    document.write(block)

    def run_program(self, *words, code=0):
        """Runs a command; returns what it printed."""
        with open(self.work / 'output', 'w+b') as output, open(self.work / 'errors', 'w+b') as errors:
            start = time.monotonic()
            process = subprocess.Popen([*COMMAND, *words], cwd=self.work, stdin=subprocess.DEVNULL, stdout=output,
                                       stderr=errors)
            _, status, usage = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
            texts = []
            for file in (output, errors):
                file.seek(0)
                texts.append(file.read().decode().replace('\r\n', '\n'))
        print(f'{words[0]}: {time.monotonic() - start:.1f} s, {usage.ru_maxrss >> 10} MB', flush=True)
        self.assertEqual(process.returncode, code, texts[1])
        self.assertLess(usage.ru_maxrss, MOST_MEMORY)
        return texts[0]

    def size_in(self, package, name):
        with zipfile.ZipFile(self.work / package) as archive:
            return archive.getinfo(name).file_size

    def test_1_check(self):
        self.assertIn('2 entries, all sound', self.run_program('check', 'large.mxov'))
        with open(self.work / 'large.mxov', 'r+b') as package:
            package.seek(-2 * MEGABYTE, os.SEEK_END)
            byte = package.read(1)
            package.seek(-1, os.SEEK_CUR)
            package.write(bytes([byte[0] ^ 1]))
            package.flush()
            self.run_program('check', 'large.mxov', code=1)
            package.seek(-1, os.SEEK_CUR)
            package.write(byte)

    def test_2_add_copies_what_is_packed(self):
        (self.work / 'small.txt').write_text('small', encoding='ascii')
        self.run_program('add', 'large.mxov', 'small.txt')
        self.assertEqual(self.size_in('large.mxov', 'ReferanceFiles/large.bin'), MEGABYTES * MEGABYTE)
        self.assertEqual(self.size_in('large.mxov', 'ReferanceFiles/small.txt'), 5)

    def test_3_diff(self):
        self.make('other.mxov', bytes([self.block[0] ^ 1]) + self.block[1:])
        size = MEGABYTES * MEGABYTE
        self.assertIn(f'changed ReferanceFiles\\large.bin, {size} -> {size} bytes',
                      self.run_program('diff', 'large.mxov', 'other.mxov', '--exit-code', code=3))
        (self.work / 'other.mxov').unlink()

    def test_4_extract_and_bundle(self):
        self.run_program('extract', 'large.mxov', 'out')
        document = self.work / 'out/ReferanceFiles/large.bin'
        self.assertEqual(document.stat().st_size, MEGABYTES * MEGABYTE)
        with open(document, 'rb') as file:
            file.seek(-MEGABYTE, os.SEEK_END)
            self.assertEqual(file.read(), self.block)
        (self.work / 'large.mxov').unlink()
        with zipfile.ZipFile(self.work / 'linked.mxov', 'w') as archive:
            archive.writestr('mxinfo.ini', '[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\n[REFERANCE_FILE_1]\r\n'
                                           f'IsReferencedFile=YES\r\nFilePath={windows_path(document)}\r\n')
        self.run_program('bundle', 'linked.mxov', 'bundled.mxov')
        self.assertEqual(self.size_in('bundled.mxov', 'ReferanceFiles/large.bin'), MEGABYTES * MEGABYTE)


if __name__ == '__main__':
    unittest.main(verbosity=2)
