#!/usr/bin/env python3
"""Power cuts, full disks and input errors at every step of editing and saving a package.

A library preloaded into Wine (Shim.c) spoils one chosen file system call of the driver; what is on the disk
afterwards is judged by Python alone.
"""
import itertools
import os
import pathlib
import random
import shutil
import signal
import subprocess
import unittest

from faultcase import DOCUMENTS, EDITED, FEWEST_CALLS, INFORMATION, FaultCase, contents, make_folder
from laboratory import COUNT, FLUSH_ERROR, HALF_AND_KILL, INFORMATION_FLUSH_ERROR, IO_ERROR, KILL, NO_SPACE, READ_ONLY, SHORT

LARGE = 30_000_000 if os.environ.get('MXOV_LONG') else 5_000_000  # bytes
STRIDE = 1 if os.environ.get('MXOV_LONG') else 3  # a kill at every call, or at every third


class FaultTest(FaultCase):
    def kill_at_calls(self, action):
        """The calls are not counted beforehand: their number may differ from run to run."""
        killed = 0
        for mode in (KILL, HALF_AND_KILL):
            for target in itertools.count(1, STRIDE):
                folder, package = self.scene(killed)
                self.lab.arm(mode, target)
                outcome = self.lab.drive(action, folder, package)
                with self.subTest(action=action, mode=mode, target=target, outcome=outcome):
                    if outcome.fired:
                        self.assertEqual((outcome.code, outcome.lines), (-signal.SIGKILL, []))
                        self.check_kept(action, folder, package)
                        killed += 1
                        continue
                    self.expect_lines(outcome, ['done 0'])
                    self.check_done(action, folder, package)
                    # Half of it is only done of calls that write.
                    self.assertTrue(outcome.count < target or mode == HALF_AND_KILL)
                shutil.rmtree(folder)
                if outcome.count < target:
                    break
        self.assertGreater(killed * STRIDE, FEWEST_CALLS)
        # The next program that writes there cleans up.
        place = folder.parent
        outcome = self.lab.drive(action, place / 'folder', place / 'p.mxov', *(COUNT, 0) * killed)
        self.assertEqual([act[1:4] for act in self.acts(outcome)], [(0, 0, 0)] * killed)
        for number in range(killed):
            with self.subTest(action=action, number=number):
                self.check_clean(action, place / f'folder-{number}', place / f'p.mxov-{number}')
        print(f'{action}: killed {killed} times', end=' ... ', flush=True)

    def fail_at_every_call(self, action):
        # A run may need more calls than the one that counts; the last faults come to nothing.
        most = self.points(action) + 8
        faults = [(mode, target) for mode in (NO_SPACE, IO_ERROR, SHORT) for target in range(1, most + 1)]
        faults.append((READ_ONLY, 0))
        for number in range(len(faults)):
            place = self.scene(number)[0].parent
        outcome = self.lab.drive(action, place / 'folder', place / 'p.mxov', *(word for fault in faults for word in fault))
        acts = self.acts(outcome)
        self.assertEqual(len(acts), len(faults), outcome)
        print(f'{action}: {sum(act.fired for act in acts)} faults', end=' ... ', flush=True)
        for number, (fault, act) in enumerate(zip(faults, acts)):
            mode, target = fault
            with self.subTest(action=action, fault=fault, act=act):
                # Only calls that write are cut short.
                self.assertTrue(act.fired or mode == SHORT or act.calls < target)
                self.assertFalse(act.fired and target == most, 'there are more calls')
                folder, package = place / f'folder-{number}', place / f'p.mxov-{number}'
                information = pathlib.Path(f'{folder}.first.ini').read_bytes()
                self.check_information(action, information)
                saved = self.check_package(pathlib.Path(f'{package}.first'), information)
                if action == 'save':
                    self.assertEqual(act.told, 0 if saved else 1)
                    self.assertEqual(information == INFORMATION, not saved)
                if mode == READ_ONLY:
                    self.assertEqual(information, INFORMATION)
                self.assertEqual(act.told_again, 0)
                self.check_clean(action, folder, package)

    def test_a_program_that_dies_while_it_edits(self):
        self.kill_at_calls('edit')

    def test_a_program_that_dies_while_it_attaches(self):
        self.kill_at_calls('attach')

    def test_a_program_that_dies_while_it_removes(self):
        self.kill_at_calls('remove')

    def test_a_program_that_dies_while_it_saves(self):
        self.kill_at_calls('save')

    def test_errors_while_it_edits(self):
        self.fail_at_every_call('edit')

    def test_errors_while_it_attaches(self):
        self.fail_at_every_call('attach')

    def test_errors_while_it_removes(self):
        self.fail_at_every_call('remove')

    def test_errors_while_it_saves(self):
        self.fail_at_every_call('save')

    def test_a_flush_that_fails_while_a_large_package_is_written(self):
        """The system tells such a failure once, so what comes after it proves nothing."""
        # One while the package is verified and one before it is replaced; then the information file's, whose text is
        # written again.
        most, last = 2, 4
        faults = [(FLUSH_ERROR, target) for target in range(1, last + 1)]
        faults += [(INFORMATION_FLUSH_ERROR, target) for target in (1, 2)]
        large = random.Random(5).randbytes(LARGE)
        for number in range(len(faults)):
            folder, _ = self.scene(number)
            (folder / 'large.bin').write_bytes(large)
        place = folder.parent
        outcome = self.lab.drive('save', place / 'folder', place / 'p.mxov', *(word for fault in faults for word in fault))
        acts = self.acts(outcome)
        self.assertEqual(len(acts), len(faults), outcome)
        for number, (fault, act) in enumerate(zip(faults, acts)):
            mode, target = fault
            of_package = mode == FLUSH_ERROR
            with self.subTest(fault=fault, act=act):
                if act.fired:
                    self.assertIn(f'p.mxov-{number}' if of_package else 'mxinfo.ini', act.spoilt)
                else:
                    self.assertEqual(act.spoilt, '')
                    self.assertLess(act.calls, target)
                # The user is told of a package that is not saved, and once only.
                refused = bool(act.fired and of_package)
                self.assertEqual((act.told, act.told_again), (int(refused), 0))
                package = pathlib.Path(f'{place / "p.mxov"}-{number}')
                first = pathlib.Path(f'{package}.first')
                information = pathlib.Path(f'{place / "folder"}-{number}.first.ini').read_bytes()
                self.assertEqual(first.read_bytes() == self.old_package, refused)
                self.assertEqual(information == INFORMATION, refused)
                if not refused:
                    self.assertEqual(contents(first)['mxinfo.ini'], information)
                self.assertEqual(contents(package)['large.bin'], large)
        fired = {fault for fault, act in zip(faults, acts) if act.fired}
        self.assertEqual(fired, {(FLUSH_ERROR, 1), (FLUSH_ERROR, most), (INFORMATION_FLUSH_ERROR, 1)})
        again = acts[faults.index((INFORMATION_FLUSH_ERROR, 1))]
        self.assertGreater(again.calls, 1, 'the information file goes out again')

    def test_a_file_system_of_512_kilobytes(self):
        small = self.lab.home / 'small'
        small.mkdir()
        mount = subprocess.run(['mount', '-t', 'tmpfs', '-o', 'size=512k', 'none', small], capture_output=True, check=False)
        if mount.returncode != 0:
            self.skipTest('this user may not mount a small file system')
        self.addCleanup(subprocess.run, ['umount', small], check=True)
        package = small / 'p.mxov'
        package.write_bytes(self.old_package)
        folder = self.lab.home / 'large'
        make_folder(folder, {**DOCUMENTS, 'large.bin': random.Random(4).randbytes(600_000)})
        self.expect_lines(self.lab.drive('save', folder, package), ['done 1'])
        self.assertEqual(package.read_bytes(), self.old_package)
        self.assertEqual(list(small.iterdir()), [package])
        self.assertEqual((folder / 'mxinfo.ini').read_bytes(), INFORMATION)
        # A file system without a single free block keeps the information file as well.
        package.unlink()
        inside = small / 'folder'
        make_folder(inside, {'a.txt': b'a'})
        try:
            with open(small / 'filler', 'wb', buffering=0) as filler:
                while filler.write(bytes(4096)):
                    pass
        except OSError:
            pass
        self.lab.drive('edit', inside, package)
        self.assertEqual((inside / 'mxinfo.ini').read_bytes(), INFORMATION)
        (small / 'filler').unlink()
        self.lab.drive('edit', inside, package)
        self.assertEqual((inside / 'mxinfo.ini').read_bytes(), EDITED)
        self.expect_lines(self.lab.drive('save', inside, package), ['done 0'])
        self.assertIn('a.txt', contents(package))

    def test_access_rights_stay(self):
        """Wine maps rights to a mode coarsely: what others may do is kept, and equal rights are not touched."""
        folder, package = self.scene('rights')
        for mode, others in ((0o600, 0), (0o644, 0o4)):
            package.chmod(mode)
            self.expect_lines(self.lab.drive('save', folder, package), ['done 0'])
            self.assertNotEqual(package.read_bytes(), self.old_package)
            self.assertEqual(package.stat().st_mode & 0o007, others, oct(mode))
            package.unlink()
            package.write_bytes(self.old_package)

    @unittest.skipIf(os.environ.get('MXOV_PLACE') == 'long_path', 'Wine cannot resolve a link there')
    def test_a_link_stays_and_its_target_is_replaced(self):
        folder, package = self.scene('link')
        target = package.with_name('elsewhere') / 'real.mxov'
        target.parent.mkdir()
        package.rename(target)
        package.symlink_to(target)
        self.expect_lines(self.lab.drive('save', folder, package), ['done 0'])
        self.assertTrue(package.is_symlink())
        self.assertIn('mxinfo.ini', contents(target))
        self.assertNotEqual(target.read_bytes(), self.old_package)
        self.assertEqual(list(target.parent.iterdir()), [target])
        self.assertFalse(package.with_name(package.name + '.mxov-new').exists())

    def test_a_hard_link_is_not_broken_unasked(self):
        folder, package = self.scene('hard')
        other = package.with_name('other')
        other.hardlink_to(package)
        self.expect_lines(self.lab.drive('save', folder, package), ['done 1'])  # the driver answers No
        self.assertEqual(package.read_bytes(), self.old_package)
        self.assertTrue(other.samefile(package))
        self.assertEqual((folder / 'mxinfo.ini').read_bytes(), INFORMATION)

    def test_a_folder_that_vanished(self):
        folder, package = self.scene('gone')
        shutil.rmtree(folder)
        for action in ('edit', 'remove'):
            self.lab.drive(action, folder, package)
            self.assertFalse(folder.exists())
        self.expect_lines(self.lab.drive('save', folder, package), ['done 1'])
        self.assertEqual(package.read_bytes(), self.old_package)
        self.assertFalse(folder.exists())


if __name__ == '__main__':
    unittest.main(verbosity=2)
