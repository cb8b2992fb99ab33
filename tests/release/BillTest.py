#!/usr/bin/env python3
"""The software bill of materials: its form against a schema, its references, and its sums against the files."""
import copy
import hashlib
import json
import pathlib
import unittest

import jsonschema

from releasecase import VERSION, ReleaseCase

SCHEMA = json.loads((pathlib.Path(__file__).parent / 'spdx.schema.json').read_text(encoding='utf-8'))


def dangling(document):
    """References to elements and licences that the document does not define."""
    elements = {document['SPDXID'], *(part['SPDXID'] for part in document['packages'] + document['files'])}
    used = {end for link in document['relationships'] for end in (link['spdxElementId'], link['relatedSpdxElement'])}
    licences = {info['licenseId'] for info in document['hasExtractedLicensingInfos']}
    named = {part['licenseDeclared'] for part in document['packages'] if part['licenseDeclared'].startswith('LicenseRef-')}
    return (used - elements) | (named - licences)


class BillTest(ReleaseCase):
    def setUp(self):
        self.document = json.loads((self.out / f'mxov-{VERSION}.spdx.json').read_text(encoding='utf-8'))

    def test_it_has_the_form_of_the_standard(self):
        jsonschema.Draft7Validator.check_schema(SCHEMA)
        jsonschema.validate(self.document, SCHEMA)

    def test_the_check_of_the_form_can_fail(self):
        for path, value in ((('spdxVersion',), '2.3'), (('creationInfo', 'created'), 'yesterday'),
                            (('files', 0, 'checksums', 0, 'checksumValue'), 'xyz'), (('packages', 0, 'SPDXID'), 'mxov'),
                            (('relationships', 0, 'relationshipType'), 'KNOWS'), (('packages', 0, 'licenseDeclared'), 'M I T')):
            document = copy.deepcopy(self.document)
            part = document
            for step in path[:-1]:
                part = part[step]
            part[path[-1]] = value
            with self.subTest(path=path), self.assertRaises(jsonschema.ValidationError):
                jsonschema.validate(document, SCHEMA)

    def test_it_refers_to_nothing_that_it_does_not_define(self):
        self.assertEqual(dangling(self.document), set())
        self.document['files'].pop()
        self.assertEqual(len(dangling(self.document)), 1)

    def test_identifiers_are_unique(self):
        identifiers = [part['SPDXID'] for part in self.document['packages'] + self.document['files']]
        self.assertEqual(len(identifiers), len(set(identifiers)))

    def test_every_delivered_file_is_listed_with_its_sums(self):
        listed = {file['fileName']: {sum['algorithm']: sum['checksumValue'] for sum in file['checksums']}
                  for file in self.document['files']}
        self.assertEqual(listed, {f'./{name}': {'SHA1': hashlib.sha1(data).hexdigest(),
                                                'SHA256': hashlib.sha256(data).hexdigest()}
                                  for name, data in self.delivered().items()})

    def test_it_names_what_is_linked_into_which_file(self):
        name_of = {part['SPDXID']: part.get('name') or part['fileName'] for part in
                   self.document['packages'] + self.document['files']}
        links = {(name_of[link['spdxElementId']], name_of[link['relatedSpdxElement']])
                 for link in self.document['relationships'] if link['relationshipType'] == 'STATIC_LINK'}
        self.assertEqual({file for file, package in links if package == 'libz-mingw-w64'}, {'./mxovshare.dll'})
        programs = {'./MXOVDocViewCtrl.ocx', './mxovpkg.exe', './mxovshare.dll', './viewer.exe'}
        for package in ('gcc-mingw-w64', 'mingw-w64'):
            self.assertEqual({file for file, linked in links if linked == package}, programs)


if __name__ == '__main__':
    unittest.main(verbosity=2)
