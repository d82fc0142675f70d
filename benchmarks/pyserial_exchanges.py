"""What a straightforward program takes for exchanges with the Target: pyserial_exchanges.py DEVICE COUNT prints the
seconds of the processor that they took it."""

import sys
import time

import serial


def frame_of(operation, data):
    checksum = operation
    escaped = bytearray()
    for byte in data:
        checksum ^= byte
    for byte in bytes(data) + bytes([checksum]):
        escaped += bytes([0x10, byte]) if byte in (0x02, 0x10) else bytes([byte])
    return b"\x02\x14" + (bytes([operation]) + escaped + b"\x02").ljust(51, b"\0")


def is_whole(reply):
    return len(reply) > 3 and reply.startswith(b"\x02\x14") and reply[-1] == 0x02 and reply[-3] != 0x10


def exchange(port, operation, data):
    port.write(frame_of(operation, data))
    reply = b""
    while not is_whole(reply):
        reply += port.read(max(1, port.in_waiting))
    status = reply[5]
    if reply[3] != operation or status != 0:
        raise SystemExit("no good reply: " + reply.hex())


def main():
    with serial.Serial(sys.argv[1], 115200, timeout=3) as port:
        start = time.process_time()
        for _ in range(int(sys.argv[2])):
            exchange(port, 0x30, [1, 62, 0])
        print(time.process_time() - start)


main()
