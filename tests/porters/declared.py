"""The names that C++ headers in the project's format declare outside one namespace: macros, what is declared in the global
namespace, and the public and protected members of the classes there."""
import re

TOKEN = re.compile(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])*\'|~?\w+|::|->|\S')
NOISE = re.compile(r'//[^\n]*|/\*.*?\*/', re.DOTALL)
DIRECTIVE = re.compile(r'^[ \t]*#(?:[^\n]*\\\n)*[^\n]*$', re.MULTILINE)
DEFINE = re.compile(r'^[ \t]*#\s*define\s+(\w+)', re.MULTILINE)
PAIRS = {'{': '}', '(': ')', '[': ']'}
ACCESS = ('public', 'protected', 'private')


def macros(text):
    return set(DEFINE.findall(text))


def names(text, namespace):
    """Pairs (class, name); the class of what stands outside classes is empty."""
    tokens = TOKEN.findall(DIRECTIVE.sub('', NOISE.sub('', text)))
    return set(_scope(tokens, '', 'public', namespace))


def _past(tokens, at):
    """The place behind the bracket that closes the one at a place."""
    depth, opening, closing = 0, tokens[at], PAIRS[tokens[at]]
    while True:
        depth += (tokens[at] == opening) - (tokens[at] == closing)
        at += 1
        if depth == 0:
            return at


def _scope(tokens, owner, access, namespace):
    at = 0
    while at < len(tokens):
        if tokens[at] in ACCESS and tokens[at + 1] == ':':
            access = tokens[at]
            at += 2
            continue
        if tokens[at].startswith('DECLARE_'): # a documented macro, which changes the access
            access = 'public' if 'DYN' in tokens[at] or 'OLECREATE' in tokens[at] else 'protected'
            at = _past(tokens, at + 1)
            continue
        statement, body, at = _statement(tokens, at)
        if not statement or statement[0] in ('friend', 'static_assert', '}') or 'operator' in statement:
            continue
        if statement[0] == 'namespace':
            if statement[1:2] != [namespace]:
                yield from _scope(body, owner, 'public', namespace)
            continue
        if access == 'private':
            continue
        name = _name(statement)
        if name and name.lstrip('~') != owner and f'::{name}' not in ''.join(statement):
            yield owner, name
        if body and statement[0] in ('class', 'struct') and not owner:
            yield from _scope(body, name, 'public' if statement[0] == 'struct' else 'private', namespace)


def _statement(tokens, at):
    """One declaration without its template header, the content of its braces, and the place behind it."""
    statement, initialisers = [], False
    while at < len(tokens):
        token = tokens[at]
        if token == 'template':
            at = _past_angles(tokens, at + 1)
        elif token == 'requires':
            at = _past(tokens, at + 1)
        elif token == ';':
            return statement, [], at + 1
        elif token == '{':
            end = _past(tokens, at)
            value = initialisers and re.match(r'\w', statement[-1]) and statement[-1] != 'noexcept'
            if not value and '=' not in statement:
                behind = end + 1 if end < len(tokens) and tokens[end] == ';' else end
                return statement, tokens[at + 1:end - 1], behind
            statement.append('{}')
            at = end
        elif token == '(' and tokens[at + 1] == '*': # a pointer to a function
            statement += tokens[at + 2:at + 3]
            at = _past(tokens, at)
        elif token == '[' and tokens[at + 1] == '[': # an attribute
            at = _past(tokens, at)
        elif token in '([' and '(' not in statement:
            end = _past(tokens, at)
            statement += [token, ')']
            at = end
        else:
            initialisers = initialisers or (token == ':' and '(' in statement)
            statement.append(token)
            at += 1
    return statement, [], at


def _past_angles(tokens, at):
    depth = 0
    while True:
        depth += (tokens[at] == '<') - (tokens[at] == '>')
        at += 1
        if depth == 0:
            return at


def _name(statement):
    if statement[0] == 'using':
        return statement[1] if statement[2:3] == ['='] else None
    if statement[0] in ('class', 'struct', 'enum'):
        return statement[1] if len(statement) > 1 else None
    ends = [statement.index(end) for end in ('(', '=', '{}', '[', ':') if end in statement]
    words = [word for word in statement[:min(ends, default=len(statement))] if re.match(r'~?[A-Za-z_]', word)]
    return words[-1] if words else None
