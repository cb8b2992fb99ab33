"""A test case that runs the built package command line in a folder of its own."""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from packageprogram import COMMAND
from wineprogram import windows_path  # noqa: F401

ROOT = pathlib.Path(__file__).resolve().parents[2]
WINE_LINE = re.compile(r'^[0-9a-f]{4}:(?:err|warn|fixme):.*\n', re.MULTILINE)


class PackageCase(unittest.TestCase):
    def setUp(self):
        self.work = pathlib.Path(tempfile.mkdtemp(prefix='mxovpkg-test-'))
        self.addCleanup(shutil.rmtree, self.work)

    def start(self, *arguments):
        """A running program. Its output goes to files, since what Wine leaves running would hold a pipe open."""
        files = [self.enterContext(tempfile.TemporaryFile()) for _ in ('output', 'errors')]
        process = subprocess.Popen([*COMMAND, *map(str, arguments)], cwd=self.work,
                                   stdin=subprocess.DEVNULL, stdout=files[0], stderr=files[1])
        return process, files

    @staticmethod
    def finish(process, files):
        """Waits for its end; gives its exit code and what it wrote. What Wine says of the machine is printed."""
        code = process.wait(timeout=120)
        texts = []
        for file in files:
            file.seek(0)
            texts.append(file.read().decode('utf-8').replace('\r\n', '\n'))
        output, errors = texts
        print(*WINE_LINE.findall(errors), sep='', end='', file=sys.stderr)
        return code, output, WINE_LINE.sub('', errors)

    def run_program(self, *arguments):
        return self.finish(*self.start(*arguments))

    def succeed(self, *arguments):
        code, output, errors = self.run_program(*arguments)
        self.assertEqual((code, errors), (0, ''), errors)
        return output

    def fail_with(self, expected_code, *arguments):
        """Runs, expects the code and exactly one line on standard error, and gives that line."""
        code, output, errors = self.run_program(*arguments)
        self.assertEqual((code, output), (expected_code, ''), errors)
        self.assertRegex(errors, r'\Amxovpkg: [^\r\n]+\n\Z')
        return errors

    def write(self, name, content=b'', modified=None):
        path = self.work / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        if modified is not None:
            os.utime(path, (modified, modified))
        return path

    def tree(self, folder):
        root = self.work / folder
        return {str(p.relative_to(root)): (p.read_bytes(), int(p.stat().st_mtime)) if p.is_file() else None
                for p in root.rglob('*')}
