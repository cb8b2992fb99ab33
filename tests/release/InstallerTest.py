#!/usr/bin/env python3
"""The installer: what it installs, for the user and for the machine, and that removing it leaves nothing."""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest
import zipfile

from releasecase import MOMENT, ROOT, VERSION, ReleaseCase
from viewerdriver import Viewer
from wineprogram import query_registry, run_wine, windows_path

sys.path.insert(0, str(ROOT / 'tools/release'))
import installer  # noqa: E402
from delivery import LANGUAGES  # noqa: E402

DRIVE = pathlib.Path(os.environ['WINEPREFIX']) / 'drive_c'
USER = next(path for path in (DRIVE / 'users').iterdir() if path.name != 'Public')
USER_FOLDER = USER / 'AppData/Local/Programs/MXOV Document Manager'
MACHINE_FOLDER = DRIVE / 'Program Files/MXOV Document Manager'
START_MENU = USER / 'AppData/Roaming/Microsoft/Windows/Start Menu/Programs/MXOV Viewer.lnk'
UNINSTALL = r'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall'
# What the platform itself keeps: its installer's empty keys, its display, and its own settings.
EMPTY_KEYS = re.compile(r'\\Software\\(Classes|Microsoft|Microsoft\\Windows\\CurrentVersion)\\Installer\b', re.IGNORECASE)
SETTINGS = re.compile(r'\\Control\\Video\\|\\Software\\Wine\b', re.IGNORECASE)


def own_folder(name):
    """Replaces a folder that all prefixes share by one of this prefix with the same content."""
    folder = DRIVE / name
    shared = folder.resolve()
    if folder.is_symlink():
        folder.unlink()
        folder.mkdir()
        for path in shared.iterdir():
            (folder / path.name).symlink_to(path)


def registry():
    """{(key, name): value}; a key itself has the name None."""
    file = DRIVE / 'registry.txt'
    run_wine('regedit', '/E', r'C:\registry.txt').expect()
    text = re.sub(r'\\\n +', '', file.read_text(encoding='utf-16').replace('\r\n', '\n'))
    file.unlink()
    values, key = {}, None
    for line in text.splitlines():
        if line.startswith('['):
            key = line[1:-1]
            values[key, None] = ''
        elif '=' in line and key:
            name, _, value = line.partition('=')
            # Wine leaves the separator behind when it removes the last folder of the search path.
            values[key, name] = re.sub(r'(,3b,00)+,00,00$', ',00,00', value) if name == '"PATH"' else value
    return {(key, name): value for (key, name), value in values.items()
            if not (name is None and EMPTY_KEYS.search(key)) and not SETTINGS.search(key)}


def files():
    return {path.relative_to(DRIVE).as_posix(): path.is_file() and path.read_bytes()
            for folder in ('users', 'Program Files', 'ProgramData', 'windows/Installer') for path in (DRIVE / folder).rglob('*')
            if path != USER / 'AppData/Roaming/Microsoft/Installer'}


def registered(values, control):
    """The keys and values of the control's identities in the machine's classes, its file and folder replaced by names."""
    file = windows_name(control).replace('\\', '\\\\')
    folder = file.rpartition('\\\\')[0]
    prefix = r'HKEY_LOCAL_MACHINE\Software\Classes' '\\'
    return {(key[len(prefix):].lower(), name): value.replace(file, 'FILE').replace(f'{folder}\\\\"', 'FOLDER"').replace(folder, 'FOLDER')
            for (key, name), value in values.items()
            if key.startswith(prefix) and re.match(r'(CLSID\\\{(6406FF95|D282CB0E)|Interface\\\{(31B4576C|FB6D0BAA)'
                                                   r'|TypeLib\\\{D14D7A76|MXOVTREETAB\.)', key[len(prefix):], re.IGNORECASE)}


def product_code():
    """The code under which the product is installed; empty if it is not."""
    listed = re.search(r'(\{[^}]+\})\n(?:    .*\n)*?    DisplayName +REG_SZ +MXOV Document Manager\n', query_registry(UNINSTALL, '/s'))
    return listed[1] if listed else ''


def windows_name(path):
    return 'C:\\' + str(path.relative_to(DRIVE)).replace('/', '\\')


