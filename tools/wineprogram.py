"""Runs Wine programs to their end for tests and tools, and keeps what they and Wine say."""
import ctypes
import os
import pathlib
import subprocess
import sys
import tempfile
import typing

ADDR_NO_RANDOMIZE = 0x40000
CURRENT = 0xFFFFFFFF


def fix_addresses():
    """Has every process that this one starts lie at fixed addresses.

    Debian's Wine has no preloader that keeps addresses free. Its loader lies at 0x7d000000 and its heap begins at a
    random place in the gigabyte behind it: about once in some thousand starts it covers 0x7ffe0000, where Wine has to
    map its shared data, and the program ends with code 1 before its first instruction."""
    personality = ctypes.CDLL(None, use_errno=True).personality
    personality.argtypes = [ctypes.c_ulong]
    now = personality(CURRENT)
    if now & ADDR_NO_RANDOMIZE == 0 and personality(now | ADDR_NO_RANDOMIZE) == -1:
        print('Addresses stay random here: now and then a Wine program will not start.', file=sys.stderr)


def with_errors(environment=os.environ):
    """This environment, in which Wine tells why a program does not start. `-all` alone would hide that too."""
    channels = environment.get('WINEDEBUG', '-all')
    return {**environment, 'WINEDEBUG': f'{channels},err+all' if channels.endswith('-all') else channels}


def windows_path(path):
    """The name under which a Wine program sees a file of this system."""
    return 'Z:' + str(pathlib.Path(path).absolute()).replace('/', '\\')


class Ended(typing.NamedTuple):
    """How a Wine program ended."""
    words: tuple  # its command line
    code: int
    output: str
    errors: str  # what it and Wine said besides

    def __str__(self):
        return (f'{" ".join(self.words)} ended with {self.code}; output: {self.output or "none"}; '
                f'errors: {self.errors or "none"}')

    def expect(self, code=0):
        """Itself, when it ended with this code."""
        if self.code != code:
            raise AssertionError(str(self))
        return self


def run_wine(*words):
    """Runs a Wine program to its end. Its output goes through files: services that Wine starts on the way would hold
    a pipe open for ever."""
    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
        code = subprocess.run(['wine', *words], stdin=subprocess.DEVNULL, stdout=output, stderr=errors,
                              env=with_errors(), check=False).returncode
        texts = []
        for file in (output, errors):
            file.seek(0)
            texts.append(file.read().decode('utf-8', 'replace').replace('\r\n', '\n'))
        return Ended(words, code, *texts)


def change_registry(*words):
    """Runs `reg`, which has to succeed: a change that stays out unnoticed shows up as the fault of another test."""
    run_wine('reg', *words).expect()


def query_registry(*words):
    """What `reg query` prints; nothing when there is no such key or value."""
    return run_reg_that_may_miss('query', *words).output


def forget_registry(key):
    """Removes a key, which need not be there."""
    run_reg_that_may_miss('delete', key, '/f')


def run_reg_that_may_miss(*words):
    """`reg` ends with 1 when it does not find something; a `reg` that does not run ends with it too."""
    ended = run_wine('reg', *words)
    if ended.code == 1 and 'Unable to find the specified registry' in ended.output + ended.errors:
        return ended._replace(output='')
    return ended.expect()


fix_addresses()
