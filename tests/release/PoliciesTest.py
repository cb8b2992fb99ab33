#!/usr/bin/env python3
"""The delivered templates for group policy: complete, and the same policies that the programs read."""
import re
import unittest
import xml.etree.ElementTree

from releasecase import ROOT, ReleaseCase

NAMESPACE = {'p': 'http://schemas.microsoft.com/GroupPolicy/2006/07/PolicyDefinitions'}
SOURCE = (ROOT / 'common/Policies.h').read_text(encoding='utf-8')
POLICIES = ('kUnpackFolderPolicy', 'kRefuseProgramsPolicy', 'kKeepVersionsPolicy')
PAGE = (ROOT / 'docs/policies.md').read_text(encoding='utf-8')


def constant(name):
    """A text that the programs use."""
    return re.search(rf'{name}\[\] = L"([^"]+)"', SOURCE)[1].replace('\\\\', '\\')


class PoliciesTest(ReleaseCase):
    def setUp(self):
        self.files = {name: self.delivered()[f'policies/{name}'] for name in ('mxov.admx', 'en-US/mxov.adml')}
        self.admx, self.adml = (xml.etree.ElementTree.fromstring(data) for data in self.files.values())

    def test_every_text_is_defined_and_used(self):
        used = set(re.findall(r'\$\((\w+\.\w+)\)', self.files['mxov.admx'].decode()))
        defined = {f'string.{text.get("id")}' for text in self.adml.iterfind('.//p:string', NAMESPACE)}
        defined |= {f'presentation.{shown.get("id")}' for shown in self.adml.iterfind('.//p:presentation', NAMESPACE)}
        self.assertEqual(used, defined)
        for text in self.adml.iterfind('.//p:string', NAMESPACE):
            self.assertTrue(text.text.strip(), text.get('id'))

    def test_the_policies_are_those_that_the_programs_read(self):
        policies = self.admx.findall('.//p:policy', NAMESPACE)
        self.assertEqual({policy.get('key') for policy in policies}, {constant('kPoliciesKey')})
        self.assertEqual({policy.get('class') for policy in policies}, {'Both'})
        values = {element.get('valueName') for element in self.admx.iter() if element.get('valueName')}
        self.assertEqual(values, {constant(name) for name in POLICIES})

    def test_every_field_has_its_place_and_every_reference_its_target(self):
        fields = {field.get('id') for field in self.admx.iterfind('.//p:elements/*', NAMESPACE)}
        shown = {box.get('refId') for box in self.adml.iterfind('.//p:presentation/*', NAMESPACE)}
        self.assertEqual(fields, shown)
        names = {element.get('name') for kind in ('category', 'definition')
                 for element in self.admx.iterfind(f'.//p:{kind}', NAMESPACE)}
        references = {element.get('ref') for element in self.admx.iter() if element.get('ref')}
        self.assertEqual(references, names)

    def test_the_page_names_key_values_and_extensions(self):
        for name in ('kPoliciesKey', *POLICIES):
            self.assertIn(f'`{constant(name)}`', PAGE)
        listed = PAGE.partition('Files with these extensions:')[2].partition('\n\n')[0]
        source = (ROOT / 'common/Programs.h').read_text(encoding='utf-8').partition('kExtensions[] = {')[2].partition('}')[0]
        self.assertEqual(re.findall(r'`(\.[\w-]+)`', listed), re.findall(r'L"(\.[\w-]+)"', source))


if __name__ == '__main__':
    unittest.main(verbosity=2)
