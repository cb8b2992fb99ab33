"""The software bill of materials: a CycloneDX 1.6 document of the delivered files and of what is linked into them."""
import datetime
import hashlib
import json
import urllib.parse
import uuid

MAKER = 'The MXOV Document Manager developers'
NAMES = uuid.UUID('{0f1f4a34-7a3e-4c55-9d0e-6a1b8f2d7c90}')
# Debian's copyright files name many licences; these are the ones of the code that is linked in.
LICENCES = {'libz-mingw-w64': {'license': {'id': 'Zlib'}},
            'gcc-mingw-w64': {'expression': 'GPL-3.0-or-later WITH GCC-exception-3.1'}}
OWN = [{'license': {'id': 'MIT'}}]


def hashes(data):
    return [{'alg': f'SHA-{bits}', 'content': hashlib.new(f'sha{bits}', data).hexdigest()} for bits in (1, 256)]


def file_component(name, data, folder=''):
    """A file; its reference is its path, below the archive that holds it."""
    path = f'{folder}{name}'
    licence = {} if name.startswith('licences/') else {'licenses': OWN}
    return {'type': 'file', 'bom-ref': path, 'name': name, 'hashes': hashes(data), **licence}


def archive_component(name, data, content):
    """An archive with the files in it; the installer holds those of the archive and of the kit once more."""
    files = [file_component(inner, content[inner], f'{name}/') for inner in sorted(content)]
    return {**file_component(name, data), **({'components': files} if files else {})}


def address(package, version, **qualifiers):
    """The package URL of a package of Debian."""
    words = f'?{urllib.parse.urlencode(qualifiers)}' if qualifiers else ''
    return f'pkg:deb/debian/{package}@{urllib.parse.quote(version, safe="~.-")}{words}'


def linked_component(component):
    """A source package; inside it the binary packages that the linked files come from."""
    text = {'license': {'name': component.name, 'url': f'licences/{component.name}.txt'}}  # in the archive and in the kit
    url = address(component.name, component.version, arch='source')
    parts = [{'type': 'library', 'bom-ref': address(*package), 'name': package[0], 'version': package[1],
              'purl': address(*package)} for package in component.packages]
    return {'type': 'library', 'bom-ref': url, 'supplier': {'name': 'Debian'}, 'name': component.name,
            'version': component.version, 'licenses': [LICENCES.get(component.name, text)], 'purl': url, 'components': parts}


def dependencies(archives, components):
    """Which delivered file contains code of which package."""
    users = {}
    for component in components:
        for archive, (_, content) in archives.items():
            for user in content.keys() & set(component.users):
                users.setdefault(f'{archive}/{user}', []).append(address(component.name, component.version, arch='source'))
    return [{'ref': user, 'dependsOn': sorted(users[user])} for user in sorted(users)]


def bill(version, archives, components, moment):
    """The document as bytes, from {name: (bytes, {name: bytes} of its content)} of what is delivered. Its serial number is
    derived from the files, so each delivery has its own."""
    document = {
        '$schema': 'http://cyclonedx.org/schema/bom-1.6.schema.json', 'bomFormat': 'CycloneDX', 'specVersion': '1.6',
        'version': 1,
        'metadata': {
            'timestamp': datetime.datetime.fromtimestamp(moment, datetime.timezone.utc).strftime('%Y-%m-%dT%H:%M:%SZ'),
            'tools': {'components': [{'type': 'application', 'name': 'mxov-release', 'version': version}]},
            'manufacturer': {'name': MAKER},
            'component': {'type': 'application', 'bom-ref': 'mxov', 'name': 'mxov', 'version': version, 'licenses': OWN,
                          'copyright': f'Copyright (c) 2026 {MAKER}'}},
        'components': [*(archive_component(name, *archives[name]) for name in sorted(archives)),
                       *map(linked_component, components)],
        'dependencies': [{'ref': 'mxov', 'dependsOn': sorted(archives)}, *dependencies(archives, components)]}
    identity = hashlib.sha256(json.dumps(document, sort_keys=True).encode()).hexdigest()
    document['serialNumber'] = f'urn:uuid:{uuid.uuid5(NAMES, identity)}'
    return (json.dumps(document, indent=1, ensure_ascii=False) + '\n').encode()
