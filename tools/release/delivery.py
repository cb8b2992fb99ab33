"""What is delivered: each file's name in the archive, and its bytes."""
import pathlib

import manual

LANGUAGES = ('french', 'german', 'japanese', 'portuguese-brazilian')
HELP_LANGUAGES = ('english', 'portuguese-brazilian')
PRODUCT = frozenset({
    'MXOVDocViewCtrl.manifest', 'MXOVDocViewCtrl.ocx', 'mxovpkg.exe', 'mxovshare.dll', 'viewer.exe',
    *(f'lang/{language}/{module}.dll' for language in LANGUAGES for module in ('mxovtexts', 'viewertexts')),
    *(f'plugins/etc/mx/lang/{language}/Orvando.chm' for language in HELP_LANGUAGES)})
POLICIES = pathlib.Path(__file__).resolve().parent / 'policies'
SAMPLES = frozenset({'bracket.mxov', 'legacy.mxov'})


class Refused(Exception):
    """Why nothing can be delivered."""


def windows_text(text):
    """Text as the system's editor shows it in every version: with CRLF at line ends and a mark for UTF-8."""
    return '\r\n'.join(text.splitlines()).encode('utf-8-sig') + b'\r\n'


def product_files(folder):
    """The files of the build's folder by their names in the delivery. Refuses a folder that has other files than those
    listed above: a new file is then neither forgotten nor delivered by accident."""
    found = {path.relative_to(folder).as_posix(): path for path in folder.rglob('*') if path.is_file()}
    missing, unknown = (PRODUCT | SAMPLES) - found.keys(), found.keys() - PRODUCT - SAMPLES
    if missing or unknown:
        raise Refused('; '.join([f'{name} was not built' for name in sorted(missing)] +
                                [f'{name} is not in the list of what is delivered' for name in sorted(unknown)]))
    return {f'samples/{name}' if name in SAMPLES else name: path.read_bytes() for name, path in found.items()}


def texts(root, version, components):
    """The pages, licences and templates for group policy beside the product."""
    readme = (root / 'tools/release/README.txt').read_text(encoding='utf-8').replace('@VERSION@', version)
    licences = {f'licences/{component.name}.txt': windows_text(component.copyright) for component in components}
    script = (root / 'tools/release/check-windows.js').read_text(encoding='ascii')  # a mark would stop the script engine
    page = manual.manual((root / 'docs/mxovpkg.md').read_text(encoding='utf-8'), version)
    templates = {f'policies/{path.relative_to(POLICIES).as_posix()}': path.read_bytes().replace(b'\n', b'\r\n')
                 for path in sorted(POLICIES.rglob('*.adm?'))}
    return {**templates, 'README.txt': windows_text(readme), 'check-windows.js': script.replace('\n', '\r\n').encode('ascii'),
            'LICENSE.txt': windows_text((root / 'LICENSE').read_text(encoding='utf-8')), 'docs/mxovpkg.1': page, **licences}


def built_version(build):
    """The version that the build was configured with."""
    cache = (pathlib.Path(build) / 'windows/CMakeCache.txt').read_text(encoding='utf-8')
    return next(line.partition('=')[2] for line in cache.splitlines() if line.startswith('CMAKE_PROJECT_VERSION:'))
