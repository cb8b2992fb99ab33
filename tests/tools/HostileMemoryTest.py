#!/usr/bin/env python3
"""What packages that were made to do harm may cost: memory and processor time of the built package command line."""
import unittest
import zlib

from hostilecase import IS_WORTHWHILE, MOST_TIME, HostileCase, forge

MOST_MEMORY = 256 << 10  # KB
MEGABYTE = 1 << 20


def zeros(count):
    """So many megabytes of zeros, deflated, and their checksum."""
    packer = zlib.compressobj(9, zlib.DEFLATED, -15)
    block, crc, packed = bytes(MEGABYTE), 0, b''
    for _ in range(count):
        packed += packer.compress(block)
        crc = zlib.crc32(block, crc)
    return packed + packer.flush(), crc


@unittest.skipUnless(IS_WORTHWHILE, 'only with MXOV_LONG')
class HostileMemoryTest(HostileCase):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.gigabyte = zeros(1024)

    def expect(self, expected_code, reason, entries, *, commands=('list', 'check', 'extract')):
        forge(self.work / 'p.mxov', entries)
        for command in commands:
            with self.subTest(command=command):
                code, errors, memory, time = self.run_program(command, 'p.mxov', *['out'] * (command == 'extract'))
                self.assertEqual(code, expected_code, errors)
                self.assertIn(reason, errors)
                self.assertGreater(memory, 4 << 10, 'this is not the memory of the program')
                self.assertLess(memory, MOST_MEMORY)
                self.assertLess(time, MOST_TIME)
                self.assertFalse((self.work / 'out').exists())

    def test_a_gigabyte_in_a_megabyte(self):
        packed, crc = self.gigabyte
        self.expect(1, 'out of proportion', [(b'bomb.txt', 1 << 30, packed, crc, 8)])
        self.expect(1, 'out of proportion', [(b'mxinfo.ini', 1 << 30, packed, crc, 8)])

    def test_a_gigabyte_that_is_called_a_megabyte(self):
        packed, crc = self.gigabyte
        self.expect(1, 'more than its stated size', [(b'mxinfo.ini', MEGABYTE, packed, crc, 8)],
                    commands=('check', 'extract'))

    def test_many_files_that_are_gigabytes_together(self):
        packed, crc = zeros(60)
        self.expect(1, 'out of proportion', [(b'bomb%d' % i, 60 * MEGABYTE, packed, crc, 8) for i in range(500)])

    def test_an_information_file_of_the_largest_size(self):
        comments = (b';' * 1023 + b'\n') * (12 * 1024)
        self.expect(0, 'no information', [(b'mxinfo.ini', 12 * MEGABYTE, comments, zlib.crc32(comments), 0)],
                    commands=('check',))
        packed, crc = zeros(12)
        self.expect(1, 'a line longer than', [(b'mxinfo.ini', 12 * MEGABYTE, packed, crc, 8)], commands=('check',))
        packed, crc = zeros(63)
        self.expect(1, 'longer than 12288 KB', [(b'mxinfo.ini', 63 * MEGABYTE, packed, crc, 8)], commands=('check',))

    def test_more_entries_than_any_package_may_hold(self):
        self.expect(1, 'more than 262144 entries', [(b'%06d' % i, 0, b'', 0, 0) for i in range(262_145)])

    def test_long_names_before_the_entry_that_is_wrong(self):
        entries = [(b'part/' * 100 + b'%06d' % i, 0, b'', 0, 0) for i in range(40_000)]
        self.expect(1, 'contradict each other', entries + [(b'x', 1, b'', 0, 0)])

    def test_deep_folders_before_the_entry_that_is_wrong(self):
        entries = [(b'a/' * 15_000 + b'%06d' % i, 0, b'', 0, 0) for i in range(500)]
        self.expect(1, 'leads through', entries + [(b'../x', 0, b'', 0, 0)])

    def test_deep_folders_of_a_sound_package(self):
        entries = [(b'a/' * 250 + b'%06d' % (i * 7919 % 5_000), 0, b'', 0, 0) for i in range(5_000)]
        self.expect(0, 'no information', entries, commands=('check',))

    def test_folders_too_deep_for_any_package(self):
        entries = [(b'a/' * 15_000 + b'%06d' % (i * 7919 % 500), 0, b'', 0, 0) for i in range(500)]
        self.expect(1, 'more than 250 folders', entries, commands=('check',))

    def test_as_many_documents_as_ten_thousand(self):
        information = b''.join(b'[REFERANCE_FILE_%d]\r\nIsReferencedFile=NO\r\nFilePath=ReferanceFiles\\%d.txt\r\n' %
                               (i, i) for i in range(10_000))
        entries = [(b'mxinfo.ini', len(information), information, zlib.crc32(information), 0)]
        entries += [(b'ReferanceFiles/%d.txt' % i, 0, b'', 0, 0) for i in range(10_000)]
        self.expect(0, '', entries, commands=('check',))


if __name__ == '__main__':
    unittest.main(verbosity=2)
