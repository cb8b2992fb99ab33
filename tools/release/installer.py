"""The installer, made with wixl from installer.wxs, with the same bytes whenever it is made from the same files."""
import hashlib
import os
import pathlib
import struct
import subprocess
import tempfile
import uuid
import xml.etree.ElementTree

from delivery import Refused

SOURCE = pathlib.Path(__file__).resolve().parent / 'installer.wxs'
ICON = SOURCE.parents[2] / 'viewer/resources/viewer.ico'
NAMES = uuid.UUID('{6b0f5f6a-0e58-4e0e-a1a6-6a8f3a0c5d11}')
# Where the files go unless the caller names a folder: action, its value, when, and its place in the sequences.
FOLDERS = (('TakeUserFolder', '[USERFOLDER]', 'USERFOLDER AND NOT ALLUSERS AND NOT INSTALLDIR', 720),
           ('TakeMachineFolder', '[MACHINEFOLDER]', 'MACHINEFOLDER AND ALLUSERS AND NOT INSTALLDIR', 730),
           ('UseMachineFolder', '[ProgramFiles64Folder]MXOV Document Manager\\', 'ALLUSERS AND NOT INSTALLDIR', 750))
# What wixl cannot express, or gets wrong: rows for "the hive of the user or of the machine", the folder for the machine, and the
# search path. It also writes sequences with actions of one's own in an order that changes from run to run.
COMPLETION = (
    'UPDATE `Registry` SET `Root` = -1 WHERE `Root` = 4',
    *(f"INSERT INTO `CustomAction` (`Action`, `Type`, `Source`, `Target`) VALUES ('{action}', 51, 'INSTALLDIR', '{folder}')"
      for action, folder, _, _ in FOLDERS),
    *(f"INSERT INTO `{sequence}` (`Action`, `Condition`, `Sequence`) VALUES ('{action}', '{condition}', {place})"
      for action, _, condition, place in FOLDERS for sequence in ('InstallExecuteSequence', 'InstallUISequence')),
    *(f"UPDATE `Component` SET `Condition` = 'NOT ALLUSERS' WHERE `Component` = '{name}'"
      for name in ('UserPath', 'UserPrograms')),
    "UPDATE `Component` SET `Condition` = 'ALLUSERS' WHERE `Component` = 'MachinePath'",
    "INSERT INTO `InstallExecuteSequence` (`Action`, `Sequence`) VALUES ('RemoveEnvironmentStrings', 3300)",
    "INSERT INTO `InstallExecuteSequence` (`Action`, `Sequence`) VALUES ('WriteEnvironmentStrings', 5200)")
SEARCH_PATH = '''Environment\tName\tValue\tComponent_
s72\tl255\tL255\ts72
Environment\tEnvironment
UserPath\t=-PATH\t[~];[INSTALLDIR]\tUserPath
MachinePath\t=-*PATH\t[~];[INSTALLDIR]\tMachinePath
'''
SUMMARY = uuid.UUID('{f29f85e0-4ff9-1068-ab91-08002b27b3d9}').bytes_le
REVISION, CREATED, SAVED = 9, 12, 13


def run(*words, folder=None):
    ended = subprocess.run(list(map(str, words)), capture_output=True, text=True, check=False, cwd=folder)
    if ended.returncode != 0 or 'CRITICAL' in ended.stderr:
        raise Refused(f'{words[0]}: {ended.stderr.strip()}')


def identifier(*parts):
    """A GUID that depends on nothing but these texts, as the installer spells it."""
    return f'{{{str(uuid.uuid5(NAMES, " ".join(parts))).upper()}}}'


def stage(files, folder, moment):
    """Writes the files; their times get into the cabinet."""
    for name, data in files.items():
        path = folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)
        path.chmod(0o644)
        os.utime(path, (moment, moment))


