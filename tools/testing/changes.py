"""The changes that are made to a source, one at a time: each should make a test fail."""
import hashlib
import itertools
import re
import typing

from structure import Structure

OTHER_SIGN = {'==': '!=', '!=': '==', '<': '<=', '<=': '<', '>': '>=', '>=': '>', '&&': '||', '||': '&&'}
OTHER_NAME = {'true': 'false', 'false': 'true', 'TRUE': 'FALSE', 'FALSE': 'TRUE'}
INTEGER = re.compile(r'(0[xX][0-9a-fA-F\']+|[0-9\']+)([uUlLzZ]*)$')
FLAG = re.compile(r'[A-Z][A-Z0-9_]+$')
NOT_A_TYPE = {'delete', 'new', 'throw', 'co_await', 'else'}


class Change(typing.NamedTuple):
    file: str
    line: int
    kind: str  # condition, constant, call, order, string or return
    start: int  # what is replaced, as offsets
    end: int
    old: str
    new: str
    digest: str  # of the whole source

    @property
    def key(self):
        return hashlib.sha256(repr(tuple(self)).encode()).hexdigest()[:16]

    def apply(self, source):
        return source[:self.start] + self.new + source[self.end:]

    def __str__(self):
        def brief(text):
            text = ' '.join(text.split())
            return text if len(text) <= 70 else f'{text[:45]} ... {text[-20:]}'
        if not self.new:
            return f'{self.kind}: without {brief(self.old)}'
        return f'{self.kind}: {brief(self.old)} -> {brief(self.new)}' if self.old else f'{self.kind}: {brief(self.new)}'


def next_number(text):
    match = INTEGER.match(text)
    if not match:
        return f'({text} + 1)'
    digits, suffix = match.group(1).replace("'", ''), match.group(2)
    number = int(digits, 16 if digits[:2] in ('0x', '0X') else 8 if digits[0] == '0' and len(digits) > 1 else 10) + 1
    return (hex(number) if digits[:2] in ('0x', '0X') else str(number)) + suffix


def other_text(token):
    quote = token.text.index('"')
    place = token.text.index('(') if token.text[:quote].endswith('R') else quote
    return f'{token.text[:place + 1]}x{token.text[place + 1:]}'


