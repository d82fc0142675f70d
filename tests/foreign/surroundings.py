"""What the tests with other people's clients stand on: the bench on wires, and a network of their own."""

import importlib
import os
import shutil
import subprocess
import sys
import unittest

# What ctest takes for "not run here"; the reason stands in the output.
SKIPPED = 77

VIRTUAL_BENCH = os.environ["VIRTUAL_BENCH"]
ORVANE = os.environ["ORVANE"]


def skip(why):
    print("SKIPPED:", why)
    sys.exit(SKIPPED)


def need_programs(*programs):
    for program in programs:
        if shutil.which(program) is None:
            skip(f"{program} is not installed")


def need_modules(*modules):
    for module in modules:
        try:
            importlib.import_module(module)
        except ImportError:
            skip(f"the Python module {module} is not installed")


def enter_own_network():
    """Starts this script again in a network, a /run and a set of processes of its own; all of it ends with it.

    There any port is free, the portmapper's 111 among them, and nothing of this machine is touched.
    """
    if "ORVANE_OWN_NETWORK" in os.environ:
        subprocess.run(["mount", "-t", "tmpfs", "tmpfs", "/run"], check=True)
        subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
        # Some machines forbid it; then whoever looks there finds other processes under his own number.
        subprocess.run(["mount", "-t", "proc", "proc", "/proc"], stderr=subprocess.DEVNULL)
        return
    need_programs("unshare", "mount", "ip")
    unshare = ["unshare", "--net", "--mount", "--pid", "--fork", "--kill-child"]
    if os.geteuid() != 0:
        unshare.append("--map-root-user")
    if subprocess.run(unshare + ["true"], stderr=subprocess.DEVNULL).returncode != 0:
        skip("this machine permits no network namespaces")
    os.environ["ORVANE_OWN_NETWORK"] = "1"
    os.execvp(unshare[0], unshare + [sys.executable, *sys.argv])


class Bench:
    """`virtual-bench`, ended with its holder. `bench["supply"]` is where the supply is."""

    def __init__(self, *arguments):
        self.process = subprocess.Popen([VIRTUAL_BENCH, *arguments], stdout=subprocess.PIPE, text=True)
        self.places = {}
        for line in self.process.stdout:
            what, _, where = line.strip().partition(" ")
            if what == "ready":
                return
            self.places[what] = where
        raise RuntimeError("the bench is not ready")

    def __getitem__(self, what):
        return self.places[what]

    def port(self, what):
        return self[what].split(":")[1]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        status = self.process.wait(timeout=10)
        self.process.stdout.close()
        if status != 0:
            raise RuntimeError(f"the bench ended with status {status}")


def says(*command):
    """What a program prints, which has ten seconds."""
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=10).stdout


def initialize(*arguments):
    """The whole road: exit status, and all that the station printed."""
    run = subprocess.run(
        [ORVANE, "--headless", "--initialize", *arguments],
        stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=60)
    return run.returncode, run.stdout


def main():
    unittest.main(verbosity=2)
