"""Which lines of the measured folders ran, from the counts that the compiler's coverage writes."""
import json
import os
import pathlib
import subprocess

FOLDERS = ('MXOVDocViewCtrl', 'mxovshare', 'framework')
GCOV = 'x86_64-w64-mingw32-gcov-posix'
AT_ONCE = 8  # objects in one call


def read_lines(folder, files):
    """{source: {line: whether it ran}} of counts or of notes alone, which then count nothing."""
    found = {}
    for start in range(0, len(files), AT_ONCE):
        command = [GCOV, '--json-format', '--stdout', '--relative-only', *map(str, files[start:start + AT_ONCE])]
        ended = subprocess.run(command, cwd=folder, check=False, capture_output=True)
        if ended.returncode:  # what was written at the same time by several processes may be damaged
            print(ended.stderr.decode(), flush=True)
        for document in filter(None, ended.stdout.splitlines()):
            for file in json.loads(document)['files']:
                name = os.path.normpath(file['file'])
                if name.split('/')[0] in FOLDERS:
                    lines = found.setdefault(name, {})
                    for line in file['lines']:
                        number = line['line_number']
                        lines[number] = lines.get(number, False) or line['count'] > 0
    return found


def notes_of(tree):
    """What the compiler wrote about the lines of each object in a tree."""
    return sorted(path for folder in FOLDERS for path in (tree / folder).rglob('*.gcno'))


def counted_lines(counts):
    """The lines that ran, {source: [line]}, of a folder into which a test wrote its counts."""
    files = sorted(counts.rglob('*.gcda'))
    for file in files:
        notes = file.with_suffix('.gcno')
        if not notes.exists():
            notes.symlink_to('/' / file.relative_to(counts).with_suffix('.gcno'))
    ran = read_lines(counts, files)
    return {name: [number for number, hit in sorted(lines.items()) if hit] for name, lines in sorted(ran.items())}


def all_lines(tree):
    """Every line that can run, {source: [line]}."""
    return {name: sorted(lines) for name, lines in sorted(read_lines(tree, notes_of(tree)).items())}


def prefix_for(folder):
    """The variables with which programs under Wine write their counts below a folder."""
    return {'GCOV_PREFIX': f'Z:{pathlib.Path(folder).absolute()}'}
