#!/usr/bin/env python3
"""Which changes tools/mutate makes to a source and what it leaves alone, which tests it runs, and what it does again."""
import contextlib
import io
import os
import pathlib
import shutil
import sys
import tempfile
import threading
import unittest
from unittest import mock

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / 'tools/testing'))
SCRATCH = pathlib.Path(tempfile.mkdtemp(prefix='mxov-changes-'))
unittest.addModuleCleanup(shutil.rmtree, SCRATCH)
os.environ['MXOV_BUILD'] = str(SCRATCH)

import changes  # noqa: E402
import ctests  # noqa: E402
import mutate  # noqa: E402
import equivalents  # noqa: E402
from changedtree import ChangedTree, DoesNotBuild  # noqa: E402
from reach import Reach  # noqa: E402

SOURCE = '''// A comment: if (a == 1) { Call(); }
#define LIMIT 5
#include "Header.h"
extern "C" int imported;
static_assert(sizeof(int) == 4, "int");

namespace {

constexpr int kSide = 125; /* 7 */
enum class Colour { Red, Green };
struct Guard {
    explicit Guard(int* place) : m_place(place) { ++*m_place; }
    ~Guard() { --*m_place; }
    int* m_place{nullptr};
};

} // namespace

BEGIN_MESSAGE_MAP(Window, Base)
    ON_WM_CREATE()
    ON_COMMAND(1, OnOne)
END_MESSAGE_MAP()

Window::Window(int side) : m_side(side), m_on{true} {
    Prepare();
    Show(SW_ONE | SW_TWO | SW_THREE);
}

template <class T>
std::vector<T> Window::Items(const T& first, bool all) const {
    if (all && first < kSide) {
        return {first};
    }
    if (m_on) {
        Log(L"on");
    }
    const Guard guard(&m_count);
    std::vector<T> items;
    items.push_back(first);
    std::ranges::for_each(items, [&](T& item) {
        item = 'a';
        Touch(item);
    });
    for (int i = 0; i < 3; ++i) {
        Touch(i);
    }
    return items;
}

void Window::Clear() {
    m_on = FALSE;
    m_side = 0x1F;
}

STDMETHODIMP_(ULONG) Window::AddRef() {
    Touch(this);
    return ++m_references;
}
'''


def made(kind=None, source=SOURCE):
    return [str(change).removeprefix(f'{change.kind}: ') for change in changes.changes_of('Window.cpp', source)
            if kind in (None, change.kind)]


class ChangesTest(unittest.TestCase):
    def test_conditions_are_turned_round_and_signs_replaced(self):
        self.assertEqual(made('condition'), ['all && first < kSide -> !(all && first < kSide)', '&& -> ||', '< -> <=',
                                             'm_on -> !(m_on)', '< -> <='])

    def test_constants_and_flags(self):
        self.assertEqual(made('constant'), ['125 -> 126', '1 -> 2', 'true -> false', 'without SW_ONE |', 'without | SW_TWO',
                                            'without | SW_THREE', '0 -> 1', '3 -> 4', 'FALSE -> TRUE', '0x1F -> 0x20'])

    def test_texts_and_characters(self):
        self.assertEqual(made('string'), ['L"on" -> L"xon"', "'a' -> 'x'"])

    def test_calls_entries_of_maps_and_guards_are_left_out(self):
        self.assertEqual(made('call'), [f'without {text}' for text in (
            '++*m_place', '--*m_place', 'ON_WM_CREATE()', 'ON_COMMAND(1, OnOne)', 'Prepare()',
            'Show(SW_ONE | SW_TWO | SW_THREE)', 'Log(L"on")', 'const Guard guard(&m_count)', 'items.push_back(first)',
            "std::ranges::for_each(items, [&](T& item) { i ... 'a'; Touch(item); })", "item = 'a'", 'Touch(item)', 'Touch(i)',
            'm_on = FALSE', 'm_side = 0x1F', 'Touch(this)')])

    def test_neighbours_change_places_where_one_of_them_calls(self):
        orders = made('order')
        self.assertEqual(orders[0], 'Prepare(); Show(SW_ONE | SW_TWO | SW_THREE); -> Show(SW_ONE | SW_TWO | SW_THREE); Prepare();')
        self.assertEqual(len(orders), 3)

    def test_functions_return_at_once_as_their_type_asks(self):
        self.assertEqual(made('return'), ['return;', 'return {};', 'return;', 'return {};'])

    def test_comments_directives_and_what_only_the_compiler_sees_are_left_alone(self):
        self.assertEqual(made(source=SOURCE[:SOURCE.index('namespace')]), [])

    def test_a_change_applies_to_its_place_alone(self):
        for change in changes.changes_of('Window.cpp', SOURCE):
            changed = change.apply(SOURCE)
            self.assertNotEqual(changed, SOURCE)
            self.assertEqual(changed[:change.start], SOURCE[:change.start])
            self.assertTrue(changed.endswith(SOURCE[change.end:]))
            self.assertEqual(SOURCE[:change.start].count('\n') + 1, change.line)

    def test_a_raw_string_holds_no_code(self):
        self.assertEqual(made(source='const char* text = R"x(if (a == 1) {)x";\n'),
                         ['R"x(if (a == 1) {)x" -> R"x(xif (a == 1) {)x"'])


