#!/usr/bin/env python3
"""passed.py list: prints the tests that passed before with the files that they would use now, one a line.
passed.py record JUNIT: notes which tests passed in a run that began after `list`.

A native test uses its programs; a program of unit tests itself, the built product and what is no source in the tree; every
other test may use anything. The installed packages, the variables that tests read and, for the delivery, the commit count
as files. Without git nothing counts as passed."""
import functools
import hashlib
import json
import os
import pathlib
import subprocess
import sys
from xml.etree import ElementTree

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = pathlib.Path(os.environ['MXOV_BUILD'])
INPUTS, PASSED = BUILD / 'log/test-inputs.json', BUILD / 'log/tests-passed.json'
SOURCES = {'.cpp', '.h', '.c', '.py', '.md'}
VARIABLES = ('MXOV_LONG', 'TZ', 'LANG', 'LC_ALL')


def output(*command):
    return subprocess.run(command, cwd=ROOT, check=True, capture_output=True).stdout


@functools.cache
def digest(path):
    try:
        content = path.read_bytes()
    except OSError:  # gone from the disk but not from the index
        content = b''
    return hashlib.sha256(f'{path} {len(content)} {os.access(path, os.X_OK)}\n'.encode() + content).digest()


@functools.cache
def digest_all(paths):
    return hashlib.sha256(b''.join(digest(path) for path in sorted(paths))).hexdigest()


def files_in(*folders):
    return frozenset(path for folder in folders for path in folder.rglob('*') if path.is_file())


@functools.cache
def tree():
    names = output('git', 'ls-files', '-coz', '--exclude-standard').decode().split('\0')
    return frozenset(ROOT / name for name in names if name)


@functools.cache
def product():
    helpers = {path for path in files_in(BUILD / 'tests') if not path.name.endswith('_tests.exe')}
    return files_in(BUILD / 'bin') | helpers | {path for path in tree() if path.suffix not in SOURCES}


@functools.cache
def surroundings():
    values = ''.join(f'{name}={os.environ.get(name)}\n' for name in VARIABLES)
    return hashlib.sha256(output('dpkg-query', '-W') + values.encode()).hexdigest()


def files_of(name, command):
    if name == 'native':
        programs = frozenset(path for path in files_in(BUILD / 'native') if os.access(path, os.X_OK))
        return programs | {path for path in tree() if 'native' in path.parts}
    if any(word.endswith('/tools/wine-run') for word in command):
        return product() | {pathlib.Path(word) for word in command if word.endswith('.exe')}
    return tree() | files_in(BUILD / 'bin', BUILD / 'tests') | {BUILD / 'linux/mxovpkg'}


def inputs():
    """Each test with the digest of all that it uses."""
    tests = json.loads(output('ctest', '--test-dir', BUILD / 'windows', '--show-only=json-v1'))['tests']
    commit = output('git', 'rev-parse', 'HEAD').decode()
    return {test['name']: ' '.join((digest_all(files_of(test['name'], test.get('command', []))), surroundings(),
                                    commit if 'release.' in test['name'] else '')) for test in tests}


def read(path):
    return json.loads(path.read_text()) if path.exists() else {}


def list_passed():
    try:
        current = inputs()
    except (OSError, subprocess.CalledProcessError):
        current = {}
    INPUTS.write_text(json.dumps(current))
    passed = read(PASSED)
    return [name for name, digests in current.items() if passed.get(name) == digests]


def record(junit):
    passed, current = read(PASSED), read(INPUTS)
    for case in ElementTree.parse(junit).getroot().iter('testcase'):
        name = case.get('name')
        passed.pop(name, None)
        if case.get('status') == 'run' and name in current:
            passed[name] = current[name]
    PASSED.write_text(json.dumps(passed))


if __name__ == '__main__':
    if sys.argv[1] == 'list':
        print('\n'.join(list_passed()))
    else:
        record(sys.argv[2])
