"""Clients and a portmapper that nobody here wrote, on the VXI-11 gateway of virtual-bench."""

import socket
import subprocess
import time
import unittest

import surroundings
from surroundings import Bench, initialize, says

surroundings.need_modules("pyvisa", "pyvisa_py")
surroundings.need_programs("lxi", "rpcbind", "rpcinfo")

import pyvisa
from pyvisa.constants import StatusCode

NAMES = {"inst0": "ORVANE,VIRTUAL TEST SET,0,1.0",
         "gpib0,1": "ORVANE,VIRTUAL TEST SET,0,1.0",
         "gpib0,2": "ORVANE,VIRTUAL SUPPLY,0,1.0",
         "gpib0,5": "ORVANE,VIRTUAL LOAD,0,1.0"}
CORE_CHANNEL = "395183"


def setUpModule():
    portmapper = subprocess.Popen(["rpcbind", "-f"])
    unittest.addModuleCleanup(portmapper.wait)
    unittest.addModuleCleanup(portmapper.terminate)
    for _ in range(100):
        try:
            socket.create_connection(("127.0.0.1", 111), timeout=1).close()
            return
        except OSError:
            time.sleep(0.05)
    surroundings.skip("rpcbind does not run here")


class Gateway(unittest.TestCase):
    FAULTS = ()

    def setUp(self):
        self.bench = self.enterContext(Bench("--portmapper", *self.FAULTS))
        self.manager = pyvisa.ResourceManager("@py")
        self.addCleanup(self.manager.close)

    def open(self, device, **properties):
        return self.manager.open_resource(f"TCPIP::127.0.0.1::{device}::INSTR", timeout=5000, **properties)

    def assert_fails(self, code, act):
        with self.assertRaises(pyvisa.VisaIOError) as failure:
            act()
        self.assertEqual(failure.exception.error_code, code)


class Visa(Gateway):
    def test_meets_each_instrument_under_its_name(self):
        for device, name in NAMES.items():
            self.assertEqual(self.open(device).query("*IDN?"), name + "\n")

    def test_is_refused_a_device_that_is_none(self):
        with self.assertRaises(Exception):
            self.open("gpib0,9").query("*IDN?")

    def test_writes_a_message_longer_than_the_gateway_takes_at_once(self):
        count = 1500
        reply = self.open("gpib0,2").query(";".join(["*IDN?"] * count))
        self.assertEqual(reply, ";".join([NAMES["gpib0,2"]] * count) + "\n")

    def test_reads_in_small_pieces(self):
        self.assertEqual(self.open("gpib0,5", chunk_size=20).query("*IDN?"), NAMES["gpib0,5"] + "\n")

    def test_reads_up_to_a_character_of_its_choice(self):
        supply = self.open("gpib0,2", read_termination=";")
        supply.write("VOLT 3;VOLT?;*IDN?;OUTP?")
        self.assertEqual(supply.read(), "+3.00000E+000")
        self.assertEqual(supply.read(), NAMES["gpib0,2"])

    def test_sees_a_waiting_answer_in_the_status_byte_and_clears_it(self):
        load = self.open("gpib0,5")
        self.assertEqual(load.read_stb(), 0)
        load.write("*IDN?")
        self.assertEqual(load.read_stb(), 16)
        load.clear()
        self.assertEqual(load.read_stb(), 0)
        self.assertEqual(load.query("SYST:ERR?"), '+0,"No error"\n')

    def test_keeps_another_client_out_with_a_lock(self):
        first, second = self.open("gpib0,2"), self.open("gpib0,2")
        first.lock_excl()
        self.assert_fails(StatusCode.error_resource_locked, second.clear)
        self.assert_fails(StatusCode.error_io, lambda: second.write("VOLT 4"))  # its word for any error of a write
        first.unlock()
        second.write("VOLT 3")
        self.assertEqual(first.query("VOLT?"), "+3.00000E+000\n")

    def test_sends_no_trigger(self):
        self.assert_fails(StatusCode.error_nonsupported_operation, self.open("gpib0,2").assert_trigger)


class VisaAndASilentInstrument(Gateway):
    FAULTS = ("--fault", "testset-silent")

    def test_meet_a_time_out_that_holds_up_nobody_else(self):
        silent, supply = self.open("gpib0,1"), self.open("gpib0,2")
        silent.timeout = 300
        self.assert_fails(StatusCode.error_timeout, lambda: silent.query("*IDN?"))
        self.assertEqual(supply.query("*IDN?"), NAMES["gpib0,2"] + "\n")


class Lxi(Gateway):
    def test_meets_the_instrument_of_a_lan(self):
        self.assertEqual(says("lxi", "scpi", "--address", "127.0.0.1", "*IDN?").strip(), NAMES["inst0"])


class Station(Gateway):
    def test_finds_the_gateway_by_the_portmapper(self):
        status, said = initialize("--com1", self.bench["target"], "--gpib", "vxi11:127.0.0.1")
        self.assertEqual(status, 0, said)

    def test_finds_single_instruments_by_the_portmapper(self):
        status, said = initialize("--com1", self.bench["target"], "--instrument", "1=vxi11:127.0.0.1",
                                  "--instrument", "2=vxi11:127.0.0.1,gpib0,2",
                                  "--instrument", "5=vxi11:127.0.0.1,gpib0,5")
        self.assertEqual(status, 0, said)


class Portmapper(unittest.TestCase):
    def test_has_the_gateway_as_long_as_it_is_there(self):
        with Bench("--portmapper") as bench:
            self.assertRegex(says("rpcinfo", "-p", "127.0.0.1"), rf"{CORE_CHANNEL} +1 +tcp +{bench.port('vxi11')}\b")
        self.assertNotIn(CORE_CHANNEL, says("rpcinfo", "-p", "127.0.0.1"))

    def test_knows_no_gateway_that_did_not_ask_for_it(self):
        with Bench():
            self.assertNotIn(CORE_CHANNEL, says("rpcinfo", "-p", "127.0.0.1"))
        status, said = initialize("--gpib", "vxi11:127.0.0.1")
        self.assertEqual(status, 2)
        self.assertIn("the portmapper knows of no VXI-11 server there.", said)


if __name__ == "__main__":
    surroundings.enter_own_network()
    surroundings.main()
