"""The tokens of a C++ source, without comments and preprocessor lines."""
import bisect
import re
import typing

TOKEN = re.compile(r'''
    (?P<space>\s+|//[^\n]*|/\*.*?\*/|\\\n)
  | (?P<directive>\#(?:[^\n\\]|\\.|\\\n)*)
  | (?P<string>(?:L|u8|u|U)?R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"|(?:L|u8|u|U)?"(?:[^"\\\n]|\\.)*")
  | (?P<character>(?:L|u8|u|U)?'(?:[^'\\\n]|\\.)+')
  | (?P<number>\.?\d(?:[\w.]|'\w|[eEpP][+-])*)
  | (?P<name>[A-Za-z_]\w*)
  | (?P<sign><=>|<<=|>>=|->\*|\.\.\.|::|->|\+\+|--|&&|\|\||[<>=!+\-*/%&|^]=|<<|>>|.)
''', re.VERBOSE | re.DOTALL)
PAIRS = {'(': ')', '[': ']', '{': '}'}


class Token(typing.NamedTuple):
    kind: str  # string, character, number, name or sign
    text: str
    start: int  # offset in the source
    column: int  # from 0
    line: int  # from 1

    @property
    def end(self):
        return self.start + len(self.text)


def tokens_of(source):
    lines = [0] + [match.end() for match in re.finditer('\n', source)]
    found = []
    for match in TOKEN.finditer(source):
        kind = match.lastgroup if match.lastgroup != 'mark' else 'string'
        if kind in ('space', 'directive'):
            continue
        line = bisect.bisect_right(lines, match.start())
        found.append(Token(kind, match.group(), match.start(), match.start() - lines[line - 1], line))
    return found


def partners(tokens):
    """The place of the bracket that closes the one at a place."""
    found, opened = {}, []
    for place, token in enumerate(tokens):
        if token.kind == 'sign' and token.text in PAIRS:
            opened.append(place)
        elif token.kind == 'sign' and token.text in PAIRS.values():
            if not opened or PAIRS[tokens[opened[-1]].text] != token.text:
                raise ValueError(f'line {token.line}: "{token.text}" closes nothing')
            found[opened.pop()] = place
    if opened:
        raise ValueError(f'line {tokens[opened[-1]].line}: nothing closes "{tokens[opened[-1]].text}"')
    return found
