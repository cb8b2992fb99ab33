#!/usr/bin/env python3
"""The script that takes the screenshots of the pages and the help, and whether the committed ones are what it takes."""
import functools
import pathlib
import struct
import subprocess
import tempfile
import unittest
import zlib

from viewercase import ROOT

DOCS = ROOT / 'docs'
TAKEN_FROM_THE_GALLERY = 'controls-*.png'
DRAWN = DOCS / 'help/images'
MOST_DIFFERENCE_IN_SIZE = 16  # pixels; window managers have different borders
LEAST_SHARE = 0.85  # of equal bytes; fonts differ between distributions


@functools.cache
def lines(picture):
    """The lines of a screenshot, which are stored without filters."""
    width, height = struct.unpack_from('>II', picture, 16)
    start = picture.index(b'IDAT')
    length = struct.unpack_from('>I', picture, start - 4)[0]
    data = zlib.decompress(picture[start + 4:start + 4 + length])
    return [data[(1 + 3 * width) * row + 1:(1 + 3 * width) * (row + 1)] for row in range(height)]


def equal_bytes(one, other):
    """How many bytes at the start of two lines are equal, up to the end of the shorter one."""
    length = min(len(one), len(other))
    differences = int.from_bytes(one[:length]) ^ int.from_bytes(other[:length])
    return differences.to_bytes(length).count(0)


def share_of_equal_bytes(one, other):
    """How much of the area that two pictures have in common is equal."""
    rows = list(zip(lines(one), lines(other)))
    return sum(equal_bytes(*row) for row in rows) / sum(min(map(len, row)) for row in rows)


def size(picture):
    return struct.unpack_from('>II', picture, 16)


class PicturesTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        subprocess.run(['python3', '-B', ROOT / 'tools/pictures/viewer', cls.folder], check=True)
        cls.taken = {path.relative_to(cls.folder).as_posix(): path.read_bytes() for path in cls.folder.rglob('*.png')}

    def test_every_committed_screenshot_is_taken_by_it(self):
        committed = {path.relative_to(DOCS).as_posix() for path in DOCS.rglob('*.png')
                     if not path.match(TAKEN_FROM_THE_GALLERY) and path.parent != DRAWN}
        self.assertEqual(set(self.taken), committed)

    def test_the_committed_ones_show_what_the_build_shows(self):
        for name, picture in self.taken.items():
            with self.subTest(picture=name):
                before = (DOCS / name).read_bytes()
                for now, then in zip(size(picture), size(before)):
                    self.assertLessEqual(abs(now - then), MOST_DIFFERENCE_IN_SIZE)
                self.assertGreater(share_of_equal_bytes(picture, before), LEAST_SHARE, 'run tools/pictures/take')

    def test_each_resembles_its_own_committed_one_most(self):
        committed = {name: (DOCS / name).read_bytes() for name in self.taken}
        for name, picture in self.taken.items():
            with self.subTest(picture=name):
                shares = {other: share_of_equal_bytes(picture, then) for other, then in committed.items()}
                self.assertEqual(shares[name], max(shares.values()), shares)

    def test_each_shows_something_else(self):
        for name, picture in self.taken.items():
            self.assertGreater(len(set(lines(picture))), 50, f'{name} is nearly empty')
        pages = [self.taken[f'images/{name}.png'] for name in ('viewer', 'document', 'history')]
        self.assertLess(share_of_equal_bytes(pages[0], pages[1]), 0.97)
        self.assertLess(share_of_equal_bytes(pages[0], pages[2]), 0.97)


if __name__ == '__main__':
    unittest.main(verbosity=2)
