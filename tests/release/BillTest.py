#!/usr/bin/env python3
"""The software bill of materials: its form, its references, and its sums against the files. With MXOV_LONG it is also checked
against the whole standard, by a library that comes from the npm registry."""
import copy
import hashlib
import json
import os
import pathlib
import subprocess
import unittest
import zipfile

import jsonschema

from releasecase import ARCHIVE, ROOT, VERSION, ReleaseCase

SCHEMA = json.loads((pathlib.Path(__file__).parent / 'cyclonedx.schema.json').read_text(encoding='utf-8'))
KIT = f'mxov-{VERSION}-sdk.zip'
# A path in the document, and a value that the standard does not have there.
FAULTS = ((('specVersion',), '1.6.0'), (('metadata', 'timestamp'), 'yesterday'), (('components', 0, 'type'), 'manual'),
          (('components', 0, 'hashes', 0, 'content'), 'xyz'), (('metadata', 'component', 'licenses', 0, 'license', 'id'), 'M I T'),
          (('serialNumber',), 'mxov'))


def all_components(parts):
    """The components of a document and those inside them."""
    for part in parts:
        yield part
        yield from all_components(part.get('components', []))


def dangling(document):
    """References to components that the document does not define."""
    defined = {document['metadata']['component']['bom-ref'], *(part['bom-ref'] for part in all_components(document['components']))}
    return {end for link in document['dependencies'] for end in (link['ref'], *link['dependsOn'])} - defined


class BillTest(ReleaseCase):
    def setUp(self):
        self.path = self.out / f'mxov-{VERSION}.cdx.json'
        self.document = json.loads(self.path.read_text(encoding='utf-8'))

    def faulty(self):
        """Documents with one fault each, by the path of the fault."""
        for path, value in FAULTS:
            document = copy.deepcopy(self.document)
            part = document
            for step in path[:-1]:
                part = part[step]
            part[path[-1]] = value
            yield path, document

    def test_it_has_the_form_of_the_standard(self):
        jsonschema.Draft7Validator.check_schema(SCHEMA)
        jsonschema.validate(self.document, SCHEMA)

    def test_the_check_of_the_form_can_fail(self):
        for path, document in self.faulty():
            with self.subTest(path=path), self.assertRaises(jsonschema.ValidationError):
                jsonschema.validate(document, SCHEMA)

    @unittest.skipUnless(os.environ.get('MXOV_LONG'), 'needs the npm registry: ./test --long')
    def test_the_library_of_the_standard_finds_it_valid_and_faulty_ones_not(self):
        def check(path):
            return subprocess.run([ROOT / 'tools/release/check-bill', path], capture_output=True, text=True, check=False)
        ended = check(self.path)
        self.assertEqual((ended.returncode, ended.stdout, ended.stderr), (0, '', ''))
        for path, document in self.faulty():
            with self.subTest(path=path):
                file = self.folder / 'faulty.json'
                file.write_text(json.dumps(document), encoding='utf-8')
                ended = check(file)
                self.assertEqual(ended.returncode, 1)
                self.assertIn('faulty.json', ended.stderr)

    def test_it_refers_to_nothing_that_it_does_not_define(self):
        self.assertEqual(dangling(self.document), set())
        self.document['components'].pop()
        self.assertGreater(len(dangling(self.document)), 0)

    def test_licence_texts_are_delivered(self):
        urls = {licence['license']['url'] for part in all_components(self.document['components'])
                for licence in part.get('licenses', []) if 'url' in licence.get('license', {})}
        self.assertEqual(urls, {'licences/mingw-w64.txt'})
        self.assertLessEqual(urls, self.delivered().keys())

    def test_references_are_unique(self):
        references = [part['bom-ref'] for part in all_components(self.document['components'])]
        self.assertEqual(len(references), len(set(references)))

    def test_every_delivered_file_is_listed_with_its_sums(self):
        files = {path.name: path.read_bytes() for path in self.out.iterdir() if path.suffix in ('.zip', '.msi')}
        for name in list(files):
            if name.endswith('.zip'):
                with zipfile.ZipFile(self.out / name) as archive:
                    files |= {f'{name}/{inner.partition("/")[2]}': archive.read(inner) for inner in archive.namelist()}
        listed = {part['bom-ref']: {sum['alg']: sum['content'] for sum in part['hashes']}
                  for part in all_components(self.document['components']) if part['type'] == 'file'}
        self.assertEqual(listed, {name: {'SHA-1': hashlib.sha1(data).hexdigest(), 'SHA-256': hashlib.sha256(data).hexdigest()}
                                  for name, data in files.items()})

    def test_it_names_what_is_linked_into_which_file(self):
        name_of = {part['bom-ref']: part['name'] for part in self.document['components']}
        links = {(link['ref'], name_of[used]) for link in self.document['dependencies'] if link['ref'] != 'mxov'
                 for used in link['dependsOn']}
        self.assertEqual({file for file, package in links if package == 'libz-mingw-w64'}, {f'{ARCHIVE}/mxovshare.dll'})
        programs = {f'{ARCHIVE}/{name}' for name in ('MXOVDocViewCtrl.ocx', 'mxovpkg.exe', 'mxovshare.dll', 'viewer.exe')}
        for package in ('gcc-mingw-w64', 'mingw-w64'):
            self.assertEqual({file for file, linked in links if linked == package}, {*programs, f'{KIT}/probe/probe.exe'})


if __name__ == '__main__':
    unittest.main(verbosity=2)
