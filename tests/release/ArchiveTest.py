#!/usr/bin/env python3
"""The delivered archive: what is in it, where it comes from, and that it has the same bytes every time."""
import hashlib
import os
import re
import shutil
import struct
import subprocess
import unittest
import zipfile

from releasecase import ARCHIVE, BUILD, ROOT, VERSION, ReleaseCase, make

PROGRAMS = ('MXOVDocViewCtrl.ocx', 'mxovpkg.exe', 'mxovshare.dll', 'viewer.exe')
NUMBERS = [*map(int, VERSION.split('.')), 0]


def link_time(data):
    """The time in the header of a program."""
    header = struct.unpack_from('<I', data, 0x3c)[0]
    return struct.unpack_from('<I', data, header + 8)[0]


def resource_versions(data):
    """The file and product version of a program's version resource."""
    start = data.index(struct.pack('<I', 0xFEEF04BD))
    words = struct.unpack_from('<8H', data, start + 8)
    return [[words[i + 1], words[i], words[i + 3], words[i + 2]] for i in (0, 4)]


def resource_text(data, name):
    """A text of a program's version resource."""
    key = name.encode('utf-16-le') + b'\0\0'
    start = data.index(key) + len(key)
    start += -(start - data.index('VS_VERSION_INFO'.encode('utf-16-le')) + 6) % 4
    return data[start:].decode('utf-16-le', 'replace').lstrip('\0').split('\0')[0]


