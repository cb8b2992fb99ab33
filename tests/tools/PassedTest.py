#!/usr/bin/env python3
"""Which tests need not run again: those that passed with the same files, variables and, for the delivery, commit."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

PASSED = pathlib.Path(__file__).resolve().parents[1] / 'passed.py'


class PassedTest(unittest.TestCase):
    def setUp(self):
        self.tree = pathlib.Path(tempfile.mkdtemp(prefix='mxov-passed-'))
        self.addCleanup(shutil.rmtree, self.tree)
        self.write('.gitignore', '/build/\n')
        self.write('source.cpp', 'int x;')
        self.write('build/log/a', '')
        self.write('build/bin/program.exe', 'program')
        self.program = self.write('build/tests/part_tests.exe', 'unit tests')
        runner = self.write('tools/wine-run', '#!/bin/sh\n')
        runner.chmod(0o755)
        self.write('build/windows/CTestTestfile.cmake', f'add_test(bad /bin/false)\nadd_test(script /bin/true)\n'
                   f'add_test(release.part /bin/true)\nadd_test(unit {runner} {self.program})\n')
        (self.tree / 'tests').mkdir()
        shutil.copy2(PASSED, self.tree / 'tests')
        self.run_in_tree('git', 'init', '-q')
        self.commit()

    def write(self, name, content):
        path = self.tree / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(content, encoding='ascii')
        return path

    def run_in_tree(self, *command, check=True, **variables):
        environment = {**os.environ, 'MXOV_BUILD': str(self.tree / 'build'), **variables}
        return subprocess.run(command, cwd=self.tree, env=environment, check=check, capture_output=True, text=True).stdout

    def commit(self):
        self.run_in_tree('git', 'add', '-A')
        self.run_in_tree('git', '-c', 'user.name=t', '-c', 'user.email=t', 'commit', '-q', '--allow-empty', '-m', 't')

    def passed(self, **variables):
        return set(self.run_in_tree('tests/passed.py', 'list', **variables).split())

    def run_tests(self):
        self.run_in_tree('ctest', '--test-dir', 'build/windows', '--output-junit', 'results.xml', check=False)
        results = self.tree / 'build/windows/results.xml'
        self.run_in_tree('tests/passed.py', 'record', str(results))

    def test_only_what_passed_with_the_same_files_is_listed(self):
        self.assertEqual(self.passed(), set())
        self.run_tests()
        everything = {'script', 'release.part', 'unit'}
        self.assertEqual(self.passed(), everything)
        self.assertEqual(self.passed(MXOV_LONG='1'), set())
        self.commit()
        self.assertEqual(self.passed(), everything - {'release.part'})
        self.write('source.cpp', 'int y;')
        self.assertEqual(self.passed(), {'unit'})
        self.write('new.txt', 'not a source')
        self.assertEqual(self.passed(), set())
        self.run_tests()
        self.assertEqual(self.passed(), everything)
        self.program.write_text('changed', encoding='ascii')
        self.assertEqual(self.passed(), set())
        self.run_tests()
        self.write('build/bin/program.exe', 'changed')
        self.assertEqual(self.passed(), set())

    def test_a_test_that_fails_is_not_listed_again(self):
        self.passed()
        self.run_tests()
        self.program.unlink()
        self.write('tools/wine-run', '#!/bin/sh\nexit 1\n')
        self.passed()
        self.run_tests()
        self.assertEqual(self.passed(), {'script', 'release.part'})

    def test_without_git_nothing_is_listed(self):
        self.passed()
        self.run_tests()
        shutil.rmtree(self.tree / '.git')
        self.assertEqual(self.passed(GIT_CEILING_DIRECTORIES=str(self.tree.parent)), set())


if __name__ == '__main__':
    unittest.main(verbosity=2)
