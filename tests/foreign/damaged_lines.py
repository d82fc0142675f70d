"""The Target's line in other people's hands: frames typed by hand through python3-serial, and a relay of socat between
station and Target that is slow, loses bytes, adds some, and is cut."""

import json
import os
import socket
import subprocess
import tempfile
import threading
import time
import unittest

import surroundings
from surroundings import ORVANE, Bench, initialize

surroundings.need_modules("serial")
surroundings.need_programs("socat")

import serial

COMMAND_SIZE = 53


def frame(text):
    """A command: what is typed, filled up with zeros."""
    return bytes.fromhex(text).ljust(COMMAND_SIZE, b"\0")


def routes(bench, target):
    arguments = ["--com1", target]
    for address, what in ((1, "testset"), (2, "supply"), (5, "load")):
        arguments += ["--instrument", f"{address}=tcp:{bench[what]}"]
    return arguments


def hear_out(target):
    """What a Target that lost its station still had to say is said when it answers something new."""
    answer = bytes.fromhex("02 14 00 20 00 00 00 20 02")
    with serial.Serial(target, 115200, timeout=10) as line:
        line.write(frame("02 14 20 20 02"))
        if not line.read_until(answer).endswith(answer):
            raise RuntimeError("the Target does not answer")


class TypedFrames(unittest.TestCase):
    def setUp(self):
        self.bench = self.enterContext(Bench())
        self.line = self.enterContext(serial.Serial(self.bench["target"], 115200, timeout=5, exclusive=True))

    def reply(self, text, size):
        self.line.write(frame(text))
        return self.line.read(size).hex(" ")

    def test_a_value_that_was_written_is_read_back(self):
        self.assertEqual(self.reply("02 14 30 01 00 3E 00 0F 02", 9), "02 14 00 30 00 00 00 30 02")
        self.assertEqual(self.reply("02 14 31 01 00 30 02", 15), "02 14 00 31 00 00 00 01 00 3e 00 00 00 0e 02")

    def test_escapes_go_both_ways(self):
        self.assertEqual(self.reply("02 14 30 01 00 10 10 00 21 02", 9), "02 14 00 30 00 00 00 30 02")
        self.assertEqual(self.reply("02 14 31 01 00 30 02", 16), "02 14 00 31 00 00 00 01 10 00 10 00 00 00 20 02")

    def test_the_station_names_who_holds_the_line(self):
        status, said = initialize(*routes(self.bench, self.bench["target"]))
        self.assertEqual(status, 2)
        self.assertRegex(said, r"the device is in use by another program: python3 \(process %d\)\." % os.getpid())


class Relay:
    """socat gives the station a terminal of its own; what passes between it and the Target passes `reply` or `command`,
    which get the number of the piece and the piece, and give the pieces that go on, each with a pause ahead of it."""

    def __init__(self, target, name, reply=lambda n, piece: [(0, piece)], command=lambda n, piece: [(0, piece)]):
        self.path = name
        near, far = socket.socketpair()
        self.socat = subprocess.Popen(["socat", f"PTY,link={name},rawer", f"FD:{far.fileno()}"], pass_fds=[far.fileno()])
        far.close()
        self.near = near
        self.target = serial.Serial(target, 115200, timeout=None)
        deadline = time.monotonic() + 10
        while not os.path.exists(name) and time.monotonic() < deadline:
            time.sleep(0.01)
        self.threads = [threading.Thread(target=self.commands, args=[command], daemon=True),
                        threading.Thread(target=self.replies, args=[reply], daemon=True)]
        for thread in self.threads:
            thread.start()

    def pump(self, read, change, write):
        number = 0
        try:
            while piece := read():
                number += 1
                for pause, part in change(number, piece):
                    time.sleep(pause)
                    write(part)
        except (OSError, TypeError, serial.SerialException):
            pass  # The relay was cut.

    def commands(self, change):
        self.pump(lambda: self.near.recv(COMMAND_SIZE, socket.MSG_WAITALL), change, self.target.write)

    def replies(self, change):
        self.pump(lambda: self.target.read(1) + self.target.read(self.target.in_waiting), change, self.near.sendall)

    def cut(self):
        """The adapter is pulled: its name goes, then its line."""
        os.unlink(self.path)
        self.socat.kill()
        self.socat.wait()
        self.near.close()
        self.target.cancel_read()
        self.threads[1].join(5)
        self.target.close()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.socat.poll() is None:
            self.cut()


