#!/usr/bin/env python3
"""Every row of a table of promises names at least one test, each of them exists and is part of the suite, and in a run of the
whole suite, which this test ends, each of them ran."""
import ast
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

TESTS = pathlib.Path(__file__).resolve().parents[1]
BUILD = pathlib.Path(os.environ.get('MXOV_BUILD', TESTS.parent / 'build'))
PAGES = [TESTS / 'promises.md', *(TESTS.parent / 'docs' / name for name in ('reliability.md', 'footprint.md'))]
TABLE = re.compile(r'^\|.*\| test \|\n\|[-|]*\|\n((?:\|.*\|\n)*)', re.MULTILINE)
ROW = re.compile(r'^\| (.*) \| (.*) \|$', re.MULTILINE)
LOGS = [BUILD / 'windows/Testing/Temporary/LastTest.log.tmp',  # of this run
        BUILD / 'native/Testing/Temporary/LastTest.log']
GOOGLE_TEST = re.compile(r'^TEST(?:_F|_P)?\((\w+),\s*(\w+)\)', re.MULTILINE)


def listed_sources():
    """The names of all sources that some CMake file of the tests lists."""
    text = ''.join(path.read_text(encoding='utf-8') for path in [*TESTS.rglob('CMakeLists.txt'), *TESTS.rglob('*.cmake')])
    return set(re.findall(r'\w+\.cpp', text))


def google_tests():
    listed = listed_sources()
    return {f'{suite}.{test}' for source in TESTS.rglob('*.cpp') if source.name in listed
            for suite, test in GOOGLE_TEST.findall(source.read_text(encoding='utf-8')) if not test.startswith('DISABLED_')}


def python_tests():
    trees = (ast.parse(path.read_text(encoding='utf-8')) for path in TESTS.rglob('*Test.py'))
    return {f'{suite.name}.{test.name}' for tree in trees for suite in tree.body if isinstance(suite, ast.ClassDef)
            for test in suite.body if isinstance(test, ast.FunctionDef) and test.name.startswith('test_')}


def programs(*options):
    """The tests as ctest knows them. Listing them empties the log of the directory that is listed."""
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, 'CTestTestfile.cmake').write_text(f'subdirs("{BUILD}/windows")\n', encoding='utf-8')
        listing = subprocess.run(['ctest', '--test-dir', folder, '-N', *options], capture_output=True, text=True, check=True)
    return set(re.findall(r'Test +#\d+: (\S+)', listing.stdout))


def ran(log):
    """What passed according to a log of ctest: its tests, those of GoogleTest, and those of Python. What is left to ./test --long
    counts too."""
    names = set(re.findall(r'^\d+/\d+ Test: (\S+)$', log, re.MULTILINE))
    names.update(re.findall(r'^\[       OK \] (?:\w+/)?(\w+\.\w+)', log, re.MULTILINE))
    for test, suite, result in re.findall(r'^(test_\w+) \(__main__\.(\w+)\.\w+\)(?:\n.*)? \.\.\. (.*)', log, re.MULTILINE):
        if not result.startswith('skipped') or './test --long' in result:
            names.add(f'{suite}.{test}')
    return names


def promised(page):
    """The tests that the tables of a page name."""
    return {name for table in TABLE.findall(page) for _, cell in ROW.findall(table) for name in re.findall(r'`([^`]+)`', cell)}


def faults(page, known):
    """What is wrong with the tables of a page whose last column is headed "test"."""
    rows = [row for table in TABLE.findall(page) for row in ROW.findall(table)]
    for promise, cell in rows:
        names = re.findall(r'`([^`]+)`', cell)
        if not names:
            yield f'no test: {promise}'
        yield from (f'{name} does not exist: {promise}' for name in names if name not in known)
    if not rows:
        yield 'no promise'


class PromisesTest(unittest.TestCase):
    def test_every_promise_names_tests_that_exist(self):
        known = google_tests() | python_tests() | programs()
        for page in PAGES:
            with self.subTest(page=page.name):
                self.assertEqual(list(faults(page.read_text(encoding='utf-8'), known)), [])

    def test_every_promised_test_ran(self):
        done = {name for log in LOGS if log.exists() for name in ran(log.read_text(encoding='utf-8', errors='replace'))}
        if programs('-LE', '^long$') - done != {'promises'}:
            self.skipTest('only a part of the suite runs')
        for page in PAGES:
            with self.subTest(page=page.name):
                self.assertEqual(promised(page.read_text(encoding='utf-8')) - done, set())

    def test_what_ran_is_read_from_a_log(self):
        log = ('1/9 Test: unit_tests\n[ RUN      ] Suite.Good\n[       OK ] Suite.Good (1 ms)\n[  FAILED  ] Suite.Bad (1 ms)\n'
               '[       OK ] All/Many.Values/3 (0 ms)\ntest_plain (__main__.Case.test_plain) ... ok\n'
               'test_told (__main__.Case.test_told)\nWhat it is about. ... a word\nok\n'
               "test_left (__main__.Case.test_left) ... skipped 'no'\n"
               "test_later (__main__.Case.test_later) ... skipped 'takes minutes: ./test --long'\n")
        self.assertEqual(ran(log),
                         {'unit_tests', 'Suite.Good', 'Many.Values', 'Case.test_plain', 'Case.test_told', 'Case.test_later'})

    def test_what_a_table_lacks_is_found(self):
        known = {'Suite.Test', 'program'}
        head = '| promise | test |\n|---|---|\n'
        self.assertEqual(list(faults(head, known)), ['no promise'])
        self.assertEqual(list(faults(head + '| it works | `Suite.Test`, `program` |\n', known)), [])
        self.assertEqual(list(faults(head + '| it works | by hand |\n', known)), ['no test: it works'])
        self.assertEqual(list(faults('| file | size |\n|---|---|\n| one | `two` |\n', known)), ['no promise'])
        self.assertEqual(list(faults(head + '| it works | `Suite.Test`, `Suite.Gone` |\n', known)),
                         ['Suite.Gone does not exist: it works'])


if __name__ == '__main__':
    unittest.main(verbosity=2)
