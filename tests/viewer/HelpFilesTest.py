"""The built help files: what a help viewer finds in them by topic number, by contents and by index."""
import os
import pathlib
import re
import struct
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ.get('MXOV_BUILD', ROOT / 'build'))
CODE_PAGE = 'windows-1252'
TOPIC = 7018
PAGES = ('care.html', 'documents.html', 'overview.html', 'properties.html', 'saving.html')
TITLES = {'english': ('The document manager', 0x0409), 'portuguese-brazilian': ('O gerenciador de documentos', 0x0416)}


class HelpFile:
    """A help file, unpacked."""

    def __init__(self, language, folder):
        self.language = language
        self.path = BUILD / 'bin/plugins/etc/mx/lang' / language / 'Orvando.chm'
        self.folder = pathlib.Path(folder)
        subprocess.run(['chmls', 'extractall', self.path, self.folder], check=True, capture_output=True)

    def bytes(self, name):
        return (self.folder / name.lstrip('/')).read_bytes()

    def text(self, name):
        return self.bytes(name).decode(CODE_PAGE)

    def system_file(self, name):
        """One of the files that the unpacking leaves out."""
        with tempfile.NamedTemporaryFile() as out:
            subprocess.run(['chmls', 'extract', self.path, name, out.name], check=True, capture_output=True)
            return pathlib.Path(out.name).read_bytes()

    def topics(self):
        """Topic number -> name of the page."""
        table, strings = self.system_file('/#IVB'), self.system_file('/#STRINGS')
        size, = struct.unpack_from('<I', table)
        assert size == len(table) - 4
        return {number: strings[place:strings.index(b'\0', place)].decode(CODE_PAGE)
                for number, place in struct.iter_unpack('<II', table[4:])}

    def entries(self, name):
        """(title, page) of every line of the contents or the index."""
        return re.findall(r'name="Name" value="([^"]*)">\s*<param name="Local" value="([^"]*)"', self.text(name))


class HelpFilesTest(unittest.TestCase):
    def setUp(self):
        self.files = []
        for language in TITLES:
            folder = tempfile.TemporaryDirectory()
            self.addCleanup(folder.cleanup)
            self.files.append(HelpFile(language, folder.name))

    def each(self):
        for file in self.files:
            with self.subTest(language=file.language):
                yield file

    def test_the_topic_opens_the_first_page(self):
        for file in self.each():
            self.assertEqual(file.topics(), {TOPIC: f'/{file.language}/overview.html'})
            self.assertIn(f'<h1>{TITLES[file.language][0]}</h1>', file.text(file.topics()[TOPIC]))

    def test_no_name_is_that_of_the_machine_that_built_it(self):
        for file in self.each():
            for name in ('/#STRINGS', '/#URLSTR', '/#SYSTEM'):
                data = file.system_file(name)
                for folder in (tempfile.gettempdir(), str(ROOT), str(BUILD)):
                    self.assertNotIn(folder.encode(), data, name)

    def test_the_page_about_care_names_the_controls_as_the_viewer_shows_them(self):
        for language, scripts in {'english': ('resources/viewer.rc', 'texts/english.rc'),
                                  'portuguese-brazilian': ('texts/portuguese-brazilian.rc',)}.items():
            source = ''.join((ROOT / 'viewer' / script).read_text(encoding='utf-8') for script in scripts)
            shown = {text.partition('\\t')[0].replace('&', '') for text in re.findall(r'"([^"\n]*)"', source)}
            page = (ROOT / 'docs/help' / language / 'care.html').read_text(encoding='utf-8')
            named = {name for label in re.findall(r'<span class="control">([^<]*)</span>', page) for name in label.split(' &gt; ')}
            self.assertGreater(len(named), 8)
            self.assertEqual(named - shown, set(), language)

    def test_pages_are_those_of_the_documentation(self):
        for file in self.each():
            source = ROOT / 'docs/help' / file.language
            self.assertEqual(sorted(page.name for page in source.glob('*.html')), sorted(PAGES))
            for page in PAGES:
                text = file.text(f'{file.language}/{page}')
                self.assertIn(f'charset={CODE_PAGE}"', text)
                self.assertEqual(text.replace(CODE_PAGE, 'utf-8'), (source / page).read_text(encoding='utf-8'))

    def test_links_and_pictures_lead_somewhere(self):
        for file in self.each():
            for page in PAGES:
                targets = re.findall(r'(?:href|src)="([^"]*)"', file.text(f'{file.language}/{page}'))
                self.assertGreaterEqual(len(targets), 4)
                for target in targets:
                    self.assertTrue((file.folder / file.language / target).is_file(), f'{page}: {target}')

    def test_the_contents_list_every_page_by_its_title(self):
        for file in self.each():
            entries = file.entries('Orvando.hhc')
            self.assertEqual(sorted(page for _, page in entries), [f'{file.language}/{page}' for page in PAGES])
            for title, page in entries:
                self.assertIn(f'<title>{title}</title>', file.text(page))

    def test_the_index_is_in_order_and_leads_to_pages(self):
        for file in self.each():
            entries = file.entries('Orvando.hhk')
            self.assertGreaterEqual(len(entries), 10)
            self.assertEqual([title for title, _ in entries], sorted(title for title, _ in entries))
            for _, page in entries:
                self.assertTrue((file.folder / page).is_file(), page)

    def test_the_language_is_told_to_the_viewer(self):
        for file in self.each():
            data = file.system_file('/#SYSTEM')
            settings, at = {}, 4
            while at < len(data):
                code, length = struct.unpack_from('<HH', data, at)
                settings[code] = data[at + 4:at + 4 + length]
                at += 4 + length
            self.assertEqual(struct.unpack_from('<I', settings[4])[0], TITLES[file.language][1])


if __name__ == '__main__':
    unittest.main(verbosity=2)
