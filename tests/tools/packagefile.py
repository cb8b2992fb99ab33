"""Reads package files with Python's standard library alone."""
import configparser
import zipfile


def sections_of(package):
    """The sections of the information file of a package."""
    with zipfile.ZipFile(package) as archive:
        data = archive.read('mxinfo.ini')
    text = data.decode('utf-16' if data[:2] in (b'\xff\xfe', b'\xfe\xff') else 'utf-8')
    parser = configparser.RawConfigParser()
    parser.optionxform = str
    parser.read_string(text)
    return {name: dict(parser.items(name)) for name in parser.sections()}
