"""What an X display knows of its windows, where tests need it: who has the focus, what lies below the mouse."""
import ctypes

Window = ctypes.c_ulong
ERROR_HANDLER = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)


@ERROR_HANDLER
def ignore_error(_display, _event):
    """A window may be gone when it is asked for; the call gives 0 then."""
    return 0


class Display:
    """A connection to the display that DISPLAY names."""

    def __init__(self):
        self.x = ctypes.CDLL('libX11.so.6')
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XDefaultRootWindow.restype = Window
        self.x.XSetErrorHandler(ignore_error)
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(None))
        if not self.display:
            raise AssertionError('the display cannot be opened')
        self.root = Window(self.x.XDefaultRootWindow(self.display))

    def focus(self):
        """The window that keys go to."""
        window, revert = Window(), ctypes.c_int()
        self.x.XGetInputFocus(self.display, ctypes.byref(window), ctypes.byref(revert))
        return window.value

    def outermost(self, window):
        """The window manager's frame around a window, or the window itself when it has none; None when it is gone."""
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
        """The outermost window below the mouse, and the place of the mouse."""
        root, child, mask = Window(), Window(), ctypes.c_uint()
        numbers = [ctypes.c_int() for _ in range(4)]
        self.x.XQueryPointer(self.display, self.root, ctypes.byref(root), ctypes.byref(child),
                             *map(ctypes.byref, numbers), ctypes.byref(mask))
        return child.value, (numbers[0].value, numbers[1].value)

    def area(self, window):
        """Left, top, right and bottom of a window on the screen; None when it is gone."""
        root, child, place, size = Window(), Window(), [ctypes.c_int(), ctypes.c_int()], [ctypes.c_uint() for _ in '1234']
        if not (self.x.XGetGeometry(self.display, Window(window), ctypes.byref(root), *map(ctypes.byref, place),
                                    *map(ctypes.byref, size))
                and self.x.XTranslateCoordinates(self.display, Window(window), root, 0, 0,
                                                 *map(ctypes.byref, place), ctypes.byref(child))):
            return None
        left, top = (number.value for number in place)
        return left, top, left + size[0].value, top + size[1].value
