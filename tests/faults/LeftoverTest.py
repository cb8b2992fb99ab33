#!/usr/bin/env python3
"""Errors at every step of an edit and of a save that find what a program left there when it was killed."""
import unittest

from laboratory import IO_ERROR, NO_SPACE, Laboratory
from plainpackage import read_package

INFORMATION = b'[FILEINFO]\r\nGCode=a.nc\r\n[REFERANCE_FILE_1]\r\nDescription=old text\r\n'
EDITED = INFORMATION.replace(b'old text', b'a new text')
REST = b'; of a longer file\r\n[REFERANCE_FILE_9]\r\nDescription=never there\r\n' * 2000
MOST_CALLS = 30


class LeftoverTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.lab = Laboratory()
        cls.addClassCleanup(cls.lab.close)

    def play(self, action):
        """Two acts in each of many folders; an error hits the first. Gives the folders and their packages."""
        place = self.lab.root / action
        place.mkdir()
        faults = [(mode, target) for mode in (NO_SPACE, IO_ERROR) for target in range(1, MOST_CALLS + 1)]
        scenes = []
        for number in range(len(faults)):
            folder, package = place / f'folder-{number}', place / f'p.mxov-{number}'
            folder.mkdir()
            (folder / 'mxinfo.ini').write_bytes(INFORMATION)
            for path in (folder / 'mxinfo.ini', package):
                path.with_name(path.name + '.mxov-new').write_bytes(REST)
            scenes.append((folder, package))
        outcome = self.lab.drive(action, place / 'folder', place / 'p.mxov', *(word for fault in faults for word in fault))
        self.assertEqual((outcome.code, len(outcome.lines)), (0, len(faults)), outcome)
        fired = sum(act.fired for act in outcome.acts())
        self.assertGreater(fired, 10)
        self.assertLess(fired, len(faults), 'there are more calls')
        return scenes

    def test_edits(self):
        for folder, _ in self.play('edit'):
            first = folder.with_name(folder.name + '.first.ini').read_bytes()
            self.assertIn(first, (INFORMATION, EDITED), folder)
            self.assertEqual((folder / 'mxinfo.ini').read_bytes(), EDITED + b'Again=a new text\r\n', folder)

    def test_saves(self):
        for folder, package in self.play('save'):
            first = package.with_name(package.name + '.first')
            if first.exists():
                self.assertEqual(read_package(first)[0].count(b'[FILE_HISTORY_'), 1)
            information = (folder / 'mxinfo.ini').read_bytes()
            self.assertTrue(information.startswith(INFORMATION + b'[FILE_HISTORY_1]\r\n'), information)
            self.assertEqual(read_package(package), (information, {}))
            self.assertNotIn(b'never there', package.read_bytes())
            self.assertNotIn(b'never there', information)


if __name__ == '__main__':
    unittest.main(verbosity=2)
