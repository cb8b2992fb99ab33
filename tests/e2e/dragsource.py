"""Drops files on a window of another program, as a file manager does: the source's half of the display's
drag-and-drop protocol (XDND, version 5)."""
import ctypes
import pathlib
import time

SELECTION_REQUEST, SELECTION_NOTIFY, CLIENT_MESSAGE = 30, 31, 33
PATIENCE = 20  # seconds


class ClientMessage(ctypes.Structure):
    _fields_ = [('type', ctypes.c_int), ('serial', ctypes.c_ulong), ('send_event', ctypes.c_int),
                ('display', ctypes.c_void_p), ('window', ctypes.c_ulong), ('message_type', ctypes.c_ulong),
                ('format', ctypes.c_int), ('data', ctypes.c_long * 5)]


class SelectionRequest(ctypes.Structure):
    _fields_ = [('type', ctypes.c_int), ('serial', ctypes.c_ulong), ('send_event', ctypes.c_int),
                ('display', ctypes.c_void_p), ('owner', ctypes.c_ulong), ('requestor', ctypes.c_ulong),
                ('selection', ctypes.c_ulong), ('target', ctypes.c_ulong), ('property', ctypes.c_ulong),
                ('time', ctypes.c_ulong)]


class SelectionNotify(ctypes.Structure):
    _fields_ = [('type', ctypes.c_int), ('serial', ctypes.c_ulong), ('send_event', ctypes.c_int),
                ('display', ctypes.c_void_p), ('requestor', ctypes.c_ulong), ('selection', ctypes.c_ulong),
                ('target', ctypes.c_ulong), ('property', ctypes.c_ulong), ('time', ctypes.c_ulong)]


class Event(ctypes.Union):
    _fields_ = [('type', ctypes.c_int), ('client', ClientMessage), ('request', SelectionRequest),
                ('notify', SelectionNotify), ('padding', ctypes.c_long * 24)]


class DragSource:
    """A window of its own that offers files and drops them on a target window."""

    def __init__(self, target, uri):
        self.x = ctypes.CDLL('libX11.so.6')
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        for name in ('XDefaultRootWindow', 'XCreateSimpleWindow', 'XInternAtom'):
            getattr(self.x, name).restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(None))
        self.root = ctypes.c_ulong(self.x.XDefaultRootWindow(self.display))
        self.window = self.x.XCreateSimpleWindow(self.display, self.root, 0, 0, 1, 1, 0, 0, 0)
        self.target, self.uri = target, uri
        self.x.XSetSelectionOwner(self.display, ctypes.c_ulong(self.atom('XdndSelection')),
                                  ctypes.c_ulong(self.window), 0)

    def close(self):
        self.x.XCloseDisplay(self.display)

    def atom(self, name):
        return self.x.XInternAtom(self.display, name.encode(), 0)

    def send(self, name, *data):
        event = Event()
        event.client.type = CLIENT_MESSAGE
        event.client.window = self.target
        event.client.message_type = self.atom(name)
        event.client.format = 32
        event.client.data[:] = [self.window, *data, *[0] * (4 - len(data))]
        self.x.XSendEvent(self.display, ctypes.c_ulong(self.target), 0, ctypes.c_long(0), ctypes.byref(event))
        self.x.XFlush(self.display)

    def answer(self, request):
        """Passes the file's name to the program that requests the selection."""
        self.x.XChangeProperty(self.display, ctypes.c_ulong(request.requestor), ctypes.c_ulong(request.property),
                               ctypes.c_ulong(request.target), 8, 0, self.uri, len(self.uri))
        event = Event()
        event.notify.type = SELECTION_NOTIFY
        event.notify.requestor, event.notify.selection = request.requestor, request.selection
        event.notify.target, event.notify.property = request.target, request.property
        event.notify.time = request.time
        self.x.XSendEvent(self.display, ctypes.c_ulong(request.requestor), 0, ctypes.c_long(0), ctypes.byref(event))
        self.x.XFlush(self.display)

    def wait_for(self, name):
        """Answers requests until the target sends this message, and returns its data."""
        wanted, end = self.atom(name), time.monotonic() + PATIENCE
        while time.monotonic() < end:
            while self.x.XPending(self.display):
                event = Event()
                self.x.XNextEvent(self.display, ctypes.byref(event))
                if event.type == SELECTION_REQUEST:
                    self.answer(event.request)
                elif event.type == CLIENT_MESSAGE and event.client.message_type == wanted:
                    return list(event.client.data)
            time.sleep(0.01)
        raise AssertionError(f'the target does not answer with {name}')


def drop(target, point, *paths):
    """Drops files at a point of the screen on the target, a top-level window of the display."""
    source = DragSource(target, ''.join(pathlib.Path(path).absolute().as_uri() + '\r\n' for path in paths).encode())
    try:
        copy, now = source.atom('XdndActionCopy'), 0
        source.send('XdndEnter', 5 << 24, source.atom('text/uri-list'))
        source.send('XdndPosition', 0, point[0] << 16 | point[1], now, copy)
        if not source.wait_for('XdndStatus')[1] & 1:
            raise AssertionError('the target takes no drop here')
        source.send('XdndDrop', 0, now)
        source.wait_for('XdndFinished')
    finally:
        source.close()
