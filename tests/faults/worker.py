"""A running torture driver."""
import os
import signal
import subprocess
import typing

from laboratory import BUILD

DRIVER = BUILD / 'tests' / 'torture_driver.exe'


class Reply(typing.NamedTuple):
    """The answer to a command."""
    done: bool
    notices: int  # messages to the user
    questions: int


class Worker:
    """One process that edits and saves; it is started again after it was killed."""

    def __init__(self, laboratory):
        self.laboratory = laboratory
        self.errors = open(laboratory.home / 'errors.txt', 'a', encoding='utf-8')
        self.known = None  # the package that it opened or saved last, by its number
        self.process = None
        self.start()

    def start(self):
        # Errors go to a file, since what Wine starts in the background keeps a pipe open.
        self.process = subprocess.Popen(['wine', str(DRIVER)], env=self.laboratory.environment, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=self.errors, bufsize=0)
        self.known = None

    def close(self):
        self.process.stdin.close()
        self.process.wait(60)
        self.process.stdout.close()
        self.errors.close()

    @property
    def id(self):
        return self.process.pid

    def send(self, *words):
        try:
            self.process.stdin.write('\t'.join(map(str, words)).encode() + b'\n')
        except BrokenPipeError:  # it was killed, and so its output ends too
            pass

    def receive(self):
        """None when it ended instead."""
        words = self.process.stdout.readline().split()
        return Reply(words[0] == b'done', int(words[1]), int(words[2])) if len(words) == 3 else None

    def call(self, *words):
        self.send(*words)
        return self.receive()

    def kill(self):
        os.kill(self.process.pid, signal.SIGKILL)

    def restart(self):
        """After it was killed."""
        code = self.process.wait(60)
        self.process.stdin.close()
        self.process.stdout.close()
        self.start()
        return code
