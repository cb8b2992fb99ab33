#!/usr/bin/env python3
"""The help files of a release have the same bytes whenever and wherever they are compiled."""
import os
import pathlib
import subprocess
import tempfile
import time
import unittest

from releasecase import MOMENT, ROOT


class HelpTest(unittest.TestCase):
    def compiled(self, language, **environment):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder) / 'Orvando.chm'
            subprocess.run([ROOT / 'viewer/help/compile', language, file], check=True, capture_output=True,
                           env={**os.environ, 'SOURCE_DATE_EPOCH': MOMENT, **environment})
            return file.read_bytes()

    def test_the_same_pages_give_the_same_bytes(self):
        for language in ('english', 'portuguese-brazilian'):
            with self.subTest(language=language):
                first = self.compiled(language)
                time.sleep(1.1)
                self.assertEqual(first, self.compiled(language, TZ='Asia/Tokyo', MORE='x' * 5000))

    def test_the_time_is_that_of_the_release(self):
        self.assertNotEqual(self.compiled('english'), self.compiled('english', SOURCE_DATE_EPOCH='1600000000'))


if __name__ == '__main__':
    unittest.main(verbosity=2)
