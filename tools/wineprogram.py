"""Runs Wine programs to their end for tests and tools, and keeps what they and Wine say."""
import pathlib
import subprocess
import tempfile
import typing


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
                              check=False).returncode
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

