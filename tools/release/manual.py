"""The manual page of the command line, made from docs/mxovpkg.md: headings, paragraphs, tables and literal blocks, of which
those that start with the program's name are the synopsis."""
import re

TITLE = '''.\\" Made from docs/mxovpkg.md.
.TH MXOVPKG 1 "" "mxov {version}" "MXOV Document Manager"
.nh
.SH NAME
mxovpkg \\- make, show, change and unpack machining packages
.SH SYNOPSIS
{synopsis}
.SH DESCRIPTION
'''
PROGRAM = '    mxovpkg '
SPAN = re.compile(r'`([^`]+)`|\[([^\]]+)\]\([^)]*\)')
FENCE = '```'


def escaped(text):
    text = text.replace('\\', '\\e').replace('-', '\\-')
    return f'\\&{text}' if text.startswith(('.', "'")) else text


def inline(text):
    """A paragraph or cell: literal words in bold, links by their names."""
    out, end = [], 0
    for span in SPAN.finditer(text):
        out += [escaped(text[end:span.start()]),
                f'\\fB{escaped(span[1])}\\fP' if span[1] else inline(span[2])]
        end = span.end()
    line = ''.join([*out, escaped(text[end:])])
    return line if line.startswith('\\&') or not line.startswith(('.', "'")) else f'\\&{line}'


def blocks(page):
    """The page's blocks, each as its lines: what is between empty lines, or between fences."""
    block, fenced = [], False
    for line in [*page.splitlines(), '']:
        if line == FENCE:
            fenced = not fenced
        if line or fenced:
            block.append(line)
        elif block:
            yield block
            block = []


def cells(row):
    return [cell.strip() for cell in row.strip('|').split(' | ')]


def table(rows):
    """One entry for each row: the first cell with what is between it and the last one, which is below."""
    for first, *middle, last in map(cells, rows[2:]):
        yield f'.TP\n{inline(first)}{f" ({inline(middle[0])})" if middle else ""}\n{inline(last)}'


def literal(lines):
    return '\n'.join(['.PP', '.RS 4', '.nf', *map(escaped, lines), '.fi', '.RE'])


def converted(block):
    first = block[0]
    if first.startswith('## '):
        return f'.SH {escaped(first[3:].upper())}'
    if first.startswith('|'):
        return '\n'.join(table(block))
    if first == FENCE:
        return literal(block[1:-1])
    if first.startswith('    '):
        return literal(line[4:] for line in block)
    return '.PP\n' + inline(' '.join(block))


def commands(page):
    """Every call of the synopsis as one line without the program's name."""
    lines = [line for block in blocks(page) if block[0].startswith(PROGRAM) for line in block]
    return re.sub(r'\n {5,}', ' ', '\n'.join(lines)).replace(PROGRAM, '').splitlines()


def synopsis(call):
    name, _, rest = call.partition(' ')
    return f'.SY mxovpkg\n.B {escaped(name)}\n{escaped(rest)}\n.YS'.replace('\n\n', '\n')


def manual(page, version):
    """The manual page as bytes, from the text of docs/mxovpkg.md."""
    title = TITLE.format(version=version, synopsis='\n'.join(map(synopsis, commands(page))))
    body = [converted(block) for block in blocks(page) if not block[0].startswith('# ')]
    return (title + '\n'.join(body) + '\n').encode('ascii')
