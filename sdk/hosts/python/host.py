"""Automation from Python for Windows, with nothing but its own library and the registered control. Never run yet.

    python host.py FOLDER

A script has no window and so no lists; embed the control in a window through a toolkit's ActiveX container.
"""
import ctypes
import ctypes.wintypes
import sys
import uuid

PROGID = 'MXOVTREETAB.MXOVDocViewCtrlVS2015.13'
IID_IDISPATCH = uuid.UUID('00020400-0000-0000-C000-000000000046').bytes_le
CLSCTX_INPROC_SERVER = 1
DISPATCH_METHOD = 1
VT_BSTR = 8
LOAD_FILE, CLOSE = 6, 7
RELEASE, INVOKE = 2, 6  # places in IDispatch's table


class Variant(ctypes.Structure):
    _fields_ = [('vt', ctypes.c_ushort), ('reserved', ctypes.c_ushort * 3), ('value', ctypes.c_void_p),
                ('second', ctypes.c_void_p)]


class Parameters(ctypes.Structure):
    _fields_ = [('arguments', ctypes.POINTER(Variant)), ('named', ctypes.c_void_p), ('count', ctypes.c_uint),
                ('named_count', ctypes.c_uint)]


def require(result):
    if result < 0:
        raise ctypes.WinError(result)


class Control:
    """The control through IDispatch."""

    def __init__(self):
        clsid = ctypes.create_string_buffer(16)
        self._object = ctypes.c_void_p()
        ole = ctypes.oledll.ole32
        ole.OleInitialize(None)
        ole.CLSIDFromProgID(ctypes.c_wchar_p(PROGID), clsid)
        ole.CoCreateInstance(clsid, None, CLSCTX_INPROC_SERVER, IID_IDISPATCH, ctypes.byref(self._object))

    def _method(self, place, *types):
        table = ctypes.cast(self._object, ctypes.POINTER(ctypes.POINTER(ctypes.c_void_p))).contents
        return ctypes.WINFUNCTYPE(ctypes.c_long, ctypes.c_void_p, *types)(table[place])

    def call(self, member, *texts):
        automation = ctypes.windll.oleaut32
        automation.SysAllocString.restype = ctypes.c_void_p
        arguments = (Variant * len(texts))()
        for argument, text in zip(arguments, reversed(texts)):  # the last parameter comes first
            argument.vt, argument.value = VT_BSTR, automation.SysAllocString(ctypes.c_wchar_p(text))
        parameters = Parameters(arguments, None, len(texts), 0)
        invoke = self._method(INVOKE, ctypes.c_long, ctypes.c_char_p, ctypes.wintypes.LCID, ctypes.c_ushort,
                              ctypes.POINTER(Parameters), ctypes.c_void_p, ctypes.c_void_p, ctypes.c_void_p)
        try:
            require(invoke(self._object, member, bytes(16), 0, DISPATCH_METHOD, ctypes.byref(parameters), None, None, None))
        finally:
            for argument in arguments:
                automation.VariantClear(ctypes.byref(argument))

    def release(self):
        self._method(RELEASE)(self._object)


if __name__ == '__main__':
    control = Control()
    control.call(LOAD_FILE, sys.argv[1].rstrip('\\') + '\\', '')
    control.call(CLOSE)
    control.release()
    print('done')
