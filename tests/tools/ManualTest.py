#!/usr/bin/env python3
"""The manual page of the command line: complete, and without a fault in its form."""
import re
import subprocess
import sys
import unittest

from packagecase import ROOT, PackageCase

sys.path.insert(0, str(ROOT / 'tools/release'))
import manual  # noqa: E402

PAGE = (ROOT / 'docs/mxovpkg.md').read_text(encoding='utf-8')
OPTION = re.compile(r'--[a-z-]+')


def rendered(page):
    """The page as text with one line for each call of the synopsis."""
    ended = subprocess.run(['groff', '-man', '-ww', '-Tascii', '-P-cbou', '-rLL=400n'], input=page, capture_output=True,
                           check=True)
    return ended.stdout.decode(), ended.stderr.decode()


def synopsis(text):
    """{command: its options} of the calls in the synopsis."""
    found = {}
    calls = text.partition('SYNOPSIS\n')[2].partition('\nDESCRIPTION\n')[0]
    for command, rest in re.findall(r'^ +mxovpkg (\S+)(.*)$', calls, re.MULTILINE):
        found.setdefault(command, set()).update(OPTION.findall(rest))
    return found


def undescribed(text, options):
    """The options that nothing behind the synopsis mentions, the literal calls of the sections left out."""
    body = '\n'.join(line for line in text.partition('\nDESCRIPTION\n')[2].splitlines() if 'mxovpkg ' not in line)
    return set(options) - set(OPTION.findall(body))


class ManualTest(PackageCase):
    def table(self):
        """{command: its options} as the program knows them, from what the shell completes."""
        script = self.succeed('completion', 'bash')
        commands = re.search(r"1:\*\) words='([^']*)'", script)[1].split()
        options = dict(re.findall(r"\*:(\S+)\) words='([^']*)'", script))
        return {command: set(options[command].split()) for command in commands}

    def test_every_command_and_option_stands_in_it_and_no_other(self):
        text, _ = rendered(manual.manual(PAGE, '1.2.3'))
        table = self.table()
        self.assertGreater(len(table), 12)
        self.assertEqual(synopsis(text), table)
        self.assertEqual(undescribed(text, set().union(*table.values()) - {'--version'}), set())

    def test_what_it_lacks_is_found(self):
        page = PAGE
        for part in (' [--all-lines]', '    mxovpkg text FILE\n', '`--network` includes'):
            self.assertIn(part, page)
            page = page.replace(part, '')
        text, _ = rendered(manual.manual(page, '1.2.3'))
        self.assertEqual(synopsis(text)['diff'], {'--exit-code', '--json'})
        self.assertNotIn('text', synopsis(text))
        self.assertEqual(undescribed(text, {'--network', '--all-lines'}), {'--network'})

    def test_it_is_shown_without_warnings(self):
        text, warnings = rendered(manual.manual(PAGE, '1.2.3'))
        self.assertEqual(warnings, '')
        self.assertTrue(text.startswith('MXOVPKG(1)'))
        self.assertIn('mxov 1.2.3', text)
        self.assertNotRegex(text, r'`|\]\(|\|---')
        _, warnings = rendered(manual.manual(PAGE, '1.2.3').replace(b'.SH NAME', b'.SH NAME\n.XX'))
        self.assertIn('XX', warnings)

    def test_every_section_and_row_of_the_page_is_in_it(self):
        text, _ = rendered(manual.manual(PAGE, '1.2.3'))
        for title in re.findall(r'^## (.*)$', PAGE, re.MULTILINE):
            self.assertIn(f'\n{title.upper()}\n', text)
        rows = re.findall(r'^\| (.*?) \|', PAGE, re.MULTILINE)
        self.assertGreater(len(rows), 20)
        for first in rows:
            if first not in ('code', 'kind', 'command'):
                self.assertRegex(text, rf'\n +{re.escape(first.strip("`"))}\b')

    def test_points_and_quotes_at_the_start_of_a_line_are_text(self):
        text, warnings = rendered(manual.manual('# Title\n\n.TH is text\n\n\'x too, and \\n\n', '1'))
        self.assertEqual(warnings, '')
        for part in ('.TH is text', "'x too, and \\n"):
            self.assertIn(part, text)


if __name__ == '__main__':
    unittest.main(verbosity=2)
