"""Clients that nobody here wrote, over the raw sockets of virtual-bench."""

import unittest

import surroundings
from surroundings import Bench, says

surroundings.need_modules("pyvisa", "pyvisa_py")
surroundings.need_programs("lxi", "sigrok-cli")

import pyvisa

NAMES = {"testset": "ORVANE,VIRTUAL TEST SET,0,1.0",
         "supply": "ORVANE,VIRTUAL SUPPLY,0,1.0",
         "load": "ORVANE,VIRTUAL LOAD,0,1.0"}


class RawSocket(unittest.TestCase):
    def setUp(self):
        self.bench = self.enterContext(Bench())

    def open(self, instrument):
        manager = pyvisa.ResourceManager("@py")
        self.addCleanup(manager.close)
        place = self.bench[instrument].replace(":", "::")
        return manager.open_resource(f"TCPIP::{place}::SOCKET", read_termination="\n", write_termination="\n",
                                     timeout=5000)

    def test_pyvisa_meets_each_instrument(self):
        for instrument, name in NAMES.items():
            self.assertEqual(self.open(instrument).query("*IDN?"), name)

    def test_pyvisa_sets_the_supply_and_reads_it_back(self):
        supply = self.open("supply")
        supply.write("VOLT 4.21;OUTPUT ON")
        self.assertEqual(supply.query_ascii_values("VOLT?"), [4.21])
        self.assertEqual(supply.query("OUTP?"), "1")

    def test_lxi_meets_each_instrument(self):
        for instrument, name in NAMES.items():
            said = says("lxi", "scpi", "--raw", "--address", "127.0.0.1", "--port", self.bench.port(instrument), "*IDN?")
            self.assertEqual(said.strip(), name)

    def test_sigrok_reads_the_supplys_name(self):
        # Its driver knows supplies by their makers' models, and so finds none here; the exchange is what is held.
        said = says("sigrok-cli", "--loglevel", "5", "--driver",
                    "scpi-pps:conn=tcp-raw/127.0.0.1/" + self.bench.port("supply"), "--scan")
        self.assertIn(f"Got response: '{NAMES['supply']}'", said)


if __name__ == "__main__":
    surroundings.main()
