#!/usr/bin/env python3
"""Files of Linux under the names that packages and Windows have for them, with the built package command line for Linux."""
import os
import pathlib
import re
import signal
import subprocess
import tempfile
import threading
import time
import unittest
import zipfile

from packagecase import PackageCase, windows_path
from packagefile import sections_of
from packageprogram import COMMAND


class LinuxPathsTest(PackageCase):
    def setUp(self):
        super().setUp()
        self.write('folder/mxinfo.ini', b'[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\n')
        self.write('folder/a.txt', b'a')

    def link(self):
        """The path of the first additional document."""
        return sections_of(self.work / 'p.mxov')['REFERANCE_FILE_1']['FilePath']

    def use_drives(self, drives):
        before = os.environ.get('MXOV_DRIVES')
        os.environ['MXOV_DRIVES'] = drives
        self.addCleanup(lambda: os.environ.pop('MXOV_DRIVES') if before is None
                        else os.environ.__setitem__('MXOV_DRIVES', before))

    def test_both_separators_and_another_case_name_a_file(self):
        self.assertEqual(self.succeed('create', 'FOLDER', 'sub\\..\\p.mxov'),
                         self.succeed('create', 'folder', 'sub\\..\\p.mxov'))
        self.assertTrue((self.work / 'p.mxov').exists())
        self.assertEqual(self.succeed('list', 'P.MXOV'), self.succeed('list', str(self.work / 'p.mxov')))
        self.succeed('add', 'p.mxov', 'Folder\\A.TXT')
        self.assertEqual(self.link(), 'ReferanceFiles\\A.TXT')

    def test_the_information_file_of_a_folder_may_have_any_case(self):
        (self.work / 'folder/mxinfo.ini').rename(self.work / 'folder/MXInfo.INI')
        self.assertIn('MaxtlreVersion=Example 2024', self.succeed('text', 'folder'))

    def test_a_link_is_stored_with_the_drive_of_its_folder(self):
        self.succeed('create', 'folder', 'p.mxov')
        self.succeed('add', 'p.mxov', 'folder/a.txt', '--as', 'link')
        self.assertEqual(self.link(), 'Z:' + str(self.work / 'folder/a.txt').replace('/', '\\'))
        self.succeed('remove', 'p.mxov', '1')
        self.use_drives(f'X:=/nowhere;p:={self.work}/folder/;Q:=relative')
        self.succeed('add', 'p.mxov', 'folder/a.txt', '--as', 'link')
        self.assertEqual(self.link(), 'P:\\a.txt')
        self.assertIn('a.txt  1 KB', self.succeed('check', 'p.mxov'))
        self.succeed('bundle', 'p.mxov', 'P:\\out.mxov')
        with zipfile.ZipFile(self.work / 'folder/out.mxov') as archive:
            self.assertEqual(archive.read('ReferanceFiles/a.txt'), b'a')

    def test_other_drives_and_computers_name_nothing(self):
        for name in ('Y:\\p.mxov', '\\\\server\\share\\p.mxov'):
            self.assertIn(f'cannot open "{name}": No such file or directory', self.fail_with(1, 'list', name))
            self.assertIn('No such file or directory', self.fail_with(1, 'create', 'folder', name))

    def test_what_no_package_may_hold_is_refused(self):
        def refused(reason):
            line = self.fail_with(1, 'create', 'folder', 'p.mxov')
            self.assertIn(reason, line)
            self.assertFalse((self.work / 'p.mxov').exists())
        link = self.work / 'folder/link.txt'
        link.symlink_to('a.txt')
        refused('link.txt": it is a link')
        link.unlink()
        other = self.write('folder/A.TXT', b'other')
        refused('A.TXT')
        other.unlink()
        for name in (b'b\\c', b'caf\xe9', b'NUL', b'd:e'):
            path = os.path.join(os.fsencode(self.work), b'folder', name)
            with open(path, 'wb'):
                pass
            refused('cannot pack')
            os.unlink(path)
        self.succeed('create', 'folder', 'p.mxov')

    @staticmethod
    def wait_for_text(file):
        deadline = time.monotonic() + 30
        while os.fstat(file.fileno()).st_size == 0 and time.monotonic() < deadline:
            time.sleep(0.02)

    def test_a_check_is_cancelled_while_a_linked_file_does_not_answer(self):
        """The stand-in for a share that does not answer: strace delays each question about the linked file."""
        silent = self.work / 'share/plan.pdf'
        with zipfile.ZipFile(self.work / 'p.mxov', 'w') as archive:
            archive.writestr('mxinfo.ini', '[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\n'
                                           f'CADFilePath={windows_path(silent)}\r\n')
        files = [self.enterContext(tempfile.TemporaryFile()) for _ in ('output', 'errors')]
        process = subprocess.Popen(
            ['strace', '-D', '-f', '-qq', '-o', self.work / 'trace', '-P', silent, '-e', 'inject=newfstatat:delay_enter=60000000',
             *COMMAND, 'check', 'p.mxov'], cwd=self.work, stdin=subprocess.DEVNULL, stdout=files[0], stderr=files[1])
        self.wait_for_text(files[0])
        time.sleep(0.5)
        self.assertIsNone(process.poll(), 'it still waits')
        start = time.monotonic()
        process.send_signal(signal.SIGINT)
        self.wait_for_text(files[1])
        self.assertLess(time.monotonic() - start, 20)
        # strace would keep the ended program until its delay is over.
        status = pathlib.Path(f'/proc/{process.pid}/status').read_text(encoding='ascii')
        os.kill(int(re.search(r'^TracerPid:\s+(\d+)', status, re.MULTILINE)[1]), signal.SIGKILL)
        code, output, errors = self.finish(process, files)
        self.assertEqual((code, [line for line in errors.splitlines() if not line.startswith('strace: ')]),
                         (1, ['mxovpkg: cancelled, nothing was left behind']))
        self.assertIn('written by', output)

    def test_a_pipe_does_not_block(self):
        os.mkfifo(self.work / 'folder/pipe')
        self.assertIn('it is a device', self.fail_with(1, 'create', 'folder', 'p.mxov'))
        self.assertIn('it is a device', self.fail_with(1, 'list', 'folder/pipe'))

    def test_a_name_that_is_no_text_can_be_given(self):
        self.succeed('create', 'folder', 'p.mxov')
        os.rename(self.work / 'p.mxov', os.path.join(os.fsencode(self.work), b'caf\xe9.mxov'))
        outcome = subprocess.run([*map(os.fsencode, COMMAND), b'list', b'caf\xe9.mxov'], cwd=self.work, capture_output=True)
        self.assertEqual((outcome.returncode, outcome.stderr), (0, b''))
        self.assertIn(b'a.txt', outcome.stdout)

    def test_permissions_are_kept_and_links_followed(self):
        self.succeed('create', 'folder', 'p.mxov')
        (self.work / 'p.mxov').chmod(0o640)
        (self.work / 'link.mxov').symlink_to('p.mxov')
        self.succeed('set', 'link.mxov', 'CADFileDescription=x')
        self.assertTrue((self.work / 'link.mxov').is_symlink())
        self.assertEqual((self.work / 'p.mxov').stat().st_mode & 0o777, 0o640)
        self.assertEqual(sections_of(self.work / 'p.mxov')['FILEINFO']['CADFileDescription'], 'x')

    def test_writers_of_one_package_wait_for_each_other(self):
        self.succeed('create', 'folder', 'p.mxov')
        ended = []
        writers = [threading.Thread(target=lambda n=n: ended.append(
            self.run_program('set', 'p.mxov', f'CADFileDescription={n}'))) for n in range(6)]
        for writer in writers:
            writer.start()
        for writer in writers:
            writer.join()
        done = [code for code, _, _ in ended].count(0)
        self.assertGreaterEqual(done, 1)
        for code, _, errors in ended:
            self.assertTrue(code == 0 or 'another program changed it meanwhile' in errors or 'busy' in errors, errors)
        entries = [name for name in sections_of(self.work / 'p.mxov') if name.startswith('FILE_HISTORY')]
        self.assertEqual(len(entries), done)
        self.assertEqual(sorted(path.name for path in self.work.iterdir()), ['folder', 'p.mxov'])

    def test_a_killed_writer_leaves_the_package_and_the_next_one_takes_its_place(self):
        self.write('folder/noise.bin', os.urandom(60_000_000))
        self.succeed('create', 'folder', 'p.mxov')
        before = (self.work / 'p.mxov').read_bytes()
        (self.work / 'folder/noise.bin').write_bytes(os.urandom(60_000_000))
        process, files = self.start('create', 'folder', 'p.mxov')
        while not list(self.work.glob('*.mxov-new')) and process.poll() is None:
            pass
        process.send_signal(signal.SIGKILL)
        self.finish(process, files)
        self.assertEqual((self.work / 'p.mxov').read_bytes(), before)
        self.assertEqual(len(list(self.work.glob('*.mxov-new'))), 1)
        self.succeed('create', 'folder', 'p.mxov')
        self.assertNotEqual((self.work / 'p.mxov').read_bytes(), before)
        self.assertEqual(list(self.work.glob('*.mxov-new')), [])


if __name__ == '__main__':
    unittest.main(verbosity=2)
