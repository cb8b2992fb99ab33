"""What the tests of the delivery share: everything that is delivered, made from the product as it is built.

releasecase.py FOLDER: makes it in the folder, for the tests that find the folder's name in MXOV_DELIVERED."""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import zipfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / 'tools'))
BUILD = pathlib.Path(os.environ.get('MXOV_BUILD', ROOT / 'build'))
VERSION = re.search(r'^project\(.* VERSION ([0-9.]+)\)', (ROOT / 'CMakeLists.txt').read_text(encoding='utf-8'), re.M)[1]
ARCHIVE = f'mxov-{VERSION}-win64.zip'
MOMENT = '1700000000'


def make(out, build=BUILD, folder=None, **environment):
    """Runs the packing step of a release in a folder; returns how it ended."""
    return subprocess.run([ROOT / 'tools/release/make', build, out], capture_output=True, text=True, check=False, cwd=folder,
                          env={**os.environ, 'SOURCE_DATE_EPOCH': MOMENT, **environment})


def make_sound(out):
    ended = make(out)
    if ended.returncode != 0:
        raise AssertionError(f'making the delivery: {ended.stdout}{ended.stderr}')


class ReleaseCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        made = os.environ.get('MXOV_DELIVERED')
        cls.out = pathlib.Path(made) if made else cls.folder / 'out'
        if not made:
            make_sound(cls.out)
        with zipfile.ZipFile(cls.out / ARCHIVE) as archive:
            archive.extractall(cls.folder)
        cls.unpacked = cls.folder / f'mxov-{VERSION}'

    def delivered(self):
        """{name: bytes} of what the archive holds."""
        return {path.relative_to(self.unpacked).as_posix(): path.read_bytes()
                for path in self.unpacked.rglob('*') if path.is_file()}


if __name__ == '__main__':
    shutil.rmtree(sys.argv[1], ignore_errors=True)
    make_sound(pathlib.Path(sys.argv[1]))
