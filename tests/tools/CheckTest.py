#!/usr/bin/env python3
"""What `mxovpkg check --strict` and `--json` find."""
import json
import unittest
import zipfile

from packagecase import PackageCase, windows_path

TIME = 981173106  # 2001-02-03 04:05:06


class CheckTest(PackageCase):
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
