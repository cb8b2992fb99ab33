"""Which tests reach a change, from the lines that tools/coverage noted: those named after its source first, then fastest first."""
import json
import pathlib
import re
import typing

SUITE = re.compile(r'^TEST(?:_F|_P)?\((\w+),', re.MULTILINE)
LONG = 3  # seconds from which a program first runs only the suites that are named after the source


class Step(typing.NamedTuple):
    test: str
    seconds: float  # that it takes unchanged
    suites: tuple = ()  # where only some of the program's are run
    is_named: bool = False  # after the source


class Reach:
    def __init__(self, noted, root):
        self.sources, self.tests, self.root = noted['sources'], noted['tests'], root

    @classmethod
    def read(cls, path, root):
        return cls(json.loads(path.read_text()), root)

    def steps(self, change, body_line, tree):
        """What to run for a change. `body_line` is where the function around it begins, None outside of functions."""
        names, compiled = self._named_after(change.file, tree), tree.programs_with(change.file)
        steps = []
        for name, test in self.tests.items():
            ran = test['lines'].get(change.file, ())
            # A program that compiles the source itself does not count its lines; a named test may be newer than the lines.
            is_of_source = name in compiled or name in names
            if test['passed'] and name in tree.tests and (is_of_source or self._reaches(ran, change, body_line)):
                is_long = test['seconds'] > LONG
                steps.append(Step(name, test['seconds'], is_named=name in names and not is_long))
                if name in names and is_long:
                    steps.append(Step(name, LONG, names[name], True))
        return sorted(steps, key=lambda step: (not step.is_named, step.seconds, step.test))

    def _reaches(self, ran, change, body_line):
        if not ran:
            return False
        if self.sources.get(change.file, {}).get('digest') != change.digest or body_line is None:
            return True  # lines are not known: whatever runs anything of the source
        can_run = self.sources[change.file]['lines']
        last = change.line + change.old.count('\n')
        lines = [line for line in can_run if change.line <= line <= last]
        if not lines:  # a statement's later line counts as its first
            lines = [line for line in can_run if body_line <= line <= change.line][-1:]
        return not lines or bool(set(lines).intersection(ran))

    def _named_after(self, file, tree):
        """{program: suites} of the test sources that are named after a source."""
        path, found = pathlib.PurePosixPath(file), {}
        for source in sorted((self.root / 'tests' / path.parent).glob(f'{path.stem}*Test.cpp')):
            suites = tuple(dict.fromkeys(SUITE.findall(source.read_text(encoding='utf-8'))))
            for program in tree.programs_with(str(source.relative_to(self.root))):
                found[program] = found.get(program, ()) + suites
        return found
