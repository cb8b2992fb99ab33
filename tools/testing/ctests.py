"""The tests that a build tree declares, and how one of them is run with a time limit."""
import contextlib
import json
import os
import re
import signal
import subprocess
import threading
import time
import typing

# Tests that run no code of the module, the host's library or the framework in this tree, look at the delivered files, or limit
# the time that the product takes, which counting lines multiplies.
NOT_MEASURED = re.compile(r'release\.|linux_|handler_|dispatch_entry_|mxovpkg_(names|memory|information|large|exchange|manual)$|'
                          r'(native|porters|control\.delivery|desktops|promises|passed|help_files|changes)$')
ENDED_BY_LIMIT = 'no end'
KILL_AFTER = 20  # seconds from asking a test to end to killing it


class Stopped(Exception):
    """The user ended the work."""


stopped = threading.Event()
running = set()  # processes of tests


def stop():
    """Ends the tests that run, so that those who wait for them go no further."""
    stopped.set()
    for process in list(running):
        with contextlib.suppress(ProcessLookupError):
            os.killpg(process.pid, signal.SIGTERM)


class Test(typing.NamedTuple):
    name: str
    command: tuple
    environment: dict
    folder: str
    limit: float  # seconds


def read_tests(tree):
    """The tests of a configured tree that can be measured, by name."""
    shown = subprocess.run(['ctest', '--test-dir', tree, '--show-only=json-v1'], check=True, capture_output=True).stdout
    found = {}
    for entry in json.loads(shown)['tests']:
        if NOT_MEASURED.match(entry['name']) or 'command' not in entry:
            continue
        properties = {each['name']: each['value'] for each in entry['properties']}
        environment = dict(each.split('=', 1) for each in properties.get('ENVIRONMENT', ()))
        found[entry['name']] = Test(entry['name'], tuple(entry['command']), environment,
                                    properties.get('WORKING_DIRECTORY', str(tree)), properties.get('TIMEOUT', 300))
    return found


def end_group(process):
    """Ends a test and everything that it started. It may remove its prefix and display first."""
    for number, seconds in ((signal.SIGTERM, KILL_AFTER), (signal.SIGKILL, None)):
        try:
            os.killpg(process.pid, number)
            process.wait(seconds)
            return
        except ProcessLookupError:
            return
        except subprocess.TimeoutExpired:
            pass


class Run(typing.NamedTuple):
    passed: bool
    seconds: float
    why: str  # the first line that reports a failure, ENDED_BY_LIMIT, or nothing


REPORTS = re.compile(r'^(\[  FAILED  \].*|(?:FAIL|ERROR): .*|FAILED.*|.*crashed.*)$', re.MULTILINE)


def run_test(test, log, limit=None, **variables):
    """Runs a test and writes its output to a file. Where the limit is over, it and its programs are ended."""
    environment = {**os.environ, **test.environment, **variables}
    start = time.monotonic()
    with open(log, 'wb') as output, subprocess.Popen(test.command, cwd=test.folder, env=environment, stdout=output,
                                                      stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL,
                                                      start_new_session=True) as process:
        running.add(process)
        try:
            code = process.wait(limit or test.limit)
        except subprocess.TimeoutExpired:
            end_group(process)
            return Run(False, time.monotonic() - start, ENDED_BY_LIMIT)
        if stopped.is_set():
            raise Stopped  # the test was ended, and says nothing
        reported = REPORTS.search(log.read_text(encoding='utf-8', errors='replace')) if code else None
    why = reported.group(1).strip() if reported else f'ended with {code}' if code else ''
    return Run(code == 0, time.monotonic() - start, why)
