"""The software bill of materials: an SPDX 2.3 document of the delivered files and of what is linked into them."""
import datetime
import hashlib
import json
import re

MAKER = 'The MXOV Document Manager developers'
PRODUCT = 'SPDXRef-Package-mxov'
# Debian's copyright files name many licences; these are the ones of the code that is linked in.
LICENCES = {'libz-mingw-w64': 'Zlib', 'gcc-mingw-w64': 'GPL-3.0-or-later WITH GCC-exception-3.1'}


def reference(kind, name):
    return f'SPDXRef-{kind}-' + re.sub(r'[^A-Za-z0-9.-]', '-', name)


def checksums(data):
    return [{'algorithm': name.upper(), 'checksumValue': hashlib.new(name, data).hexdigest()}
            for name in ('sha1', 'sha256')]


def delivered_file(name, data):
    licence = 'NOASSERTION' if name.startswith('licences/') else 'MIT'
    return {'SPDXID': reference('File', name), 'fileName': f'./{name}', 'checksums': checksums(data),
            'licenseConcluded': licence, 'licenseInfoInFiles': [licence], 'copyrightText': 'NOASSERTION'}


def product(version, files):
    sums = sorted(hashlib.sha1(data).hexdigest() for data in files.values())
    code = hashlib.sha1(''.join(sums).encode()).hexdigest()
    return {'SPDXID': PRODUCT, 'name': 'mxov', 'versionInfo': version, 'supplier': f'Organization: {MAKER}',
            'downloadLocation': 'NOASSERTION', 'filesAnalyzed': True,
            'packageVerificationCode': {'packageVerificationCodeValue': code}, 'licenseConcluded': 'MIT',
            'licenseDeclared': 'MIT', 'licenseInfoFromFiles': ['MIT', 'NOASSERTION'],
            'copyrightText': f'Copyright (c) 2026 {MAKER}'}


def linked_package(component):
    licence = LICENCES.get(component.name, f'LicenseRef-{component.name}')
    return {'SPDXID': reference('Package', component.name), 'name': component.name, 'versionInfo': component.version,
            'supplier': 'Organization: Debian', 'downloadLocation': 'NOASSERTION', 'filesAnalyzed': False,
            'licenseConcluded': licence, 'licenseDeclared': licence, 'copyrightText': 'NOASSERTION',
            'externalRefs': [{'referenceCategory': 'PACKAGE-MANAGER', 'referenceType': 'purl',
                              'referenceLocator': f'pkg:deb/debian/{package}@{version.replace("+", "%2B")}'}
                             for package, version in component.packages]}


def relationship(subject, kind, target):
    return {'spdxElementId': subject, 'relationshipType': kind, 'relatedSpdxElement': target}


def relationships(files, components):
    yield relationship('SPDXRef-DOCUMENT', 'DESCRIBES', PRODUCT)
    for name in sorted(files):
        yield relationship(PRODUCT, 'CONTAINS', reference('File', name))
    for component in components:
        for user in component.users:
            yield relationship(reference('File', user), 'STATIC_LINK', reference('Package', component.name))


def bill(version, files, components, moment):
    """The document as bytes. Its namespace is derived from the files, so each delivery has its own."""
    document = {
        'spdxVersion': 'SPDX-2.3', 'dataLicense': 'CC0-1.0', 'SPDXID': 'SPDXRef-DOCUMENT', 'name': f'mxov-{version}',
        'creationInfo': {
            'created': datetime.datetime.fromtimestamp(moment, datetime.timezone.utc).strftime('%Y-%m-%dT%H:%M:%SZ'),
            'creators': [f'Organization: {MAKER}', f'Tool: mxov-release-{version}']},
        'packages': [product(version, files), *map(linked_package, components)],
        'files': [delivered_file(name, files[name]) for name in sorted(files)],
        'hasExtractedLicensingInfos': [
            {'licenseId': f'LicenseRef-{component.name}', 'extractedText': component.copyright}
            for component in components if component.name not in LICENCES],
        'relationships': list(relationships(files, components))}
    identity = hashlib.sha256(json.dumps(document, sort_keys=True).encode()).hexdigest()
    document['documentNamespace'] = f'https://spdx.org/spdxdocs/mxov-{version}-{identity}'
    return (json.dumps(document, indent=1, ensure_ascii=False) + '\n').encode()
