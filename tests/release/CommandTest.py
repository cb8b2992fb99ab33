#!/usr/bin/env python3
"""`./release` as a user meets it before anything is built."""
import pathlib
import subprocess
import tempfile
import unittest

from releasecase import ROOT, VERSION


class CommandTest(unittest.TestCase):
    def setUp(self):
        self.tree = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory())) / 'tree'
        self.git('clone', '--quiet', '--depth', '1', ROOT.as_uri(), self.tree)
        # The script as it stands, committed or not.
        for name in ('release', 'tools/packages.txt'):
            (self.tree / name).write_bytes((ROOT / name).read_bytes())
            (self.tree / name).chmod((ROOT / name).stat().st_mode)
        self.commit()

    def git(self, *words):
        subprocess.run(['git', *words], check=True, capture_output=True, cwd=self.tree if self.tree.exists() else None)

    def commit(self):
        self.git('add', '--all')
        self.git('-c', 'user.name=Tester', '-c', 'user.email=tester@localhost', 'commit', '--quiet', '--allow-empty', '-m', 'State')

    def release(self, *words):
        ended = subprocess.run([self.tree / 'release', *words], capture_output=True, text=True, check=False)
        return ended.returncode, ended.stdout, ended.stderr

    def assert_refused(self, line):
        self.assertEqual(self.release(), (1, '', f'release: {line}\n'))
        self.assertFalse((self.tree / 'build/release').exists())

    def test_help_is_the_comment_at_the_top(self):
        code, out, err = self.release('--help')
        self.assertEqual((code, err), (0, ''))
        self.assertTrue(out.startswith('release: builds the product from scratch'), out)

    def test_an_unknown_argument_is_refused_with_the_usage(self):
        code, out, err = self.release('--fast')
        self.assertEqual((code, out), (2, ''))
        self.assertIn('release --help', err)

    def test_an_edited_tree_is_refused(self):
        with (self.tree / 'README.md').open('a', encoding='utf-8') as page:
            page.write('more\n')
        self.assert_refused('the tree has uncommitted changes; commit or stash them first')

    def test_a_file_that_git_does_not_know_is_refused(self):
        (self.tree / 'viewer/Extra.cpp').touch()
        self.assert_refused('the tree has uncommitted changes; commit or stash them first')

    def test_a_version_that_was_released_from_another_commit_is_refused(self):
        self.git('tag', f'v{VERSION}')
        self.commit()
        self.assert_refused(f'version {VERSION} is the tag of another commit; raise the version in CMakeLists.txt')


if __name__ == '__main__':
    unittest.main(verbosity=2)
