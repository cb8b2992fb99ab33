"""A copy of the sources in which one change after the other is built. The checkout is never edited."""
import contextlib
import hashlib
import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess

import ctests

PRODUCT = ('MXOVDocViewCtrl', 'mxovshare')
VIEWER = ('product', 'ProfileValue', 'OpenRecorder', 'DropTarget', 'TextPreviewer')
# What tests need that are not programs of their own name.
NEEDS = {
    'e2e.': VIEWER,
    'faults': ('fault_driver', 'version_driver', 'torture_driver'),
    'control.fuzz.': ('control_fuzz', *PRODUCT),
    'control.guide': ('guide_AtlHost', 'guide_LanguageHost', 'guide_SiteHost', 'guide_SideBySideHost'),
    'control.': PRODUCT,
    'mxovpkg_': ('mxovpkg', *PRODUCT),
}
LINKED = {'.exe', '.dll', '.ocx', '.a', ''}


class DoesNotBuild(Exception):
    pass


def listed_files(root):
    names = subprocess.run(['git', 'ls-files', '-coz', '--exclude-standard'], cwd=root, check=True, capture_output=True).stdout
    return {name for name in names.decode().split('\0') if name and (root / name).is_file()}


class Kept:
    """A file as it was."""
    def __init__(self, path):
        self.path, self.content, self.modified = path, path.read_bytes(), path.stat().st_mtime_ns

    def restore(self, modified=None):
        self.path.write_bytes(self.content)
        os.utime(self.path, ns=(modified or self.modified, modified or self.modified))

    def restore_for_ninja(self):
        """With the time of the last build: ninja notes an object's dependencies with it, and would build it again."""
        self.restore(self.path.stat().st_mtime_ns if self.path.exists() else None)


class ChangedTree:
    def __init__(self, root, folder, processors):
        """Brings the copy in `folder` to the state of the checkout at `root`."""
        self.root, self.folder, self.build, self.processors = root, folder, folder / 'build', processors
        self.tree = self.build / 'windows'
        self.environment = {**os.environ, 'MXOV_BUILD': str(self.build), 'MXOV_ROOT': str(folder)}
        self.digest = self._copy_sources()  # of all sources
        self._configure()
        self.objects = self._objects()
        self.tests = ctests.read_tests(self.tree)

    def _copy_sources(self):
        there = listed_files(self.root)
        content = hashlib.sha256()
        listed = self.folder / 'build/copied.json'
        for name in set(json.loads(listed.read_text()) if listed.exists() else ()) - there:
            (self.folder / name).unlink(missing_ok=True)
        for name in sorted(there):
            source, copy = self.root / name, self.folder / name
            text = source.read_bytes()
            content.update(f'{name} {len(text)}\n'.encode() + text)
            if not copy.exists() or copy.read_bytes() != text:
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copyfile(source, copy)
                shutil.copymode(source, copy)
        listed.parent.mkdir(parents=True, exist_ok=True)
        listed.write_text(json.dumps(sorted(there)))
        return content.hexdigest()

    def _run(self, *command):
        """In a session of its own: who interrupts the tool does not make it look as if the change did not build."""
        ended = subprocess.run(command, cwd=self.folder, env=self.environment, check=False, capture_output=True, text=True,
                               start_new_session=True)
        if ctests.stopped.is_set():
            raise ctests.Stopped
        if ended.returncode:
            raise DoesNotBuild(f'{shlex.join(map(str, command))}\n{(ended.stdout + ended.stderr)[-4000:]}')

    def _configure(self):
        if not (self.tree / 'build.ninja').exists():
            self._run('cmake', '--preset', 'windows', '-DMXOV_TESTS=ON', '-DMXOV_MEASURE=changes')
        self._ninja('mxov_idl', 'ole_test_idl')

    def _objects(self):
        """{source: [object]}"""
        found = {}
        for entry in json.loads((self.tree / 'compile_commands.json').read_text()):
            words = shlex.split(entry['command'])
            path = pathlib.Path(entry['file'])
            if path.suffix == '.cpp' and path.is_relative_to(self.folder):
                found.setdefault(str(path.relative_to(self.folder)), []).append(words[words.index('-o') + 1])
        return found

    def _ninja(self, *targets):
        self._run('ninja', '-C', self.tree, '-j', str(self.processors), *targets)

    def programs_with(self, source):
        """The test programs that a source belongs to."""
        return {match.group(1) for each in self.objects.get(source, ()) if (match := re.search(r'(\w+)\.dir/', each))}

    def build_for(self, test):
        self._ninja(*next((targets for start, targets in NEEDS.items()
                           if test.startswith(start) and not test.endswith('_tests')), (test,)))

    def register(self):
        """Makes the Wine prefix that tests copy, with the unchanged control."""
        self._ninja(*PRODUCT)
        self._run(self.folder / 'tools/wine-prefix', '--register')

    @contextlib.contextmanager
    def changed(self, change):
        """The copy with one change. At the end the source and its objects are as before, and what was linked from them is
        gone, so that it is linked again when the next test needs it."""
        objects = self.objects.get(change.file, ())
        self._ninja('mxov_idl', *objects)
        kept = [Kept(path) for path in (self.folder / change.file, *(self.tree / each for each in objects))]
        log_size = self._log().stat().st_size
        kept[0].path.write_text(change.apply(kept[0].content.decode()), newline='')
        try:
            yield
        finally:
            for each in kept[1:]:
                each.restore_for_ninja()
            self._remove_built(log_size, lambda path: not objects or path.suffix in LINKED)
            kept[0].restore()

    def compile(self, change):
        """Compiles the changed source; whether the compiler made anything else of it. A header is compiled with what each
        test needs."""
        objects = [self.tree / each for each in self.objects.get(change.file, ())]
        before = [path.read_bytes() for path in objects]
        self._ninja('mxov_idl', *self.objects.get(change.file, ()))
        return not objects or [path.read_bytes() for path in objects] != before

    def _log(self):
        return self.tree / '.ninja_log'

    def _remove_built(self, size, is_stale):
        """Removes those files that were built since the log had this size and hold the change. A shared library that is only
        older than its objects would not be linked again: ninja goes by the time in its log."""
        text = self._log().read_bytes()
        lines = (text[size:] if len(text) >= size else text).decode().splitlines()
        for line in lines:
            fields = line.split('\t')
            path = self.tree / fields[3] if len(fields) > 3 else None
            if path and is_stale(path):
                path.unlink(missing_ok=True)
