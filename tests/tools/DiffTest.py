#!/usr/bin/env python3
"""Compares packages with the built package command line, alone and as git's diff driver."""
import json
import os
import shlex
import shutil
import subprocess
import unittest
import zipfile

from packagecase import PackageCase
from packageprogram import COMMAND

INFORMATION = ('[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\nGCode=NC\\10.nc\r\nCADFileDescription={}\r\n'
               '[REFERANCE_FILE_1]\r\nIsReferencedFile=NO\r\nFilePath=ReferanceFiles\\plan.pdf\r\n'
               '[FILE_HISTORY_1]\r\nOperation=Created\r\nTime=2024-05-15 09:40:12\r\nBy=Anna\r\nRemarks=\r\n')
LEFT = {'mxinfo.ini': INFORMATION.format('old'), 'NC/10.nc': '%\nN10 G0 X1 Y1\nN20 G1 Z-1 (cut)\nM30\n%\n',
        'NC/20.nc': 'N1 G0 X1\nN2 M30\n', 'ReferanceFiles/plan.pdf': 'plan', 'a.txt': 'moved', 'b.txt': 'gone',
        'c.txt': 'one', 'empty1.txt': ''}
RIGHT = {**LEFT, 'mxinfo.ini': INFORMATION.format('n\u00e9w "x"') +
         '[FILE_HISTORY_2]\r\nOperation=Saved\r\nTime=2024-05-16 10:00:00\r\nBy=Ben\r\nRemarks=\r\n',
         'NC/10.nc': '%\nN5 G0 X1Y1 ; renumbered\nN6 G1 Z-1.5\nN7 G1 F\u00fc\x07\nM30\n%\n',
         'NC/20.nc': 'N10 G0 X1\n\nN20 M30 (end)\n', 'sub/a2.txt': 'moved', 'c.txt': 'three', 'd.txt': 'new',
         'empty2.txt': ''}
for name in ('a.txt', 'b.txt', 'empty1.txt'):
    del RIGHT[name]

DIFFERENCES = '''renamed a.txt -> sub\\a2.txt
removed b.txt
changed c.txt, 3 -> 5 bytes
added d.txt
removed empty1.txt
added empty2.txt
changed NC\\10.nc, 38 -> 55 bytes
  -3: N20 G1 Z-1 (cut)
  +3: N6 G1 Z-1.5
  +4: N7 G1 F\u00fc\\u0007
FILEINFO/CADFileDescription: "old" -> "n\u00e9w "x""
added FILE_HISTORY_2: 2024-05-16 10:00:00 Ben Saved
'''


