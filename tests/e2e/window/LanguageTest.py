"""The languages of the host's texts as a user of the viewer meets them, and the help that belongs to each."""
import unittest

from viewercase import NO, SAVE, ViewerCase
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
# Of the viewer itself: the keys of its commands to open and of About, the titles of the dialogs for opening and for a note, the
# button there, the history's label, the documents, what About says, and the status of nothing to save.
VIEWER = {
    'English': (('alt+f', 'o'), ('alt+h', 'a'), 'Open package', 'Save with note', 'Cancel', 'Remarks of the selected entry',
                'Documents', 'Opens machining packages', 'There is nothing to save'),
    'German': (('alt+d', 'f'), ('alt+h', 'i'), 'Paket öffnen', 'Mit Notiz speichern', 'Abbrechen',
               'Bemerkungen zum ausgewählten Eintrag', 'Dokumente', 'Öffnet Bearbeitungspakete', 'Es gibt nichts zu speichern'),
    'French': (('alt+f', 'o'), ('alt+e', 'p'), 'Ouvrir un paquet', 'Enregistrer avec une note', 'Annuler',
               "Remarques de l'entrée sélectionnée", 'Documents', "Ouvre les paquets d'usinage", "Il n'y a rien à enregistrer"),
    'Japanese': (('alt+f', 'o'), ('alt+h', 'a'), 'パッケージを開く', 'メモを付けて保存', 'キャンセル', '選択した項目の備考',
                 'ドキュメント', '加工パッケージを開き', '保存するものはありません'),
    'Portuguese': (('alt+a', 'a'), ('alt+u', 's'), 'Abrir pacote', 'Salvar com nota', 'Cancelar',
                   'Observações da entrada selecionada', 'Documentos', 'Abre pacotes de usinagem', 'Não há nada para salvar'),
}
VIEWER['Klingon'] = VIEWER['English']


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
        self.check_viewer(viewer, language)
        viewer.double_click(*self.row_place(shown.lists()[3], 2))
        shown = viewer.wait('the missing link is told', lambda s: other(s, text=TITLE))
        self.assertIn(missing, '\n'.join(window.text for window in other(shown, text=TITLE).walk()))
        viewer.press('Return')
        viewer.wait('the message is read', lambda s: not other(s, text=TITLE))
        self.check_popup(viewer, language, *self.row_place(shown.lists()[3], 0))
        viewer.click(*self.title_bar(viewer))
        viewer.press('alt+F4')
        shown = viewer.wait('the question', lambda s: other(s, text=TITLE))
        self.assertIn(question, '\n'.join(window.text for window in other(shown, text=TITLE).walk()))
        self.answer(viewer, NO)
        self.assertEqual(viewer.process.wait(60), 0)

    def check_viewer(self, viewer, language):
        """The viewer's own menu, dialogs, pages and status bar."""
        open_keys, about_keys, open_title, note_title, cancel, remarks, documents, about, nothing_to_save = VIEWER[language]
        shown = viewer.snapshot()
        self.assertTrue(shown.frame.find(class_name='MXOVHistoryPane').find(text=remarks))
        self.assertEqual(shown.frame.find(class_name='AtlAxWin').text, documents)
        viewer.press(open_keys[0])
        viewer.photograph(f'e2e-viewer-menu-{language}')
        viewer.press(open_keys[1])
        viewer.wait('the dialog for opening', lambda s: other(s, text=open_title))
        viewer.press('Escape')
        viewer.wait_for_no_dialog('it is cancelled')
        viewer.press('ctrl+shift+s')
        shown = viewer.wait('the dialog for a note', lambda s: other(s, text=note_title))
        self.assertTrue(other(shown, text=note_title).find(text=cancel))
        viewer.photograph(f'e2e-viewer-note-{language}')
        viewer.press('Escape')
        viewer.wait_for_no_dialog('it is cancelled')
        viewer.press(*about_keys)
        viewer.wait('About', lambda s: about in s.texts())
        viewer.press('Return')
        viewer.wait_for_no_dialog('it is read')
        viewer.press('ctrl+s')
        viewer.wait('the status', lambda s: s.frame.find(class_name='msctls_statusbar32').text == nothing_to_save)

    def check_popup(self, viewer, language, x, y):
        """Shows the properties of the document at (x, y) and its help, and changes its description."""
        _, history, labels, box, _, _, help_title = TEXTS[language]
        viewer.click(*self.title_bar(viewer))
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


def shown_throughout(language):
    return lambda test: test.check(language)


for name in TEXTS:
    setattr(LanguageTest, f'test_{name}_is_shown_throughout', shown_throughout(name))

if __name__ == '__main__':
    unittest.main(verbosity=2)
