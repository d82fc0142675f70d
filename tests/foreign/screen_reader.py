"""The operator's page as a screen reader has it: found, filled in, pressed and read by AT-SPI from start to verdict."""

import os
import shutil
import subprocess
import sys
import time

SKIPPED = 77
DEADLINE_S = 120


def skip(why):
    print(why)
    sys.exit(SKIPPED)


def within_session():
    """Starts this file again in a session bus of its own."""
    if shutil.which("dbus-run-session") is None:
        skip("dbus-run-session is not installed (Debian: dbus).")
    if shutil.which("Xvfb") is None:
        skip("Xvfb is not installed (Debian: xvfb).")
    try:
        import pyatspi  # noqa: F401
    except (ImportError, ValueError):
        skip("pyatspi is not installed (Debian: python3-pyatspi, at-spi2-core).")
    environment = dict(os.environ, IN_SESSION="1")
    sys.exit(subprocess.run(["dbus-run-session", "--", sys.executable, "-B", __file__], env=environment,
                            timeout=4 * DEADLINE_S).returncode)


def each(node):
    """A node and all beneath it that are still there."""
    yield node
    for i in range(node.childCount):
        try:
            child = node.getChildAtIndex(i)
        except Exception:
            continue
        if child is not None:
            yield from each(child)


def find(desktop, role, name):
    for i in range(desktop.childCount):
        try:
            application = desktop.getChildAtIndex(i)
            if application is None:
                continue
            for node in each(application):
                if node.getRoleName() == role and name(node.name or "") and showing(node):
                    return node
        except Exception:
            continue
    return None


def showing(node):
    import pyatspi

    return node.getState().contains(pyatspi.STATE_SHOWING)


def await_node(desktop, role, name):
    deadline = time.monotonic() + DEADLINE_S
    while time.monotonic() < deadline:
        node = find(desktop, role, name)
        if node is not None:
            return node
    raise AssertionError(f"no {role} of that name is ever seen")


def press(node):
    action = node.queryAction()
    for i in range(action.nActions):
        if action.getName(i).lower() == "press":
            action.doAction(i)
            return
    raise AssertionError(f"{node.name} cannot be pressed")


def read_page():
    import pyatspi

    desktop = pyatspi.Registry.getDesktop(0)
    serial = await_node(desktop, "text", lambda name: name == "Serial number")
    serial.queryEditableText().setTextContents("a-17")
    press(await_node(desktop, "push button", lambda name: name.startswith("Start")))
    card = await_node(desktop, "push button", lambda name: name == "Initialize now")
    await_node(desktop, "label", lambda name: "The test set is not initialized." in name)
    press(card)
    heard = []
    for name in ["PASS", "a-17", "Every step was completed and everything is within its limits.",
                 "Take the unit out. It is good."]:
        heard.append(await_node(desktop, "label", lambda text, name=name: text == name).name)
    press(await_node(desktop, "push button", lambda name: name.startswith("Next unit")))
    await_node(desktop, "label", lambda name: name == "1 units of this shift")
    print("heard:", heard)


def main():
    if os.environ.get("IN_SESSION") is None:
        within_session()
    server = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "1280x720x24", "-nolisten", "tcp"],
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    station = None
    try:
        display = ":" + server.stdout.readline().strip()
        environment = dict(os.environ, DISPLAY=display, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb")
        station = subprocess.Popen([os.environ["ORVANE_WINDOWS"], "--view", "operator", "--language", "en", "--bench",
                                    "virtual:seed=7"], env=environment)
        read_page()
    finally:
        for process in (station, server):
            if process is not None:
                process.terminate()
                process.wait(timeout=30)


main()
