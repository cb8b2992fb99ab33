#!/usr/bin/env python3
"""PortersTest.py COMPILER FOLDER FLAG...: the module's sources against the documented framework.

Builds headers with the documented declarations alone in FOLDER and compiles every source of the module against them, without
the project's framework. Checks that names outside the documentation do not compile, and that the headers of the project's
framework declare documented names only.
"""
import concurrent.futures
import itertools
import os
import pathlib
import re
import subprocess
import sys
import unittest

sys.dont_write_bytecode = True
import declared  # noqa: E402
import headers  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parents[2]
MODULE = ROOT / 'MXOVDocViewCtrl'
FRAMEWORK = ROOT / 'framework'
NAMESPACE = 'framework'
# What the documented macros declare in a class, for the maps of the classes below it.
MAP_FUNCTIONS = {f'Get{this}{kind}Map' for this in ('', 'This') for kind in ('Message', 'Dispatch', 'Event', 'Interface')} | {
    'GetPropPageIDs', 'GetUserTypeNameID', 'GetMiscStatus'}
INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]', re.MULTILINE)

SIGNATURES = headers.Signatures()


def module_sources():
    """Those of the control; posix folders have what takes the place of some of them elsewhere."""
    return sorted(source for source in MODULE.rglob('*.cpp') if source.parent.name != 'posix')


def compile_command(*arguments):
    return [COMPILER, '-std=c++20', '-fsyntax-only', '-pedantic-errors', '-w', *FLAGS, '-I', str(FOLDER), *arguments]


def compiled(code):
    """The compiler's complaints about a piece of code behind all headers; empty when it accepts it."""
    return subprocess.run(compile_command('-include', 'porters.h', '-xc++', '-'), input=code, capture_output=True, text=True).stderr


def setUpModule():
    SIGNATURES.write(FOLDER)
    command = [word for word in compile_command('-xc++-header', str(FOLDER / 'porters.h'), '-o', str(FOLDER / 'porters.h.gch'))
               if word != '-fsyntax-only']
    subprocess.run(command, check=True)


class ModuleTest(unittest.TestCase):
    def test_every_source_compiles_against_the_documented_declarations(self):
        sources = module_sources()
        self.assertGreater(len(sources), 20)
        # Those of a folder at once, as they are built: the headers take nearly all the time.
        folders = [''.join(f'#include "{source}"\n' for source in folder)
                   for _, folder in itertools.groupby(sources, lambda source: source.parent)]
        with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
            for folder, complaints in zip(folders, pool.map(compiled, folders)):
                with self.subTest(folder):
                    self.assertEqual('', complaints)

    def test_the_headers_of_the_framework_come_before_those_of_the_system(self):
        for source in module_sources():
            order = list(self.included(source, set()))
            if any(name.startswith('afx') for name in order):
                with self.subTest(source.name):
                    self.assertRegex(order[0], '^afx')

    def test_the_modules_objects_are_constructed_in_their_order(self):
        source = (MODULE / 'control/MXOVDocViewModule.cpp').read_text(encoding='utf-8')
        objects = re.findall(r'^(?:IMPLEMENT_OLECREATE_EX\((\w+)|(?!using|STDAPI)[\w:]+ ([\w:]+);)', source, re.MULTILINE)
        self.assertEqual([factory or name for factory, name in objects], [
            'theApp', 'CMXOVDocViewCtrl', 'CMXOVDocViewPropPage', 'docview::partAssemblyRecords', 'docview::gCodeRecords',
            'docview::setupSheetRecords', 'docview::additionalRecords'])

    def included(self, path, seen):
        """The names of the headers of the framework and of the system that a source reads, in order."""
        for name in INCLUDE.findall(path.read_text(encoding='utf-8')):
            places = (path.parent / name, MODULE / name, ROOT / name, ROOT / 'mxovshare/include' / name)
            found = next((place for place in places if place.is_file()), None)
            if found and found not in seen:
                seen.add(found)
                yield from self.included(found, seen)
            elif not found and name.endswith('.h'):
                yield name