class Changes:
    """All changes of one source."""
    def __init__(self, file, source):
        self.file, self.source = file, source
        self.digest = hashlib.sha256(source.encode()).hexdigest()
        self.found = Structure(source)
        self.tokens = self.found.tokens
        self.fixed = self._fixed()

    def all(self):
        """In the order of the source."""
        made = itertools.chain(self._signs(), self._conditions(), self._constants(), self._flags(), self._strings(),
                               self._left_out(), self._orders(), self._returns())
        return sorted(set(made), key=lambda change: (change.start, change.end, change.kind, change.new))

    def _change(self, kind, start, end, new):
        line = self.source.count('\n', 0, start) + 1
        return Change(self.file, line, kind, start, end, self.source[start:end], new, self.digest)

    def _replace(self, kind, token, new):
        return self._change(kind, token.start, token.end, new)

    def _fixed(self):
        """Places of tokens that the compiler alone looks at."""
        found = set()
        for place, token in enumerate(self.tokens):
            if token.text in ('static_assert', 'alignas', '__declspec') and self.found.is_at(place + 1, '('):
                found.update(range(place, self.found.partner[place + 1]))
            elif token.text == 'extern' or token.text == '[' and self.found.is_at(place + 1, '['):
                found.update((place, place + 1, place + 2))
        return found

    def _free(self):
        return ((place, token) for place, token in enumerate(self.tokens) if place not in self.fixed)

    def _has_blanks(self, token):
        return self.source[token.start - 1].isspace() and self.source[token.end].isspace()

    def _signs(self):
        for place, token in self._free():
            if token.kind != 'sign':
                continue
            if token.text in OTHER_SIGN and self._has_blanks(token):
                yield self._replace('condition', token, OTHER_SIGN[token.text])
            elif token.text == '!' and not self.found.is_at(place - 1, 'operator'):
                yield self._replace('condition', token, '')

    def _conditions(self):
        """A whole condition turned round, unless changing its only sign does the same."""
        for first, last in self.found.conditions:
            signs = [token for token in self.tokens[first:last + 1] if token.text == '!' or token.text in OTHER_SIGN]
            if len(signs) == 1:
                continue
            text = self.found.text(first, last)
            yield self._change('condition', self.tokens[first].start, self.tokens[last].end, f'!({text})')

    def _constants(self):
        for _, token in self._free():
            if token.kind == 'number':
                yield self._replace('constant', token, next_number(token.text))
            elif token.kind == 'name' and token.text in OTHER_NAME:
                yield self._replace('constant', token, OTHER_NAME[token.text])

    def _flags(self):
        """One of several flags left out."""
        for place, token in self._free():
            if token.text != '|' or token.kind != 'sign' or not 0 < place < len(self.tokens) - 1:
                continue
            before, after = self.tokens[place - 1], self.tokens[place + 1]
            if FLAG.match(after.text) and not self.found.is_at(place + 2, '(', '::'):
                yield self._change('constant', before.end, after.end, '')
            if FLAG.match(before.text) and not self.found.is_at(place - 2, '|', '::'):
                yield self._change('constant', before.start, after.start, '')

    def _strings(self):
        for _, token in self._free():
            if token.kind == 'string':
                yield self._replace('string', token, other_text(token))
            elif token.kind == 'character':
                quote = token.text.index("'")
                letter = 'y' if token.text[quote + 1:-1] == 'x' else 'x'
                yield self._replace('string', token, f"{token.text[:quote]}'{letter}'")

    def _left_out(self):
        for first, last in self.found.entries:
            yield self._change('call', self.tokens[first].start, self.tokens[last].end, '')
        for statement in self.found.statements:
            name = self._declared(statement)
            if not name or not self._is_used(name, statement):
                yield self._change('call', self.tokens[statement.first].start, self.tokens[statement.last].start, '')

    def _declared(self, statement):
        """The name that a statement declares; empty for an expression."""
        place, before = statement.first, ''
        while self.found.is_at(place, '['):
            place = self.found.partner[place] + 1
        if self.tokens[place].text in NOT_A_TYPE:
            return ''
        start = place
        while self.tokens[place].kind == 'name' or self.tokens[place].text in ('::', '<', '>', '>>', ',', '*', '&'):
            before = self.tokens[place - 1].text if place > start else ''
            place += 1
        is_named = place - 1 > start and self.tokens[place - 1].kind == 'name'
        of_type = re.match(r'\w+$|[>*&]$|>>$', before)
        return self.tokens[place - 1].text if is_named and of_type and place - 2 >= start else ''

    def _is_used(self, name, statement):
        after = self.tokens[statement.last + 1:self.found.partner[statement.block]]
        return any(token.text == name for token in after)

    def _orders(self):
        starting = {statement.first: statement for statement in self.found.statements}
        for one in self.found.statements:
            two = starting.get(one.last + 1)
            if not two or self._declared(one) or self._declared(two):
                continue
            texts = [self.found.text(each.first, each.last) for each in (one, two)]
            if texts[0] != texts[1] and any('(' in text for text in texts):
                between = self.source[self.tokens[one.last].end:self.tokens[two.first].start]
                yield self._change('order', self.tokens[one.first].start, self.tokens[two.last].end,
                                   texts[1] + between + texts[0])

    def _returns(self):
        """A function that returns at once. Where it is one call, leaving that out is the same."""
        alone = {statement.first for statement in self.found.statements
                 if self.found.is_at(statement.last + 1, '}') and statement.returns == 'return;'}
        for brace, returns in self.found.bodies:
            if not self.found.is_at(brace + 1, '}', 'return') and brace + 1 not in alone:
                place = self.tokens[brace].end
                yield self._change('return', place, place, f' {returns}')


def changes_of(file, source):
    return Changes(file, source).all()
