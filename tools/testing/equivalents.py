"""The rows of tests/equivalent-mutants.md."""
import re

ROW = re.compile(r'^\| `(?P<file>[^`]+)` \| `(?P<source>[^`]+)` \| `(?P<change>[^`]+)` \| .+ \|$', re.MULTILINE)


def rows(text):
    """(source file, its line, the change) of each row of the table."""
    found = (match.group('file', 'source', 'change') for match in ROW.finditer(text))
    return {tuple(part.replace('\\|', '|') for part in row) for row in found}


def row_of(change, source):
    """The row that lists a change."""
    return change.file, source.splitlines()[change.line - 1].strip(), str(change)
