#!/usr/bin/env python3
"""Every test can fail: its body asserts, or calls a function of the tests that does."""
import ast
import pathlib
import re
import unittest

TESTS = pathlib.Path(__file__).resolve().parents[1]
CPP_TEST = re.compile(r'^TEST(?:_F|_P)?\((\w+),\s*(?!DISABLED_)(\w+)\) \{\n(.*?)^\}', re.MULTILINE | re.DOTALL)
CPP_ASSERTION = re.compile(r'\b(?:EXPECT_|ASSERT_|ADD_FAILURE|FAIL\b|Expect)')  # or a function named after what it expects
PYTHON_ASSERTIONS = ('assert', 'fail', 'expect', 'validate', 'compile')  # how the names of calls begin that raise


def hollow_cpp(text):
    return [f'{suite}.{test}' for suite, test, body in CPP_TEST.findall(text) if not CPP_ASSERTION.search(body)]


def calls(node):
    functions = (call.func for call in ast.walk(node) if isinstance(call, ast.Call))
    return {getattr(function, 'attr', getattr(function, 'id', '')) for function in functions}


def asserts(function, asserting):
    return any(isinstance(node, (ast.Assert, ast.Raise)) for node in ast.walk(function)) or any(
        name in asserting or name.startswith(PYTHON_ASSERTIONS) for name in calls(function))


def hollow_python(trees):
    functions = [node for tree in trees for node in ast.walk(tree) if isinstance(node, ast.FunctionDef)]
    asserting, before = set(), None
    while asserting != before:
        before = asserting
        asserting = {function.name for function in functions if asserts(function, before)}
    return [function.name for function in functions if function.name.startswith('test_') and not asserts(function, asserting)]


class AssertionsTest(unittest.TestCase):
    def test_every_test_in_cpp_asserts(self):
        texts = [source.read_text(encoding='utf-8') for source in TESTS.rglob('*.cpp')]
        self.assertGreater(sum(len(CPP_TEST.findall(text)) for text in texts), 1000)
        self.assertEqual([name for text in texts for name in hollow_cpp(text)], [])

    def test_every_test_in_python_asserts(self):
        sources = [*TESTS.rglob('*.py'), *(TESTS.parent / 'tools').rglob('*.py')]
        self.assertEqual(hollow_python([ast.parse(source.read_text(encoding='utf-8')) for source in sources]), [])

    def test_a_hollow_test_is_found(self):
        self.assertEqual(hollow_cpp('TEST_F(A, b) {\n    Call();\n}\n\nTEST(A, c) {\n    EXPECT_TRUE(Call());\n}\n'), ['A.b'])
        self.assertEqual(hollow_python([ast.parse('def test_a():\n helper()\ndef test_b():\n other()\n'
                                                  'def helper():\n assert 1\ndef other():\n pass\n')]), ['test_b'])


if __name__ == '__main__':
    unittest.main(verbosity=2)
