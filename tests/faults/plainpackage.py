"""A package folder as a plain list of sections: what edits do to it, and which states a step may leave."""
import itertools
import re
import zipfile

from informationfile import decoded

HISTORY = 'FILE_HISTORY'
ADDED = 'REFERANCE_FILE'
END_SIZE = 22  # bytes of the record at the end of a package
KEYS_OF_NOW = ('Time', 'By')  # of a history entry


def parse(data):
    """The sections of an information file as tuples of name and keys, in order, without the author and time of saves.
    Fails for a section or key that occurs twice: nobody writes that."""
    sections = {}
    keys = None
    for line in decoded(data).splitlines():
        if line.startswith('['):
            name = line.strip('[]')
            assert name not in sections, f'[{name}] occurs twice'
            keys = sections[name] = {}
        elif '=' in line and keys is not None:
            key, value = line.split('=', 1)
            assert key not in keys, f'{key} occurs twice in [{name}]'
            keys[key] = '*' if name.startswith(HISTORY) and key in KEYS_OF_NOW else value
    return freeze(sections)


def freeze(sections):
    return tuple((name, tuple(keys.items())) for name, keys in sections.items())


def thaw(state):
    return {name: dict(keys) for name, keys in state}


def last_number(state, prefix):
    numbers = [re.fullmatch(prefix + r'_(\d+)', name) for name, _ in state]
    return max((int(number[1]) for number in numbers if number), default=0)


def with_value(state, section, key, value):
    sections = thaw(state)
    sections.setdefault(section, {})[key] = value
    return freeze(sections)


def without(state, section):
    return tuple(pair for pair in state if pair[0] != section)


def with_history(state):
    section = f'{HISTORY}_{last_number(state, HISTORY) + 1}'
    for key, value in (('Operation', 'Edited'), ('Time', '*'), ('By', '*'), ('Remarks', '')):
        state = with_value(state, section, key, value)
    return state


def attached(name):
    return (('IsReferencedFile', 'NO'), ('Description', name), ('Timestamp', '2024-05-15 07:31:50'),
            ('FilePath', f'ReferanceFiles\\{name}'))


class Scene:
    """What is on the disk while a step is played through."""

    def __init__(self, information):
        self.information = information
        self.packed = None  # the information file in the package, if this step saved it
        self.sections = {}  # that documents got so far, by document


def unnumbered(state, before):
    """The state without the numbers of documents that were added since, which depend on the order of events."""
    known = {name for name, _ in before}
    return tuple(sorted(('<new>' if name.startswith(ADDED) and name not in known else name, keys)
                        for name, keys in state))


# Each action is a list of what it does one after the other; between these anything may happen.
def edit_actions(section, key, value):
    def act(scene):
        scene.information = with_value(scene.information, section, key, value)
    return [act]


def remove_actions(section):
    def act(scene):
        scene.information = without(scene.information, section)
    return [act]


def attach_actions(name):
    def action(key, value):
        def act(scene):
            if name not in scene.sections:
                scene.sections[name] = f'{ADDED}_{last_number(scene.information, ADDED) + 1}'
            scene.information = with_value(scene.information, scene.sections[name], key, value)
        return act
    return [action(*pair) for pair in attached(name)]


def save_actions():
    def pack(scene):
        scene.packed = with_history(scene.information)

    def follow(scene):
        scene.information = with_history(scene.information)
    return [pack, follow]


def interleaved(first, second):
    """All orders of two lists that keep the order of each."""
    for places in itertools.combinations(range(len(first) + len(second)), len(first)):
        left, right = iter(first), iter(second)
        yield [next(left) if at in places else next(right) for at in range(len(first) + len(second))]


def outcomes(state, plans):
    """The states that a step may leave. A plan is the actions of one process and how many of them may be done."""
    keys = set()
    choices = [[actions[:count] for count in counts] for actions, counts in plans]
    for chosen in itertools.product(*choices):
        for order in interleaved(*chosen) if len(chosen) == 2 else chosen:
            scene = Scene(state)
            for act in order:
                act(scene)
            keys.add((unnumbered(scene.information, state), scene.packed and unnumbered(scene.packed, state)))
    return keys


def check_end(package):
    """Fails when something follows the end of a package, which many programs ignore."""
    assert package.read_bytes()[-END_SIZE:].startswith(b'PK\5\6'), 'something follows the end of the package'


def read_package(path):
    """Everything in a package, its information file apart; fails when anything of it is damaged."""
    check_end(path)
    with zipfile.ZipFile(path) as file:
        assert file.testzip() is None
        files = {name: file.read(name) for name in file.namelist() if not name.endswith('/')}
    return files.pop('mxinfo.ini', b''), files
