#!/usr/bin/env python3
"""Power cuts at every step of keeping an earlier version of a package."""
import itertools
import os
import random
import shutil
import signal
import unittest
import zipfile

from laboratory import BUILD, KILL, NO_SPACE, Laboratory

FEWEST_CALLS = 20
STRIDE = 1 if os.environ.get('MXOV_LONG') else 4  # a fault at every call, or at every fourth
PLAN = random.Random(1).randbytes(5_000)
PROGRAMS = [random.Random(number).randbytes(20_000) for number in range(2, 6)]


class VersionFaultTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.lab = Laboratory(BUILD / 'tests' / 'version_driver.exe')
        cls.addClassCleanup(cls.lab.close)
        cls.package = cls.lab.root / 'job.mxov'
        cls.template = cls.lab.home / 'store'
        for program in PROGRAMS[:3]:
            cls.write(program)
            outcome = cls.lab.drive('keep', cls.template, cls.package)
            assert outcome.lines == ['kept'], outcome
        cls.write(PROGRAMS[3])

    @classmethod
    def write(cls, program):
        with zipfile.ZipFile(cls.package, 'w', zipfile.ZIP_DEFLATED) as archive:
            for name, content in {'GCode/a.nc': program, 'mxinfo.ini': b'[FILEINFO]\r\n', 'plan.pdf': PLAN}.items():
                archive.writestr(name, content)

    def programs(self, folder, name):
        """Those of the versions that were unpacked there, the oldest first."""
        restored = sorted(folder.glob(f'{name}-*'))
        for path in restored:
            self.assertEqual((path / 'plan.pdf').read_bytes(), PLAN)
        return [(path / 'GCode/a.nc').read_bytes() for path in restored]

    def check(self, store):
        """All versions are there before the next one is kept, and nothing is left of the one that was not."""
        folder = self.lab.home / 'restored'
        self.lab.source = folder
        folder.mkdir()
        outcome = self.lab.drive('recover', store, self.package)
        count = len(list(folder.glob('before-*')))
        self.assertIn(count, (3, 4), outcome)
        self.assertEqual(outcome.lines, ['restored'] * count + ['kept'] + ['restored'] * 3)
        # Without the new version, with it, or with it in place of the oldest one.
        self.assertIn(self.programs(folder, 'before'), (PROGRAMS[:3], PROGRAMS, PROGRAMS[1:]))
        self.assertEqual(self.programs(folder, 'after'), PROGRAMS[1:])
        names = [path.name for path in store.rglob('*') if path.is_file()]
        self.assertEqual((sum(name.endswith('.ini') for name in names), sum(name.endswith('.files') for name in names)),
                         (3, len(names) - 3), names)
        shutil.rmtree(folder)

    def play(self, mode):
        """Spoils one call after the other; returns how many there were."""
        for target in itertools.count(1, STRIDE):
            store = self.lab.root / f'store-{mode}-{target}'
            shutil.copytree(self.template, store)
            self.lab.arm(mode, target)
            outcome = self.lab.drive('keep', store, self.package)
            with self.subTest(target=target, outcome=outcome):
                if not outcome.fired:
                    self.assertEqual((outcome.code, outcome.lines), (0, ['kept']))
                elif mode == KILL:
                    self.assertEqual((outcome.code, outcome.lines), (-signal.SIGKILL, []))
                else:
                    self.assertEqual((outcome.code, len(outcome.lines)), (0, 1))
                self.check(store)
            shutil.rmtree(store)
            if not outcome.fired:
                return target - 1

    def test_power_cuts(self):
        self.assertGreater(self.play(KILL), FEWEST_CALLS)

    def test_full_disk(self):
        self.assertGreater(self.play(NO_SPACE), FEWEST_CALLS)


if __name__ == '__main__':
    unittest.main(verbosity=2)