class ArchiveTest(ReleaseCase):
    def kit(self):
        """{path in the archive: bytes} of what the kit holds."""
        with zipfile.ZipFile(self.out / f'mxov-{VERSION}-sdk.zip') as archive:
            return {name: archive.read(name) for name in archive.namelist()}

    def test_the_archive_holds_the_product_with_its_licences(self):
        names = set(self.delivered())
        self.assertLessEqual({*PROGRAMS, 'MXOVDocViewCtrl.manifest', 'README.txt', 'LICENSE.txt', 'samples/bracket.mxov',
                              'samples/legacy.mxov', 'lang/german/mxovtexts.dll', 'lang/japanese/mxovtexts.dll',
                              'plugins/etc/mx/lang/english/Orvando.chm'}, names)
        built = {path.name for path in (BUILD / 'bin').rglob('*') if path.is_file()}
        self.assertEqual(built - {name.split('/')[-1] for name in names}, set())

    def test_everything_is_what_was_built(self):
        for name, data in self.delivered().items():
            built = BUILD / 'bin' / name.removeprefix('samples/')
            if built.exists():
                self.assertEqual(data, built.read_bytes(), name)

    def test_the_licences_of_what_is_linked_in_are_the_packages_own(self):
        licences = {name: data.decode('utf-8-sig') for name, data in self.delivered().items() if name.startswith('licences/')}
        self.assertEqual({name.split('/')[1] for name in licences},
                         {'gcc-mingw-w64.txt', 'libz-mingw-w64.txt', 'mingw-w64.txt'})
        self.assertIn('Jean-loup Gailly', licences['licences/libz-mingw-w64.txt'])
        self.assertIn('RUNTIME LIBRARY EXCEPTION', licences['licences/gcc-mingw-w64.txt'].upper())
        self.assertIn('winpthreads', licences['licences/mingw-w64.txt'])

    def test_the_manual_page_is_made_from_the_page_of_the_command_line(self):
        page = self.delivered()['docs/mxovpkg.1'].decode('ascii')
        self.assertIn(f'"mxov {VERSION}"', page)
        self.assertIn('.SH EXIT CODES\n', page)
        self.assertNotIn('\r', page)

    def test_the_release_notes_have_the_changes_and_what_was_not_tried(self):
        notes = (self.out / f'mxov-{VERSION}-notes.md').read_text(encoding='utf-8')
        self.assertTrue(notes.startswith(f'# MXOV Document Manager {VERSION}\n'))
        self.assertEqual(notes.count('\n## Added\n'), 1, 'the changes of one version')
        table = re.search(r'\n## What was tried where\n.*?\n\n(\|.*?)\n\n', notes, re.DOTALL)[1]
        page = re.search(r'\n\n(\|.*?)\n\n', (ROOT / 'docs/windows.md').read_text(encoding='utf-8'), re.DOTALL)[1]
        self.assertEqual(table, re.sub(r'\[([^\]]+)\]\([^)]+\)', r'\1', page))
        self.assertIn('cscript //nologo check-windows.js', notes)
        self.assertEqual(re.findall(r'\]\((?!https:)', notes), [])

    def test_the_pages_are_the_site(self):
        folder = f'mxov-{VERSION}-docs'
        with zipfile.ZipFile(self.out / f'{folder}.zip') as archive:
            names = {name.removeprefix(f'{folder}/') for name in archive.namelist()}
        self.assertLessEqual({'index.html', 'host-guide.html', 'windows.html', 'help/english/overview.html', 'images/viewer.png',
                              *(f'{page.stem}.html' for page in ROOT.glob('docs/*.md'))}, names)

    def test_everything_is_small(self):
        self.assertIn(ARCHIVE, {path.name for path in self.out.iterdir()})
        compiler = subprocess.run(['x86_64-w64-mingw32-g++-posix', '-dumpversion'], capture_output=True, text=True, check=True).stdout
        most = 4 if compiler.startswith('12') else 5  # a newer one brings a larger run-time library into each program
        self.assertLess(sum(path.stat().st_size for path in self.out.iterdir()), most * 1024 * 1024)

    def test_the_same_files_give_the_same_bytes(self):
        copy = self.folder / 'other place'
        for folder in ('bin', 'generated', 'sdk'):
            shutil.copytree(BUILD / folder, copy / folder)
        (copy / 'windows').mkdir()
        for name in ('CMakeCache.txt', *(path.name for path in (BUILD / 'windows').glob('*.map'))):
            shutil.copy(BUILD / 'windows' / name, copy / 'windows')
        for path in copy.rglob('*'):
            os.utime(path, (1, 1))
            path.chmod(0o700)
        other = self.folder / 'again'
        # Where ./release runs it: there is a folder of the kit's name.
        ended = make(other, copy, ROOT, TZ='Asia/Tokyo', LC_ALL='C')
        self.assertEqual(ended.returncode, 0, ended.stderr)
        self.assertEqual({path.name: hashlib.sha256(path.read_bytes()).hexdigest() for path in other.iterdir()},
                         {path.name: hashlib.sha256(path.read_bytes()).hexdigest() for path in self.out.iterdir()})

    def test_entries_are_sorted_and_have_one_time(self):
        with zipfile.ZipFile(self.out / ARCHIVE) as archive:
            entries = archive.infolist()
        self.assertEqual([entry.filename for entry in entries], sorted(entry.filename for entry in entries))
        self.assertEqual({entry.date_time for entry in entries}, {(2023, 11, 14, 22, 13, 20)})

    def test_the_sums_are_those_of_the_files(self):
        lines = (self.out / 'SHA256SUMS').read_text(encoding='utf-8').splitlines()
        self.assertEqual(lines, [f'{hashlib.sha256(path.read_bytes()).hexdigest()}  {path.name}'
                                 for path in sorted(self.out.iterdir()) if path.name != 'SHA256SUMS'])

    def test_no_file_names_a_path_or_a_time_of_the_build(self):
        for name, data in [*self.delivered().items(), *self.kit().items()]:
            for path in {str(ROOT), str(BUILD)}:
                self.assertNotIn(path.encode(), data, name)
                self.assertNotIn(path.encode('utf-16-le'), data, name)
            if name.endswith(('.dll', '.exe', '.ocx')):
                self.assertEqual(link_time(data), 0, name)

    def test_every_program_and_library_has_the_projects_version(self):
        checked = {name: data for name, data in {**self.delivered(), **self.kit()}.items()
                   if name.endswith(('.dll', '.exe', '.ocx'))}
        self.assertEqual(len(checked), 13)
        for name, data in checked.items():
            with self.subTest(file=name):
                self.assertEqual(resource_versions(data), [NUMBERS, NUMBERS])
                self.assertEqual(resource_text(data, 'FileVersion'), f'{VERSION}.0')
                self.assertEqual(resource_text(data, 'ProductVersion'), f'{VERSION}.0')
                self.assertEqual(resource_text(data, 'OriginalFilename'), name.split('/')[-1])
                self.assertEqual(resource_text(data, 'ProductName'), 'MXOV Document Manager')

    def test_the_readme_is_for_windows_and_names_the_version(self):
        readme = self.delivered()['README.txt'].decode('utf-8-sig')
        self.assertTrue(readme.startswith(f'MXOV Document Manager {VERSION} '))
        self.assertEqual(readme.count('\n'), readme.count('\r\n'))
        listed = [line.split()[0].replace('\\', '/') for line in readme.splitlines() if re.match(r'  \S+ {2,}', line)]
        self.assertEqual([name for name in listed if not (self.unpacked / name).exists()], [])
        self.assertEqual({name.rstrip('/') for name in listed} | {'README.txt'}, {path.name for path in self.unpacked.iterdir()})

    def test_an_unknown_or_missing_file_is_refused(self):
        copy = self.folder / 'wrong'
        shutil.copytree(BUILD / 'bin', copy / 'bin')
        shutil.copytree(BUILD / 'windows', copy / 'windows', ignore=lambda folder, names: [
            name for name in names if name != 'CMakeCache.txt' and not name.endswith('.map')])
        (copy / 'bin/surprise.dll').write_bytes(b'')
        (copy / 'bin/viewer.exe').unlink()
        ended = make(self.folder / 'nothing', copy)
        self.assertEqual((ended.returncode, ended.stderr), (
            1, 'release: viewer.exe was not built; surprise.dll is not in the list of what is delivered\n'))
        self.assertFalse((self.folder / 'nothing').exists())


if __name__ == '__main__':
    unittest.main(verbosity=2)
