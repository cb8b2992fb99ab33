#!/usr/bin/env python3
"""What `mxovpkg check` shows of a package, and what `--strict` and `--json` find."""
import json
import os
import pathlib
import re
import subprocess
import sys
import unittest
import zipfile

from packagecase import ROOT, PackageCase, windows_path
from packageprogram import ON_WINDOWS

DOCUMENTATION = ROOT / 'docs' / 'package-format.md'
TIME = 981173106  # 2001-02-03 04:05:06

INFORMATION = '''[FILEINFO]
MaxtlreVersion=Maxtrel Orvando 2024
CADFilePath={cad}
CADFileLastModifiedTime=2024-05-13 15:42:08
SetupSheets=Sheets\\setup.html
GCode=NC\\10.nc;NC\\20.nc
Thumbnail=preview.bmp
[REFERANCE_FILE_1]
IsReferencedFile=YES
Timestamp=2024-04-22 11:05:37
FilePath=C:\\gone\\certificate.pdf
[REFERANCE_FILE_4]
IsReferencedFile=NO
Timestamp=2024-05-15 07:31:50
FilePath=ReferanceFiles\\plan.pdf
'''

CATALOGUE = '''p.mxov: 7 entries, all sound
written by: Maxtrel Orvando 2024

Part / Assembly
  part.sldprt  3 KB        2024-05-13 15:42:08  linked

G Code
  10.nc  1 KB        2001-02-03 04:05:06  packaged
  20.nc  2 KB        2001-02-03 04:05:06  packaged

Setup Sheets
  setup.html  0 KB        2001-02-03 04:05:06  packaged

Additional Documents
  certificate.pdf  0 KB        2024-04-22 11:05:37  missing
  plan.pdf         1 KB        2024-05-15 07:31:50  packaged
'''


