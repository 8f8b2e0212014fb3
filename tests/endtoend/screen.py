"""Keys and pointer moved and windows seen through the display, as a person would."""

import os
import select
import subprocess

import waiting


def press_keys(*keys):
    """Presses keys one after the other: names such as "Tab", "ctrl+q" or "7"."""
    _run("xdotool", "key", "--clearmodifiers", *keys)


def type_text(text):
    """Types letters, digits and signs with real key strokes."""
    _run("xdotool", "type", "--clearmodifiers", "--", text)


def click(x, y):
    """Clicks with the pointer at a place of the screen."""
    _run("xdotool", "mousemove", str(x), str(y), "click", "1")


def double_click(x, y):
    """Clicks twice, as fast as a person does who takes a button for an icon."""
    _run("xdotool", "mousemove", str(x), str(y), "click", "--repeat", "2", "--delay", "30", "1")


def press_pointer(x, y):
    """Presses the pointer's button at a place of the screen and holds it."""
    _run("xdotool", "mousemove", str(x), str(y), "mousedown", "1")


def move_pointer(x, y):
    _run("xdotool", "mousemove", str(x), str(y))


def release_pointer():
    _run("xdotool", "mouseup", "1")


def turn_wheel_up(x, y, notches=1):
    _turn_wheel(x, y, "4", notches)


def turn_wheel_down(x, y, notches=1):
    _turn_wheel(x, y, "5", notches)


def _turn_wheel(x, y, button, notches):
    _run("xdotool", "mousemove", str(x), str(y), "click", "--repeat", str(notches), "--delay",
         "10", button)


def activate(window):
    """Gives a window the keyboard, as a click on it would."""
    _run("xdotool", "windowactivate", "--sync", window)


def window_of(process_id):
    """The window of a process, or None before it is on the screen."""
    found = subprocess.run(
        ["xdotool", "search", "--onlyvisible", "--all", "--pid", str(process_id), "--name", "."],
        check=False, capture_output=True, text=True).stdout.split()
    return found[0] if found else None


def window_named(name):
    """The window with a title, or None before it is on the screen."""
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{name}$"],
                           check=False, capture_output=True, text=True).stdout.split()
    return found[0] if found else None


def windows_named(name):
    """All that the window manager knows with a title, minimised ones included."""
    listed = _run("xprop", "-root", "_NET_CLIENT_LIST").partition("#")[2].strip()
    return [window for window in listed.split(", ") if window and title_of(window) == name]


def title_of(window):
    return _run("xdotool", "getwindowname", window).strip()


def size_of(window):
    """Width and height in pixels."""
    facts = _facts_of(window)
    return int(facts["Width"]), int(facts["Height"])


def resize(window, width, height):
    """Asks the window manager for a size, as a person does who drags the window's corner."""
    _run("xdotool", "windowsize", window, str(width), str(height))


def move(window, x, y):
    """Asks the window manager for a place, as a person does who drags the window's title."""
    _run("xdotool", "windowmove", window, str(x), str(y))


def active_window():
    """The window that has the keyboard."""
    return _run("xdotool", "getactivewindow").strip()


def set_workspaces(count):
    _run("xdotool", "set_num_desktops", str(count))


def go_to_workspace(number):
    _run("xdotool", "set_desktop", str(number))


def workspace():
    return _run("xdotool", "get_desktop").strip()


def workspace_of(window):
    return _run("xdotool", "get_desktop_for_window", window).strip()


class RootMessages:
    """Messages of a kind that programs send to all of the display. Use as a context manager."""

    def __init__(self, kind):
        self._kind = kind.encode()
        self._seen = b""

    def __enter__(self):
        self._process = subprocess.Popen(["xev", "-root", "-event", "property"],
                                         stdout=subprocess.PIPE)
        waiting.until(self._listens, "messages are listened to")
        return self

    def __exit__(self, *_):
        self._process.terminate()
        self._process.communicate()

    def arrived(self):
        """Whether one has come by now."""
        while select.select([self._process.stdout], [], [], 0)[0]:
            self._seen += os.read(self._process.stdout.fileno(), 4096)
        return self._kind in self._seen

    def _listens(self):
        _run("xprop", "-root", "-f", "_PROBE", "8s", "-set", "_PROBE", "")
        self.arrived()
        return self._seen


def minimise(window):
    _run("xdotool", "windowminimize", "--sync", window)


def is_maximised(window):
    return "_NET_WM_STATE_MAXIMIZED_VERT" in _run("xprop", "-id", window, "_NET_WM_STATE")


def colour_at(x, y):
    """The colour of one pixel of the screen, as "#RRGGBB"."""
    return colours_below(x, y, 1)[0]


def colours_below(x, y, height):
    """The colours of so many pixels of the screen, from one place downwards."""
    pixels = _picture(1, height, x, y)
    return ["#" + pixels[at:at + 3].hex().upper() for at in range(0, 3 * height, 3)]


def picture_of(window):
    """What the screen shows of a window, and over it, as bytes of red, green and blue."""
    return subprocess.run(["import", "-silent", "-window", window, "-depth", "8", "rgb:-"],
                          check=True, capture_output=True).stdout


def _picture(width, height, x, y):
    return subprocess.run(
        ["import", "-silent", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "-depth",
         "8", "rgb:-"], check=True, capture_output=True).stdout


def origin_of(window):
    """The place of the window's upper left corner on the screen, inside its frame, in pixels."""
    facts = _facts_of(window)
    return int(facts["Absolute upper-left X"]), int(facts["Absolute upper-left Y"])


def frame_of(window):
    """The thickness of what the window manager draws left, right, above and below of a window."""
    numbers = _run("xprop", "-id", window, "_NET_FRAME_EXTENTS").partition("=")[2]
    return [int(number) for number in numbers.split(",")]


def least_size_of(window):
    """The least width and height that the program tells the window manager, or None."""
    for line in _run("xprop", "-id", window, "WM_NORMAL_HINTS").splitlines():
        if "minimum size" in line:
            width, height = line.split(":", 1)[1].split("by")
            return int(width), int(height)
    return None


def class_of(window):
    """The class that the program gives its window, by which a desktop finds the menu entry."""
    # WM_CLASS(STRING) = "instance", "class"
    return _run("xprop", "-id", window, "WM_CLASS").split('"')[3]


def icon_sizes_of(window):
    """The sizes of the icon that the program gives its window, the smallest first."""
    # Each picture is its width and height, and then as many numbers as it has pixels.
    numbers = _run("xprop", "-id", window, "-notype", "32c", "_NET_WM_ICON").partition("=")[2]
    numbers = [int(number) for number in numbers.replace(",", " ").split()]
    sizes = []
    while numbers:
        sizes.append((numbers[0], numbers[1]))
        del numbers[:2 + numbers[0] * numbers[1]]
    return sorted(sizes)


def _facts_of(window):
    # xdotool counts the frame twice in the place of a window.
    lines = _run("xwininfo", "-id", window).splitlines()
    return {name.strip(): value.strip()
            for name, colon, value in (line.partition(":") for line in lines) if colon}


def _run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout
