#!/usr/bin/env python3
"""Two processes edit and save one package at random, while programs are killed, files locked, replaced and deleted,
calls fail and the disk is full. After each step the disk is compared with a plain model.

Each run is drawn from one number, which a failure names; MXOV_TORTURE=NUMBER repeats that run. The
timing between the two processes still differs from run to run. With MXOV_LONG it runs for an hour.
"""
import collections
import os
import random
import shutil
import signal
import time
import unittest
import zipfile

import plainpackage
from laboratory import Laboratory
from torturefaults import FAULTS, Action, Faults, expect, fail_hanging
from wineprogram import windows_path
from worker import Worker

DURATION = 3600 if os.environ.get('MXOV_LONG') else 60  # seconds
STEPS = 40  # of a run
LONGEST_STEP = 300  # seconds
INFORMATION = (b'; by hand\r\n[FILEINFO]\r\nGCode=GCode\\a.nc\r\nThumbnail=t.bmp\r\n'
               b'[FILE_HISTORY_1]\r\nOperation=Created\r\nTime=2024-01-01 00:00:00\r\nBy=me\r\nRemarks=\r\n')
TEXTS = ('', 'a', 'another text', 'h\u00e9', '\u4e2d\u6587', 'x' * 3000)
ACTIONS = {'edit': 40, 'attach': 25, 'remove': 10, 'save': 25}
EVENTS = {'act': 60, 'act together': 20, 'open': 5, 'replace information': 4, 'replace package': 4,
          'delete information': 1, 'delete package': 3, 'delete document': 3}


