"""What the tests of the care of packages share: packages with faults, and the list of findings."""
import shutil
import zipfile

from viewercase import PREFIX, ViewerCase
from viewerdriver import Viewer
from wineprogram import windows_path

CHECK, LIST = 'Check package', 241


def findings(shown):
    """The lines of the list; None while it is not shown."""
    window = next((window for window in shown.others if window.text == CHECK), None)
    return [row[:3] for row in window.find(id=LIST).rows] if window else None


def missing(path):
    return 'Warning', path.rsplit('\\', 1)[1], f'Linked document "{path}" does not exist.'


class CareCase(ViewerCase):
    def setUp(self):
        super().setUp()
        self.disk = PREFIX / 'drive_c/care'  # no personal folder, unlike those for temporary files
        self.addCleanup(shutil.rmtree, self.disk, ignore_errors=True)
        self.package = self.folder / 'care.mxov'

    def place(self, *names):
        for name in names:
            path = self.disk / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(name, encoding='ascii')

    def open_package(self, *links, files=()):
        """A package with links and with files that nothing shows."""
        sections = ''.join(f'[REFERANCE_FILE_{number}]\r\nIsReferencedFile=YES\r\nFilePath={link}\r\n'
                           for number, link in enumerate(links, 1))
        with zipfile.ZipFile(self.package, 'w', zipfile.ZIP_DEFLATED) as archive:
            archive.writestr('mxinfo.ini', '[FILEINFO]\r\nMaxtlreVersion=Maxtrel Orvando 2024\r\n'
                                           'SetupSheets=SetupSheets\\setup.html\r\n' + sections)
            for name in ('SetupSheets/setup.html', *files):
                archive.writestr(name, name)
        viewer = self.use(Viewer(windows_path(self.package)))
        viewer.wait_for_package('care.mxov')
        return viewer

    def check(self, viewer, *expected):
        viewer.press('F7')
        return self.wait_for_findings(viewer, *expected)

    @staticmethod
    def wait_for_findings(viewer, *expected):
        return viewer.wait(f'{len(expected)} findings', lambda s: findings(s) == list(expected))

    def close_findings(self, viewer):
        viewer.press('Escape')
        return viewer.wait_for_no_dialog('the list is closed')

    @staticmethod
    def documents(shown):
        return [(row[0], row[3]) for row in shown.lists()[3].rows]
