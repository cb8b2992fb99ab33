#!/usr/bin/env python3
"""Runs the built package command line as a user does and holds its packages against tools that others wrote."""
import os
import resource
import shutil
import signal
import subprocess
import time
import unittest
import zipfile

from packagecase import PackageCase, windows_path
from packageprogram import ON_WINDOWS
from wineprogram import change_registry

POLICIES = r'HKCU\Software\Policies\MXOVDocView'
INFO_TIME = 981173106  # of the information file, 2001-02-03 04:05:06 UTC


def processor_time():
    """The seconds that the programs used that have ended."""
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


class MxovpkgTest(PackageCase):
    def make_documents(self):
        self.write('folder/mxinfo.ini', b'[FILEINFO]\r\n', INFO_TIME)
        self.write('folder/NC/10 \u56f3\u9762 \U0001f527.nc', b'G0 X0\r\n' * 500, INFO_TIME)
        self.write('folder/\u0427\u0435\u0440\u0442\u0435\u0436/empty.pdf', b'', 1700000000)
        self.write('folder/noise.bin', os.urandom(300_000), 1700000001)
        (self.work / 'folder' / 'empty folder').mkdir()

    def test_help_and_version(self):
        self.assertIn('mxovpkg extract FILE FOLDER', self.succeed('--help'))
        self.assertRegex(self.succeed('--version'), r'\Amxovpkg \d+\.\d+\.\d+\n\Z')

    def test_wrong_usage(self):
        for arguments in ([], ['pack'], ['list'], ['list', 'a', 'b'], ['create', 'a'], ['extract', 'a', ''], ['--Help']):
            self.assertIn('see mxovpkg --help', self.fail_with(2, *arguments))

    def test_round_trip(self):
        self.make_documents()
        self.assertEqual(self.succeed('create', 'folder', 'p.mxov'),
                         'created p.mxov: 4 files, 1 empty folder, 303512 bytes\n')
        self.assertEqual(self.succeed('extract', 'p.mxov', 'out/inner'),
                         'extracted to out/inner: 4 files, 1 empty folder, 303512 bytes\n')
        self.assertEqual(self.tree('out/inner'), self.tree('folder'))

    def test_list(self):
        self.make_documents()
        self.succeed('create', 'folder', 'p.mxov')
        lines = self.succeed('list', 'p.mxov').splitlines()
        self.assertEqual(lines[0].split(), ['Size', 'Packed', 'Modified', '(UTC)', 'Name'])
        self.assertRegex(lines[1], r'^ +12 +\d+  2001-02-03 04:05:06  mxinfo\.ini$')
        self.assertEqual([line[53:] for line in lines[1:-1]],
                         ['mxinfo.ini', 'empty folder\\', 'NC\\10 \u56f3\u9762 \U0001f527.nc', 'noise.bin',
                          '\u0427\u0435\u0440\u0442\u0435\u0436\\empty.pdf'])
        self.assertEqual(lines[-1], '4 files, 1 empty folder, 303512 bytes')

    def make_programs(self):
        for name in ('mxinfo.ini', 'Tools/setup.exe', 'a.js', 'b.lnk', 'c.msi', 'note.txt'):
            self.write(f'folder/{name}', b'x')
        self.succeed('create', 'folder', 'p.mxov')

    def test_extract_warns_about_programs(self):
        self.make_programs()
        code, output, errors = self.run_program('extract', 'p.mxov', 'out')
        self.assertEqual((code, output), (0, 'extracted to out: 6 files, 6 bytes\n'))
        self.assertEqual(errors, 'warning: p.mxov holds programs: a.js, b.lnk, c.msi and 1 more\n')
        self.assertEqual(self.tree('out'), self.tree('folder'))

    @unittest.skipUnless(ON_WINDOWS, 'policies are in the registry')
    def test_a_policy_refuses_to_extract_programs(self):
        self.make_programs()
        self.addCleanup(change_registry, 'delete', POLICIES, '/f')
        change_registry('add', POLICIES, '/v', 'RefusePrograms', '/t', 'REG_DWORD', '/d', '1', '/f')
        self.assertEqual(self.fail_with(1, 'extract', 'p.mxov', 'out'),
                         'mxovpkg: p.mxov holds programs, which your administrator does not allow: '
                         'a.js, b.lnk, c.msi and 1 more\n')
        self.assertFalse((self.work / 'out').exists())
        self.succeed('list', 'p.mxov')

    def test_a_package_in_a_folder_of_more_than_300_characters(self):
        self.make_documents()
        folder = self.work / ('f' * 150) / ('g' * 150)
        folder.mkdir(parents=True)
        package, out = (windows_path(path) if ON_WINDOWS else path for path in (folder / 'p.mxov', folder / 'out'))
        self.succeed('create', 'folder', package)
        self.succeed('set', package, 'CADFileDescription=x', '--no-history')
        self.assertIn('CADFileDescription=x', self.succeed('text', package))
        self.succeed('extract', package, out)
        self.assertEqual(set(self.tree(folder / 'out')), set(self.tree('folder')))

    def test_packages_satisfy_other_tools(self):
        self.make_documents()
        self.succeed('create', 'folder', 'p.mxov')
        package = self.work / 'p.mxov'
        tested = subprocess.run(['unzip', '-t', package], capture_output=True, encoding='utf-8')
        self.assertEqual(tested.returncode, 0, tested.stdout + tested.stderr)
        self.assertIn('No errors detected', tested.stdout)
        info = subprocess.run(['zipinfo', '-T', package], capture_output=True, encoding='utf-8')
        self.assertEqual(info.returncode, 0, info.stderr)
        changed = time.strftime('%Y%m%d.%H%M%S', time.localtime(INFO_TIME))
        self.assertIn(f'{changed} mxinfo.ini', info.stdout)
        with zipfile.ZipFile(package) as archive:
            self.assertIsNone(archive.testzip())
            self.assertEqual(sorted(archive.namelist()),
                             sorted(name + ('/' if content is None else '') for name, content
                                    in self.tree('folder').items() if content or name == 'empty folder'))
            archive.extractall(self.work / 'by python')
        self.assertEqual({name: content and content[0] for name, content in self.tree('by python').items()},
                         {name: content and content[0] for name, content in self.tree('folder').items()})

    def test_reads_packages_of_other_tools(self):
        self.make_documents()
        subprocess.run(['zip', '-q', '-r', '../zip.mxov', '.'], cwd=self.work / 'folder', check=True)
        shutil.make_archive(str(self.work / 'python'), 'zip', self.work / 'folder')
        for package in ('zip.mxov', 'python.zip'):
            self.succeed('extract', package, package + '.out')
            self.assertEqual({name: content and content[0] for name, content in self.tree(package + '.out').items()},
                             {name: content and content[0] for name, content in self.tree('folder').items()})

    def test_failures_name_the_file(self):
        self.write('folder/a.txt', b'mine')
        self.assertIn('"gone.mxov"', self.fail_with(1, 'list', 'gone.mxov'))
        self.assertIn('"gone"', self.fail_with(1, 'create', 'gone', 'p.mxov'))
        self.assertIn('"gone/p.mxov"', self.fail_with(1, 'create', 'folder', 'gone/p.mxov'))
        self.succeed('create', 'folder', 'p.mxov')
        self.assertIn('is not empty', self.fail_with(1, 'extract', 'p.mxov', 'folder'))
        self.assertEqual(sorted(self.tree('.')), ['folder', 'folder/a.txt', 'p.mxov'])

    def hostile_packages(self):
        for name in ('../evil.txt', '/evil.txt', 'C:/evil.txt', 'a/../../evil.txt', 'NUL', 'a:b', 'evil.', 'evil ',
                     'evil\x1b[31m.txt'):
            yield name, [(name, b'evil', 0)]
        yield 'case', [('a.txt', b'1', 0), ('A.TXT', b'2', 0)]
        yield 'link', [('link', b'/etc/passwd', 0o120777 << 16)]
        yield 'bomb', [(f'zeros{i}', bytes(20_000_000), 0) for i in range(10)]

    def test_hostile_packages_are_refused_at_once(self):
        commands = (['list', 'bad.mxov'], ['check', 'bad.mxov'], ['extract', 'bad.mxov', 'out'])
        for number, (title, entries) in enumerate(self.hostile_packages()):
            with self.subTest(title):
                with zipfile.ZipFile(self.work / 'bad.mxov', 'w', zipfile.ZIP_DEFLATED) as archive:
                    for name, content, attributes in entries:
                        info = zipfile.ZipInfo(name)
                        info.external_attr = attributes
                        info.compress_type = zipfile.ZIP_DEFLATED
                        archive.writestr(info, content)
                for arguments in commands if os.environ.get('MXOV_LONG') else (commands[number % 3],):
                    before = processor_time()
                    line = self.fail_with(1, *arguments)
                    self.assertLess(processor_time() - before, 2)
                    self.assertIn('"bad.mxov": entry "', line)
                    self.assertTrue(line[:-1].isprintable(), line)
                self.assertEqual(sorted(self.tree('.')), ['bad.mxov'])

    def test_a_damaged_package_is_found_by_check(self):
        self.make_documents()
        self.succeed('create', 'folder', 'p.mxov')
        package = self.work / 'p.mxov'
        content = bytearray(package.read_bytes())
        content[len(content) // 2] ^= 0x10
        package.write_bytes(content)
        self.assertIn('"p.mxov": entry "noise.bin": its data does not meet its checksum',
                      self.fail_with(1, 'check', 'p.mxov'))
        self.fail_with(1, 'extract', 'p.mxov', 'out')
        self.assertFalse((self.work / 'out').exists())

    def test_more_entries_than_a_plain_directory_counts(self):
        with zipfile.ZipFile(self.work / 'many.mxov', 'w') as archive:
            for number in range(66_000):
                archive.writestr(f'{number % 100}/{number}', b'')
        self.assertTrue(self.succeed('list', 'many.mxov').endswith('\n66000 files, 0 bytes\n'))
        self.assertIn('66000 entries, all sound', self.run_program('check', 'many.mxov')[1])

    def interrupt(self, running, is_time):
        """Sends Ctrl+C as soon as `is_time` says so."""
        process, _ = running
        deadline = time.monotonic() + 60
        while not is_time() and process.poll() is None and time.monotonic() < deadline:
            time.sleep(0.005)
        process.send_signal(signal.SIGINT)
        code, output, errors = self.finish(*running)
        self.assertEqual((code, output), (1, ''))
        self.assertEqual(errors, 'mxovpkg: cancelled, nothing was left behind\n')

    def test_ctrl_c_leaves_nothing_behind(self):
        for number in range(10):
            self.write(f'folder/{number}.bin', os.urandom(10_000_000))
        before = self.tree('.')
        self.interrupt(self.start('create', 'folder', 'p.mxov'), lambda: list(self.work.glob('p.mxov.*')))
        self.assertEqual(self.tree('.'), before)
        self.succeed('create', 'folder', 'p.mxov')
        before = self.tree('.')
        self.interrupt(self.start('extract', 'p.mxov', 'out'), lambda: list(self.work.glob('out/*')))
        self.assertEqual(self.tree('.'), before)


if __name__ == '__main__':
    unittest.main(verbosity=2)
