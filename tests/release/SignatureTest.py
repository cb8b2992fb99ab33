#!/usr/bin/env python3
"""Signing with a certificate made here."""
import pathlib
import subprocess
import tempfile
import unittest
import zipfile

from releasecase import ARCHIVE, VERSION, make

SIGNED = ('.dll', '.exe', '.ocx')


class SignatureTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.key, cls.certificate = cls.folder / 'key.pem', cls.folder / 'certificate.pem'
        subprocess.run(['openssl', 'req', '-x509', '-newkey', 'rsa:2048', '-nodes', '-days', '3650', '-subj', '/CN=Test',
                        '-addext', 'extendedKeyUsage=codeSigning', '-keyout', cls.key, '-out', cls.certificate],
                       check=True, capture_output=True)

    def make(self, name, **environment):
        return make(self.folder / name, **{key: str(value) for key, value in environment.items()})

    def verify(self, path):
        ended = subprocess.run(['osslsigncode', 'verify', '-CAfile', self.certificate, '-in', path], capture_output=True,
                               text=True, check=False)
        return ended.returncode == 0, ended.stdout + ended.stderr

    def test_programs_libraries_and_installer_are_signed(self):
        ended = self.make('signed', MXOV_SIGN_CERTIFICATE=self.certificate, MXOV_SIGN_KEY=self.key)
        self.assertEqual(ended.returncode, 0, ended.stderr)
        out = self.folder / 'signed'
        paths = [out / f'mxov-{VERSION}-win64.msi']
        for archive in (ARCHIVE, f'mxov-{VERSION}-sdk.zip'):
            with zipfile.ZipFile(out / archive) as file:
                file.extractall(self.folder / 'files')
        paths += [path for path in (self.folder / 'files').rglob('*') if path.suffix in SIGNED]
        self.assertGreaterEqual(len(paths), 10, paths)
        for path in paths:
            valid, said = self.verify(path)
            self.assertTrue(valid, f'{path.name}: {said}')
        changed = self.folder / 'changed.exe'
        data = bytearray(next(path for path in paths if path.name == 'viewer.exe').read_bytes())
        data[len(data) // 2] ^= 1
        changed.write_bytes(data)
        self.assertFalse(self.verify(changed)[0], 'the check can fail')

    def test_the_same_certificate_gives_the_same_bytes(self):
        for name in ('one', 'two'):
            ended = self.make(name, MXOV_SIGN_CERTIFICATE=self.certificate, MXOV_SIGN_KEY=self.key)
            self.assertEqual(ended.returncode, 0, ended.stderr)
        sums = [(self.folder / name / 'SHA256SUMS').read_text(encoding='ascii') for name in ('one', 'two')]
        self.assertEqual(*sums)

    def test_half_a_certificate_is_refused(self):
        ended = self.make('half', MXOV_SIGN_CERTIFICATE=self.certificate)
        self.assertEqual((ended.returncode, ended.stderr),
                         (1, 'release: MXOV_SIGN_CERTIFICATE and MXOV_SIGN_KEY go together\n'))
        self.assertFalse((self.folder / 'half').exists())

    def test_a_certificate_that_is_none_is_refused(self):
        ended = self.make('none', MXOV_SIGN_CERTIFICATE=self.key, MXOV_SIGN_KEY=self.key)
        self.assertEqual(ended.returncode, 1)
        self.assertIn('cannot be signed', ended.stderr)


if __name__ == '__main__':
    unittest.main(verbosity=2)
