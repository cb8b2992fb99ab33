"""Reads the information file of a package as its writer meant it."""
import os

CODE_PAGE = 'cp932' if os.environ.get('MXOV_PLACE') == 'japanese' else 'cp1252'  # of the platform


def decoded(content):
    """The text: the library keeps the code page of a file that can hold what is new."""
    if content[:2] in (b'\xff\xfe', b'\xfe\xff'):
        return content.decode('utf-16')
    try:
        return content.decode('utf-8-sig')
    except UnicodeDecodeError:
        return content.decode(CODE_PAGE)
