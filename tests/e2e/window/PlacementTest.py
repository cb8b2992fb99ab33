#!/usr/bin/env python3
"""Where the properties of a document come up, and the columns of the lists, at every size of the screen's dots."""
import unittest

from viewercase import DOTS, SCREEN, ViewerCase, properties_of
from viewerdriver import LISTS

GAP = 6
LEAST_SCROLL_BAR = 13  # pixels at 96 dots per inch
DATE_WIDTH = 105  # what a date needs at 96 dots per inch


class PlacementTest(ViewerCase):
    def move_window(self, viewer, x, y):
        before = viewer.snapshot().frame
        viewer.do('windowmove', before.display, x, y)
        return viewer.wait('the window has moved', lambda s: s.frame.rect[:2] != before.rect[:2])

    def open_properties(self, viewer):
        """The areas of the control and of the properties of the first G-code file."""
        shown = viewer.snapshot()
        viewer.click(*self.row_place(shown.lists()[1], 0))
        shown = viewer.wait('the properties', properties_of)
        return shown.frame.find(class_name='AtlAxWin').rect, properties_of(shown).rect

    def close_properties(self, viewer):
        viewer.press('alt+F4')
        viewer.wait('the properties are closed', lambda s: not properties_of(s))

    def test_the_properties_come_up_beside_the_control_wherever_the_window_is(self):
        viewer, _ = self.open_sample()
        for x, y in ((20, 40), (160, 240), (90, 120)):
            self.move_window(viewer, x, y)
            control, properties = self.open_properties(viewer)
            self.assertEqual(properties[0], control[2] + GAP)
            self.assertEqual(properties[1], control[1])
            viewer.photograph('e2e-properties-beside')
            self.close_properties(viewer)
        self.finish(viewer)

    def test_the_properties_follow_the_size_of_the_window(self):
        viewer, before = self.open_sample()
        viewer.do('windowsize', before.frame.display, 1150 * DOTS // 96, 900 * DOTS // 96)
        viewer.wait('the window is larger', lambda s: s.frame.size != before.frame.size)
        control, properties = self.open_properties(viewer)
        self.assertEqual(properties[:2], (control[2] + GAP, control[1]))
        self.close_properties(viewer)
        self.finish(viewer)

    def test_at_the_edges_of_the_screen_the_properties_stay_on_it(self):
        viewer, _ = self.open_sample()
        for x, y in ((800, 100), (60, 640)):
            self.move_window(viewer, x * DOTS // 96, y * DOTS // 96)
            control, properties = self.open_properties(viewer)
            viewer.photograph(f'e2e-properties-edge-{x}')
            self.assertGreaterEqual(properties[0], 0)
            self.assertGreaterEqual(properties[1], 0)
            self.assertLessEqual(properties[2], SCREEN[0])
            self.assertLessEqual(properties[3], SCREEN[1])
            self.assertTrue(properties[0] >= control[2] or properties[2] <= control[0], 'it covers no list')
            self.close_properties(viewer)
        self.finish(viewer)

    def check_columns(self, percent):
        self.set_dots_per_inch(96 * percent // 100)
        viewer, shown = self.open_sample()
        viewer.photograph(f'e2e-columns-{percent}')
        self.assertGreater(shown.item(LISTS[0]).size[0], 300 * percent // 100, 'the lists have grown with the dots')
        for shown_list in shown.lists():
            widths = [width for _, width in shown_list.columns]
            self.assertLessEqual(sum(widths), shown_list.size[0] - LEAST_SCROLL_BAR, 'no horizontal scroll bar')
            self.assertGreaterEqual(widths[2], DATE_WIDTH * percent // 100)
            self.assertGreaterEqual(widths[0], 80 * percent // 100)
        self.finish(viewer)

    def test_columns_at_100_percent(self):
        self.check_columns(100)

    def test_columns_at_125_percent(self):
        self.check_columns(125)

    def test_columns_at_150_percent(self):
        self.check_columns(150)

    def test_columns_at_200_percent(self):
        self.check_columns(200)

    def test_widths_that_the_user_set_are_remembered(self):
        viewer, shown = self.open_sample()
        programs = shown.lists()[1]
        before = [width for _, width in programs.columns]
        edge = (programs.rect[0] + before[0], programs.top + 8)
        viewer.drag(edge, (edge[0] - 40, edge[1]))
        shown = viewer.wait('the column is narrower', lambda s: s.lists()[1].columns[0][1] < before[0] - 20)
        narrowed = shown.lists()[1].columns
        others = [shown.lists()[number].columns for number in (0, 2, 3)]
        self.finish(viewer)
        viewer, shown = self.open_sample()
        self.assertEqual(shown.lists()[1].columns, narrowed)
        self.assertEqual([shown.lists()[number].columns for number in (0, 2, 3)], others)
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