class Run:
    """One package, edited and saved by two processes."""

    def __init__(self, laboratory, workers, locker, number, counts):
        self.laboratory, self.workers, self.counts = laboratory, workers, counts
        self.draw = random.Random(number)
        self.faults = Faults(self, laboratory, locker)
        self.place = laboratory.root / f'run-{number}'
        self.folders = 0
        self.folder = self.new_folder()
        self.folder.mkdir(parents=True)
        self.package = self.place / 'p.mxov'
        self.documents = {'GCode/a.nc': self.content(60_000), 'b.bin': self.content(200_000)}
        for name, content in self.documents.items():
            (self.folder / name).parent.mkdir(exist_ok=True)
            (self.folder / name).write_bytes(content)
        (self.folder / 'mxinfo.ini').write_bytes(INFORMATION)
        self.information = plainpackage.parse(INFORMATION)
        self.packed = None  # sections and documents in the package; none without one
        self.serial = 0  # of the package: another one each time that it is written
        self.names = 0  # handed out to documents and sections
        for worker in workers:
            worker.known = None
        self.is_clean = True  # nothing is left of a program that was killed
        self.log = []

    # What is drawn
    def content(self, size):
        return self.draw.randbytes(size // 2) + b'G1 X1\r\n' * (size // 14)

    def choose(self, weights):
        return self.draw.choices(list(weights), weights.values())[0]

    def new_name(self, prefix):
        self.names += 1
        return f'{prefix}{self.names}'

    def new_folder(self):
        self.folders += 1
        return self.place / f'folder-{self.folders}'

    def names_in(self, sections):
        return [name for name, _ in sections]

    def draw_action(self):
        """An action with what it does, as the driver's words and as the model's."""
        kind = self.choose(ACTIONS)
        folder = windows_path(self.folder)
        added = [name for name in self.names_in(self.information) if name.startswith(plainpackage.ADDED)]
        if kind == 'remove' and added:
            section = self.draw.choice(added)
            path = dict(dict(self.information)[section]).get('FilePath', '')
            return Action(kind, ('remove', folder, section), plainpackage.remove_actions(section), section, path)
        if kind == 'attach':
            name = self.new_name('document-') + '.txt'
            return Action(kind, ('attach', folder, windows_path(self.laboratory.source), name),
                          plainpackage.attach_actions(name), name, f'ReferanceFiles\\{name}')
        if kind == 'save':
            answer = self.draw.choice(('yes', 'yes', 'no'))
            return Action(kind, ('save', folder, windows_path(self.package), answer), plainpackage.save_actions(), answer)
        section = self.draw.choice([*self.names_in(self.information), self.new_name('NOTE_')])
        key, value = self.draw.choice(('Description', 'Timestamp', 'Note')), self.draw.choice(TEXTS) + self.new_name('')
        return Action('edit', ('edit', folder, section, key, value), plainpackage.edit_actions(section, key, value), section)

    # Steps
    def step(self):
        event = self.choose(EVENTS)
        if event in ('act', 'act together'):
            self.act([self.draw_action() for _ in range(2 if event == 'act together' else 1)])
        else:
            getattr(self, event.replace(' ', '_'))()

    def open(self):
        """Goes on in a folder of its own, as after closing the package and opening it again."""
        if not self.packed:
            return
        worker = self.draw.choice(self.workers)
        folder = self.new_folder()
        fault = self.choose({name: weight for name, weight in FAULTS.items() if 'lock' not in name})
        self.note('open', fault)
        [(reply, died)] = self.faults.play(fault, 'open', [(worker, ('open', windows_path(self.package), windows_path(folder)))])
        if died or not reply.done:
            expect(died or not folder.exists(), 'a failed opening left a folder')
            expect(died or fault != 'none', 'a sound package was not opened')
            shutil.rmtree(folder, ignore_errors=True)
            return
        shutil.rmtree(self.folder)
        self.folder = folder
        self.information, self.documents = self.packed[0], dict(self.packed[1])
        for other in self.workers:
            other.known = None  # of this folder
        worker.known = self.serial
        self.check_folder()

    def replace_information(self):
        """Another program writes a new information file."""
        self.note('replace information')
        self.counts['replaced files'] += 1
        section = self.new_name('OTHER_')
        new = self.folder / 'other.tmp'
        text = '; by another program\r\n' + ''.join(
            f'[{name}]\r\n' + ''.join(f'{key}={value}\r\n' for key, value in keys)
            for name, keys in (*self.information, (section, (('Note', 'x'),))))
        new.write_bytes(text.encode('utf-8-sig' if self.draw.random() < 0.5 else 'utf-16'))
        new.replace(self.folder / 'mxinfo.ini')
        self.information = (*self.information, (section, (('Note', 'x'),)))

    def replace_package(self):
        self.note('replace package')
        self.counts['replaced files'] += 1
        new = self.place / 'other.tmp'
        documents = {self.new_name('other-') + '.txt': self.content(1000)}
        information = b'[FILEINFO]\r\nGCode=\r\n[' + self.new_name('OTHER_').encode() + b']\r\nNote=x\r\n'
        with zipfile.ZipFile(new, 'w', zipfile.ZIP_DEFLATED) as file:
            for name, content in (('mxinfo.ini', information), *documents.items()):
                file.writestr(name, content)
        new.replace(self.package)
        self.packed = plainpackage.parse(information), documents
        self.serial += 1

    def delete_information(self):
        self.note('delete information')
        self.counts['deleted files'] += 1
        (self.folder / 'mxinfo.ini').unlink(missing_ok=True)
        self.information = ()

    def delete_package(self):
        self.note('delete package')
        self.counts['deleted files'] += 1
        self.package.unlink(missing_ok=True)
        self.packed = None
        self.serial += 1

    def delete_document(self):
        if self.documents:
            name = self.draw.choice(list(self.documents))
            self.note('delete document', name)
            self.counts['deleted files'] += 1
            (self.folder / name).unlink()
            del self.documents[name]

    def act(self, actions):
        first = self.draw.randrange(2)
        workers = [self.workers[first], self.workers[1 - first]][:len(actions)]
        fault = self.choose(FAULTS)
        self.note(fault, *(f'{"AB"[self.workers.index(worker)]}: {action.kind} {action.about}'
                           for worker, action in zip(workers, actions)))
        before = self.package.read_bytes() if self.package.exists() else None
        can_save = (self.folder / 'mxinfo.ini').exists()
        known = [worker.known for worker in workers]
        ends = self.faults.play(fault, actions[0].kind, [(worker, action.words) for worker, action in zip(workers, actions)])
        alone = len(actions) == 1
        plans = []
        for action, (reply, died) in zip(actions, ends):
            plans.append((action.effects, action.counts(reply, died and not alone)))
            if fault == 'none' and alone and not reply.questions and (can_save or action.kind != 'save'):
                expect(reply.done and not reply.notices, 'nothing was in the way, but', reply)
        self.judge(actions, plans, before)
        for worker, action, (reply, died), knew in zip(workers, actions, ends, known):
            if action.kind == 'save' and not died and reply.done:
                expect(not alone or reply.questions or knew in (None, self.serial - 1) or before is None,
                       'the package of another was overwritten unasked')
                worker.known = self.serial
        self.check_traces(fault, actions, ends)

    def judge(self, actions, plans, before):
        """Compares the disk with what the model allows, and goes on from there."""
        allowed = plainpackage.outcomes(self.information, plans)
        path = self.folder / 'mxinfo.ini'
        information = plainpackage.parse(path.read_bytes()) if path.exists() else ()
        after = self.package.read_bytes() if self.package.exists() else None
        packed = None
        if after != before:
            expect(after is not None, 'the package is gone')
            data, documents = plainpackage.read_package(self.package)
            packed = plainpackage.parse(data)
            self.serial += 1
        found = (plainpackage.unnumbered(information, self.information),
                 packed and plainpackage.unnumbered(packed, self.information))
        expect(found in allowed, 'the disk holds', found, 'but may hold', *allowed)
        if packed is not None:
            self.check_documents(documents, actions, 'in the package')
            self.packed = packed, documents
        self.information = information
        self.documents = self.check_documents(self.documents_on_disk(), actions, 'in the folder')

    def check_documents(self, documents, actions, where):
        """Documents that this step adds or removes may be there or not; all others are what they were."""
        changing = {action.document.replace('\\', '/') for action in actions}
        source = self.laboratory.source.read_bytes()
        for name in documents.keys() | self.documents.keys():
            if name in changing:
                expect(source.startswith(documents.get(name, b'')), name, where)
            else:
                expect(name in documents, name, 'is missing', where)
                expect(name in self.documents, name, 'is new', where)
                expect(documents[name] == self.documents[name], name, 'changed', where)
        return documents

    def check_traces(self, fault, actions, ends):
        """What a killed program left goes with the next save that nobody disturbs."""
        if any(died for _, died in ends):
            self.is_clean = False
        elif fault == 'none' and len(actions) == 1 and actions[0].kind == 'save' and ends[0][0].done:
            self.is_clean = True
        if self.is_clean:
            traces = [*self.place.glob('*.mxov-new'), *self.folder.rglob('*.mxov-new')]
            expect(not traces, 'there are traces:', *traces)

    def documents_on_disk(self):
        return {path.relative_to(self.folder).as_posix(): path.read_bytes() for path in self.folder.rglob('*')
                if path.is_file() and path.name not in ('mxinfo.ini', 'mxinfo.ini.mxov-new')}

    def check_folder(self):
        expect(self.documents_on_disk() == self.documents, 'the documents of the opened package differ')
        path = self.folder / 'mxinfo.ini'
        information = plainpackage.parse(path.read_bytes()) if path.exists() else ()
        expect(information == self.information, 'the information of the opened package differs')

    def note(self, *what):
        self.log.append(' '.join(map(str, what)))
        self.counts['steps'] += 1


class TortureTest(unittest.TestCase):
    def test_nothing_is_lost(self):
        laboratory = Laboratory()
        self.addCleanup(laboratory.close)
        workers = [Worker(laboratory) for _ in range(2)]
        locker = Worker(laboratory)
        for worker in (*workers, locker):
            self.addCleanup(worker.close)
        counts = collections.Counter()
        repeated = os.environ.get('MXOV_TORTURE')
        first = int(repeated or random.SystemRandom().randrange(1_000_000_000))
        end = time.monotonic() + (0 if repeated else DURATION)
        signal.signal(signal.SIGALRM, fail_hanging)
        number = first
        while number == first or time.monotonic() < end:
            run = Run(laboratory, workers, locker, number, counts)
            try:
                for _ in range(STEPS):
                    signal.alarm(LONGEST_STEP)
                    run.step()
            except AssertionError as loss:
                history = '\n  '.join(run.log)
                last = (laboratory.home / 'errors.txt').read_text('utf-8', 'replace')[-1000:]
                self.fail(f'{loss.args}\n  {history}\nthe last messages: {last}\nMXOV_TORTURE={number} repeats this run')
            shutil.rmtree(run.place)
            counts['runs'] += 1
            number += 1
        print(', '.join(f'{count} {name}' for name, count in counts.items()), '0 losses', sep=', ', end=' ... ', flush=True)


if __name__ == '__main__':
    unittest.main(verbosity=2)
