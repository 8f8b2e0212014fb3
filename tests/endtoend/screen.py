"""Keys and pointer moved and windows seen through the display, as a person would."""

import subprocess


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


def title_of(window):
    return _run("xdotool", "getwindowname", window).strip()


def size_of(window):
    """Width and height in pixels."""
    facts = _facts_of(window)
    return int(facts["Width"]), int(facts["Height"])


def resize(window, width, height):
    """Asks the window manager for a size, as a person does who drags the window's corner."""
    _run("xdotool", "windowsize", window, str(width), str(height))


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