class CheckTest(PackageCase):
    def make_catalogue(self):
        cad = self.write('linked/part.sldprt', b'c' * 2500)
        self.write('folder/mxinfo.ini', INFORMATION.format(cad=windows_path(cad)).replace('\n', '\r\n').encode())
        self.write('folder/NC/20.nc', b'g' * 1025, TIME)
        self.write('folder/NC/10.nc', b'g' * 1024, TIME)
        self.write('folder/Sheets/setup.html', b'', TIME)
        self.write('folder/Sheets/notes.txt', b'no setup sheet')
        self.write('folder/ReferanceFiles/plan.pdf', b'p')
        self.write('folder/preview.bmp', b'BM')

    def test_shows_the_catalogue(self):
        self.make_catalogue()
        self.succeed('create', 'folder', 'p.mxov')
        before = self.tree('.')
        code, output, errors = self.run_program('check', 'p.mxov')
        self.assertEqual(output, CATALOGUE)
        self.assertEqual(errors, 'warning: linked document "C:\\gone\\certificate.pdf" does not exist\n')
        self.assertEqual(code, 0)
        self.assertEqual(self.tree('.'), before)

    def test_warns_about_what_is_missing(self):
        self.make_catalogue()
        (self.work / 'folder/preview.bmp').unlink()
        (self.work / 'folder/ReferanceFiles/plan.pdf').unlink()
        self.succeed('create', 'folder', 'p.mxov')
        _, output, errors = self.run_program('check', 'p.mxov')
        self.assertIn('plan.pdf         0 KB', output)
        self.assertIn('warning: document "ReferanceFiles\\plan.pdf" is not in the package\n', errors)
        self.assertIn('warning: preview "preview.bmp" is not in the package\n', errors)

    def test_refuses_paths_that_lead_elsewhere(self):
        self.write('victim/thesis.docx', b'years of work')
        if ON_WINDOWS:
            # What the network would answer: Wine looks for another computer's files here.
            share = pathlib.Path(os.environ['WINEPREFIX']) / 'dosdevices/unc/server/share'
            share.mkdir(parents=True)
            (share / 'plan.pdf').write_bytes(b'theirs')
        self.write('folder/NC/10.nc')
        self.write('folder/mxinfo.ini', b'[FILEINFO]\r\nMaxtlreVersion=M 2024\r\n'
                   b'CADFilePath=\\\\server\\share\\plan.pdf\r\nGCode=NC\\10.nc;..\\victim\\20.nc\r\n'
                   b'SetupSheets=a\\..\\..\\victim\\a.pdf\r\nThumbnail=//server/share/p.bmp\r\n'
                   b'[REFERANCE_FILE_1]\r\nIsReferencedFile=NO\r\nFilePath=..\\victim\\thesis.docx\r\n'
                   b'[REFERANCE_FILE_2]\r\nFilePath=\\\\server\\share\\plan.pdf\r\n'
                   b'[REFERANCE_FILE_3]\r\nIsReferencedFile=NO\r\nFilePath=NC\\10.nc\r\n')
        self.succeed('create', 'folder', 'folder/p.mxov')
        code, output, errors = self.run_program('check', 'folder/p.mxov')
        self.assertEqual(code, 1)
        self.assertIn('2 entries, 6 faults\n', output)
        self.assertRegex(output, r'\n  thesis.docx +0 KB +refused\n  plan.pdf +0 KB +refused\n  10.nc ')
        self.assertRegex(output, r'Part / Assembly\n  plan.pdf +0 KB +refused\n')
        self.assertEqual(errors.splitlines(), [
            'mxovpkg: CADFilePath "\\\\server\\share\\plan.pdf" leads to another computer',
            'mxovpkg: SetupSheets "a\\..\\..\\victim\\a.pdf" leaves the package folder',
            'mxovpkg: Thumbnail "//server/share/p.bmp" leads to another computer',
            'mxovpkg: GCode "..\\victim\\20.nc" leaves the package folder',
            'mxovpkg: REFERANCE_FILE_1 "..\\victim\\thesis.docx" leaves the package folder',
            'mxovpkg: REFERANCE_FILE_2 "\\\\server\\share\\plan.pdf" leads to another computer'])

    def test_an_older_package_and_one_without_information(self):
        self.write('old/mxinfo.ini', b'[FILEINFO]\r\nMaxtlreVersion=Maxtrel Orvando 2019\r\n')
        self.succeed('create', 'old', 'old.mxov')
        self.assertIn('Additional Documents (not shown: written by a version before 2021)\n  none\n',
                      self.succeed('check', 'old.mxov'))
        self.write('bare/a.txt')
        self.succeed('create', 'bare', 'bare.mxov')
        code, output, errors = self.run_program('check', 'bare.mxov')
        self.assertEqual(code, 0)
        self.assertIn('written by: unknown', output)
        self.assertIn('warning: the package holds no information file', errors)

    def test_the_documented_example(self):
        text = DOCUMENTATION.read_text(encoding='utf-8')
        code, session = re.findall(r'```(?:python)?\n(.*?)```', text, re.DOTALL)[:2]
        subprocess.run([sys.executable, '-c', code], cwd=self.work, check=True)
        _, output, errors = self.run_program('check', 'example.mxov')
        shown = re.sub(r'(op10.nc +1 KB +)\S+ \S+', r'\g<1>2024-05-15 09:41:00', output + errors)
        self.assertEqual('> mxovpkg check example.mxov\n' + shown, session)

    def make(self, information, *, files=None):
        with zipfile.ZipFile(self.work / 'p.mxov', 'w', zipfile.ZIP_DEFLATED) as archive:
            archive.writestr('mxinfo.ini', ('[FILEINFO]\nMaxtlreVersion=Example 2024\n' + information).encode())
            for name in files or []:
                archive.writestr(name, name * 20)

    def findings(self, *, code=0, strict=False):
        """Pairs of code and document; checks the exit code and the counts."""
        ended, output, errors = self.run_program('check', 'p.mxov', '--json', *['--strict'] * strict)
        report = json.loads(output)
        self.assertEqual((ended, report['file']), (code, 'p.mxov'))
        for severity in ('error', 'warning'):
            self.assertEqual(report[severity + 's'], sum(f['severity'] == severity for f in report['findings']))
        for finding in report['findings']:
            self.assertEqual(sorted(finding), ['code', 'cure', 'document', 'message', 'section', 'severity'])
            self.assertTrue(finding['message'])
        return [(finding['code'], finding['document']) for finding in report['findings']]

    def test_a_sound_package_is_silent(self):
        self.make('GCode=NC\\1.nc\nSetupSheets=S\\a.html\nThumbnail=p.bmp\n[REFERANCE_FILE_1]\nIsReferencedFile=NO\n'
                  'FilePath=ReferanceFiles\\a.txt\n', files=['NC/1.nc', 'S/a.html', 'p.bmp', 'ReferanceFiles/a.txt'])
        self.assertEqual(self.findings(strict=True), [])
        self.assertIn('all sound', self.succeed('check', 'p.mxov', '--strict'))

    def test_links(self):
        old = self.write('old.pdf', b'', TIME)
        newer = self.write('newer.pdf', b'', TIME)
        personal = self.write('Temp/x.pdf', b'', TIME)
        links = [('C:\\gone.pdf', ''), (windows_path(old), '2001-02-03 04:05:06'),
                 (windows_path(newer), '2001-02-03 04:05:05'), (windows_path(personal), '')]
        self.make(''.join(f'[REFERANCE_FILE_{n}]\nIsReferencedFile=YES\nTimestamp={time}\nFilePath={path}\n'
                          for n, (path, time) in enumerate(links, 1)))
        found = [finding for finding in self.findings(strict=True, code=3)
                 if finding[0] != 'personal-folder' or finding[1].endswith('x.pdf')]
        self.assertEqual(found, [('link-missing', links[0][0]), ('link-newer', links[2][0]),
                                 ('personal-folder', links[3][0])])
        code, _, errors = self.run_program('check', 'p.mxov')
        self.assertEqual((code, errors), (0, 'warning: linked document "C:\\gone.pdf" does not exist\n'))
        code, _, errors = self.run_program('check', 'p.mxov', '--strict')
        self.assertEqual(code, 3)
        self.assertIn('was changed after 2001-02-03 04:05:05\n', errors)

    def test_files_that_nothing_shows(self):
        self.make('SetupSheets=S\\a.html\n', files=['S/a.html', 'S/setup.docx', 'other/b.txt'])
        self.assertEqual(self.findings(strict=True, code=3), [('not-shown', 'S\\setup.docx'),
                                                              ('not-shown', 'other\\b.txt')])

    def test_two_documents_on_one_file(self):
        self.make(''.join(f'[REFERANCE_FILE_{n}]\nIsReferencedFile=NO\nFilePath=ReferanceFiles\\{name}\n'
                          for n, name in ((1, 'a.txt'), (2, 'A.TXT'))), files=['ReferanceFiles/a.txt'])
        self.assertEqual(self.findings(strict=True, code=3), [('shared-file', 'ReferanceFiles\\A.TXT')])

    def test_history_and_dates(self):
        self.make(''.join(f'[FILE_HISTORY_{n}]\nTime={time}\n' for n, time in enumerate(
            ('2024-01-02 00:00:00', 'yesterday', '2024-01-01 00:00:00', '2024-01-03 00:00:00', '9000-01-01 00:00:00'), 1)))
        self.assertEqual([code for code, _ in self.findings(strict=True, code=3)], ['history-order', 'future-date'])

    def test_an_old_version_is_a_note(self):
        with zipfile.ZipFile(self.work / 'p.mxov', 'w') as archive:
            archive.writestr('mxinfo.ini', '[FILEINFO]\nMaxtlreVersion=Example 2019\n')
        self.assertEqual(self.findings(strict=True), [('old-version', '')])
        _, _, errors = self.run_program('check', 'p.mxov', '--strict')
        self.assertRegex(errors, r'\Anote: .*2021.*\n\Z')

    def test_paths_that_lead_elsewhere_are_errors(self):
        self.make('Thumbnail=..\\a.bmp\n[REFERANCE_FILE_1]\nIsReferencedFile=YES\nFilePath=\\\\host\\a.pdf\n')
        self.assertEqual(self.findings(code=1), [('leaves-folder', '..\\a.bmp'), ('other-computer', '\\\\host\\a.pdf')])

    def test_damage_is_an_error(self):
        self.make('', files=['a.bin'])
        package = self.work / 'p.mxov'
        content = bytearray(package.read_bytes())
        content[content.index(b'a.bin') + 6] ^= 0x10
        package.write_bytes(content)
        self.assertEqual(self.findings(code=1), [('damaged', '')])
        self.assertIn('"p.mxov": entry "a.bin"', self.run_program('check', 'p.mxov', '--strict')[2])


if __name__ == '__main__':
    unittest.main(verbosity=2)
