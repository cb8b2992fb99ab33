#!/usr/bin/env python3
"""Completes words of a command line with the script that the built package command line prints, in the shell itself."""
import subprocess
import unittest

from packagecase import PackageCase

ASK = r'''
source script.sh
COMP_WORDS=("$@")
COMP_CWORD=$(($# - 1))
_mxovpkg
printf '%s\n' "${COMPREPLY[@]}"
'''


class CompletionTest(PackageCase):
    def complete(self, *words):
        """What bash offers for the last of these words behind the program's name."""
        outcome = subprocess.run(['bash', '-uc', ASK, 'bash', 'mxovpkg', *words], cwd=self.work, capture_output=True,
                                 text=True, check=True)
        self.assertEqual(outcome.stderr, '')
        return outcome.stdout.split()

    def test_bash_completes_commands_and_their_options(self):
        (self.work / 'script.sh').write_text(self.succeed('completion', 'bash'), encoding='utf-8')
        every = self.complete('')
        self.assertTrue({'create', 'check', 'bundle', 'completion', '--help'} <= set(every), every)
        self.assertEqual(self.complete('ch'), ['check'])
        self.assertEqual(self.complete('check', 'p.mxov', '--'), ['--strict', '--json'])
        self.assertEqual(self.complete('relink', '--d'), ['--dry-run'])
        self.assertEqual(self.complete('create', '--'), [])
        self.assertEqual(self.complete('check', 'p'), [], 'files are the shell\'s own')
        self.assertEqual(self.complete('nonsense', '--'), [])

    def test_every_command_of_the_help_is_completed(self):
        script = self.succeed('completion', 'bash')
        (self.work / 'script.sh').write_text(script, encoding='utf-8')
        helped = {line.split()[line.split().index('mxovpkg') + 1] for line in self.succeed('--help').splitlines()
                  if 'mxovpkg ' in line}
        self.assertEqual(set(self.complete('')), helped)

    def test_powershell_gets_every_command(self):
        script = self.succeed('completion', 'powershell')
        self.assertIn("'check' = -split '--strict --json'\n", script)
        self.assertEqual(script.count('{'), script.count('}'))

    def test_other_shells_are_refused(self):
        self.assertIn('bash or powershell', self.fail_with(2, 'completion', 'other'))


if __name__ == '__main__':
    unittest.main(verbosity=2)
