"""What the tests of faults share: a folder of documents with its package, and the states in which they may be found."""
import random
import unittest
import zipfile

from laboratory import COUNT, Laboratory
from plainpackage import check_end

FEWEST_CALLS = 4  # of any action

INFORMATION = (b'; by hand\r\n[FILEINFO]\r\nGCode=GCode\\a.nc\r\n[FILE_HISTORY_1]\r\nOperation=Created\r\n'
               b'[REFERANCE_FILE_1]\r\nDescription=old text\r\nFilePath=ReferanceFiles\\a.txt\r\n')
REMOVED = INFORMATION[:INFORMATION.index(b'[REFERANCE')]
EDITED = INFORMATION.replace(b'old text', b'a new text')
ATTACHED = [INFORMATION]
for line in (b'[REFERANCE_FILE_2]\r\nIsReferencedFile=NO\r\n', b'Description=\r\n', b'Timestamp=2024-05-15 07:31:50\r\n',
             b'FilePath=ReferanceFiles\\copy.txt\r\n'):
    ATTACHED.append(ATTACHED[-1] + line)
STATES = {'edit': {INFORMATION, EDITED}, 'attach': set(ATTACHED), 'remove': {INFORMATION, REMOVED}}
DOCUMENTS = {'GCode/a.nc': b'G0 X1\r\n' * 20_000, 'ReferanceFiles/a.txt': random.Random(3).randbytes(300_000)}
HISTORY = b'[FILE_HISTORY_'


def make_folder(folder, documents=None):
    for name, content in (documents or DOCUMENTS).items():
        path = folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
    (folder / 'mxinfo.ini').write_bytes(INFORMATION)


def contents(package):
    """Everything in a package; fails when anything of it is damaged."""
    check_end(package)
    with zipfile.ZipFile(package) as file:
        assert file.testzip() is None
        return {name: file.read(name) for name in file.namelist()}


class FaultCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.lab = Laboratory()
        cls.addClassCleanup(cls.lab.close)
        cls.package = cls.lab.home / 'old.mxov'
        template = cls.lab.home / 'template'
        make_folder(template)
        outcome = cls.lab.drive('save', template, cls.package)
        assert outcome.lines == ['done 0'], outcome
        cls.old_package = cls.package.read_bytes()

    def scene(self, number):
        """A folder that was edited since it was unpacked, and its package."""
        place = self.lab.root / f'{self.id().split(".")[-1]}'
        place.mkdir(exist_ok=True)
        folder, package = place / f'folder-{number}', place / f'p.mxov-{number}'
        make_folder(folder, {**DOCUMENTS, 'GCode/a.nc': b'G1 X2\r\n' * 20_000})
        package.write_bytes(self.old_package)
        return folder, package

    def expect_lines(self, outcome, lines):
        self.assertEqual((outcome.code, outcome.lines), (0, lines), outcome)

    def acts(self, outcome):
        self.assertEqual(outcome.code, 0, outcome)
        return outcome.acts()

    def points(self, action):
        """How many calls there are to spoil, this time."""
        folder, package = self.scene('count')
        self.lab.arm(COUNT, 0)
        outcome = self.lab.drive(action, folder, package)
        self.expect_lines(outcome, ['done 0'])
        self.assertGreaterEqual(outcome.count, FEWEST_CALLS)
        return outcome.count

    def check_information(self, action, content):
        if action != 'save':
            self.assertIn(content, STATES[action])
        elif content != INFORMATION:
            self.assertTrue(content.startswith(INFORMATION + HISTORY + b'2]\r\nOperation=Edited\r\nTime='))
            self.assertTrue(content.endswith(b'Remarks=\r\n'))

    def check_package(self, path, information):
        """Gives whether the package is the new one."""
        if path.read_bytes() == self.old_package:
            return False
        inside = contents(path)
        self.assertEqual(inside.pop('GCode/a.nc'), b'G1 X2\r\n' * 20_000)
        self.assertEqual(inside.pop('ReferanceFiles/a.txt'), DOCUMENTS['ReferanceFiles/a.txt'])
        saved = inside.pop('mxinfo.ini')
        self.assertEqual(inside, {})
        self.check_information('save', saved)
        self.assertNotEqual(saved, INFORMATION)
        # The folder follows the package, never the other way round.
        self.assertIn(information, (INFORMATION, saved))
        return True

    def check_kept(self, action, folder, package):
        information = (folder / 'mxinfo.ini').read_bytes()
        self.check_information(action, information)
        if not self.check_package(package, information) and action == 'save':
            self.assertEqual(information, INFORMATION)

    def check_clean(self, action, folder, package):
        """Everything is done and nothing else is left."""
        names = {path.relative_to(folder).as_posix() for path in folder.rglob('*') if path.is_file()}
        expected = {'mxinfo.ini', *DOCUMENTS} | ({'ReferanceFiles/copy.txt'} if action == 'attach' else set())
        self.assertEqual(names, expected)
        information = (folder / 'mxinfo.ini').read_bytes()
        self.assertFalse(package.with_name(package.name + '.mxov-new').exists())
        if action == 'edit':
            self.assertIn(b'Description=a new text\r\n', information)
            self.assertIn(b'Again=a new text\r\n', information)
        elif action == 'attach':
            self.assertEqual(information, ATTACHED[-1])
        elif action == 'remove':
            self.assertEqual(information, REMOVED)
        else:
            self.assertEqual(contents(package)['mxinfo.ini'], information)

    def check_done(self, action, folder, package):
        """The action is done: nobody stopped it."""
        information = (folder / 'mxinfo.ini').read_bytes()
        if action == 'save':
            self.assertTrue(self.check_package(package, information))
        else:
            self.assertEqual(information, {'edit': EDITED, 'attach': ATTACHED[-1], 'remove': REMOVED}[action])