class DiffTest(PackageCase):
    def setUp(self):
        super().setUp()
        for name, files in (('left', LEFT), ('right', RIGHT)):
            with zipfile.ZipFile(self.work / f'{name}.mxov', 'w', zipfile.ZIP_DEFLATED) as archive:
                for path, text in files.items():
                    archive.writestr(path, text.encode())

    def sorted_lines(self, text):
        """Blocks of a line and those indented below it, sorted."""
        blocks = []
        for line in text.splitlines():
            if line.startswith('  '):
                blocks[-1] += '\n' + line
            else:
                blocks.append(line)
        return sorted(blocks)

    def test_differences(self):
        output = self.succeed('diff', 'left.mxov', 'right.mxov')
        self.assertEqual(self.sorted_lines(output), self.sorted_lines(DIFFERENCES))

    def test_a_package_and_a_folder(self):
        self.succeed('extract', 'right.mxov', 'folder')
        self.assertEqual(self.succeed('diff', 'right.mxov', 'folder', '--exit-code'), '')
        self.assertEqual(self.succeed('diff', 'left.mxov', 'folder'), self.succeed('diff', 'left.mxov', 'right.mxov'))
        self.assertEqual(self.succeed('text', 'folder'), self.succeed('text', 'right.mxov'))

    def test_exit_codes(self):
        self.succeed('diff', 'left.mxov', 'right.mxov')
        self.succeed('diff', 'left.mxov', 'left.mxov', '--exit-code')
        code, output, errors = self.run_program('diff', 'left.mxov', 'right.mxov', '--exit-code', '--json')
        self.assertEqual((code, errors), (3, ''))
        self.assertFalse(json.loads(output)['equal'])
        self.assertIn('"gone.mxov"', self.fail_with(1, 'diff', 'left.mxov', 'gone.mxov', '--exit-code'))
        self.assertIn('see mxovpkg --help', self.fail_with(2, 'diff', 'left.mxov'))

    def test_json(self):
        found = json.loads(self.succeed('diff', 'left.mxov', 'right.mxov', '--json'))
        files = {file['name']: file for file in found['files']}
        self.assertEqual(files['sub\\a2.txt'],
                         {'change': 'renamed', 'name': 'sub\\a2.txt', 'oldName': 'a.txt', 'oldSize': 5, 'size': 5})
        self.assertEqual(files['NC\\10.nc']['lines'],
                         [{'change': 'removed', 'line': 3, 'text': 'N20 G1 Z-1 (cut)'},
                          {'change': 'added', 'line': 3, 'text': 'N6 G1 Z-1.5'},
                          {'change': 'added', 'line': 4, 'text': 'N7 G1 F\u00fc\x07'}])
        self.assertNotIn('NC\\20.nc', files)
        self.assertEqual(found['values'], [{'section': 'FILEINFO', 'key': 'CADFileDescription', 'before': 'old',
                                            'after': 'n\u00e9w "x"'}])
        self.assertEqual([entry['by'] for entry in found['addedHistory']], ['Ben'])
        self.assertEqual(found['removedHistory'], [])

    def test_all_lines(self):
        found = json.loads(self.succeed('diff', 'left.mxov', 'right.mxov', '--all-lines', '--json'))
        lines = {file['name']: len(file.get('lines', [])) for file in found['files']}
        self.assertEqual((lines['NC\\10.nc'], lines['NC\\20.nc']), (5, 5))

    def test_many_files(self):
        for name, last in (('a.mxov', '9999'), ('b.mxov', 'other')):
            with zipfile.ZipFile(self.work / name, 'w') as archive:
                archive.writestr('mxinfo.ini', '[FILEINFO]\r\nGCode=NC\\0.nc\r\n')
                for number in range(10_000):
                    archive.writestr(f'NC/{number}.nc', f'G0 X{last if number > 9_989 else number}\n')
        self.assertEqual(self.succeed('diff', 'a.mxov', 'b.mxov').count('changed NC\\'), 10)
        self.assertEqual(self.succeed('text', 'a.mxov').count('\n-- NC\\'), 10_000)

    def test_text(self):
        text = self.succeed('text', 'right.mxov')
        self.assertTrue(text.startswith('[FILEINFO]\nCADFileDescription=n\u00e9w "x"\nGCode=NC\\10.nc\nMaxtlreVersion='))
        self.assertIn('== NC\\20.nc, 25 bytes, CRC-32 ', text)
        self.assertIn('-- NC\\20.nc\nN10 G0 X1\n\nN20 M30 (end)\n', text)
        self.assertNotIn('-- NC\\10.nc', text)  # it has a control character
        shutil.copy(self.work / 'right.mxov', self.work / 'copy.mxov')
        os.utime(self.work / 'copy.mxov', (1, 1))
        self.assertEqual(self.succeed('text', 'copy.mxov'), text)
        self.succeed('extract', 'right.mxov', 'out')
        self.succeed('create', 'out', 'repacked.mxov')
        self.assertEqual(self.succeed('text', 'repacked.mxov'), text)

    def test_as_the_diff_driver_of_git(self):
        repository = self.work / 'repository'
        repository.mkdir()

        def git(*words):
            return subprocess.run(['git', '-c', 'user.name=a', '-c', 'user.email=a@b', *words], cwd=repository, check=True,
                                  capture_output=True, encoding='utf-8').stdout

        git('init', '-q')
        (repository / '.gitattributes').write_text('*.mxov diff=mxov\n')
        driver = self.work / 'driver'
        driver.write_text(f'#!/bin/sh\nexec {shlex.join(COMMAND)} text "$1" 2>/dev/null\n')
        driver.chmod(0o755)
        git('config', 'diff.mxov.textconv', str(driver))
        shutil.copy(self.work / 'left.mxov', repository / 'p.mxov')
        git('add', '.')
        git('commit', '-q', '-m', 'left')
        shutil.copy(self.work / 'right.mxov', repository / 'p.mxov')
        shown = git('diff')
        self.assertIn('\n-CADFileDescription=old\n', shown)
        self.assertIn('\n+N10 G0 X1\n', shown)


if __name__ == '__main__':
    unittest.main(verbosity=2)
