"""The pages of the project as a site: each file's name and its bytes."""
import os
import pathlib
import subprocess
import tempfile

from delivery import Refused


def site_files(root, moment):
    """{name: bytes} of the site, made with the time of the release."""
    with tempfile.TemporaryDirectory() as folder:
        ended = subprocess.run([root / 'tools/site', '--no-install'], capture_output=True, text=True, check=False,
                               env={**os.environ, 'MXOV_BUILD': folder, 'SOURCE_DATE_EPOCH': str(moment)})
        if ended.returncode != 0:
            raise Refused(f'the pages: {ended.stderr.strip()}')
        site = pathlib.Path(folder) / 'site'
        return {path.relative_to(site).as_posix(): path.read_bytes() for path in site.rglob('*') if path.is_file()}
