"""The languages of the host's texts as a user of the viewer meets them, and the help that belongs to each."""
import unittest

from viewercase import SAVE, ViewerCase
from viewerdriver import Viewer
from wineprogram import windows_path

NAME_LABEL, PATH_LABEL, SIZE_LABEL, DESCRIPTION_LABEL, PROPERTIES_BOX = 1042, 1043, 1044, 1045, 1030
DESCRIPTION, HISTORY, HELP_ICON = 1037, 1032, 1049
TITLE = 'Maxtrel Orvando Document Manager'
ENGLISH_HELP = 'MXOV document manager'
# Columns of the lists, of the history, labels in their order, box, parts of the messages about a missing link and about saving.
TEXTS = {
    'English': (('Name', 'Size', 'Date'), ('Action', 'Date', 'By'), ('Name', 'Path', 'Size', 'Description'),
                'Document Properties', 'cannot be found', 'save the changes', ENGLISH_HELP),
    'German': (('Name', 'Gr.', 'Datum'), ('Aktion', 'Datum', 'Benutzer'), ('Name', 'Pfad', 'Gr.', 'Beschreibung'),
               'Dokumenteigenschaften', 'nicht gefunden', 'Änderungen speichern', ENGLISH_HELP),
    'French': (('Nom', 'Poids', 'Date'), ('Action', 'Date', 'Par'), ('Nom', 'Chemin', 'Poids', 'Description'),
               'Propriétés du document', 'introuvable', 'enregistrer les modifications', ENGLISH_HELP),
    'Japanese': (('名前', '容量', '日付'), ('操作', '日付', '実行者'), ('名前', 'パス', '容量', '説明'),
                 'ドキュメントのプロパティ', '見つかりません', '変更を保存しますか', ENGLISH_HELP),
    'Portuguese': (('Nome', 'Tam.', 'Data'), ('Ação', 'Data', 'Por'), ('Nome', 'Caminho', 'Tam.', 'Descrição'),
                   'Propriedades do documento', 'não foi encontrado', 'salvar as alterações',
                   'Gerenciador de documentos MXOV'),
}
TEXTS['Klingon'] = TEXTS['English']


def centre(window):
    left, top, right, bottom = window.rect
    return (left + right) // 2, (top + bottom) // 2


def other(shown, **wanted):
    """The first top-level window besides the frame with these attributes."""
    return next((window for window in shown.others
                 if all(getattr(window, name) == value for name, value in wanted.items())), None)


class LanguageTest(ViewerCase):
    def open_in(self, language):
        viewer = self.use(Viewer('--language', language, windows_path(self.sample)))
        return viewer, viewer.wait_for_package('bracket.mxov')

    def check(self, language):
        columns, _, _, _, missing, question, _ = TEXTS[language]
        viewer, shown = self.open_in(language)
        for view in shown.lists():
            self.assertEqual([title for title, _ in view.columns], list(columns))
        left, top, _, _ = shown.lists()[3].rect
        viewer.double_click(left + 40, top + 60)
        shown = viewer.wait('the missing link is told', lambda s: other(s, text=TITLE))
        self.assertIn(missing, '\n'.join(window.text for window in other(shown, text=TITLE).walk()))
        viewer.press('Return')
        viewer.wait('the message is read', lambda s: not other(s, text=TITLE))
        self.check_popup(viewer, language, left + 40, top + 30)
        viewer.click(*self.outside(viewer))
        viewer.press('alt+F4')
        shown = viewer.wait('the question', lambda s: other(s, text=TITLE))
        self.assertIn(question, '\n'.join(window.text for window in other(shown, text=TITLE).walk()))
        viewer.press('alt+n')
        self.assertEqual(viewer.process.wait(60), 0)

    def check_popup(self, viewer, language, x, y):
        """Shows the properties of the document at (x, y) and its help, and changes its description."""
        _, history, labels, box, _, _, help_title = TEXTS[language]
        viewer.click(*self.outside(viewer))
        viewer.wait_for_no_dialog('the popup of the double click is closed')
        viewer.click(x, y)
        popup = viewer.wait_for_dialog('the popup').dialog()
        self.assertEqual([popup.find(id=number).text for number in
                          (NAME_LABEL, PATH_LABEL, SIZE_LABEL, DESCRIPTION_LABEL)], [label + ' : ' for label in labels])
        self.assertEqual(popup.find(id=PROPERTIES_BOX).text, box)
        self.assertEqual([title for title, _ in popup.find(id=HISTORY).columns], list(history))
        viewer.photograph(f'e2e-language-{language}')
        viewer.click(*centre(popup.find(id=HELP_ICON)))
        viewer.wait('the help', lambda s: other(s, class_name='HH Parent', text=help_title))
        viewer.press('alt+F4')
        viewer.wait('the help is closed', lambda s: not other(s, class_name='HH Parent'))
        viewer.click(*centre(popup.find(id=DESCRIPTION)))
        viewer.type('x')
        viewer.wait('the change is noticed', lambda s: s.item(SAVE).enabled)

    @staticmethod
    def outside(viewer):
        """A place on the viewer's title bar."""
        frame = viewer.snapshot().frame
        return frame.rect[0] + 60, frame.top + 10


def shown_throughout(language):
    return lambda test: test.check(language)


for name in TEXTS:
    setattr(LanguageTest, f'test_{name}_is_shown_throughout', shown_throughout(name))

if __name__ == '__main__':
    unittest.main(verbosity=2)