class InstallerTest(ReleaseCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        # Nothing is found but what is installed, and the start menu is Wine's own, not this machine's.
        os.environ.pop('WINEPATH', None)
        os.environ['WINEDLLOVERRIDES'] += ';winemenubuilder.exe=d'
        for folder in ('windows', 'windows/Installer', 'Program Files'):
            own_folder(folder)
        cls.package = cls.out / f'mxov-{VERSION}-win64.msi'
        # Brings up Wine's desktop, which writes about the display.
        run_wine('rundll32', 'user32.dll,GetDesktopWindow').expect()

    def msiexec(self, action, *words, package=None):
        run_wine('msiexec', action, package or windows_path(self.package), '/qn', *words).expect()

    def install(self, *words):
        self.msiexec('/i', *words)
        self.addCleanup(self.remove, *words)

    def remove(self, *words):
        """Removes the product if it is there. Windows knows by itself what is installed for the machine; Wine needs the words again."""
        if product_code():
            self.msiexec('/x', *[word for word in words if word.startswith('ALLUSERS')])

    def installed(self, folder):
        return {path.relative_to(folder).as_posix(): path.read_bytes() for path in folder.rglob('*') if path.is_file()}

    def test_it_runs_no_code_of_its_own(self):
        table = subprocess.run(['msiinfo', 'export', self.package, 'CustomAction'], capture_output=True, text=True, check=True)
        actions = [line.split('\t')[:3] for line in table.stdout.splitlines()[3:]]
        self.assertEqual({(kind, target) for _, kind, target in actions}, {('51', 'INSTALLDIR')}, 'only a property is set')

    def test_removing_leaves_neither_files_nor_registry_entries(self):
        for words in ((), ('ALLUSERS=1',)):
            with self.subTest(words=words):
                before = registry(), files()
                self.msiexec('/i', *words)
                self.assertNotEqual(files(), before[1])
                self.remove(*words)
                after = registry(), files()
                for left, there in zip(after, before):
                    self.assertEqual(sorted(left.items() ^ there.items(), key=str), [])

    def test_for_the_user_it_needs_no_place_of_the_machine(self):
        self.install()
        self.assertEqual(self.installed(USER_FOLDER), self.delivered())
        self.assertFalse(MACHINE_FOLDER.exists())
        self.assertTrue(START_MENU.exists())
        self.assertIn('MXOVDocView.Package', query_registry('HKCU\\Software\\Classes\\.mxov', '/ve'))
        self.assertIn(f'"{windows_name(USER_FOLDER)}\\viewer.exe" "%1"',
                      query_registry(r'HKCU\Software\Classes\MXOVDocView.Package\shell\open\command', '/ve'))
        self.assertIn(f'{windows_name(USER_FOLDER)}\\viewer.exe,-2',
                      query_registry(r'HKCU\Software\Classes\MXOVDocView.Package\DefaultIcon', '/ve'))
        self.assertIn(f'"{windows_name(USER_FOLDER)}\\mxovpkg.exe" check "%1"',
                      query_registry(r'HKCU\Software\Classes\MXOVDocView.Package\shell\check\command', '/ve'))
        self.assertIn(windows_name(USER_FOLDER), query_registry(r'HKCU\Environment', '/v', 'PATH'))
        self.assertEqual(query_registry(r'HKLM\Software\Classes\.mxov'), '')

    def test_for_the_machine_it_registers_what_regsvr32_registers(self):
        self.install('ALLUSERS=1')
        self.assertEqual(self.installed(MACHINE_FOLDER), self.delivered())
        self.assertFalse(USER_FOLDER.exists())
        control = MACHINE_FOLDER / 'MXOVDocViewCtrl.ocx'
        rows = registered(registry(), control)
        self.assertIn(windows_name(MACHINE_FOLDER), query_registry(
            r'HKLM\System\CurrentControlSet\Control\Session Manager\Environment', '/v', 'PATH'))
        script = self.folder / 'client.vbs'
        script.write_text('Set control = CreateObject("MXOVTREETAB.MXOVDocViewCtrlVS2015.13")\ncontrol.ClearAllData\n'
                          'WScript.Echo "created"\nWScript.Quit 7\n')
        self.assertEqual(run_wine('cscript', '//nologo', windows_path(script)).expect(7).output, 'created\n')
        self.remove('ALLUSERS=1')
        self.assertEqual(registered(registry(), control), {})
        other = USER / 'MXOVDocViewCtrl.ocx'
        for name in (other.name, 'mxovshare.dll'):
            shutil.copy(self.unpacked / name, USER)
            self.addCleanup((USER / name).unlink)
        run_wine('regsvr32', '/s', windows_name(other)).expect()
        self.addCleanup(lambda: run_wine('regsvr32', '/s', '/u', windows_name(other)).expect())
        self.assertEqual(sorted(rows.items() ^ registered(registry(), other).items(), key=str), [])
        self.assertGreater(len(rows), 30)

    def test_the_installed_viewer_opens_the_installed_sample(self):
        self.install()
        with Viewer(windows_path(USER_FOLDER / 'samples/bracket.mxov'), program=USER_FOLDER / 'viewer.exe') as viewer:
            shown = viewer.wait_for_package('bracket.mxov')
            self.assertEqual([len(shown_list.rows) for shown_list in shown.lists()], [1, 3, 3, 3])
            self.assertEqual(viewer.close(), 0)

    def test_another_folder_can_be_chosen(self):
        folder = DRIVE / 'Tools/Packages'
        self.install(r'INSTALLDIR=C:\Tools\Packages')
        self.assertEqual(self.installed(folder), self.delivered())
        self.assertFalse(USER_FOLDER.exists())
        (folder / 'mxovshare.dll').unlink()
        self.msiexec('/i', 'REINSTALL=ALL', 'REINSTALLMODE=amus')
        self.assertEqual(self.installed(folder), self.delivered(), 'repaired without naming the folder again')
        self.remove()
        self.assertFalse(folder.exists())
        self.assertEqual(query_registry(r'HKCU\Software\MXOVDocView\Installed'), '')

    def test_an_update_stays_in_the_chosen_folder(self):
        folder = DRIVE / 'Tools/Packages'
        self.msiexec('/i', r'INSTALLDIR=C:\Tools\Packages', package=self.older())
        self.install()
        self.assertEqual(self.installed(folder), self.delivered())
        self.assertFalse(USER_FOLDER.exists())

    def test_a_feature_can_be_removed(self):
        self.install()
        self.msiexec('/i', 'REMOVE=CommandLine')
        self.assertEqual(set(self.delivered()) - set(self.installed(USER_FOLDER)), {'docs/mxovpkg.1', 'mxovpkg.exe'})
        self.assertNotIn(windows_name(USER_FOLDER), query_registry(r'HKCU\Environment', '/v', 'PATH'))

    def test_every_feature_and_property_is_documented(self):
        page = (ROOT / 'docs/installing.md').read_text(encoding='utf-8')
        table = subprocess.run(['msiinfo', 'export', self.package, 'Feature'], capture_output=True, text=True, check=True)
        features = {line.split('\t')[0] for line in table.stdout.splitlines()[3:]}
        self.assertEqual(set(re.findall(r'^\| `(\w+)` \|', page, re.MULTILINE)), features)
        used = set(re.findall(r"'([A-Z]+)=", pathlib.Path(__file__).read_text(encoding='utf-8')))
        rows = ''.join(re.findall(r'^\| (`[A-Z]+=.*?) \|', page, re.MULTILINE))
        self.assertEqual(set(re.findall(r'([A-Z]+)=', rows)), used)

    def test_the_control_alone_can_be_chosen(self):
        self.install('ADDLOCAL=Control')
        names = set(self.installed(USER_FOLDER))
        self.assertLess({'MXOVDocViewCtrl.ocx', 'mxovshare.dll', 'lang/german/mxovtexts.dll'}, names)
        self.assertEqual(set(self.delivered()) - names,
                         {'check-windows.js', 'docs/mxovpkg.1', 'viewer.exe', 'mxovpkg.exe', 'samples/bracket.mxov', 'samples/legacy.mxov',
                          *(f'lang/{language}/viewertexts.dll' for language in LANGUAGES)})
        self.assertFalse(START_MENU.exists())
        self.assertEqual(query_registry(r'HKCU\Software\Classes\.mxov'), '')

    def test_the_kit_for_host_makers_can_be_added(self):
        self.install('ADDLOCAL=Control,Sdk')
        with zipfile.ZipFile(self.out / f'mxov-{VERSION}-sdk.zip') as archive:
            kit = {f'sdk/{name.partition("/")[2]}': archive.read(name) for name in archive.namelist()}
        installed = self.installed(USER_FOLDER)
        self.assertEqual({name: data for name, data in installed.items() if name.startswith('sdk/')}, kit)
        self.assertIn('sdk/probe/probe.exe', installed)
        self.assertNotIn('viewer.exe', installed)

    def test_a_repair_restores_a_deleted_file(self):
        self.install()
        (USER_FOLDER / 'mxovshare.dll').unlink()
        self.msiexec('/i', 'REINSTALL=ALL', 'REINSTALLMODE=amus')
        self.assertEqual(self.installed(USER_FOLDER), self.delivered())

    def older(self):
        """The path of an installer of an older version."""
        file = self.folder / 'older.msi'
        file.write_bytes(installer.installer('0.9.0', {**self.delivered(), 'README.txt': b'older'}, {'README.md': b'older'},
                                            int(MOMENT)))
        return windows_path(file)

    def test_a_newer_version_is_not_replaced(self):
        self.install()
        # 1603, of which the exit code has the low byte.
        run_wine('msiexec', '/i', self.older(), '/qn').expect(1603 & 0xff)
        self.assertEqual(self.installed(USER_FOLDER), self.delivered())

    def test_an_older_version_is_replaced(self):
        self.msiexec('/i', package=self.older())
        self.assertEqual((USER_FOLDER / 'README.txt').read_bytes(), b'older')
        self.install()
        self.assertEqual(self.installed(USER_FOLDER), self.delivered())
        listed = re.findall(r'DisplayVersion\s+REG_SZ\s+(\S+)', query_registry(UNINSTALL, '/s'))
        self.assertIn(VERSION, listed)
        self.assertNotIn('0.9.0', listed)


if __name__ == '__main__':
    unittest.main(verbosity=2)
