"""Reads package files with Python's standard library alone."""
import configparser
import zipfile

from informationfile import decoded


def sections_of(package):
    """The sections of the information file of a package."""
    with zipfile.ZipFile(package) as archive:
        text = decoded(archive.read('mxinfo.ini'))
    parser = configparser.RawConfigParser()
    parser.optionxform = str
    parser.read_string(text)
    return {name: dict(parser.items(name)) for name in parser.sections()}
