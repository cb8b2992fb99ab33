"""Runs Wine programs for tests and tools, and captures their output and Wine's."""
import functools
import pathlib
import subprocess
import tempfile
import typing

CODE_PAGES = r'HKLM\System\CurrentControlSet\Control\Nls\CodePage'


def windows_path(path):
    """A file's path as Wine programs see it."""
    return 'Z:' + str(pathlib.Path(path).absolute()).replace('/', '\\')


class Ended(typing.NamedTuple):
    """How a Wine program ended."""
    words: tuple  # its command line
    code: int
    output: str
    errors: str  # its error output and Wine's

    def __str__(self):
        return (f'{" ".join(self.words)} ended with {self.code}; output: {self.output or "none"}; '
                f'errors: {self.errors or "none"}')

    def expect(self, code=0):
        """Returns itself if it ended with this code, otherwise raises."""
        if self.code != code:
            raise AssertionError(str(self))
        return self


def run_wine(*words, encoding='utf-8'):
    """Runs a Wine program to its end. Its output goes to files: services that Wine starts would keep a pipe open
    forever."""
    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
        code = subprocess.run(['wine', *words], stdin=subprocess.DEVNULL, stdout=output, stderr=errors,
                              check=False).returncode
        texts = []
        for file in (output, errors):
            file.seek(0)
            texts.append(file.read().decode(encoding, 'replace').replace('\r\n', '\n'))
        return Ended(words, code, *texts)


def change_registry(*words):
    """Runs `reg`, which has to succeed: a change that silently fails would show up in another test."""
    run_wine('reg', *words).expect()


@functools.cache
def console_encoding():
    """The code page in which programs of the platform write."""
    return 'cp' + run_wine('reg', 'query', CODE_PAGES, '/v', 'OEMCP').expect().output.split()[-1]


def query_registry(*words):
    """The output of `reg query`; empty if there is no such key or value, which `reg` reports in the user's language. If `reg`
    does not start, the code is 1 as well."""
    ended = run_wine('reg', 'query', *words, encoding=console_encoding())
    if ended.code == 1 and (ended.output + ended.errors).lstrip().startswith('reg: '):
        return ''
    return ended.expect().output
