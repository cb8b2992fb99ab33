#!/usr/bin/env python3
"""The document lists of the sample as the viewer shows them, reached with mouse and keyboard."""
import unittest

from viewercase import ADD, DELETE, DOTS, LINKED, MISSING, PACKAGED, SAVE, ViewerCase, information, linked_file
from viewerdriver import LISTS, PROGRAM


class CatalogueTest(ViewerCase):
    def test_catalogue_of_the_sample(self):
        viewer, shown = self.open_sample()
        part, programs, sheets, additional = self.expected_sample_rows()
        lists = shown.lists()
        self.assertEqual(lists[0].rows, part)
        self.assertEqual(sorted(lists[1].rows), programs)
        self.assertEqual(sorted(lists[2].rows), sheets)
        self.assertEqual(lists[3].rows, additional)
        self.assertEqual([row[3] for row in additional], [LINKED, PACKAGED, MISSING])
        self.assertEqual((len(programs), len(sheets)), (3, 3))
        for shown_list in lists:
            self.assertTrue(shown_list.visible)
        self.assertEqual([box.text for box in shown.boxes()],
                         ['Part / Assembly', 'G Code', 'Setup Sheets', 'Additional Documents'])
        pane = shown.frame.find(class_name='MXOVPreviewPane')
        sections = information(self.sample)
        last = sections[self.history()[-1]]
        self.assertEqual(pane.text.split('\n'), ['bracket', sections['FILEINFO']['MaxtlreVersion'],
                                                 f"{last['Operation']} by {last['By']}, {last['Time'].rpartition(':')[0]}"])
        viewer.photograph('e2e-catalogue')
        self.finish(viewer)

    def test_every_part_has_a_name_for_screen_readers(self):
        viewer, shown = self.open_sample()
        sections = [box.text for box in shown.boxes()]
        self.assertEqual([view.text for view in shown.lists()], sections)
        self.assertEqual((shown.item(ADD).text, shown.item(DELETE).text), ('Add a document', 'Remove the document'))
        self.assertEqual(shown.frame.find(class_name='AtlAxWin').text, 'Documents')
        self.finish(viewer)

    def test_about_states_the_versions_and_the_licence(self):
        viewer, _ = self.open_sample()
        viewer.press('alt+h', 'a')
        shown = viewer.wait('About', lambda s: 'MXOV Viewer 1.0.0' in s.texts())
        self.assertIn('MXOVDocViewCtrl.ocx 1.0.0', shown.texts())
        self.assertIn('mxovshare.dll 1.0.0', shown.texts())
        self.assertIn('MIT licence', shown.texts())
        self.assertIn('zlib licence', shown.texts())
        viewer.photograph('e2e-about')
        viewer.press('Return')
        viewer.wait_for_no_dialog('About is closed')
        self.finish(viewer)

    def test_control_fills_its_place_at_the_left(self):
        viewer, shown = self.open_sample()
        container = shown.frame.find(class_name='AtlAxWin')
        dialog = shown.frame.find(class_name='#32770')
        pane = shown.frame.find(class_name='MXOVPreviewPane')
        self.assertEqual(dialog.rect, container.rect)
        self.assertLess(container.rect[0], pane.rect[0])
        for number in LISTS:
            self.assertLessEqual(shown.item(number).rect[2], container.rect[2])
        self.finish(viewer)

    def test_control_follows_the_window(self):
        viewer, before = self.open_sample()
        for width, height in ((1150, 900), (900, 700), (1100, 640)):
            viewer.do('windowsize', before.frame.display, width * DOTS // 96, height * DOTS // 96)
            shown = viewer.wait('the control has followed', lambda s: (
                s.frame.size != before.frame.size
                and s.frame.find(class_name='#32770').rect == s.frame.find(class_name='AtlAxWin').rect
                and s.frame.find(class_name='AtlAxWin').size[1] != before.frame.find(class_name='AtlAxWin').size[1]))
            self.assertEqual(shown.frame.find(class_name='AtlAxWin').size[0],
                             before.frame.find(class_name='AtlAxWin').size[0])
            self.assertGreater(shown.frame.find(class_name='MXOVPreviewPane').size[0], 200)
            before = shown
        viewer.photograph('e2e-resized')
        self.finish(viewer)

    def test_right_click_shows_no_menu(self):
        viewer, shown = self.open_sample()
        points = [((item.rect[0] + item.rect[2]) // 2, item.rect[3] - 6) for item in shown.lists()]
        save = shown.item(SAVE)
        points.append((save.rect[2] + 30, save.top + 3))
        for point in points:
            viewer.click(*point, button=3)
        # A menu would take the click that folds.
        box = shown.boxes()[0]
        viewer.click(box.rect[0] + 60, box.top + 8)
        shown = viewer.wait('the section is folded', lambda s: not s.lists()[0].visible)
        self.assertEqual([window.class_name for window in shown.others], [])
        self.finish(viewer)

    def test_refresh_shows_a_link_that_has_come_back(self):
        certificate = linked_file('material-certificate.pdf')
        hidden = certificate.with_suffix('.away')
        certificate.rename(hidden)
        self.addCleanup(lambda: hidden.exists() and hidden.rename(certificate))
        viewer, shown = self.open_sample()
        self.assertEqual([row[3] for row in shown.lists()[3].rows], [MISSING, PACKAGED, MISSING])
        hidden.rename(certificate)
        viewer.press('F5')
        viewer.wait('the link is there', lambda s: [row[3] for row in s.lists()[3].rows] == [LINKED, PACKAGED, MISSING])
        self.finish(viewer)

    def test_tab_reaches_the_lists_in_turn(self):
        viewer, _ = self.open_sample()
        self.assertEqual(self.focused(viewer.snapshot()), LISTS[0])
        self.assertEqual([self.focus_after(viewer, 'Tab') for _ in range(5)], [*LISTS[1:3], ADD, LISTS[3], LISTS[0]])
        self.assertEqual(self.focus_after(viewer, 'shift+Tab'), LISTS[3])
        viewer.press('Down')
        viewer.wait('a row is selected', lambda s: s.lists()[3].selected == [0])
        self.finish(viewer)

    def focused(self, shown):
        return shown.frame.find(handle=shown.focus).id

    def focus_after(self, viewer, key):
        before = viewer.snapshot().focus
        viewer.press(key)
        return self.focused(viewer.wait('the focus moves', lambda s: s.focus != before))

    def test_help_from_the_menu_names_the_program(self):
        viewer, _ = self.open_sample()
        viewer.press('alt+h', 'a')
        shown = viewer.wait_for_dialog('the message')
        self.assertIn(PROGRAM, shown.texts())
        viewer.photograph('e2e-about')
        viewer.press('Return')
        viewer.wait_for_package('bracket.mxov')
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
