"""The kit for host makers: each file's name in its archive, and its bytes."""
import pathlib
import re
import subprocess
import tempfile

import delivery

GENERATED = {'MXOVDocView.h': 'include', 'MXOVDocView_i.c': 'include', 'MXOVDocView.tlb': 'typelib'}
GUIDE_HOSTS = ('AtlHost.cpp', 'SideBySideHost.cpp', 'SiteHost.cpp', 'ManifestHost.exe.manifest')
TEXTS = frozenset({'.bas', '.c', '.cpp', '.cs', '.h', '.idl', '.js', '.md', '.manifest', '.pas', '.py', '.vbs', '.wxs'})


def windows_lines(name, data):
    """Sources and pages with CRLF at line ends; other files as they are."""
    return data.replace(b'\r\n', b'\n').replace(b'\n', b'\r\n') if pathlib.Path(name).suffix in TEXTS else data


def guide_hosts(root):
    """The samples of the host guide that are whole hosts."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([root / 'tools/release/guide-samples', root / 'docs/host-guide.md', folder], check=True)
        return {f'hosts/cpp/{name}': (pathlib.Path(folder) / name).read_bytes() for name in GUIDE_HOSTS}


def sdk_files(root, build, version, components):
    """{name: bytes} of the kit."""
    files = {path.relative_to(root / 'sdk').as_posix(): path.read_bytes()
             for path in (root / 'sdk').rglob('*') if path.is_file() and path.name != 'CMakeLists.txt'}
    files['README.md'] = files['README.md'].replace(b'@VERSION@', version.encode())
    files['host-guide.md'] = (root / 'docs/host-guide.md').read_bytes()
    files['typelib/MXOVDocView.idl'] = (root / 'MXOVDocViewCtrl/resources/MXOVDocView.idl').read_bytes()
    files['manifest/MXOVDocViewCtrl.manifest'] = (build / 'bin/MXOVDocViewCtrl.manifest').read_bytes()
    for name, folder in GENERATED.items():
        # The compiler of the type library names its source with the folder.
        files[f'{folder}/{name}'] = re.sub(rb'from \S*/(?=\w+\.idl )', b'from ', (build / 'generated' / name).read_bytes())
    probe = build / 'sdk/probe.exe'
    if not probe.exists():
        raise delivery.Refused('probe.exe was not built')
    files['probe/probe.exe'] = probe.read_bytes()
    files |= guide_hosts(root)
    licences = {name: data for name, data in delivery.texts(root, version, components).items()
                if name == 'LICENSE.txt' or name.startswith('licences/')}
    return {**{name: windows_lines(name, data) for name, data in files.items()}, **licences}
