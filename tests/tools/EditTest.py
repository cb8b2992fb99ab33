#!/usr/bin/env python3
"""Adds, removes and describes documents with the built package command line, in packages that other tools made."""
import json
import os
import struct
import subprocess
import unittest
import zipfile

from packagecase import PackageCase, windows_path
from packagefile import sections_of

TIME = 981173106  # 2001-02-03 04:05:06


class EditTest(PackageCase):
    def setUp(self):
        super().setUp()
        self.write('folder/mxinfo.ini', (
            '[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\nGCode=NC\\10.nc\r\nSetupSheets=Sheets\\a.html\r\n'
            '[REFERANCE_FILE_1]\r\nIsReferencedFile=NO\r\nDescription=\u00e4lt\r\nFilePath=ReferanceFiles\\plan.pdf\r\n'
            '[REFERANCE_FILE_3]\r\nIsReferencedFile=YES\r\nFilePath=C:\\docs\\plan.pdf\r\n'
            '[FILE_HISTORY_1]\r\nOperation=Created\r\nTime=2024-05-15 09:40:12\r\nBy=Anna\r\nRemarks=\r\n').encode())
        for name in ('NC/10.nc', 'NC/20.nc', 'Sheets/a.html', 'ReferanceFiles/plan.pdf'):
            self.write('folder/' + name, name.encode(), TIME)
        subprocess.run(['zip', '-q', '-r', '../p.mxov', '.'], cwd=self.work / 'folder', check=True)
        self.package = self.work / 'p.mxov'

    def sections(self):
        return sections_of(self.package)

    def names(self):
        with zipfile.ZipFile(self.package) as archive:
            self.assertIsNone(archive.testzip())
            return sorted(name for name in archive.namelist() if not name.endswith('/'))

    def expect_unchanged(self, code, *arguments):
        """The reason why a command ends with a code and changes nothing."""
        before = self.tree('.')
        line = self.fail_with(code, *arguments)
        self.assertEqual(self.tree('.'), before)
        return line

    def test_a_hard_link_that_is_lost_is_reported(self):
        other = self.work / 'other.mxov'
        os.link(self.package, other)
        before = other.read_bytes()
        code, _, errors = self.run_program('set', 'p.mxov', 'MaxtlreVersion=Example 2025')
        self.assertEqual((code, errors), (0, 'warning: replacing the package loses its other hard links\n'))
        self.assertEqual(other.read_bytes(), before)
        self.assertEqual(self.sections()['FILEINFO']['MaxtlreVersion'], 'Example 2025')

    def test_add_copies(self):
        self.write('new/a.txt', b'one', TIME)
        self.write('new/\u56f3.txt', b'two', TIME)
        self.assertEqual(self.succeed('add', 'p.mxov', 'new/a.txt', 'new/\u56f3.txt', '--description', 'd'),
                         'added ReferanceFiles\\a.txt\nadded ReferanceFiles\\\u56f3.txt\n')
        sections = self.sections()
        for number, name in ((4, 'a.txt'), (5, '\u56f3.txt')):
            self.assertEqual(sections[f'REFERANCE_FILE_{number}'],
                             {'IsReferencedFile': 'NO', 'Description': 'd', 'Timestamp': '2001-02-03 04:05:06',
                              'FilePath': 'ReferanceFiles\\' + name})
        self.assertEqual(sections['FILE_HISTORY_2']['Operation'], 'Added documents')
        self.assertEqual(sections['REFERANCE_FILE_1']['Description'], '\u00e4lt')
        with zipfile.ZipFile(self.package) as archive:
            self.assertEqual(archive.read('ReferanceFiles/\u56f3.txt'), b'two')
            self.assertEqual(archive.read('NC/20.nc'), b'NC/20.nc')

    def test_add_of_each_kind(self):
        for name in ('part.step', 'link.pdf', '30.nc', 'b.pdf'):
            self.write(name, name.encode(), TIME)
        self.succeed('add', 'p.mxov', 'part.step', '--as', 'part')
        self.succeed('add', 'p.mxov', 'link.pdf', '--as', 'link')
        self.succeed('add', 'p.mxov', '30.nc', '--as', 'gcode', '--description', 'finishing')
        self.succeed('add', 'p.mxov', 'b.pdf', '--as', 'sheet')
        sections = self.sections()
        self.assertEqual(sections['FILEINFO'], {
            'MaxtlreVersion': 'Example 2024', 'GCode': 'NC\\10.nc;NC\\30.nc', 'GCodeFileDescription': 'finishing',
            'SetupSheets': 'Sheets\\a.html', 'CADFilePath': windows_path(self.work / 'part.step'),
            'CADFileLastModifiedTime': '2001-02-03 04:05:06'})
        self.assertEqual(sections['REFERANCE_FILE_4'],
                         {'IsReferencedFile': 'YES', 'Description': '-', 'Timestamp': '2001-02-03 04:05:06',
                          'FilePath': windows_path(self.work / 'link.pdf')})
        self.assertEqual(self.names(), ['NC/10.nc', 'NC/20.nc', 'NC/30.nc', 'ReferanceFiles/plan.pdf', 'Sheets/a.html',
                                        'Sheets/b.pdf', 'mxinfo.ini'])

    def test_a_package_from_nothing(self):
        self.write('new/a.nc', b'G0')
        self.write('new/a.xml', b'<a/>')
        (self.work / 'empty').mkdir()
        self.succeed('create', 'empty', 'new.mxov')
        self.package = self.work / 'new.mxov'
        self.succeed('set', 'new.mxov', 'MaxtlreVersion=Example 2024', '--no-history')
        self.succeed('add', 'new.mxov', 'new/a.nc', '--as', 'gcode', '--no-history')
        self.succeed('add', 'new.mxov', 'new/a.xml', '--as', 'sheet', '--no-history')
        self.assertEqual(self.sections(), {'FILEINFO': {'MaxtlreVersion': 'Example 2024', 'GCode': 'GCode\\a.nc',
                                                        'SetupSheets': 'SetupSheets\\a.xml'}})
        output = self.succeed('check', 'new.mxov')
        self.assertIn('a.nc  1 KB', output)
        self.assertIn('a.xml  1 KB', output)

    def test_add_refuses_what_is_there_unless_it_replaces(self):
        self.write('plan.pdf', b'newer', TIME)
        self.assertIn('already has "ReferanceFiles\\plan.pdf"', self.expect_unchanged(1, 'add', 'p.mxov', 'plan.pdf'))
        self.succeed('add', 'p.mxov', 'plan.pdf', '--replace')
        section = self.sections()['REFERANCE_FILE_1']
        self.assertEqual((section['Description'], section['Timestamp']), ('\u00e4lt', '2001-02-03 04:05:06'))
        self.assertNotIn('REFERANCE_FILE_4', self.sections())
        with zipfile.ZipFile(self.package) as archive:
            self.assertEqual(archive.read('ReferanceFiles/plan.pdf'), b'newer')

    def test_add_refuses_as_a_whole(self):
        self.write('good.txt', b'good')
        self.write('a.docx', b'word')
        self.assertIn('"gone.txt"', self.expect_unchanged(1, 'add', 'p.mxov', 'good.txt', 'gone.txt'))
        self.assertIn('is a folder', self.expect_unchanged(1, 'add', 'p.mxov', 'folder'))
        self.assertIn('setup sheet', self.expect_unchanged(1, 'add', 'p.mxov', 'a.docx', '--as', 'sheet'))
        self.assertIn('"gone.mxov"', self.expect_unchanged(1, 'add', 'gone.mxov', 'good.txt'))
        for words in (['add', 'p.mxov'], ['add', 'p.mxov', 'good.txt', '--as', 'film'], ['set', 'p.mxov', 'GCode'],
                      ['add', 'p.mxov', 'good.txt', '--kind', 'copy'], ['remove', 'p.mxov'], ['history']):
            self.assertIn('see mxovpkg --help', self.expect_unchanged(2, *words))

    def test_remove(self):
        self.assertEqual(self.succeed('remove', 'p.mxov', '3', '10.nc', 'a.html'),
                         'removed C:\\docs\\plan.pdf\nremoved NC\\10.nc\nremoved Sheets\\a.html\n')
        sections = self.sections()
        self.assertNotIn('REFERANCE_FILE_3', sections)
        self.assertEqual((sections['FILEINFO']['GCode'], sections['FILEINFO']['SetupSheets']), ('NC\\20.nc', ''))
        self.assertEqual(self.names(), ['NC/20.nc', 'ReferanceFiles/plan.pdf', 'mxinfo.ini'])
        self.succeed('remove', 'p.mxov', 'referance_file_1')
        self.assertEqual(self.names(), ['NC/20.nc', 'mxinfo.ini'])

    def test_remove_keeps_a_copy_that_another_document_shows(self):
        self.succeed('set', 'p.mxov', 'REFERANCE_FILE_3/IsReferencedFile=NO',
                     'REFERANCE_FILE_3/FilePath=ReferanceFiles\\PLAN.pdf')
        self.succeed('remove', 'p.mxov', '3')
        self.assertIn('ReferanceFiles/plan.pdf', self.names())
        self.succeed('remove', 'p.mxov', '1')
        self.assertNotIn('ReferanceFiles/plan.pdf', self.names())

    def test_remove_refuses_what_is_not_clear(self):
        self.assertIn('names 2 documents', self.expect_unchanged(1, 'remove', 'p.mxov', 'plan.pdf'))
        self.assertIn('no document "mxinfo.ini"', self.expect_unchanged(1, 'remove', 'p.mxov', '1', 'mxinfo.ini'))

    def test_set(self):
        self.succeed('set', 'p.mxov', 'cadfiledescription= two "words" = \u2713 ', 'REFERANCE_FILE_1/Description=')
        sections = self.sections()
        self.assertEqual(sections['FILEINFO']['CADFileDescription'].strip('"'), ' two "words" = \u2713 ')
        self.assertEqual(sections['REFERANCE_FILE_1']['Description'], '')
        for name in ('Foo=1', 'REFERANCE_FILE_2/Description=x', 'FILEINFO/FilePath=x', 'NOTES/Text=x'):
            self.expect_unchanged(1, 'set', 'p.mxov', name)

    def test_history(self):
        self.succeed('set', 'p.mxov', 'CADFileDescription=x', '--remarks', 'second')
        lines = self.succeed('history', 'p.mxov').splitlines()
        self.assertEqual(lines[0], '2024-05-15 09:40:12  Anna          Created')
        self.assertRegex(lines[1], r'^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d  \S+( \S+)* +Changed properties \(second\)$')
        self.assertEqual(lines[2], '2 entries')
        entries = json.loads(self.succeed('history', 'p.mxov', '--json'))['history']
        self.assertEqual(entries[0], {'section': 'FILE_HISTORY_1', 'operation': 'Created', 'time': '2024-05-15 09:40:12',
                                      'by': 'Anna', 'remarks': ''})
        self.assertEqual(entries[1]['remarks'], 'second')

    def test_list_as_json(self):
        self.succeed('create', 'folder', 'p.mxov')
        listing = json.loads(self.succeed('list', 'p.mxov', '--json'))
        self.assertEqual(listing['file'], 'p.mxov')
        with zipfile.ZipFile(self.package) as archive:
            for entry, info in zip(listing['entries'], archive.infolist(), strict=True):
                self.assertEqual((entry['name'].replace('\\', '/'), entry['size'], entry['packedSize'], entry['crc32'],
                                  entry['folder']),
                                 (info.filename, info.file_size, info.compress_size, info.CRC, False))
        self.assertEqual(listing['entries'][1]['modified'], '2001-02-03T04:05:06Z')

    def test_data_that_another_tool_packed_larger(self):
        noise = os.urandom(100_000)
        with zipfile.ZipFile(self.package, 'w', zipfile.ZIP_DEFLATED) as archive:
            archive.writestr('mxinfo.ini', '[FILEINFO]\r\n')
            archive.writestr('noise.bin', noise)
            self.assertGreater(archive.getinfo('noise.bin').compress_size, len(noise))
        self.succeed('set', 'p.mxov', 'CADFileDescription=x')
        with zipfile.ZipFile(self.package) as archive:
            self.assertEqual(archive.read('noise.bin'), noise)
            self.assertEqual(archive.getinfo('noise.bin').compress_size, len(noise))

    def test_a_read_only_package_stays(self):
        self.package.chmod(0o444)
        self.assertIn('p.mxov', self.expect_unchanged(1, 'set', 'p.mxov', 'CADFileDescription=x'))

    def test_ten_thousand_documents(self):
        information = '[FILEINFO]\r\nMaxtlreVersion=Example 2024\r\n' + ''.join(
            f'[REFERANCE_FILE_{n}]\r\nIsReferencedFile=YES\r\nFilePath=C:\\old\\{n}.pdf\r\n' for n in range(1, 10_001))
        with zipfile.ZipFile(self.package, 'w') as archive:
            archive.writestr('mxinfo.ini', information)
            for number in range(10_000):
                archive.writestr(f'ReferanceFiles/{number}.txt', str(number))
        self.assertIn('10000 links', self.succeed('relink', 'p.mxov', '--from', 'C:\\old', '--to', '\\\\host\\new'))
        self.write('one.txt', b'1')
        self.succeed('add', 'p.mxov', 'one.txt')
        sections = self.sections()
        self.assertEqual(sections['REFERANCE_FILE_10000']['FilePath'], '\\\\host\\new\\10000.pdf')
        self.assertEqual(sections['REFERANCE_FILE_10001']['FilePath'], 'ReferanceFiles\\one.txt')
        self.assertEqual(len(self.names()), 10_002)

    def test_thumbnail(self):
        small, large = (b'BM' + struct.pack('<IHHI', 14 + size, 0, 0, 14) + bytes(size) for size in (10, 2000))
        self.write('a.bmp', small)
        self.write('b.bmp', large)
        self.assertEqual(self.succeed('thumbnail', 'p.mxov', '--set', 'a.bmp'), 'set Preview\\a.bmp\n')
        self.assertEqual(self.sections()['FILEINFO']['Thumbnail'], 'Preview\\a.bmp')
        self.assertEqual(self.sections()['FILE_HISTORY_2']['Operation'], 'Changed preview')
        self.succeed('thumbnail', 'p.mxov', '--extract', 'out.bmp')
        self.assertEqual((self.work / 'out.bmp').read_bytes(), small)
        self.assertEqual(self.succeed('thumbnail', 'p.mxov', '--set', 'b.bmp', '--no-history'), 'set Preview\\a.bmp\n')
        self.assertNotIn('FILE_HISTORY_3', self.sections())
        self.assertEqual(self.succeed('thumbnail', 'p.mxov', '--extract', 'out.bmp'),
                         'extracted Preview\\a.bmp to out.bmp\n')
        self.assertEqual((self.work / 'out.bmp').read_bytes(), large)
        self.assertEqual(list(self.work.glob('*new*')), [])

    def test_thumbnail_refuses_what_is_no_preview(self):
        self.write('a.bmp', b'BM' + struct.pack('<IHHI', 24, 0, 0, 14) + bytes(10))
        self.write('cut.bmp', b'BM' + struct.pack('<IHHI', 24, 0, 0, 14))
        self.write('text.bmp', b'a text of more than fourteen bytes')
        for name in ('cut.bmp', 'text.bmp'):
            self.assertIn(f'"{name}" is no bitmap file', self.expect_unchanged(1, 'thumbnail', 'p.mxov', '--set', name))
        self.assertIn('"gone.bmp"', self.expect_unchanged(1, 'thumbnail', 'p.mxov', '--set', 'gone.bmp'))
        self.assertIn('has no preview', self.expect_unchanged(1, 'thumbnail', 'p.mxov', '--extract', 'out.bmp'))
        self.succeed('thumbnail', 'p.mxov', '--set', 'a.bmp')
        self.assertIn('no\\out.bmp', self.expect_unchanged(1, 'thumbnail', 'p.mxov', '--extract', 'no\\out.bmp'))
        self.succeed('set', 'p.mxov', 'Thumbnail=')
        self.assertIn('"Preview\\a.bmp"', self.expect_unchanged(1, 'thumbnail', 'p.mxov', '--set', 'a.bmp'))
        for words in ([], ['--set', 'a.bmp', '--extract', 'b.bmp'], ['--extract', 'b.bmp', '--no-history']):
            self.assertIn('see mxovpkg --help', self.expect_unchanged(2, 'thumbnail', 'p.mxov', *words))


if __name__ == '__main__':
    unittest.main(verbosity=2)
