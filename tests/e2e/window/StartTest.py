#!/usr/bin/env python3
"""The window without a package: the button to open one, and the recent packages."""
import unittest

from viewercase import ViewerCase
from viewerdriver import PROGRAM, Viewer

PAGE, LIST, OPEN = 'MXOVStartPane', 'SysListView32', 300


def page(shown):
    """The page; None while a package is open."""
    found = shown.frame.find(class_name=PAGE)
    return found if found.visible else None


class StartTest(ViewerCase):
    def test_the_button_asks_for_a_package(self):
        viewer = self.use(Viewer())
        shown = viewer.wait('the page', lambda s: s.frame.visible and page(s))
        self.assertFalse(page(shown).find(class_name=LIST).visible)
        viewer.photograph('e2e-start')
        viewer.click(*page(shown).find(id=OPEN).middle)
        viewer.wait('the dialog', lambda s: s.others and s.dialog().text == 'Open package')
        viewer.press('Escape')
        viewer.wait_for_no_dialog('it is cancelled')
        viewer.press('Return')
        viewer.wait('the button has the focus', lambda s: s.others and s.dialog().text == 'Open package')
        viewer.press('Escape')
        viewer.wait_for_no_dialog('it is cancelled')
        self.finish(viewer)

    def test_recent_packages_open_at_a_click_and_with_the_keyboard(self):
        viewer, shown = self.open_sample()
        self.assertIsNone(page(shown))
        viewer.press('ctrl+w')
        shown = viewer.wait('the page', lambda s: page(s) and s.frame.text == PROGRAM)
        recent = page(shown).find(class_name=LIST)
        self.assertEqual([row[0] for row in recent.rows], ['bracket'])
        viewer.wait('its picture', lambda s: page(s).find(class_name=LIST).rows[0][-1] == 1)
        viewer.photograph('e2e-start-recent')
        left, top, _, _ = recent.rect
        viewer.click(left + 70, top + 60)
        viewer.wait_for_package('bracket.mxov')
        viewer.press('ctrl+w')
        viewer.wait('the page', page)
        viewer.press('Tab', 'Down', 'Return')
        viewer.wait_for_package('bracket.mxov')
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
