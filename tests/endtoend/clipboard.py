"""The clipboard as another program on the display gets it."""

import ctypes
import ctypes.util

import waiting

CURRENT_TIME = 0
SELECTION_NOTIFY = 31
ANY_TYPE = 0
MOST_WORDS = 1 << 20


class _SelectionEvent(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("requestor", ctypes.c_ulong),
                ("selection", ctypes.c_ulong), ("target", ctypes.c_ulong),
                ("property", ctypes.c_ulong), ("time", ctypes.c_ulong)]


class _Event(ctypes.Union):
    _fields_ = [("selection", _SelectionEvent), ("room", ctypes.c_long * 24)]


def _load_library():
    library = ctypes.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")
    pointer, number = ctypes.c_void_p, ctypes.c_ulong
    for name, result, arguments in (
            ("XOpenDisplay", pointer, [ctypes.c_char_p]),
            ("XCloseDisplay", ctypes.c_int, [pointer]),
            ("XDefaultRootWindow", number, [pointer]),
            ("XCreateSimpleWindow", number, [pointer, number] + [ctypes.c_int] * 2
             + [ctypes.c_uint] * 3 + [number] * 2),
            ("XInternAtom", number, [pointer, ctypes.c_char_p, ctypes.c_int]),
            ("XConvertSelection", ctypes.c_int, [pointer] + [number] * 5),
            ("XCheckTypedEvent", ctypes.c_int, [pointer, ctypes.c_int, pointer]),
            ("XGetWindowProperty", ctypes.c_int, [pointer, number, number, ctypes.c_long,
             ctypes.c_long, ctypes.c_int, number] + [pointer] * 5),
            ("XFree", ctypes.c_int, [pointer])):
        function = getattr(library, name)
        function.restype = result
        function.argtypes = arguments
    return library


_x11 = _load_library()


def text():
    """The text on the clipboard, or None while nobody offers one."""
    display = _x11.XOpenDisplay(None)
    if not display:
        raise RuntimeError("There is no display")
    try:
        return _Reader(display).read()
    finally:
        _x11.XCloseDisplay(display)


class _Reader:
    def __init__(self, display):
        self._display = display
        root = _x11.XDefaultRootWindow(display)
        self._window = _x11.XCreateSimpleWindow(display, root, 0, 0, 1, 1, 0, 0, 0)

    def read(self):
        target, store = self._atom(b"UTF8_STRING"), self._atom(b"CLIPBOARD_TEXT")
        _x11.XConvertSelection(self._display, self._atom(b"CLIPBOARD"), target, store,
                               self._window, CURRENT_TIME)
        answer = waiting.until(self._next_answer, "the owner of the clipboard answers")
        return self._property(store) if answer.property else None

    def _atom(self, name):
        return _x11.XInternAtom(self._display, name, False)

    def _next_answer(self):
        event = _Event()
        arrived = _x11.XCheckTypedEvent(self._display, SELECTION_NOTIFY, ctypes.byref(event))
        return event.selection if arrived else None

    def _property(self, name):
        kind, size = ctypes.c_ulong(), ctypes.c_ulong()
        length, remaining = ctypes.c_ulong(), ctypes.c_ulong()
        data = ctypes.c_void_p()
        _x11.XGetWindowProperty(
            self._display, self._window, name, 0, MOST_WORDS, True, ANY_TYPE, ctypes.byref(kind),
            ctypes.byref(size), ctypes.byref(length), ctypes.byref(remaining), ctypes.byref(data))
        try:
            return ctypes.string_at(data, length.value).decode("utf-8")
        finally:
            _x11.XFree(data)