class Relayed(unittest.TestCase):
    def setUp(self):
        self.folder = self.enterContext(tempfile.TemporaryDirectory())

    def run_with(self, name="line", **changes):
        """A road through a relay of its own: exit status, and what the station said."""
        with Bench() as bench, Relay(bench["target"], os.path.join(self.folder, name), **changes) as relay:
            return initialize(*routes(bench, relay.path))

    def test_a_road_through_an_adapter_that_sends_every_16_ms_is_complete(self):
        def halves(_, piece):
            middle = len(piece) // 2
            return [(0.002, piece[:middle]), (0.016, piece[middle:])]

        status, said = self.run_with(reply=halves)
        self.assertEqual(status, 0, said)

    def test_bytes_lost_changed_or_added_never_leave_a_complete_pass(self):
        done = []

        def at(number, change):
            def tamper(n, piece):
                if n != number:
                    return [(0, piece)]
                done.append(number)
                return change(piece)
            return tamper

        tampered = {
            "a reply loses a byte": {"reply": at(50, lambda p: [(0, p[:5] + p[6:])])},
            "a reply loses its end": {"reply": at(60, lambda p: [(0, p[:-1])])},
            "a value changes": {"reply": at(70, lambda p: [(0, p[:-4] + bytes([p[-4] ^ 0x20]) + p[-3:])])},
            "a checksum changes": {"reply": at(80, lambda p: [(0, p[:-2] + bytes([p[-2] ^ 0x40]) + p[-1:])])},
            "garbage ahead of a reply": {"reply": at(90, lambda p: [(0, b"\xff\x00\x55" + p)])},
            "garbage inside a reply": {"reply": at(100, lambda p: [(0, p[:4] + b"\xa5\x5a" + p[4:])])},
            "garbage behind a reply": {"reply": at(110, lambda p: [(0, p), (0.001, b"\x02\x14\x02")])},
            "a command loses a byte": {"command": at(120, lambda p: [(0, p[:7] + p[8:])])},
        }
        results = {}

        def run(what):
            results[what] = self.run_with(name=what.replace(" ", "-"), **tampered[what])

        threads = [threading.Thread(target=run, args=[what]) for what in tampered]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(len(done), len(tampered))
        for what in tampered:
            with self.subTest(what):
                status, said = results[what]
                self.assertIn(status, (1, 2), said)

    def test_a_line_that_is_cut_ends_the_run_at_once_and_the_next_initialize_works(self):
        path = os.path.join(self.folder, "line")
        bench = self.enterContext(Bench())
        replies = []

        def count(n, piece):
            replies.append(n)
            return [(0, piece)]

        first = self.enterContext(Relay(bench["target"], path, reply=count))
        station = Station(*routes(bench, path))
        self.addCleanup(station.end)
        for button in ("OrvaneMain.cmdInstrumentInitialize", "OrvaneMain.cmdPSInitialize",
                       "frmBaseBand.cmdLoaderInitialize"):
            station.answer(station.click(button))
        run = station.click("OrvaneMain.cmdTargetInitialize")
        while len(replies) < 40:
            time.sleep(0.01)
        first.cut()
        cut = time.monotonic()
        answer = station.answer(run)
        self.assertLess(time.monotonic() - cut, 2.0, "it is not a reply's wait that ended")
        self.assertIn(f"COM1 ({path}): the device is gone.", answer["error"]["message"])
        self.assertEqual(station.verdicts, [("NONE", False)])

        hear_out(bench["target"])
        self.enterContext(Relay(bench["target"], path))
        answer = station.answer(station.click("OrvaneMain.cmdTargetInitialize"))
        self.assertEqual(answer.get("result"), {}, answer)
        self.assertEqual(station.verdicts[1:], [("PASS", True)])


class Station:
    """The station by its automation port; every box gets its first button."""

    def __init__(self, *arguments):
        self.process = subprocess.Popen([ORVANE, "--headless", "--automation", "stdio", *arguments],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.requests = 0
        self.verdicts = []

    def send(self, method, **params):
        self.requests += 1
        self.process.stdin.write(json.dumps(
            {"jsonrpc": "2.0", "id": self.requests, "method": method, "params": params}) + "\n")
        self.process.stdin.flush()
        return self.requests

    def click(self, control):
        return self.send("click", control=control)

    def answer(self, request):
        for line in self.process.stdout:
            message = json.loads(line)
            params = message.get("params", {})
            if message.get("method") == "box":
                self.send("answer", id=params["id"], button=params["buttons"][0])
            if message.get("method") == "verdict":
                self.verdicts.append((params["result"], params["complete"]))
            if message.get("id") == request:
                return message
        raise RuntimeError("the station has ended")

    def end(self):
        self.process.stdin.close()
        self.process.wait(timeout=10)
        self.process.stdout.close()


if __name__ == "__main__":
    surroundings.main()