def summary_values(data):
    """{property: offset of its value behind the type} of the summary information inside the file."""
    start = data.index(SUMMARY)
    section = data.index(SUMMARY[:4], start) - 28 + struct.unpack_from('<I', data, start + 16)[0]
    count = struct.unpack_from('<I', data, section + 4)[0]
    pairs = struct.unpack_from(f'<{2 * count}I', data, section + 8)
    return {pairs[i]: section + pairs[i + 1] + 4 for i in range(0, 2 * count, 2)}


def fix_summary(data, code, moment):
    """Replaces the random package code and the two times that wixl writes."""
    values = summary_values(data)
    data[values[REVISION] + 4:values[REVISION] + 4 + len(code)] = code.encode()
    for field in (CREATED, SAVED):
        struct.pack_into('<Q', data, values[field], (moment + 11644473600) * 10**7)


def add(parent, kind, key, **attributes):
    """Adds an element whose identifier depends on nothing but its kind and this text."""
    name = identifier(kind, key)[1:-1].replace('-', '')
    return xml.etree.ElementTree.SubElement(parent, kind, Id=f'_{name}', **attributes)


def add_folder(parent, folder, names):
    """Describes the files of a folder of the kit as a component, and those of the folders below it."""
    files, inner = [], {}
    for name in names:
        first, _, rest = name.removeprefix(folder).partition('/')
        if rest:
            inner.setdefault(f'{folder}{first}/', []).append(name)
        else:
            files.append((name, first))
    if files:
        component = add(parent, 'Component', folder, Guid=identifier('guid', folder), Win64='yes')
        for name, first in files:
            add(component, 'File', name, Name=first, Source=f'sdk/{name}')
        component[0].set('KeyPath', 'yes')
    for path, below in inner.items():
        add_folder(add(parent, 'Directory', path, Name=path.split('/')[-2]), path, below)


def kit_source(kit):
    """The kit for host makers as a source of the installer."""
    root = xml.etree.ElementTree.Element('Wix', xmlns='http://schemas.microsoft.com/wix/2006/wi')
    fragment = xml.etree.ElementTree.SubElement(root, 'Fragment')
    install = xml.etree.ElementTree.SubElement(fragment, 'DirectoryRef', Id='INSTALLDIR')
    add_folder(xml.etree.ElementTree.SubElement(install, 'Directory', Id='Sdk', Name='sdk'), '', sorted(kit))
    group = xml.etree.ElementTree.SubElement(fragment, 'ComponentGroup', Id='Sdk')
    for component in install.iter('Component'):
        xml.etree.ElementTree.SubElement(group, 'ComponentRef', Id=component.get('Id'))
    return xml.etree.ElementTree.tostring(root)


def installer(version, files, kit, moment):
    """The installer's bytes, from {name: bytes} of what is delivered and of the kit for host makers."""
    parts = [name.encode() + data for name, data in sorted({**files, **{f'sdk/{name}': kit[name] for name in kit}}.items())]
    content = hashlib.sha256(b''.join(parts) + SOURCE.read_bytes()).hexdigest()
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        # wixl finds files in the current folder, then beside its source.
        stage({SOURCE.name: SOURCE.read_bytes(), ICON.name: ICON.read_bytes(),
               'sdk.wxs': kit_source(kit), **{f'sdk/{name}': data for name, data in kit.items()},
               **{f'files/{name}': data for name, data in files.items()}}, folder, moment)
        database = folder / 'mxov.msi'
        run('wixl', '-a', 'x64', '-o', database, '-D', f'Version={version}',
            '-D', f'ProductCode={identifier("product", version, content)}', SOURCE.name, 'sdk.wxs', folder=folder)
        for query in COMPLETION:
            run('msibuild', database, '-q', query)
        (folder / 'Environment.idt').write_bytes(SEARCH_PATH.replace('\n', '\r\n').encode())
        run('msibuild', database, '-i', folder / 'Environment.idt')
        data = bytearray(database.read_bytes())
    fix_summary(data, identifier('package', version, content), moment)
    return bytes(data)
