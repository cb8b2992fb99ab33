"""Which libraries of the tool chain are inside the delivered files, from the linker's maps and Debian's package data."""
import pathlib
import re
import subprocess
import typing

from delivery import Refused

# An object file or a member of an archive that was taken in: "/usr/lib/.../libgcc.a(_chkstk.o)", "LOAD /usr/.../crt2.o".
MEMBER = re.compile(r'^(/[^\s()]+\.a)\(|^LOAD (/[^\s()]+\.o)$', re.MULTILINE)
MAPS = {'MXOVDocViewCtrl.ocx': 'MXOVDocViewCtrl.map', 'mxovshare.dll': 'mxovshare.map', 'viewer.exe': 'viewer.map',
        'mxovpkg.exe': 'mxovpkg.map', 'probe/probe.exe': 'probe.map'}


class Component(typing.NamedTuple):
    """A source package of Debian of which something is linked in."""
    name: str
    version: str
    packages: tuple  # (name, version) of the binary packages that the linked files come from
    copyright: str
    users: tuple  # the delivered files that contain it


def query(*words):
    ended = subprocess.run(['dpkg-query', *words], capture_output=True, text=True, check=False)
    if ended.returncode != 0:
        raise Refused(f'what is linked in belongs to no package: {ended.stderr.strip()}')
    return ended.stdout


def linked_files(build, program):
    """The object files and archives that a delivered file takes in from outside the build."""
    text = (build / 'windows' / MAPS[program]).read_text(encoding='utf-8')
    paths = {pathlib.Path(archive or loaded).resolve() for archive, loaded in MEMBER.findall(text)}
    return {path for path in paths if build.resolve() not in path.parents}


def owners(paths):
    """{path: Debian package}"""
    lines = query('-S', *map(str, sorted(paths))).splitlines()
    return {path: package.partition(':')[0] for package, path in (line.rsplit(': ', 1) for line in lines)}


def components(build):
    """What is linked into the delivered files, sorted by name."""
    files = {program: linked_files(build, program) for program in MAPS}
    package_of = owners(set().union(*files.values()))
    users, packages = {}, {}
    for program, paths in files.items():
        for package in {package_of[str(path)] for path in paths}:
            version, source, source_version = query(
                '-W', '-f', '${Version} ${source:Package} ${source:Version}', package).split()
            users.setdefault((source, source_version), set()).add(program)
            packages.setdefault(source, set()).add((package, version))
    return [Component(source, version, tuple(sorted(packages[source])), copyright_of(min(packages[source])[0]),
                      tuple(sorted(users[source, version]))) for source, version in sorted(users)]


def copyright_of(package):
    return pathlib.Path(f'/usr/share/doc/{package}/copyright').read_text(encoding='utf-8', errors='replace')
