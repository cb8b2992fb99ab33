"""The package command line that is tested: for Windows, or the one that MXOVPKG names."""
import os
import pathlib

BUILD = pathlib.Path(os.environ['MXOV_BUILD'])
WINDOWS = BUILD / 'bin' / 'mxovpkg.exe'
LINUX = BUILD / 'linux' / 'mxovpkg'
PROGRAM = pathlib.Path(os.environ.get('MXOVPKG', WINDOWS))


def command_of(program):
    """The words that start it."""
    return ['wine', str(program)] if program.suffix == '.exe' else [str(program)]


COMMAND = command_of(PROGRAM)
ON_WINDOWS = PROGRAM.suffix == '.exe'
