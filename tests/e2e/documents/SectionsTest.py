#!/usr/bin/env python3
"""Folding the sections of the control with a real mouse."""
import unittest

from viewercase import ADD, DELETE, FOLDED_HEIGHT, HEADER_HEIGHT, SAVE, ViewerCase


class SectionsTest(ViewerCase):
    def test_sections_fold_and_unfold(self):
        viewer, before = self.open_sample()
        for index, box in enumerate(before.boxes()):
            with self.subTest(section=box.text):
                viewer.click(box.rect[0] + 60, box.top + HEADER_HEIGHT // 2)
                folded = viewer.wait('the section is folded', lambda s: not s.lists()[index].visible)
                self.assert_folded(before, folded, index)
                viewer.photograph(f'e2e-folded-{index + 1}')
                # Elsewhere on the header, so that the two clicks are no double click.
                viewer.click(box.rect[2] - 12, box.top + HEADER_HEIGHT // 2)
                unfolded = viewer.wait('the section is unfolded', lambda s: s.lists()[index].visible)
                self.assertEqual(self.places(unfolded), self.places(before))
        self.finish(viewer)

    def places(self, shown):
        items = [*shown.boxes(), *shown.lists(), *(shown.item(number) for number in (SAVE, ADD, DELETE))]
        return {item.id: (item.rect, item.visible) for item in items}

    def assert_folded(self, before, folded, index):
        box = before.boxes()[index]
        saved = box.size[1] - FOLDED_HEIGHT
        self.assertEqual(folded.boxes()[index].size, (box.size[0], FOLDED_HEIGHT))
        for number, (rect, visible) in self.places(before).items():
            now_rect, now_visible = self.places(folded)[number]
            if rect[1] > box.rect[3]:
                self.assertEqual(now_rect, (rect[0], rect[1] - saved, rect[2], rect[3] - saved), number)
            elif number != box.id:
                self.assertEqual(now_rect, rect, number)
            inside = number != box.id and box.rect[1] - 5 <= rect[1] and rect[3] <= box.rect[3] + 5
            self.assertEqual(now_visible, visible and not inside, number)

    def test_double_click_on_a_header_folds_once(self):
        viewer, before = self.open_sample()
        box = before.boxes()[1]
        viewer.double_click(box.rect[0] + 60, box.top + 8)
        viewer.wait('the section is folded', lambda s: not s.lists()[1].visible)
        other = before.boxes()[0]
        viewer.click(other.rect[0] + 60, other.top + 8)
        shown = viewer.wait('the first section is folded too', lambda s: not s.lists()[0].visible)
        self.assertFalse(shown.lists()[1].visible)
        self.finish(viewer)

    def test_only_a_release_inside_the_header_folds(self):
        viewer, before = self.open_sample()
        box = before.boxes()[1]
        viewer.drag((box.rect[0] + 60, box.top + 8), (box.rect[0] + 60, box.rect[3] + 40))
        other = before.boxes()[0]
        viewer.drag((other.rect[0] + 60, other.top + 8), (other.rect[0] + 160, other.top + 12))
        shown = viewer.wait('the first section is folded', lambda s: not s.lists()[0].visible)
        self.assertTrue(shown.lists()[1].visible)
        self.finish(viewer)


if __name__ == '__main__':
    unittest.main(verbosity=2)
