"""What the X server tells beside pictures: how often the bell has rung, and what the pointer looks like."""

import ctypes


class _Pointer(ctypes.Structure):
    """XFixesCursorImage."""
    _fields_ = [("x", ctypes.c_short), ("y", ctypes.c_short), ("width", ctypes.c_ushort), ("height", ctypes.c_ushort),
                ("hot_x", ctypes.c_ushort), ("hot_y", ctypes.c_ushort), ("serial", ctypes.c_ulong),
                ("pixels", ctypes.c_void_p), ("atom", ctypes.c_ulong), ("name", ctypes.c_char_p)]


class Display:
    """A connection of its own; the bell counts from when it is made."""
    CORE_KEYBOARD, BELL_NOTIFY = 0x100, 1 << 8

    def __init__(self):
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.fixes = ctypes.CDLL("libXfixes.so.3")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.fixes.XFixesGetCursorImage.restype = ctypes.POINTER(_Pointer)
        self.connection = ctypes.c_void_p(self.x11.XOpenDisplay(None))
        assert self.connection, "there is no display"
        numbers = [ctypes.c_int() for _ in range(5)]
        assert self.x11.XkbQueryExtension(self.connection, *map(ctypes.byref, numbers))
        assert self.x11.XkbSelectEvents(self.connection, self.CORE_KEYBOARD, ctypes.c_ulong(self.BELL_NOTIFY),
                                        ctypes.c_ulong(self.BELL_NOTIFY))
        self.x11.XSync(self.connection, 0)
        self._bells = 0

    def close(self):
        self.x11.XCloseDisplay(self.connection)

    @property
    def bells(self):
        """No other event has been asked for."""
        self.x11.XSync(self.connection, 0)
        event = ctypes.create_string_buffer(24 * ctypes.sizeof(ctypes.c_long))
        while self.x11.XPending(self.connection):
            self.x11.XNextEvent(self.connection, event)
            self._bells += 1
        return self._bells

    @property
    def pointer(self):
        """Its shape, to be compared with another: not every pointer has a name."""
        image = self.fixes.XFixesGetCursorImage(self.connection)
        shape = image.contents
        size = shape.width * shape.height * ctypes.sizeof(ctypes.c_ulong)
        pixels = shape.width, shape.height, ctypes.string_at(shape.pixels, size)
        self.x11.XFree(image)
        return pixels
