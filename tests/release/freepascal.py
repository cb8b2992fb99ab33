"""Free Pascal for 64-bit Windows. Debian has the compiler for it, but its units only as sources."""
import pathlib
import subprocess

SOURCES = next(pathlib.Path('/usr/share/fpcsrc').glob('[0-9]*'))
RUNTIME, PACKAGES = SOURCES / 'rtl', SOURCES / 'packages'
FOLDERS = (*(RUNTIME / name for name in ('inc', 'x86_64', 'win', 'win/wininc', 'win64', 'objpas', 'objpas/sysutils',
                                         'objpas/classes')),
           *(PACKAGES / name for name in ('fcl-base/src', 'fcl-registry/src', 'fcl-xml/src', 'rtl-objpas/src/inc',
                                          'rtl-objpas/src/win', 'winunits-base/src')))
# In the order of the runtime's own build: the first three are used by every unit without being named.
UNITS = (('-Us', '-Sg', RUNTIME / 'win64/system.pp'), (RUNTIME / 'inc/uuchar.pp',), (RUNTIME / 'objpas/objpas.pp',),
         (RUNTIME / 'win64/buildrtl.pp',))


def build(source, program, folder):
    """Builds a program; its units go to a folder."""
    paths = [f'-F{kind}{path}' for path in FOLDERS for kind in 'iu']
    for words in (*(('-Ur', *unit) for unit in UNITS), (f'-o{program}', source)):
        ended = subprocess.run(['ppcx64', '-n', '-Twin64', '-v0', *paths, f'-FU{folder}', *words],
                               capture_output=True, text=True, check=False)
        if ended.returncode != 0:
            raise AssertionError(f'{words[-1]}: {ended.stdout}{ended.stderr}')
