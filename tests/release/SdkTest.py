#!/usr/bin/env python3
"""The kit for host makers: its hosts are built from the unpacked kit alone and run beside the unpacked control."""
import pathlib
import py_compile
import shutil
import subprocess
import unittest
import zipfile

import freepascal
from releasecase import VERSION, ReleaseCase
from wineprogram import run_wine, windows_path

COMPILER = 'x86_64-w64-mingw32-{}-posix'
STRICT = ('-Wall', '-Wextra', '-Werror', '-municode', '-static')
LIBRARIES = ('-lole32', '-loleaut32', '-luuid')


class SdkTest(ReleaseCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        with zipfile.ZipFile(cls.out / f'mxov-{VERSION}-sdk.zip') as archive:
            archive.extractall(cls.folder)
        cls.kit = cls.folder / f'mxov-{VERSION}-sdk'
        cls.package = cls.folder / 'package'
        run_wine(windows_path(cls.unpacked / 'mxovpkg.exe'), 'extract',
                 windows_path(cls.unpacked / 'samples/bracket.mxov'), windows_path(cls.package)).expect()

    def build(self, source, *words, language='gcc'):
        """Builds a host into the folder of the control; returns its path as Wine programs see it."""
        program = self.unpacked / f'{pathlib.Path(source).stem}.exe'
        subprocess.run([COMPILER.format(language), *STRICT, '-I', self.kit / 'include', self.kit / source, '-o', program,
                        *words, *LIBRARIES], check=True)
        return windows_path(program)

    def paths(self):
        return f'{windows_path(self.package)}\\', f'{windows_path(self.folder)}\\saved.mxov'

    def test_the_page_names_every_file_that_a_maker_uses(self):
        page = (self.kit / 'README.md').read_text(encoding='utf-8')
        self.assertIn(f'version {VERSION}', page)
        for path in self.kit.rglob('*'):
            name = path.relative_to(self.kit).as_posix()
            if path.is_file() and name.startswith(('hosts/', 'include/', 'typelib/MXOVDocView.tlb', 'wix/')):
                self.assertTrue(name in page or f'`{path.name}`' in page, name)

    def test_the_host_in_c(self):
        host = self.build('hosts/c/host.c')
        self.assertEqual(run_wine(host, *self.paths(), '/once').expect().output,
                         'LoadFile 00000000\nfirst G-code file: op10-face-pocket.nc\nunsaved changes: 0\n')
        folder, package = self.paths()
        self.assertIn('op10-face-pocket.nc', run_wine(host, folder.rstrip('\\'), package, '/once').expect().output)
        self.assertIn('usage: host', run_wine(host).expect(2).errors)

    def test_the_hosts_in_cpp(self):
        for name, expected in (('AtlHost', 'LoadFile 0, Close 0\n'),
                               ('SiteHost', 'DoVerb 0, LoadFile 0, SetObjectRects 0\n')):
            host = self.build(f'hosts/cpp/{name}.cpp', '-latl', language='g++')
            self.assertEqual(run_wine(host, *self.paths()).expect().output, expected)

    def test_the_hosts_without_registration(self):
        host = self.build('hosts/cpp/SideBySideHost.cpp', '-latl', language='g++')
        manifest = windows_path(self.kit / 'manifest/MXOVDocViewCtrl.manifest')
        shutil.copy(self.kit / 'manifest/MXOVDocViewCtrl.manifest', self.unpacked / 'own.manifest')
        self.assertIn('ProgID 0', run_wine(host, windows_path(self.unpacked / 'own.manifest')).expect().output, manifest)

    def test_the_scripts(self):
        folder, _ = self.paths()
        for name, expected in (('host.js', f'InputParameter: {folder}\n'), ('host.vbs', f'_DMXOVDocView: {folder}\n')):
            script = windows_path(self.kit / 'hosts/script' / name)
            self.assertEqual(run_wine('cscript', '//nologo', script, folder).expect().output, expected)

    def test_the_host_in_pascal(self):
        units = self.folder / 'units'
        units.mkdir()
        program = self.folder / 'pascal.exe'
        freepascal.build(self.kit / 'hosts/pascal/host.pas', program, units)
        folder, _ = self.paths()
        self.assertEqual(run_wine(windows_path(program), folder).expect().output, f'{folder}\n')
        run_wine(windows_path(program)).expect(2)

    def test_the_probe_logs_both_directions(self):
        shutil.copy(self.kit / 'probe/probe.exe', self.unpacked)
        probe = windows_path(self.unpacked / 'probe.exe')
        whole = run_wine(probe, *self.paths()).expect().output
        for line in ('control beside this program', 'host > control  QueryInterface(IPersistStreamInit)',
                     'host > control  IOleObject::SetClientSite(site)',
                     'control > host  IOleInPlaceSite::OnInPlaceActivate  00000000',
                     'control > host  IOleInPlaceUIWindow::SetActiveObject(object)', 'host > control  end of LoadFile  00000000',
                     'control > host  IOleControlSite::OnFocus(TRUE)', 'unsaved changes: 0', 'references left: 0'):
            self.assertIn(line, whole)
        for option, line in (('/no-frame', 'SetActiveObject'), ('/no-control-site', 'IOleControlSite::'),
                             ('/no-ambients', 'IDispatch::Invoke(ambient')):
            self.assertIn(line, whole)
            self.assertNotIn(line, run_wine(probe, *self.paths(), option).expect().output)
        self.assertIn('probe FOLDER', run_wine(probe, '/unknown').expect(2).errors)

    def test_the_header_serves_c_and_cpp(self):
        source = self.folder / 'header.c'
        source.write_text('#define COBJMACROS\n#include <mxovhost.h>\n#include <MXOVDocView.h>\n', encoding='ascii')
        for language, kind in (('gcc', 'c'), ('g++', 'c++')):
            subprocess.run([COMPILER.format(language), '-x', kind, '-Wall', '-Wextra', '-Wno-unused-function', '-Werror',
                            '-fsyntax-only', '-I', self.kit / 'include', source], check=True)

    def test_the_fragment_installs_the_control(self):
        host = self.folder / 'host.wxs'
        host.write_text('''<?xml version="1.0"?>
<Wix xmlns="http://schemas.microsoft.com/wix/2006/wi">
  <Product Id="{0B6A2E3E-3B52-4B0A-8C55-1B7E3A8C9D01}" Name="Host" Language="1033" Version="1.0.0" Manufacturer="Maker"
           UpgradeCode="{0B6A2E3E-3B52-4B0A-8C55-1B7E3A8C9D02}">
    <Package InstallerVersion="500" Compressed="yes"/>
    <Media Id="1" Cabinet="host.cab" EmbedCab="yes"/>
    <Directory Id="TARGETDIR" Name="SourceDir"><Directory Id="INSTALLDIR" Name="Host"/></Directory>
    <Feature Id="Host" Level="1"><ComponentGroupRef Id="MXOVDocViewCtrl"/></Feature>
  </Product>
</Wix>
''', encoding='utf-8')
        package = self.folder / 'host.msi'
        subprocess.run(['wixl', '-a', 'x64', '-D', f'MxovFolder={self.unpacked.name}', '-o', package, host,
                        shutil.copy(self.kit / 'wix/MXOVDocViewCtrl.wxs', self.folder)], check=True, cwd=self.folder)
        listed = subprocess.run(['msiinfo', 'export', package, 'File'], check=True, capture_output=True, text=True).stdout
        for name in ('MXOVDocViewCtrl.ocx', 'MXOVDocViewCtrl.manifest', 'mxovshare.dll'):
            self.assertIn(name, listed)

    def test_the_python_host_is_well_formed(self):
        py_compile.compile(str(self.kit / 'hosts/python/host.py'), cfile=str(self.folder / 'host.pyc'), doraise=True)


if __name__ == '__main__':
    unittest.main(verbosity=2)
