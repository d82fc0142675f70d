"""Clients and a relay that nobody here wrote, on the Target's line of virtual-bench."""

import os
import pathlib
import random
import subprocess
import tempfile
import threading
import time
import unittest

import surroundings
from surroundings import Bench, initialize

surroundings.need_modules("serial")
surroundings.need_programs("socat")

import serial


def command(*payload):
    """A command frame: these bytes, filled up with zeros to the frame's 53."""
    return bytes(payload).ljust(53, b"\0")


TI = command(0x02, 0x14, 0x20, 0x20, 0x02)
TI_DONE = bytes.fromhex("02 14 00 20 00 00 00 20 02")


class PySerial(unittest.TestCase):
    def setUp(self):
        self.bench = self.enterContext(Bench())

    def open(self, **settings):
        return self.enterContext(serial.Serial(self.bench["target"], 115200, timeout=5, **settings))

    def test_gets_the_targets_reply(self):
        port = self.open()
        port.write(TI)
        self.assertEqual(port.read(len(TI_DONE)), TI_DONE)

    def test_gets_one_reply_for_each_sound_frame_whatever_stands_between(self):
        port = self.open()
        broken = TI[:3] + b"\x21" + TI[4:]
        for noise in (b"", b"\x00\xff\x55", broken, TI[:20], random.Random(1).randbytes(200)):
            port.reset_input_buffer()
            port.write(noise + TI)
            self.assertEqual(port.read(len(TI_DONE)), TI_DONE, noise.hex())

    def test_comes_and_goes(self):
        for _ in range(3):
            with serial.Serial(self.bench["target"], 9600, timeout=5) as port:
                port.write(TI)
                self.assertEqual(port.read(len(TI_DONE)), TI_DONE)

    def test_may_send_byte_by_byte(self):
        port = self.open()
        for byte in TI:
            port.write(bytes([byte]))
        self.assertEqual(port.read(len(TI_DONE)), TI_DONE)


class Relay:
    """A line of two ends, made by socat, between the station and the Target: bytes pass it late, changed, or no more."""

    def __init__(self, folder, target):
        self.station_end = str(folder / "com1")
        inner = str(folder / "inner")
        self.socat = subprocess.Popen(
            ["socat", f"PTY,link={self.station_end},raw,echo=0", f"PTY,link={inner},raw,echo=0"])
        while not (os.path.exists(inner) and os.path.exists(self.station_end)):
            time.sleep(0.01)
        self.ends = [serial.Serial(path, 115200, timeout=0.02) for path in (inner, target)]
        self.delay = 0.0
        self.change = lambda reply, number: reply
        self.replies = 0
        self.stopping = threading.Event()
        self.threads = [threading.Thread(target=self.carry, args=(*self.ends, lambda sent: sent)),
                        threading.Thread(target=self.carry, args=(*reversed(self.ends), self.count_and_change))]
        for thread in self.threads:
            thread.start()

    def carry(self, source, sink, change):
        try:
            while not self.stopping.is_set():
                first = source.read(1)
                if first:
                    data = first + source.read(source.in_waiting)
                    time.sleep(self.delay)
                    sink.write(change(data))
        except (OSError, serial.SerialException):
            pass  # one of the ends has gone

    def count_and_change(self, data):
        self.replies += data.startswith(b"\x02\x14")
        return self.change(data, self.replies)

    def cut(self):
        self.socat.terminate()
        self.socat.wait()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stopping.set()
        self.cut()
        for thread in self.threads:
            thread.join()
        for end in self.ends:
            end.close()


class BehindARelay(unittest.TestCase):
    def setUp(self):
        self.bench = self.enterContext(Bench())
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.relay = self.enterContext(Relay(folder, self.bench["target"]))

    def run_station(self):
        return initialize("--com1", self.relay.station_end, "--gpib", "vxi11:" + self.bench["vxi11"])

    def test_a_line_that_is_slow_in_both_directions_takes_the_unit_through(self):
        self.relay.delay = 0.01
        status, said = self.run_station()
        self.assertEqual(status, 0, said)

    def test_garbage_ahead_of_one_reply_is_told_in_the_verdict(self):
        self.relay.change = lambda reply, number: b"\x55\xaa" + reply if number == 40 else reply
        status, said = self.run_station()
        self.assertEqual(status, 2, said)
        self.assertIn("PASS, but not every step was completed.\n"
                      "receive: Exchanges with the Target: 1 with stray bytes around the reply.\n", said)

    def test_a_line_that_is_cut_ends_the_run_with_its_name(self):
        def change(reply, number):
            if number == 60:
                self.relay.cut()
            return reply

        self.relay.change = change
        status, said = self.run_station()
        self.assertEqual(status, 2, said)
        self.assertIn(f"ORVANE: COM1 ({self.relay.station_end}): the device is gone. Is it unplugged?", said)
        self.assertIn("The run ended without a verdict.\nreceive: The step did not end.\n", said)


if __name__ == "__main__":
    surroundings.main()
