"""Functions, statements and conditions of a C++ source, as far as changes need them. The sources are formatted: conditions
stand in braces, and a declaration begins in the column of its scope."""
import typing

from tokens import partners, tokens_of

ON_CONDITION = {'if', 'while', 'for'}
NOT_SIMPLE = {'return', 'break', 'continue', 'goto', 'using', 'typedef', 'static_assert', 'throw', 'co_return', 'namespace'}
ACCESS = {'public', 'protected', 'private'}
SCOPE_OF = {'class', 'struct', 'union', 'namespace', 'extern'}


class Statement(typing.NamedTuple):
    """An expression or a declaration that ends with ";", as places of tokens. Both are part of it."""
    first: int
    last: int
    block: int  # place of the brace that encloses it
    returns: str  # how the function that it is in returns early; empty in a function without a name


class Structure:
    def __init__(self, source):
        self.source = source
        self.tokens = tokens_of(source)
        self.partner = partners(self.tokens)
        self.statements = []
        self.conditions = []  # (first, last) of an if's or a while's
        self.entries = []  # (first, last) of a map's entry
        self.bodies = []  # (brace, how the function returns early)
        self._seen = set()  # braces of functions without a name
        self._scope(0, len(self.tokens))

    def text(self, first, last):
        return self.source[self.tokens[first].start:self.tokens[last].end]

    def is_at(self, place, *texts):
        return place < len(self.tokens) and self.tokens[place].text in texts and self.tokens[place].kind in ('sign', 'name')

    def _scope(self, place, end):
        """Declarations between two places."""
        head = place
        while place < end:
            if self.is_at(place, ';') or self.is_at(place, ':') and self.is_at(place - 1, *ACCESS):
                head = place + 1
            elif self.is_at(place, '(', '['):
                place = self.partner[place]
                if self._is_map(head, place):
                    place = head = self._map(head, place)
                    continue
            elif self.is_at(place, '{'):
                closing = self.partner[place]
                if not self.is_at(closing + 1, ',', '{'):  # else a member's initial value before a constructor's body
                    self._braces(head, place, closing)
                    head = closing + 1
                place = closing
            place += 1

    def _is_map(self, head, closing):
        return self.tokens[head].text.startswith('BEGIN_') and self.is_at(head + 1, '(') and self.partner[head + 1] == closing

    def _map(self, head, place):
        """The entries of a map; returns the place after it."""
        place += 1
        while not self.tokens[place].text.startswith('END_'):
            closing = self.partner[place + 1]
            self.entries.append((place, closing))
            place = closing + 1
        return self.partner[place + 1] + 1

    def _braces(self, head, brace, closing):
        words = self._declaration(head, brace)
        texts = [self.tokens[place].text for place in words]
        if 'enum' in texts or '=' in texts and 'operator' not in texts:
            return
        if SCOPE_OF.intersection(texts[:2]) and not ('extern' in texts and '(' in texts):
            self._scope(brace + 1, closing)
        elif '(' in texts:
            returns = early_return(texts)
            self.bodies.append((brace, returns))
            self._block(brace, closing, returns)

    def _declaration(self, head, brace):
        """The places of a declaration's words before a brace, without what is in its brackets. What stands before its
        line, such as another macro, is left out."""
        words, place = [], head
        columns = {}
        while place < brace:
            token = self.tokens[place]
            columns.setdefault(token.line, (token.column, place))
            words.append(place)
            if self.is_at(place, '(', '[', '{'):
                place = self.partner[place]
            elif self.is_at(place, 'template') and self.is_at(place + 1, '<'):
                words.pop()
                place = self._angle(place + 1)
                columns.pop(token.line, None)
            place += 1
        if not columns:
            return words
        least = min(column for column, _ in columns.values())
        start = max(first for column, first in columns.values() if column == least)
        return [place for place in words if place >= start]

    def _angle(self, place):
        depth = 0
        while True:
            depth += {'<': 1, '>': -1, '>>': -2}.get(self.tokens[place].text, 0)
            if depth <= 0:
                return place
            place += 1

    def _block(self, brace, closing, returns):
        place = brace + 1
        while place < closing:
            place = self._statement(place, brace, returns)

    def _statement(self, place, block, returns):
        """Notes a statement; returns the place after it."""
        if self.is_at(place, '{'):
            self._block(place, self.partner[place], returns)
            return self.partner[place] + 1
        if self.is_at(place, 'else', 'do', 'try'):
            return self._statement(place + 1, block, returns)
        if self.is_at(place, 'case', 'default'):
            while not self.is_at(place, ':'):
                place += 1
            return place + 1
        if self.is_at(place, 'if', 'while', 'for', 'switch', 'catch'):
            return self._controlled(place, block, returns)
        return self._simple(place, block, returns)

    def _controlled(self, place, block, returns):
        opening = place + 2 if self.is_at(place + 1, 'constexpr') else place + 1
        closing = self.partner[opening]
        self._lambdas(opening, closing)
        if self.tokens[place].text in ON_CONDITION and opening == place + 1:
            self._condition(self.tokens[place].text, opening, closing)
        if self.is_at(closing + 1, ';'):
            return closing + 2
        return self._statement(closing + 1, block, returns)

    def _condition(self, word, opening, closing):
        parts = [opening, *(place for place in range(opening, closing) if self._ends_part(opening, place)), closing]
        first, last = parts[-2:] if word != 'for' else (parts + parts)[1:3]
        if last > first + 1 and (word != 'for' or len(parts) == 4):
            self.conditions.append((first + 1, last - 1))

    def _ends_part(self, opening, place):
        """Whether a ";" stands in these brackets and in none inside them."""
        inside = (each for each in range(opening + 1, place) if each in self.partner)
        return self.is_at(place, ';') and all(self.partner[each] < place for each in inside)

    def _simple(self, place, block, returns):
        first = place
        while not self.is_at(place, ';'):
            if self.is_at(place, '}'):
                return place  # a macro that needs no ";"
            if self.is_at(place, '(', '[', '{'):
                self._lambdas(place, self.partner[place])
                self._lambda(place)
                place = self.partner[place]
            place += 1
        if place > first and self.tokens[first].text not in NOT_SIMPLE | SCOPE_OF | {'enum'}:
            self.statements.append(Statement(first, place, block, returns))
        return place + 1

    def _lambdas(self, opening, closing):
        for place in range(opening + 1, closing):
            self._lambda(place)

    def _lambda(self, place):
        """Notes the statements of a function without a name whose body begins at a place, once."""
        if self.is_at(place, '{') and place not in self._seen and self._is_lambda(place):
            self._seen.add(place)
            self._block(place, self.partner[place], '')

    def _is_lambda(self, brace):
        place = brace - 1
        if self.tokens[place].text in (')', ']', 'mutable', 'noexcept'):
            return True
        while self.tokens[place].kind == 'name' or self.tokens[place].text in ('::', '*', '&', '<', '>'):
            place -= 1
        return self.tokens[place].text == '->' and self.tokens[place - 1].text == ')'


def early_return(texts):
    """How a function with these words before its body returns early."""
    if texts[1] == '(' and '(' in texts[2:] and (texts[0].isupper() or texts[0].startswith('__')):
        texts = ['type', *texts[2:]]  # STDMETHODIMP_(ULONG), __declspec(dllexport)
    name = texts.index('(') - 1
    before = texts[:name]
    is_destructor = '~' in before
    is_constructor = name > 1 and texts[name - 1] == '::' and texts[name - 2] == texts[name]
    has_no_type = not [text for text in before if text not in ('explicit', 'constexpr', 'inline')]
    if is_destructor or is_constructor or has_no_type or 'void' in before and '*' not in before:
        return 'return;'
    return 'return {};'
