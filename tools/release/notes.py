"""The release notes: the changes of the version, and what was tried where."""
import re

# A link to another page or part of the tree; its text stays.
LINK = re.compile(r'\[([^\]]+)\]\((?!https?:)[^)]+\)')


def section(changes):
    """The text of the topmost version of the changes."""
    return re.search(r'^## [^\n]*\n(.*?)(?=^## |\Z)', changes, re.MULTILINE | re.DOTALL)[1].strip()


def notes(root, version):
    """The page as bytes."""
    changes = re.sub('^###', '##', section((root / 'CHANGELOG.md').read_text(encoding='utf-8')), flags=re.MULTILINE)
    tried = re.sub('^#', '##', (root / 'docs/windows.md').read_text(encoding='utf-8').strip(), flags=re.MULTILINE)
    return LINK.sub(r'\1', f'# MXOV Document Manager {version}\n\n{changes}\n\n{tried}\n').encode()
