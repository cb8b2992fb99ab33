#!/usr/bin/env python3
"""The pages as a site: complete, readable without a server, without dead links."""
import importlib.machinery
import importlib.util
import os
import pathlib
import subprocess
import tempfile
import unittest

from releasecase import ROOT


def site_module():
    loader = importlib.machinery.SourceFileLoader('site_tool', str(ROOT / 'tools/site'))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader('site_tool', loader))
    loader.exec_module(module)
    return module


class SiteTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.build = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory())).resolve()
        cls.ended = subprocess.run([ROOT / 'tools/site', '--no-install'], capture_output=True, text=True, check=False,
                                   env={**os.environ, 'MXOV_BUILD': str(cls.build)})
        cls.tool = site_module()
        cls.tool.SITE = cls.build / 'site'

    def test_every_page_is_there_and_no_link_is_dead(self):
        self.assertEqual((self.ended.returncode, self.ended.stderr), (0, ''), self.ended.stdout)
        site = self.build / 'site'
        for page in ROOT.glob('docs/*.md'):
            self.assertTrue((site / f'{page.stem}.html').is_file(), page.stem)
        for name in ('index.html', 'sdk.html', 'SECURITY.html', 'CHANGELOG.html', 'help/english/overview.html',
                     'help/portuguese-brazilian/overview.html', 'images/viewer.png'):
            self.assertTrue((site / name).is_file(), name)
        self.assertEqual(list(self.tool.faults()), [])

    def test_no_page_needs_another_computer(self):
        for page in (self.build / 'site').rglob('*.html'):
            text = page.read_text(encoding='utf-8')
            for mark in ('<script src="http', '<link rel="stylesheet" href="http', '<img src="http', '<img alt="" src="http'):
                self.assertNotIn(mark, text, page)

    def test_a_dead_link_is_found(self):
        page = self.build / 'site/windows.html'
        text = page.read_text(encoding='utf-8')
        try:
            for link, fault in (('gone.html', 'links to gone.html, which is not there'),
                                ('index.html#gone', 'links to index.html#gone, but that page has no such part')):
                page.write_text(f'{text}<a href="{link}">x</a>', encoding='utf-8')
                self.assertEqual(list(self.tool.faults()), [f'windows.html {fault}'])
        finally:
            page.write_text(text, encoding='utf-8')


if __name__ == '__main__':
    unittest.main(verbosity=2)
