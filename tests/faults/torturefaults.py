"""What hits the two processes of a torture run, and how it is judged that nothing is lost."""
import threading

from laboratory import DISK_FULL, HALF_AND_KILL, IO_ERROR, KILL, NO_SPACE, READ_ONLY, SHORT
from wineprogram import windows_path

FAULTS = {'none': 40, 'kill': 15, 'kill in a write': 5, 'kill at a moment': 8, 'error': 12, 'disk full': 8,
          'read-only disk': 1, 'lock information': 6, 'lock package': 3, 'lock document': 2}
# Calls to spoil: an edit makes about 7, attaching 33, saving 19.
MOST_CALLS = {'edit': 8, 'attach': 40, 'remove': 8, 'save': 24, 'open': 24}


class Loss(AssertionError):
    """Something is on the disk that should not be, or is not there."""


def fail_hanging(*_):
    raise Loss('a step does not end')


def expect(condition, *what):
    if not condition:
        raise Loss(*what)


class Action:
    """A command for one process and its expected effects."""

    def __init__(self, kind, words, effects, about, document=''):
        self.kind, self.words, self.effects, self.about = kind, words, effects, about
        self.document = document  # that comes or goes

    def counts(self, reply, was_kept):
        """How many of its effects may be on the disk. A process that died behind its answer may have kept them in
        memory until another one was done."""
        whole = len(self.effects)
        if reply is None or was_kept:
            return range(whole + 1)
        return [0] if reply.notices or not reply.done else [whole]


class Faults:
    """Lets the processes of a run do their work under faults."""

    def __init__(self, run, laboratory, locker):
        self.run, self.laboratory, self.locker = run, laboratory, locker
        self.draw, self.counts = run.draw, run.counts

    def play(self, fault, kind, commands):
        """Lets the commands run at the same time and hits them with a fault. Afterwards nothing is in the way any more,
        and what was kept in memory is on the disk. Gives each process's reply, if any, and whether it died."""
        victim = self.draw.choice(commands)[0]
        target = self.draw.randint(1, MOST_CALLS[kind])
        moment = self.draw.uniform(0, 0.05)
        self.lock(fault)
        modes = {'kill': KILL, 'kill in a write': HALF_AND_KILL, 'disk full': DISK_FULL, 'read-only disk': READ_ONLY,
                 'error': self.draw.choice((NO_SPACE, IO_ERROR, SHORT))}
        self.laboratory.control.victim = victim.id
        if fault in modes:
            self.laboratory.arm(modes[fault], target)
        timer = threading.Timer(moment, victim.kill)
        is_timed = fault == 'kill at a moment'
        if is_timed:
            timer.start()
        for worker, words in commands:
            worker.send(*words)
        replies = [worker.receive() for worker, _ in commands]
        timer.cancel()
        if is_timed:
            timer.join()
        self.laboratory.control.armed = 0
        if fault in modes and self.laboratory.control.fired and 'kill' not in fault:
            self.counts[{'error': 'errors', 'disk full': 'full disks'}.get(fault, 'read-only disks')] += 1
        self.locker.call('unlock')
        ends = []
        for (worker, _), reply in zip(commands, replies):
            flushed = worker.call('flush')
            if flushed is None:
                expect('kill' in fault and worker is victim, 'a process ended by itself')
                worker.restart()
                self.counts['kills'] += 1
            else:
                expect(flushed.done, 'what was kept in memory cannot be written')
            ends.append((reply, flushed is None))
        return ends

    def lock(self, fault):
        if not fault.startswith('lock '):
            return
        documents = [self.run.folder / name for name in self.run.documents]
        path = {'lock information': self.run.folder / 'mxinfo.ini', 'lock package': self.run.package,
                'lock document': self.draw.choice(documents or [self.run.package])}[fault]
        duration = self.draw.choice((5, 20, 50, 100, 200, 400, 800, 2600))
        if self.locker.call('lock', windows_path(path), duration).done:
            self.counts['locks'] += 1
