#!/usr/bin/env python3
"""Takes linked documents along and points links elsewhere, with the built package command line and packages of other tools."""
import os
import subprocess
import unittest
import zipfile

from packagecase import PackageCase, windows_path
from packagefile import sections_of

TIME = 981173106  # 2001-02-03 04:05:06


class LinkCase(PackageCase):
    def make_package(self, information, *, files=None):
        """A package made by Python."""
        with zipfile.ZipFile(self.work / 'p.mxov', 'w', zipfile.ZIP_DEFLATED) as archive:
            archive.writestr('mxinfo.ini', information.replace('\n', '\r\n').encode())
            for name, content in (files or {}).items():
                archive.writestr(name, content)
        return self.work / 'p.mxov'

    def document(self, number, path, more=''):
        return f'[REFERANCE_FILE_{number}]\nIsReferencedFile=YES\nDescription=d{number}\nFilePath={path}\n{more}'


class BundleTest(LinkCase):
    def setUp(self):
        super().setUp()
        self.part = self.write('cad/part.sldprt', b'part' * 1000, TIME)
        self.plan = self.write('docs/plan.pdf', b'linked plan', TIME)
        self.information = (f'[FILEINFO]\nMaxtlreVersion=Example 2024\nCADFilePath={windows_path(self.part)}\n'
                            'CADFileDescription=the part\n; a comment\n' + self.document(1, windows_path(self.plan)) +
                            '[REFERANCE_FILE_4]\nIsReferencedFile=NO\nFilePath=ReferanceFiles\\plan.pdf\n')
        self.files = {'ReferanceFiles/plan.pdf': b'packed plan', 'NC/1.nc': b'G0 X1\r\n' * 1000}

    def test_links_become_copies(self):
        package = self.make_package(self.information, files=self.files)
        before = package.read_bytes()
        output = self.succeed('bundle', 'p.mxov', 'out.mxov', '--no-history')
        self.assertEqual(output.splitlines()[:2],
                         [f'{windows_path(self.plan)} -> ReferanceFiles\\plan (2).pdf',
                          f'{windows_path(self.part)} -> ReferanceFiles\\part.sldprt'])
        size = (self.work / 'out.mxov').stat().st_size
        self.assertRegex(output.splitlines()[2], rf'^bundled out.mxov: 5 files, \d+ bytes, packed into {size}$')
        self.assertEqual(package.read_bytes(), before)
        sections = sections_of(self.work / 'out.mxov')
        self.assertEqual(sections['FILEINFO']['CADFilePath'], windows_path(self.part))
        self.assertEqual(sections['REFERANCE_FILE_1'],
                         {'IsReferencedFile': 'NO', 'Description': 'd1', 'Timestamp': '2001-02-03 04:05:06',
                          'FilePath': 'ReferanceFiles\\plan (2).pdf'})
        self.assertEqual(sections['REFERANCE_FILE_5'],
                         {'IsReferencedFile': 'NO', 'Description': 'the part', 'Timestamp': '2001-02-03 04:05:06',
                          'FilePath': 'ReferanceFiles\\part.sldprt'})
        self.assertEqual(len(sections), 4)
        with zipfile.ZipFile(self.work / 'out.mxov') as archive:
            self.assertIsNone(archive.testzip())
            self.assertEqual(archive.namelist()[0], 'mxinfo.ini')
            self.assertIn(b'\r\n; a comment\r\n', archive.read('mxinfo.ini'))
            self.assertEqual(archive.read('ReferanceFiles/plan (2).pdf'), b'linked plan')
            self.assertEqual(archive.read('ReferanceFiles/plan.pdf'), b'packed plan')
            self.assertEqual(archive.read('ReferanceFiles/part.sldprt'), b'part' * 1000)
            self.assertEqual(archive.read('NC/1.nc'), b'G0 X1\r\n' * 1000)

    def test_packages_of_other_tools(self):
        self.write('folder/mxinfo.ini', self.information.encode())
        for name, content in self.files.items():
            self.write('folder/' + name, content)
        self.write('folder/noise.bin', os.urandom(300_000), TIME)
        (self.work / 'folder/empty').mkdir()
        folder = self.work / 'folder'
        subprocess.run(['zip', '-q', '-r', '../zip.mxov', '.'], cwd=folder, check=True)
        subprocess.run(['7z', 'a', '-tzip', '-bso0', '../7z.mxov', '.'], cwd=folder, check=True)
        for package in ('zip.mxov', '7z.mxov'):
            with self.subTest(package):
                self.succeed('bundle', package, 'out.mxov', '--no-history')
                self.succeed('extract', 'out.mxov', package + '.out')
                there = self.tree(package + '.out')
                self.assertEqual(there['noise.bin'], self.tree('folder')['noise.bin'])
                self.assertIsNone(there['empty'])
                self.assertEqual(there['ReferanceFiles/part.sldprt'], (b'part' * 1000, TIME))
                self.assertEqual(subprocess.run(['unzip', '-tq', 'out.mxov'], cwd=self.work, stdout=-1).returncode, 0)

    def test_what_cannot_be_taken_is_reported(self):
        (self.work / 'folder').mkdir()
        paths = ['C:\\gone\\a.pdf', '\\\\host\\share\\b.pdf', windows_path(self.work / 'folder'), 'c.pdf']
        self.make_package('[FILEINFO]\nMaxtlreVersion=Example 2024\n' +
                          ''.join(self.document(number, path) for number, path in enumerate(paths, 1)))
        code, output, errors = self.run_program('bundle', 'p.mxov', 'out.mxov')
        reasons = ['does not exist', 'leads to another computer', 'is a folder', 'is not a full path']
        self.assertEqual(errors, ''.join(f'warning: linked document "{path}" {reason}\n'
                                         for path, reason in zip(paths, reasons)))
        self.assertEqual(code, 3)
        sections = sections_of(self.work / 'out.mxov')
        self.assertEqual([sections[f'REFERANCE_FILE_{n}']['FilePath'] for n in range(1, 5)], paths)
        self.assertEqual(sections['FILE_HISTORY_1']['Operation'], 'Bundled linked documents')

    def test_two_links_to_one_file_and_a_part_that_is_linked(self):
        path = windows_path(self.part)
        self.make_package(f'[FILEINFO]\nMaxtlreVersion=Example 2024\nCADFilePath={path}\n' + self.document(1, path) +
                          self.document(2, path))
        self.succeed('bundle', 'p.mxov', 'out.mxov')
        sections = sections_of(self.work / 'out.mxov')
        self.assertEqual([values['FilePath'] for name, values in sections.items() if name.startswith('REF')],
                         ['ReferanceFiles\\part.sldprt', 'ReferanceFiles\\part (2).sldprt'])

    def test_an_old_package_hides_what_it_took(self):
        self.make_package(f'[FILEINFO]\nMaxtlreVersion=Example 2019\nCADFilePath={windows_path(self.part)}\n')
        code, _, errors = self.run_program('bundle', 'p.mxov', 'out.mxov')
        self.assertEqual(code, 0)
        self.assertIn('version before 2021', errors)

    def test_failures_leave_nothing(self):
        package = self.make_package(self.information, files=self.files)
        self.assertIn('"gone.mxov"', self.fail_with(1, 'bundle', 'gone.mxov', 'out.mxov'))
        self.assertIn('gone/out.mxov', self.fail_with(1, 'bundle', 'p.mxov', 'gone/out.mxov'))
        content = bytearray(package.read_bytes())
        content[content.index(b'ReferanceFiles/plan.pdf') + len('ReferanceFiles/plan.pdf') + 3] ^= 0x10
        package.write_bytes(content)
        before = self.tree('.')
        self.assertIn('"p.mxov": entry "ReferanceFiles/plan.pdf"', self.fail_with(1, 'bundle', 'p.mxov', 'out.mxov'))
        self.assertEqual(self.tree('.'), before)

    def test_a_bundle_may_replace_its_package(self):
        self.make_package(self.information, files=self.files)
        self.succeed('bundle', 'p.mxov', 'p.mxov')
        self.assertEqual(sections_of(self.work / 'p.mxov')['REFERANCE_FILE_1']['IsReferencedFile'], 'NO')
        self.assertEqual(sorted(path.name for path in self.work.iterdir()), ['cad', 'docs', 'p.mxov'])


