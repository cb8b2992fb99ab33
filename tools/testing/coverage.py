#!/usr/bin/env python3
"""coverage.py run JOBS [NAME...]: runs the tests of the tree that counts lines, each with counts of its own, and notes in
lines.json which lines each of them ran. With names only those tests; the others keep what they have.
coverage.py report: prints the share of lines that ran, by folder, and the lines that did not, by source."""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import shutil
import sys

import ctests
import linecounts

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ['MXOV_BUILD'])
TREE, COUNTS, NOTED = BUILD / 'windows', BUILD / 'counts', BUILD / 'lines.json'
LIMITS = {'MXOVDocViewCtrl': 97, 'mxovshare': 95, 'framework': 92}  # percent of lines


def digest(name):
    return hashlib.sha256((ROOT / name).read_bytes()).hexdigest()


def measure(test):
    """Runs a test; how it ended, and the lines that it ran."""
    folder = COUNTS / test.name
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    run = ctests.run_test(test, BUILD / 'log' / f'test-{test.name}.log', **linecounts.prefix_for(folder))
    lines = linecounts.counted_lines(folder)
    shutil.rmtree(folder)
    return {'passed': run.passed, 'seconds': round(run.seconds, 1), 'why': run.why, 'lines': lines}


def write(noted):
    fresh = NOTED.with_suffix('.new')
    fresh.write_text(json.dumps(noted))
    fresh.replace(NOTED)


def run(jobs, names):
    noted = json.loads(NOTED.read_text()) if names and NOTED.exists() else {'tests': {}}
    sources = {name: {'digest': digest(name), 'lines': lines} for name, lines in linecounts.all_lines(TREE).items()}
    if noted.setdefault('sources', sources) != sources:
        sys.exit('coverage: the sources are not those of the tests that ran before; run all tests')
    tests = [test for test in ctests.read_tests(TREE).values() if not names or test.name in names]
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        waiting = {pool.submit(measure, test): test.name for test in tests}
        for done, future in enumerate(concurrent.futures.as_completed(waiting), 1):
            name, result = waiting[future], future.result()
            noted['tests'][name] = result
            write(noted)
            print(f"{done}/{len(tests)} {name} {'passed' if result['passed'] else result['why']}", flush=True)


def lines_run(noted):
    """{source: lines that some test ran}"""
    ran = {}
    for test in noted['tests'].values():
        for name, numbers in test['lines'].items():
            ran.setdefault(name, set()).update(numbers)
    return ran


def ranges(numbers, all_numbers):
    """Line numbers as text. A range spans lines that hold no code."""
    groups = []
    place = {number: index for index, number in enumerate(all_numbers)}
    for number in numbers:
        if groups and place[number] == place[groups[-1][1]] + 1:
            groups[-1][1] = number
        else:
            groups.append([number, number])
    return ', '.join(str(first) if first == last else f'{first}-{last}' for first, last in groups)


def report():
    noted = json.loads(NOTED.read_text())
    ran, totals, missing = lines_run(noted), {folder: [0, 0] for folder in LIMITS}, []
    for name, source in noted['sources'].items():
        not_run = [number for number in source['lines'] if number not in ran.get(name, ())]
        total = totals[name.split('/')[0]]
        total[0] += len(source['lines']) - len(not_run)
        total[1] += len(source['lines'])
        if not_run:
            missing.append(f'{name}: {ranges(not_run, source["lines"])}')
    failed = [f'{name}: {test["why"]}' for name, test in sorted(noted['tests'].items()) if not test['passed']]
    print('\n'.join(['Lines that no test ran:', *missing, '', *(['Tests that failed:', *failed, ''] if failed else [])]))
    low = False
    for folder, (hit, total) in totals.items():
        share = 100 * hit / total if total else 0
        low |= share < LIMITS[folder]
        print(f'{folder}: {share:.1f} % of {total} lines, at least {LIMITS[folder]} % expected')
    return 1 if low or failed else 0


def main(words):
    if words[:1] == ['run'] and len(words) > 1:
        names = set(words[2:])
        unknown = names - set(ctests.read_tests(TREE))
        if unknown:
            sys.exit(f'coverage: no such test: {" ".join(sorted(unknown))}')
        run(int(words[1]), names)
    elif words == ['report']:
        sys.exit(report())
    else:
        sys.exit(__doc__)


if __name__ == '__main__':
    main(sys.argv[1:])