class StopTest(unittest.TestCase):
    def test_a_test_that_is_ended_with_the_tool_has_no_result(self):
        test = ctests.Test('t', ('sleep', '60'), {}, str(SCRATCH), 60)
        self.addCleanup(ctests.stopped.clear)
        threading.Timer(0.5, ctests.stop).start()
        with self.assertRaises(ctests.Stopped):
            ctests.run_test(test, SCRATCH / 'log')

    def test_a_build_that_ends_with_the_tool_has_no_result(self):
        tree = object.__new__(ChangedTree)
        tree.folder, tree.environment = SCRATCH, dict(os.environ)
        with self.assertRaises(DoesNotBuild):
            tree._run('false')
        self.addCleanup(ctests.stopped.clear)
        ctests.stopped.set()
        with self.assertRaises(ctests.Stopped):
            tree._run('false')


class EquivalentsTest(unittest.TestCase):
    def test_each_row_is_a_change_that_can_be_made(self):
        rows = equivalents.rows((ROOT / 'tests/equivalent-mutants.md').read_text(encoding='utf-8'))
        self.assertTrue(rows)
        for file in sorted({file for file, *_ in rows}):
            source = (ROOT / file).read_text(encoding='utf-8')
            made = {equivalents.row_of(change, source) for change in changes.changes_of(file, source)}
            self.assertEqual({row for row in rows if row[0] == file} - made, set())

    def test_a_row_may_hold_bars(self):
        self.assertEqual(equivalents.rows('| `a.cpp` | `if (a \\|\\| b) {` | `condition: \\|\\| -> &&` | why |'),
                         {('a.cpp', 'if (a || b) {', 'condition: || -> &&')})


class Tree:
    """What a reach asks of a copy."""
    tests = {'slow': None, 'quick': None, 'other': None}

    def programs_with(self, source):
        return {'other', 'library'} if source == 'shared.cpp' else set()


class ReachTest(unittest.TestCase):
    def reach(self, file, source, lines):
        change = changes.changes_of(file, source)[0]
        tests = {'slow': (9.0, [2, 3]), 'quick': (1.0, [2]), 'other': (2.0, [])}
        noted = {'sources': {file: {'digest': change.digest, 'lines': lines}},
                 'tests': {name: {'passed': True, 'seconds': seconds, 'lines': {file: ran}}
                           for name, (seconds, ran) in tests.items()}}
        found = Reach(noted, pathlib.Path('/'))
        return lambda change, body: [step.test for step in found.steps(change, body, Tree())]

    def test_only_tests_that_ran_the_line_fastest_first(self):
        source = 'void F() {\n    A();\n    B(\n        1);\n}\n'
        steps = self.reach('a.cpp', source, [2, 3])
        found = {str(change): change for change in changes.changes_of('a.cpp', source)}
        self.assertEqual(steps(found['call: without A()'], 1), ['quick', 'slow'])
        self.assertEqual(steps(found['constant: 1 -> 2'], 1), ['slow'], 'the line before holds the statement')
        self.assertEqual(steps(found['constant: 1 -> 2'], None), ['quick', 'slow'], 'no function: whatever runs the source')
        other = changes.changes_of('a.cpp', source + '\n')[0]
        self.assertEqual(steps(other, 1), ['quick', 'slow'], 'another source than the one that was measured')

    def test_a_program_that_compiles_the_source_itself_is_run(self):
        source = 'void F() {\n    A();\n}\n'
        steps = self.reach('shared.cpp', source, [2])
        self.assertEqual(steps(changes.changes_of('shared.cpp', source)[0], 1), ['quick', 'other', 'slow'])

    def test_a_test_that_is_named_after_the_source_is_run_first_even_if_it_is_newer(self):
        source = 'void F() {\n    A();\n}\n'
        steps = self.reach('a.cpp', source, [2])
        with mock.patch.object(Reach, '_named_after', lambda *_: {'other': ('Suite',)}):
            self.assertEqual(steps(changes.changes_of('a.cpp', source)[0], 1), ['other', 'quick', 'slow'])


