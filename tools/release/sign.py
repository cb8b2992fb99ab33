"""Authenticode signatures, when the release manager has a certificate."""
import os
import pathlib
import subprocess
import tempfile

from delivery import Refused

CERTIFICATE, KEY, TIMESTAMP = 'MXOV_SIGN_CERTIFICATE', 'MXOV_SIGN_KEY', 'MXOV_SIGN_TIMESTAMP_URL'
SIGNED = ('.dll', '.exe', '.msi', '.ocx')


class Signer:
    """Signs with the PEM files that the environment names; without them leaves everything as it is."""

    def __init__(self, moment, environment=os.environ):
        self.certificate, self.key = environment.get(CERTIFICATE), environment.get(KEY)
        if bool(self.certificate) != bool(self.key):
            raise Refused(f'{CERTIFICATE} and {KEY} go together')
        self.time = ['-ts', environment[TIMESTAMP]] if environment.get(TIMESTAMP) else ['-time', str(moment)]

    def signed(self, name, data):
        if not self.certificate or not name.endswith(SIGNED):
            return data
        with tempfile.TemporaryDirectory() as folder:
            plain, done = (pathlib.Path(folder) / step for step in ('plain', 'done'))
            plain.write_bytes(data)
            ended = subprocess.run(['osslsigncode', 'sign', '-h', 'sha256', '-certs', self.certificate, '-key', self.key, '-n',
                                    'MXOV Document Manager', *self.time, '-in', plain, '-out', done],
                                   capture_output=True, text=True, check=False)
            if ended.returncode != 0:
                raise Refused(f'{name} cannot be signed: {(ended.stderr or ended.stdout).strip().splitlines()[-1:]}')
            return done.read_bytes()

    def all_signed(self, files):
        return {name: self.signed(name, data) for name, data in files.items()}