class DeclarationsTest(unittest.TestCase):
    """What a fault in the module looks like; each stands beside a form that is right."""

    def check(self, right, wrong, complaint):
        self.assertEqual('', compiled(right))
        self.assertRegex(compiled(wrong), complaint)

    def test_an_undocumented_name_does_not_compile(self):
        self.check('HWND f(CWnd& window) { return window.GetSafeHwnd(); }',
                   'HWND f(CWnd& window) { return window.GetSuperWindow(); }', 'has no member named')
        self.check('BOOL f() { return AfxOleCanExitApp(); }', 'void f() { framework::Guard([] {}); }', 'has not been declared')

    def test_objects_are_neither_copied_nor_moved(self):
        self.check('void f(CBitmap& bitmap); void g(CBitmap& bitmap) { f(bitmap); }',
                   'void f(CBitmap bitmap); void g(CBitmap& bitmap) { f(static_cast<CBitmap&&>(bitmap)); }', 'deleted|private')

    def test_verbs_name_their_handler_without_its_scope(self):
        control = 'class C : public COleControl {{ DECLARE_MESSAGE_MAP() }}; ' \
                  'BEGIN_MESSAGE_MAP(C, COleControl) ON_OLEVERB(1, {}) END_MESSAGE_MAP()'
        self.check(control.format('OnProperties'), control.format('&C::OnProperties'), 'error')

    def test_a_handler_has_the_documented_signature(self):
        window = 'class W : public CWnd {{ void OnSize(UINT type, int cx{}); DECLARE_MESSAGE_MAP() }}; ' \
                 'BEGIN_MESSAGE_MAP(W, CWnd) ON_WM_SIZE() END_MESSAGE_MAP()'
        self.check(window.format(', int cy'), window.format(''), 'no matching function')

    def test_internal_members_are_out_of_reach(self):
        self.check('class D : public CDialog { public: D() : CDialog(1u) {} void Run() { DoModal(); } };',
                   'void f(CDialog& dialog) { dialog.OnOK(); }', 'is protected')


class FrameworkTest(unittest.TestCase):
    def test_its_headers_declare_documented_names_only(self):
        todo, read = sorted(FRAMEWORK.glob('afx*.h')), set()
        while todo:
            header = todo.pop()
            read.add(header)
            text = header.read_text(encoding='utf-8')
            with self.subTest(header.relative_to(FRAMEWORK).as_posix()):
                self.assertEqual([], undocumented(text))
            places = [place / name for name in INCLUDE.findall(text) for place in (header.parent, FRAMEWORK)]
            todo += {place.resolve() for place in places if place.is_file()} - read
        self.assertGreater(len(read), 20)

    def test_a_name_of_its_own_in_a_header_is_found(self):
        self.assertEqual(['CWnd::Hidden', 'HELPER', 'Helper', 'kHelper'], undocumented('''
            #define HELPER 1
            class CWnd : public CCmdTarget {
                DECLARE_DYNAMIC(CWnd)
            public:
                CWnd() : CCmdTarget{} {}
                HWND GetSafeHwnd() const { return m_hWnd; }
                void Hidden();
            private:
                int m_own = 0;
            };
            struct Helper;
            constexpr int kHelper = 1;
            namespace framework { struct Inner {}; }'''))


def undocumented(text):
    """What a header of the framework declares outside its namespace and the documentation."""
    found = {name for name in declared.macros(text) if name not in SIGNATURES.names and not name.startswith('FRAMEWORK_')}
    for owner, name in declared.names(text, NAMESPACE):
        if not owner and name not in SIGNATURES.names:
            found.add(name)
        elif owner in SIGNATURES.names and name not in MAP_FUNCTIONS and not SIGNATURES.documented(owner, name):
            found.add(f'{owner}::{name}')
    return sorted(found)


if __name__ == '__main__':
    COMPILER, FOLDER, FLAGS = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3:]
    unittest.main(argv=sys.argv[:1], verbosity=2)