class Worker:
    """Tries changes without building them: one in three is none, one is noticed, one is not."""
    tried = []

    def __init__(self, _, options):
        self.options = options

    def steps(self, _, before):
        return [test for test in ('first', 'second') if test not in before and self.options.tests.search(test)]

    def attempt(self, change, before):
        self.tried.append(change.key)
        return ({'outcome': 'none', 'why': 'does not compile'}, {'outcome': 'killed', 'by': 'first', 'why': 'FAILED'},
                {'outcome': 'survived', 'tests': sorted({*before, *self.steps(change, before)})})[int(change.key, 16) % 3]


class SessionTest(unittest.TestCase):
    def setUp(self):
        mutate.FOLDER.mkdir(parents=True)
        (SCRATCH / 'Window.cpp').write_text(SOURCE, encoding='ascii')
        (SCRATCH / 'tests').mkdir(exist_ok=True)
        self.write_equivalents('')
        self.addCleanup(shutil.rmtree, mutate.FOLDER)

    @staticmethod
    def write_equivalents(text):
        (SCRATCH / 'tests/equivalent-mutants.md').write_text(text, encoding='ascii')
        mutate.equivalent_rows.cache_clear()

    def run_session(self, *words):
        """What was tried, and what came of it in the end."""
        Worker.tried.clear()
        with mock.patch.multiple(mutate, Worker=Worker, ROOT=SCRATCH, sources=lambda _: ['Window.cpp']), \
                contextlib.redirect_stdout(io.StringIO()):
            session = mutate.Session(mutate.read_options(words))
            session.go_on()
            session.report()
        return list(Worker.tried), {result['key']: result['outcome'] for result in session.done}

    def test_what_was_tried_is_not_tried_again_and_a_larger_sample_goes_on(self):
        tried, six = self.run_session('--sample', '6')
        self.assertEqual(len(six), 6)
        self.assertLess(set(six), set(tried), 'what does not compile is drawn anew')
        self.assertEqual(self.run_session('--sample', '6'), ([], six))
        more, nine = self.run_session('--sample', '9', '--jobs', '2')
        self.assertEqual(len(nine), 9)
        self.assertLess(set(six), set(nine))
        self.assertFalse(set(more) & set(tried))

    def test_equivalent_mutants_are_not_drawn(self):
        _, all_of_it = self.run_session()
        survivor = next(change for change in changes.changes_of('Window.cpp', SOURCE)
                        if all_of_it.get(change.key) == 'survived')
        self.write_equivalents('| ' + ' | '.join(f'`{part}`' for part in equivalents.row_of(survivor, SOURCE))
                                .replace('||', '\\|\\|') + ' | why |\n')
        _, rest = self.run_session()
        self.assertEqual(set(all_of_it) - set(rest), {survivor.key})
        self.assertNotIn(survivor.key, self.run_session('--survivors')[1])

    def test_another_seed_draws_others(self):
        _, one = self.run_session('--sample', '6', '--seed', '1')
        _, two = self.run_session('--sample', '6', '--seed', '2')
        self.assertNotEqual(set(one), set(two))

    def test_what_survived_is_taken_up_when_more_tests_may_run(self):
        _, six = self.run_session('--sample', '6', '--tests', 'first')
        survivors = {key for key, outcome in six.items() if outcome == 'survived'}
        self.assertTrue(survivors)
        tried, _ = self.run_session('--sample', '6')
        self.assertEqual(set(tried), survivors)

    def test_survivors_alone_are_tried_again_on_request(self):
        _, six = self.run_session('--sample', '6')
        tried, again = self.run_session('--survivors')
        survivors = {key: outcome for key, outcome in six.items() if outcome == 'survived'}
        self.assertEqual(set(tried), set(survivors))
        self.assertEqual(again, survivors)
        self.assertEqual(self.run_session('--survivors', '--seed', '2')[1], survivors, 'however they were drawn')


if __name__ == '__main__':
    unittest.main(verbosity=2)
