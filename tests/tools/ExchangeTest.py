#!/usr/bin/env python3
"""Packages of the program for Linux are those of the program for Windows, whose library hosts and the control's host use."""
import os
import subprocess
import unittest
import zipfile

from informationfile import CODE_PAGE
from packagecase import WINE_LINE, PackageCase, windows_path
from packageprogram import LINUX, WINDOWS, command_of

TIME = 981173106  # 2001-02-03 04:05:06


class ExchangeTest(PackageCase):
    def setUp(self):
        super().setUp()
        plan = self.write('outside/plan.pdf', b'plan', TIME)
        self.write('folder/mxinfo.ini', (
            '[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\nGCode=nc\\10.NC\r\nCADFileDescription=\u00e4\U0001f527\r\n'
            '[REFERANCE_FILE_1]\r\nIsReferencedFile=NO\r\nFilePath=referanceFILES\\\u00dcBER.txt\r\n'
            f'[REFERANCE_FILE_2]\r\nIsReferencedFile=YES\r\nFilePath={windows_path(plan)}\r\n').encode('utf-16'), TIME)
        self.write('folder/NC/10.nc', b'G0 X1\r\n' * 50_000, TIME + 1)
        self.write('folder/NC/10 \u56f3\u9762 \U0001f527.nc', b'G0 X0\r\n', 1_700_000_001.5)
        self.write('folder/ReferanceFiles/\u00fcber.txt', b'about', TIME + 7)
        self.write('folder/.hidden', b'', TIME)
        self.write('folder/read-only.txt', b'r', TIME).chmod(0o444)
        self.write('folder/noise.bin', os.urandom(3_000_000), TIME)
        (self.work / 'folder/empty').mkdir()

    def run_both(self, *words):
        """Runs both programs, the first package of each being its own, and expects the same; returns it."""
        outcomes = []
        for program, package in ((WINDOWS, 'windows.mxov'), (LINUX, 'linux.mxov')):
            with open(self.work / 'output', 'w+b') as output, open(self.work / 'errors', 'w+b') as errors:
                code = subprocess.run([*command_of(program), *(package if word == 'PACKAGE' else word for word in words)],
                                      cwd=self.work, stdin=subprocess.DEVNULL, stdout=output, stderr=errors).returncode
                texts = []
                for file in (output, errors):
                    file.seek(0)
                    text = file.read().decode().replace('\r\n', '\n').replace(package, 'PACKAGE')
                    texts.append(WINE_LINE.sub('', text))
                outcomes.append((code, *texts))
        self.assertEqual(outcomes[0], outcomes[1])
        return outcomes[0]

    def expect_same_packages(self):
        windows, linux = ((self.work / name).read_bytes() for name in ('windows.mxov', 'linux.mxov'))
        self.assertGreater(len(windows), 3_000_000)
        self.assertTrue(windows == linux, 'the packages differ')

    def test_a_new_package_has_the_same_bytes(self):
        self.assertEqual(self.run_both('create', 'folder', 'PACKAGE')[0], 0)
        self.expect_same_packages()

    def test_every_reader_reports_the_same(self):
        self.run_both('create', 'folder', 'PACKAGE')
        (self.work / 'folder/NC/10.nc').write_bytes(b'N1 G0 X2\r\n')
        (self.work / 'folder/new.txt').write_bytes(b'new')
        for words in (('list', 'PACKAGE'), ('list', 'PACKAGE', '--json'), ('check', 'PACKAGE'), ('text', 'PACKAGE'),
                      ('check', 'PACKAGE', '--strict', '--json'), ('history', 'PACKAGE', '--json'),
                      ('diff', 'PACKAGE', 'folder', '--exit-code'), ('text', 'folder'), ('--help',), ('list',),
                      ('completion', 'bash'), ('relink', 'PACKAGE', '--from', 'Z:\\', '--to', 'P:\\', '--dry-run')):
            with self.subTest(words=words):
                code, output, errors = self.run_both(*words)
                self.assertTrue(output or errors)
                self.assertIn(code, (0, 2, 3))

    @unittest.skipIf(CODE_PAGE != 'cp1252', 'on Linux it is always code page 1252')
    def test_an_information_file_in_the_code_page_is_read_and_kept(self):
        self.write('folder/mxinfo.ini', b'[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\nCADFileDescription=' +
                   bytes(range(0x80, 0x100)) + b'\r\n', TIME)
        self.run_both('create', 'folder', 'PACKAGE')
        self.assertIn('=\u20ac', self.run_both('text', 'PACKAGE')[1])
        self.run_both('set', 'PACKAGE', 'GCodeFileDescription=\u201e\u00e4\u201c', '--no-history')
        self.assertIn(b'GCodeFileDescription=\x84\xe4\x93', self.information('windows.mxov'))
        self.assertEqual(self.information('windows.mxov'), self.information('linux.mxov'))
        self.run_both('set', 'PACKAGE', 'SetupSheetsFileDescription=\u56f3', '--no-history')
        self.assertTrue(self.information('windows.mxov').startswith(b'\xff\xfe'), 'the code page does not have it')
        self.assertEqual(self.information('windows.mxov'), self.information('linux.mxov'))

    def information(self, package):
        with zipfile.ZipFile(self.work / package) as archive:
            return archive.read('mxinfo.ini')

    def test_each_unpacks_what_the_other_packed(self):
        self.run_both('create', 'folder', 'PACKAGE')
        for program, package in ((WINDOWS, 'linux.mxov'), (LINUX, 'windows.mxov')):
            folder = f'by {program.name}'
            subprocess.run([*command_of(program), 'extract', package, folder], cwd=self.work, check=True,
                           stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            self.assertEqual(self.tree(folder), self.tree('folder'))

    def test_changes_give_the_same_documents(self):
        self.run_both('create', 'folder', 'PACKAGE')
        self.write('more.txt', b'more', TIME)
        for words in (('add', 'PACKAGE', 'more.txt', '--description', 'm'), ('add', 'PACKAGE', 'more.txt', '--as', 'link'),
                      ('set', 'PACKAGE', 'CADFileDescription=x\u56f3'), ('remove', 'PACKAGE', 'REFERANCE_FILE_1')):
            self.assertEqual(self.run_both(*words, '--no-history')[0], 0)
        self.assertEqual(self.run_both('bundle', 'PACKAGE', 'out PACKAGE', '--no-history')[0], 0)
        contents = []
        for name in ('windows.mxov', 'linux.mxov'):
            with zipfile.ZipFile(self.work / name) as archive:
                contents.append({entry: archive.read(entry) for entry in archive.namelist()})
        self.assertEqual(contents[0], contents[1])
        self.assertIn('ReferanceFiles/more.txt', contents[0])


if __name__ == '__main__':
    unittest.main(verbosity=2)
