#!/usr/bin/env python3
"""Names of entries that were chosen to be slow to tell apart: they meet in a hash table, or differ at their ends only."""
import functools
import unittest

from hostilecase import MOST_TIME, HostileCase, forge

# MurmurHash64A with the start value that the standard library takes for texts.
MULTIPLIER = 0xC6A4A7935BD1E995
START = 0xC70F6907
WORD = (1 << 64) - 1
# Each leads the hash of a name from one state to the same other one, whichever of the two stands there.
PIECES = [
    (b'+ZU4FCOV#={T,&7H', b'(#YBU!CSUWM{~_$B'),
    (b'}8P3M+X@2@=#3A8,', b'9AI^6,`61`$PJW~R'),
    (b'_=T6X$,JSE-)-B~M', b'A}{^NBQ^4K4B1FSW'),
    (b'!!VQ0]&UH~H^~L!C', b'NOGZZJ@IM)Y%%^Y,'),
    (b'J`HS}Q%-M;A6WX!N', b'LL`&+,@^5&=YXO1Y'),
    (b'@H(T1I0I{G%A6,R%', b'$VQ+1_^OY~~L6WO#'),
    (b'~-_A&$5-~&RI@%KO', b'Q_S7EG-2~]XH7JOM'),
    (b'=[N^821RQ`#NYB$0', b'1C0RVPZKM~_%MNO-'),
    (b'MFTAF)THI{0(M;~#', b')@PH{#%9H_]+&2I@'),
    (b'5I%GU@)3ZJ0-MCEI', b'Q+B)KRL~`;IZ,AZ{'),
    (b'^45S,D&ZVF_29+=E', b'WZ&3J4~@;)3N(J~C'),
    (b'LTK[OA8V`,98%(=%', b'9AE^93V}!BXD77,+'),
    (b'J{~9F`CBTOKN3DT!', b'#1@$~2OY}_(LZ[D6'),
]


def state_of(name):
    """The hash of a name whose length is a multiple of eight, up to what is done with the last state of every name."""
    state = START ^ len(name) * MULTIPLIER & WORD
    for at in range(0, len(name), 8):
        word = int.from_bytes(name[at:at + 8], 'little') * MULTIPLIER & WORD
        state = (state ^ (word ^ word >> 47) * MULTIPLIER & WORD) * MULTIPLIER & WORD
    return state


class HostileNamesTest(HostileCase):
    def expect_quick(self, names):
        forge(self.work / 'p.mxov', [(name, 0, b'', 0, 0) for name in names])
        for command in ('list', 'check', 'text'):
            with self.subTest(command=command):
                cost = self.run_program(command, 'p.mxov')
                self.assertEqual(cost.code, 0, cost.errors)
                self.assertLess(cost.seconds, MOST_TIME)

    def test_names_of_one_hash(self):
        names = functools.reduce(lambda heads, pair: [head + piece for head in heads for piece in pair], PIECES, [b''])
        self.assertEqual((len(set(names)), len({state_of(name) for name in names})), (2 ** len(PIECES), 1))
        self.expect_quick(names)

    def test_names_that_differ_at_their_ends(self):
        self.expect_quick([b'a' * 240 + b'%06d' % (i * 7919 % 20_000) for i in range(20_000)])


if __name__ == '__main__':
    unittest.main(verbosity=2)
