"""A desktop of its own for a test: display, message bus, accessibility bus and window manager, in a folder that goes with it.

Running this file's `inside_own_desktop` starts the calling program again within such a desktop.
"""

import os
import select
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77
READY = "TYPLOOM_OUTSIDE_DESKTOP"
ACCESSIBILITY_BUS = "/usr/libexec/at-spi-bus-launcher"


def missing_programs():
    wanted = ["Xvfb", "openbox", "xdotool", "dbus-run-session", ACCESSIBILITY_BUS]
    return [name for name in wanted if not shutil.which(name)]


def start_display(log):
    """The display's process and name, or None and why there is none."""
    reading, writing = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1400x900x24", "-nolisten", "tcp", "-noreset"],
                              pass_fds=[writing], stdout=log, stderr=log)
    os.close(writing)
    ready, _, _ = select.select([reading], [], [], 60)
    number = os.read(reading, 16).decode().strip() if ready else ""
    if not number:
        server.kill()
        server.wait()
        return None, "it ended at once" if ready else "it gave no display within a minute"
    return server, ":" + number


def inside_own_desktop():
    """Returns within the desktop only; the process outside it ends with the status of the one inside."""
    if os.environ.get(READY):
        return
    missing = missing_programs()
    if missing:
        print("Skipped: no desktop can be started, these programs are missing: " + " ".join(missing))
        sys.exit(SKIPPED)
    with tempfile.TemporaryDirectory(prefix="typloom-outside-") as folder:
        sys.exit(run_in(folder))


def run_in(folder):
    log = open(os.path.join(folder, "desktop.log"), "w+", encoding="utf-8", errors="replace")
    server, display = start_display(log)
    if not server:
        print("Skipped: the X server Xvfb cannot be started: " + display)
        return SKIPPED
    for name in ("run", "home"):
        os.mkdir(os.path.join(folder, name), 0o700)
    environment = {name: value for name, value in os.environ.items()
                   if name not in ("DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "WAYLAND_DISPLAY", "XAUTHORITY", "LANG")
                   and not name.startswith(("LC_", "XDG_", "QT_"))}
    environment.update({READY: folder, "DISPLAY": display, "HOME": os.path.join(folder, "home"),
                        "XDG_RUNTIME_DIR": os.path.join(folder, "run"), "LC_ALL": "C.UTF-8", "LANGUAGE": "en",
                        "QT_QPA_PLATFORM": "xcb", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})
    try:
        return subprocess.run(["dbus-run-session", "--", sys.executable, "-W", "ignore::DeprecationWarning", *sys.argv],
                              env=environment, stderr=None).returncode
    finally:
        server.terminate()
        server.wait()
        log.close()


def start_window_manager():
    """Within the desktop. Without it no window gets the keyboard; the caller waits until it is there."""
    return subprocess.Popen(["openbox", "--sm-disable"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def has_window_manager():
    return subprocess.run(["xdotool", "get_desktop"], capture_output=True).returncode == 0
