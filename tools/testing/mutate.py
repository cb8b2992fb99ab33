#!/usr/bin/env python3
"""Changes one thing at a time in a copy of the sources and runs the tests that reach it; see tools/mutate."""
import argparse
import collections
import contextlib
import concurrent.futures
import functools
import json
import os
import pathlib
import random
import re
import signal
import subprocess
import sys
import threading
import time

import changes
import ctests
import equivalents
from changedtree import ChangedTree, DoesNotBuild
from linecounts import FOLDERS
from reach import Reach

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ['MXOV_BUILD'])
FOLDER, LINES = BUILD / 'mutate', BUILD / 'coverage/lines.json'
COUNTED = ('killed', 'survived')


def sources(wanted):
    """The sources to change: all that are built for Windows, or those that are named or lie in a named folder."""
    names = subprocess.run(['git', 'ls-files', '-z', '--', *FOLDERS], cwd=ROOT, check=True, capture_output=True).stdout
    names = sorted(name for name in names.decode().split('\0')
                   if name.endswith(('.cpp', '.h')) and '/posix/' not in name)
    if not wanted:
        return [name for name in names if name.endswith('.cpp')]
    paths = [pathlib.Path(each).resolve() for each in wanted]
    found = [name for name in names if ROOT / name in paths or
             name.endswith('.cpp') and any((ROOT / name).is_relative_to(each) for each in paths)]
    if not found:
        sys.exit('mutate: no source of the module, the host\'s library or the framework is named')
    return found


@functools.lru_cache(maxsize=None)
def changes_in(file):
    return changes.Changes(file, (ROOT / file).read_text(encoding='utf-8'))


def draw(files, seed):
    """All changes in random order, one a line, without equivalent mutants."""
    every = [change for file in files for change in changes_in(file).all()]
    random.Random(seed).shuffle(every)
    first = {}
    for change in every:
        first.setdefault((change.file, change.line), change)
    return [change for change in first.values() if is_worth_trying(change)]


@functools.lru_cache(maxsize=None)
def equivalent_rows():
    return equivalents.rows((ROOT / 'tests/equivalent-mutants.md').read_text(encoding='utf-8'))


def is_worth_trying(change):
    return equivalents.row_of(change, changes_in(change.file).source) not in equivalent_rows()


def body_line(change):
    """The line on which the function around a change begins; None outside of functions."""
    structure = changes_in(change.file).found
    around = [brace for brace, _ in structure.bodies if structure.tokens[brace].start < change.start + 1 and
              change.start <= structure.tokens[structure.partner[brace]].start]
    return structure.tokens[around[-1]].line if around else None


class Results:
    """What came of each change, in a file with a line for each, so that a later run goes on where one ended."""
    def __init__(self, path):
        self.path, self.lock, self.by_key = path, threading.Lock(), {}
        if path.exists():
            for line in path.read_text(encoding='utf-8').splitlines():
                result = json.loads(line)
                self.by_key[result['key']] = result

    def add(self, change, **result):
        result = {'key': change.key, 'file': change.file, 'line': change.line, 'change': str(change), **result}
        with self.lock:
            self.by_key[change.key] = result
            with self.path.open('a', encoding='utf-8') as file:
                file.write(json.dumps(result) + '\n')
        return result


