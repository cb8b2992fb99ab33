"""Queries an X display about its windows: the focus, the window below the mouse, its pixels; double-clicks."""
import ctypes
import struct
import zlib

Window = ctypes.c_ulong
CLIENT_MESSAGE = 33
ALL_PLANES, Z_PIXMAP = ctypes.c_ulong(-1), 2
ERROR_HANDLER = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)


class Image(ctypes.Structure):
    """The first members of Xlib's XImage."""
    _fields_ = [('width', ctypes.c_int), ('height', ctypes.c_int), ('offset', ctypes.c_int), ('format', ctypes.c_int),
                ('data', ctypes.c_void_p), ('byte_order', ctypes.c_int), ('unit', ctypes.c_int),
                ('bit_order', ctypes.c_int), ('pad', ctypes.c_int), ('depth', ctypes.c_int),
                ('line_bytes', ctypes.c_int), ('pixel_bits', ctypes.c_int)]


class Message(ctypes.Structure):
    """Xlib's XClientMessageEvent, as long as an XEvent."""
    _fields_ = [('type', ctypes.c_int), ('serial', ctypes.c_ulong), ('is_sent', ctypes.c_int),
                ('display', ctypes.c_void_p), ('window', Window), ('message', ctypes.c_ulong), ('format', ctypes.c_int),
                ('data', ctypes.c_long * 17)]


def png(width, height, lines, compression=9):
    """A PNG file made of lines that start with their filter's number and have three bytes per pixel."""
    def chunk(name, data):
        return struct.pack('>I', len(data)) + name + data + struct.pack('>I', zlib.crc32(name + data))

    return (b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', struct.pack('>IIBBBBB', width, height, 8, 2, 0, 0, 0))
            + chunk(b'IDAT', zlib.compress(b''.join(lines), compression)) + chunk(b'IEND', b''))


@ERROR_HANDLER
def ignore_error(_display, _event):
    """A window may have gone; the call then returns 0."""
    return 0


class Display:
    """A connection to the display that DISPLAY names."""

    def __init__(self):
        self.x = ctypes.CDLL('libX11.so.6')
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XDefaultRootWindow.restype = Window
        self.x.XInternAtom.restype = ctypes.c_ulong
        self.x.XGetImage.restype = ctypes.POINTER(Image)
        self.x.XSetErrorHandler(ignore_error)
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(None))
        if not self.display:
            raise AssertionError('the display cannot be opened')
        self.root = Window(self.x.XDefaultRootWindow(self.display))

    def focus(self):
        """The window that has the focus."""
        window, revert = Window(), ctypes.c_int()
        self.x.XGetInputFocus(self.display, ctypes.byref(window), ctypes.byref(revert))
        return window.value

    def outermost(self, window):
        """The window manager's frame around a window, or the window itself if it has none; None if it has gone."""
        while True:
            root, parent, children, count = Window(), Window(), ctypes.POINTER(Window)(), ctypes.c_uint()
            if not self.x.XQueryTree(self.display, Window(window), ctypes.byref(root), ctypes.byref(parent),
                                     ctypes.byref(children), ctypes.byref(count)):
                return None
            if children:
                self.x.XFree(children)
            if parent.value in (0, root.value):
                return window
            window = parent.value

    def mouse(self):
        """The outermost window below the mouse, and the mouse's position."""
        root, child, mask = Window(), Window(), ctypes.c_uint()
        numbers = [ctypes.c_int() for _ in range(4)]
        self.x.XQueryPointer(self.display, self.root, ctypes.byref(root), ctypes.byref(child),
                             *map(ctypes.byref, numbers), ctypes.byref(mask))
        return child.value, (numbers[0].value, numbers[1].value)

    def double_click(self):
        """Presses and releases the left button twice. All four events reach the display together, however busy the
        machine is, so that no pause between them makes two clicks of it."""
        test = ctypes.CDLL('libXtst.so.6')
        test.XTestFakeButtonEvent.argtypes = [ctypes.c_void_p, ctypes.c_uint, ctypes.c_int, ctypes.c_ulong]
        for pressed in (1, 0, 1, 0):
            test.XTestFakeButtonEvent(self.display, 1, pressed, 0)
        self.x.XFlush(self.display)

    def close(self, window):
        """Asks a window to close, as the button in its title does."""
        protocols, close = (self.x.XInternAtom(self.display, name, False) for name in (b'WM_PROTOCOLS', b'WM_DELETE_WINDOW'))
        message = Message(type=CLIENT_MESSAGE, window=window, message=protocols, format=32)
        message.data[0] = close
        self.x.XSendEvent(self.display, Window(window), False, ctypes.c_long(0), ctypes.byref(message))
        self.x.XFlush(self.display)

    def area(self, window):
        """Left, top, right and bottom of a window on the screen; None if it has gone."""
        root, child, place, size = Window(), Window(), [ctypes.c_int(), ctypes.c_int()], [ctypes.c_uint() for _ in '1234']
        if not (self.x.XGetGeometry(self.display, Window(window), ctypes.byref(root), *map(ctypes.byref, place),
                                    *map(ctypes.byref, size))
                and self.x.XTranslateCoordinates(self.display, Window(window), root, 0, 0,
                                                 *map(ctypes.byref, place), ctypes.byref(child))):
            return None
        left, top = (number.value for number in place)
        return left, top, left + size[0].value, top + size[1].value

    def picture(self, window=None, part=None, compression=9):
        """A window or the whole display as a PNG file; `part`: left, top, width and height of a part."""
        return png(*self.pixels(window, part), compression)

    def pixels(self, window=None, part=None):
        """The width, the height and the lines of what `picture` shows, as `png` takes them."""
        window = self.root if window is None else Window(window)
        if part is None:
            root, numbers = Window(), [ctypes.c_uint() for _ in range(6)]
            self.x.XGetGeometry(self.display, window, ctypes.byref(root), *map(ctypes.byref, numbers))
            part = (0, 0, numbers[2].value, numbers[3].value)
        image = self.x.XGetImage(self.display, window, *part, ALL_PLANES, Z_PIXMAP)
        if not image:
            raise AssertionError(f'the display gives no picture of {part} of the window {window.value}')
        width, height, line_bytes = image[0].width, image[0].height, image[0].line_bytes
        if image[0].pixel_bits != 32 or image[0].byte_order != 0:
            raise AssertionError('the display has no pixels of four bytes, blue first')
        pixels = ctypes.string_at(image[0].data, line_bytes * height)
        self.x.XDestroyImage(image)
        lines = []
        for start in range(0, line_bytes * height, line_bytes):
            line = bytearray(1 + 3 * width)
            for place in (1, 2, 3):
                line[place::3] = pixels[start + 3 - place:start + 4 * width:4]
            lines.append(line)
        return width, height, lines
