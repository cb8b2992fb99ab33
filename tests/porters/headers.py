"""Makes headers from the documented signatures of the framework, with declarations alone.

signatures/NAME.txt becomes NAME.h. A line there is one of
  include HEADER
  class NAME : BASE            its members follow, indented; "  protected" and "  private" change the access
  template NAME<...> : BASE    the same for a class template
  entry NAME(...) HANDLER      an entry of a message map, whose handler is given as &Class::Member or, for an entry without
                               arguments, by its fixed name
  verb NAME(...) HANDLER       an entry whose handler is given as Member
  value NAME NUMBER
  DECLARATION;
The macros of classes and maps are in Maps.h.
"""
import pathlib
import re

HERE = pathlib.Path(__file__).resolve().parent
BEGINNING = '''#pragma once
#include <windows.h>
#define AFXAPI __stdcall
#define AFX_CDECL __cdecl
#define afx_msg
'''
CLASS = re.compile(r'(class|struct|template) (\w+)(<.*>)?(?: : (\w+))?$')
ENTRY = re.compile(r'(entry|verb) (\w+)\((.*?)\) (\w+) (\w+)(\(.*\))$')


class Signatures:
    """The headers, and every name that they declare."""

    def __init__(self):
        self.headers = {}  # name of a header -> its text
        self.members = {}  # class -> names of its members
        self.bases = {}  # class -> its base
        self.names = set()  # everything outside classes
        texts = {path.stem: path.read_text(encoding='utf-8') for path in sorted((HERE / 'signatures').glob('*.txt'))}
        for line in '\n'.join(texts.values()).splitlines():
            if CLASS.match(line):
                self.bases[CLASS.match(line)[2]] = CLASS.match(line)[4]
        for name, text in texts.items():
            self.headers[f'{name}.h'] = self._header(text)
        self.names |= set(re.findall(r'#define (\w+)', (HERE / 'Maps.h').read_text(encoding='utf-8') + BEGINNING))

    def documented(self, name, member):
        """Whether a class or one of its bases has a member."""
        while name:
            if member in self.members.get(name, ()):
                return True
            name = self.bases.get(name)
        return False

    def write(self, folder):
        folder.mkdir(parents=True, exist_ok=True)
        for name, text in self.headers.items():
            (folder / name).write_text(text, encoding='utf-8')
        everything = ''.join(f'#include "{name}"\n' for name in self.headers)
        (folder / 'porters.h').write_text(f'#pragma once\n{everything}#include "{HERE}/Maps.h"\n', encoding='utf-8')

    def _header(self, text):
        lines, opened = [BEGINNING], None
        for line in text.splitlines():
            if not line.startswith('  ') and opened:
                lines.append('};')
                opened = None
            if not line or line.startswith('#'):
                continue
            found = CLASS.match(line)
            if found:
                opened = found[2]
                lines += self._open(*found.groups())
            elif line.startswith('    '):
                lines.append(line)
                self.members[opened].add(name_of(line))
            elif line.startswith('  '):
                lines.append(line.strip() + ':')
            else:
                lines.append(self._outside(line))
        return '\n'.join([*lines, '};' if opened else '', ''])

    def _open(self, kind, name, parameters, base):
        self.names.add(name)
        self.members[name] = set()
        if kind == 'template':
            yield f'template <class {parameters[1:-1].replace(", ", ", class ")}>'
        yield f'{"struct" if kind == "struct" else "class"} {name}{f" : public {base}" if base else ""} {{'
        yield 'public:'
        if kind == 'class' and base in self.bases and self._is_object(base):
            yield f'    static CRuntimeClass class{name};'

    def _is_object(self, name):
        while name and name != 'CObject':
            name = self.bases.get(name)
        return name is not None

    def _outside(self, line):
        entry = ENTRY.match(line)
        if entry:
            kind, name, arguments, result, handler, parameters = entry.groups()
            self.names.add(name)
            member = f'&ThisClass::{handler}' if handler != 'memberFxn' else '&ThisClass::memberFxn' if kind == 'verb' else handler
            given = ''.join(f'static_cast<void>({word.strip()}); ' for word in arguments.split(',')
                            if word.strip() not in ('', 'memberFxn'))
            return f'#define {name}({arguments}) {given}porters::Handler<{result}{parameters}>::Accept({member});'
        word, _, rest = line.partition(' ')
        if word == 'include':
            return f'#include {rest if rest.startswith("<") else chr(34) + rest + chr(34)}'
        if word == 'value':
            self.names.add(rest.split()[0])
            return '#define ' + rest
        self.names.add(name_of(line))
        return line


def name_of(declaration):
    """The name that a declaration of one line declares."""
    text = declaration.strip().rstrip(';')
    operator = re.search(r'operator\s*[^\s(]+(?:\s*\*)?', text)
    if operator:
        return 'operator'
    pointer = re.search(r'\(\w*(?:::|\s)*\* ?(\w+)\)\(', text)
    return pointer[1] if pointer else re.findall(r'~?\w+', text.partition('(')[0])[-1]