class Worker:
    """Tries changes in a copy of its own."""
    def __init__(self, number, options):
        self.options = options
        self.tree = ChangedTree(ROOT, (FOLDER / str(number)).resolve(), max(1, (os.cpu_count() or 1) // options.jobs))
        self.reach = Reach.read(LINES, ROOT)
        self.log = self.tree.build / 'log/test.log'
        self.log.parent.mkdir(exist_ok=True)
        self.noted = self.tree.build / 'unchanged.json'
        known = json.loads(self.noted.read_text()) if self.noted.exists() else {}
        self.passes = known['passes'] if known.get('digest') == self.tree.digest else {}
        self.tree.register()

    def run(self, step):
        """Builds what a step needs and runs it."""
        self.tree.build_for(step.test)
        variables = {'GTEST_FAIL_FAST': '1', 'MXOV_BUILD': str(self.tree.build)}
        if step.suites:
            variables['GTEST_FILTER'] = ':'.join(f'{suite}.*' for suite in step.suites)
        test = self.tree.tests[step.test]
        return ctests.run_test(test, self.log, min(test.limit, 3 * step.seconds + 60), **variables)

    def passes_unchanged(self, step):
        """Whether a step passes without any change, in the copy's present state. It is run once."""
        name = ' '.join((step.test, *step.suites))
        if name not in self.passes:
            self.passes[name] = self.run(step).passed
            if self.passes[name]:
                passes = {each: True for each, passed in self.passes.items() if passed}  # what fails is run again next time
                self.noted.write_text(json.dumps({'digest': self.tree.digest, 'passes': passes}))
            else:
                print(f'mutate: {step.test} fails without any change and is left out', flush=True)
        return self.passes[name]

    def steps(self, change, before):
        """What to run, without what a change survived before."""
        steps = self.reach.steps(change, body_line(change), self.tree)
        return [step for step in steps if step.seconds <= self.options.within and self.options.tests.search(step.test)
                and step.test not in before]

    def first_failure(self, change, steps):
        """The first step that fails with a change, with its run."""
        with self.tree.changed(change):
            if not self.tree.compile(change):
                raise DoesNotBuild('the compiler makes the same of it')
            for step in steps:
                run = self.run(step)
                if not run.passed:
                    return step, run
        return None, None

    def attempt(self, change, before):
        """What comes of a change: killed, survived, or that it is none, since it does not compile."""
        steps = self.steps(change, before)
        while True:
            try:
                step, run = self.first_failure(change, steps)
            except DoesNotBuild as error:
                return {'outcome': 'none', 'why': str(error).splitlines()[-1]}
            if step is None:
                whole = {step.test for step in steps if not step.suites}
                return {'outcome': 'survived', 'tests': sorted({*before, *whole})}
            if self.passes_unchanged(step):
                return {'outcome': 'killed', 'by': step.test, 'why': run.why}
            steps = [each for each in steps if each.test != step.test]


class Session:
    def __init__(self, options):
        self.options, self.results = options, Results(FOLDER / 'results.jsonl')
        files = sources(options.files)
        self.drawn = self._survivors(files) if options.survivors else draw(files, options.seed)
        self.wanted = min(options.sample or len(self.drawn), len(self.drawn))
        self.waiting, self.came_of, self.lock = iter(self.drawn), {}, threading.Lock()

    def _survivors(self, files):
        """All that no test noticed so far, however it was drawn."""
        every = (change for file in files for change in changes_in(file).all())
        return [change for change in every
                if self.results.by_key.get(change.key, {}).get('outcome') == 'survived' and is_worth_trying(change)]

    @property
    def done(self):
        """What is counted, in the order of drawing. Of changes that are tried side by side more may have come out."""
        return [self.came_of[change.key] for change in self.drawn if change.key in self.came_of][:self.wanted]

    def go_on(self):
        """Tries changes until as many are counted as wanted."""
        with concurrent.futures.ThreadPoolExecutor(self.options.jobs) as pool:
            futures = [pool.submit(self._work, number) for number in range(1, self.options.jobs + 1)]
            for future in futures:
                future.result()

    def _next(self):
        """The next change; None at the end."""
        with self.lock:
            at_end = len(self.came_of) >= self.wanted or ctests.stopped.is_set()
            return None if at_end else next(self.waiting, None)

    def _work(self, number):
        worker = None
        while change := self._next():
            known = self.results.by_key.get(change.key)
            if not known or known['outcome'] == 'survived':
                worker = worker or Worker(number, self.options)
                before = set(known['tests']) if known and not self.options.survivors else set()
                if not known or self.options.survivors or worker.steps(change, before):
                    known = self._try(worker, change, before)
            if known['outcome'] in COUNTED:
                with self.lock:
                    self.came_of[change.key] = known

    def _try(self, worker, change, before):
        start = time.monotonic()
        result = self.results.add(change, **worker.attempt(change, before),
                                  seconds=round(time.monotonic() - start, 1))
        by = f", {result['by']}: {result['why']}" if 'by' in result else ''
        print(f"{len(self.came_of) + 1}/{self.wanted} {result['outcome']} {change.file}:{change.line} {change} "
              f"({result['seconds']} s{by})", flush=True)
        return result

    def report(self):
        counts = collections.Counter((result['file'].split('/')[0], result['outcome']) for result in self.done)
        survivors = sorted((result for result in self.done if result['outcome'] == 'survived'),
                           key=lambda result: (result['file'], result['line']))
        print('\n'.join(['', *(f"{each['file']}:{each['line']}: {each['change']}"
                               f"{'' if each['tests'] else ' (no test reaches it)'}" for each in survivors), '']))
        for folder in FOLDERS:
            killed, total = counts[folder, 'killed'], counts[folder, 'killed'] + counts[folder, 'survived']
            if total:
                print(f'{folder}: {killed} of {total} changes were noticed, {100 * killed / total:.1f} %')
        return bool(survivors)


def read_options(words):
    parser = argparse.ArgumentParser(prog='mutate', add_help=False)
    parser.add_argument('files', nargs='*')
    parser.add_argument('--sample', type=int)
    parser.add_argument('--seed', type=int, default=1)
    parser.add_argument('--jobs', type=int, default=1)
    parser.add_argument('--within', type=float, default=float('inf'))
    parser.add_argument('--tests', type=re.compile, default=re.compile(''))
    parser.add_argument('--survivors', action='store_true')
    parser.add_argument('--list', action='store_true')
    return parser.parse_args(words)


def main(words):
    options = read_options(words)
    FOLDER.mkdir(parents=True, exist_ok=True)
    if options.list:
        print('\n'.join(f'{change.file}:{change.line}: {change}'
                        for change in draw(sources(options.files), options.seed)[:options.sample]))
        return
    if not LINES.exists():
        sys.exit('mutate: which lines each test runs is not known; run tools/coverage first')
    session = Session(options)
    for number in (signal.SIGINT, signal.SIGTERM):
        signal.signal(number, lambda *_: ctests.stop())
    with contextlib.suppress(ctests.Stopped):
        session.go_on()
    if ctests.stopped.is_set():
        sys.exit('mutate: interrupted; the same command goes on from here')
    sys.exit(1 if session.report() else 0)


if __name__ == '__main__':
    main(sys.argv[1:])