class RelinkTest(LinkCase):
    PATHS = ['C:\\Old\\a.pdf', 'c:/old/b/c.pdf', 'C:\\Older\\d.pdf', 'C:\\old', '\\\\host\\share\\e.pdf']

    def setUp(self):
        super().setUp()
        self.package = self.make_package(
            '[FILEINFO]\nMaxtlreVersion=Example 2024\nCADFilePath=C:\\old\\part.sldprt\n' +
            ''.join(self.document(number, path) for number, path in enumerate(self.PATHS, 1)) +
            '[REFERANCE_FILE_9]\nIsReferencedFile=NO\nFilePath=ReferanceFiles\\c.pdf\n',
            files={'ReferanceFiles/c.pdf': b'c'})

    def links(self):
        sections = sections_of(self.package)
        return [sections[f'REFERANCE_FILE_{n}']['FilePath'] for n in range(1, 6)]

    def test_links_below_a_folder_move(self):
        code, output, errors = self.run_program('relink', 'p.mxov', '--from', 'C:\\old\\', '--to', 'D:\\new')
        self.assertEqual(code, 0)
        self.assertEqual(output, 'C:\\old\\part.sldprt -> D:\\new\\part.sldprt\nC:\\Old\\a.pdf -> D:\\new\\a.pdf\n'
                                 'c:/old/b/c.pdf -> D:\\new/b/c.pdf\nC:\\old -> D:\\new\nrelinked p.mxov: 4 links\n')
        self.assertEqual(errors.count('does not exist'), 4)
        self.assertEqual(self.links(), ['D:\\new\\a.pdf', 'D:\\new/b/c.pdf', self.PATHS[2], 'D:\\new', self.PATHS[4]])
        sections = sections_of(self.package)
        self.assertEqual(sections['FILEINFO']['CADFilePath'], 'D:\\new\\part.sldprt')
        self.assertEqual(sections['REFERANCE_FILE_9']['FilePath'], 'ReferanceFiles\\c.pdf')
        self.assertEqual(sections['FILE_HISTORY_1']['Operation'], 'Relinked documents')

    def test_a_dry_run_changes_nothing(self):
        before = self.tree('.')
        _, output, _ = self.run_program('relink', 'p.mxov', '--from', '\\\\HOST\\share', '--to', 'E:\\', '--dry-run')
        self.assertEqual(output, '\\\\host\\share\\e.pdf -> E:\\e.pdf\nwould relink p.mxov: 1 link\n')
        self.assertEqual(self.tree('.'), before)

    def test_no_link_no_change(self):
        before = self.tree('.')
        self.assertEqual(self.succeed('relink', 'p.mxov', '--from', 'C:\\elsewhere', '--to', 'D:\\new'),
                         'relinked p.mxov: 0 links\n')
        self.assertEqual(self.tree('.'), before)

    def test_wrong_words(self):
        for words in ([], ['--from', 'C:\\a'], ['--from', 'C:\\a', '--to'], ['--from', 'C:\\a', '--to', 'new'],
                      ['--from', '\\', '--to', 'D:\\b'],
                      ['--from', 'C:\\a', '--to', 'D:\\b', '--from', 'C:\\c'], ['--form', 'C:\\a', '--to', 'D:\\b']):
            self.assertIn('see mxovpkg --help', self.fail_with(2, 'relink', 'p.mxov', *words))

    def test_remarks_and_no_history(self):
        self.run_program('relink', 'p.mxov', '--from', 'C:\\old', '--to', 'D:\\new', '--no-history')
        self.assertNotIn('FILE_HISTORY_1', sections_of(self.package))
        self.run_program('relink', 'p.mxov', '--from', 'D:\\new', '--to', 'E:\\n', '--remarks', 'moved \u2192 E')
        self.assertEqual(sections_of(self.package)['FILE_HISTORY_1']['Remarks'], 'moved \u2192 E')


if __name__ == '__main__':
    unittest.main(verbosity=2)
