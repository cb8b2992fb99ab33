"""Archives with the same bytes whenever they are made from the same files."""
import io
import time
import zipfile

REGULAR_FILE = 0o100644


def packed(files, folder, moment):
    """A ZIP of {name: bytes} below one folder: sorted, each entry with the same time (seconds since 1970, in UTC)."""
    stream = io.BytesIO()
    with zipfile.ZipFile(stream, 'w', zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for name in sorted(files):
            entry = zipfile.ZipInfo(f'{folder}/{name}', time.gmtime(moment)[:6])
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 3  # Unix, on every machine
            entry.external_attr = REGULAR_FILE << 16
            archive.writestr(entry, files[name])
    return stream.getvalue()
