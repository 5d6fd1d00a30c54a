"""A program that listens to a console: prints each datagram as a line, "text freq:007074000" or
"sound 17" with the block's number. Ends with a complaint at a datagram of any other form."""

import select
import socket
import struct
import sys


def listen(port):
    heard = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    heard.bind(("", port))
    return heard


def text(datagram):
    if datagram[-1:] != b"\0" or b"\0" in datagram[:-1]:
        sys.exit(f"not one text: {datagram!r}")
    return "text " + datagram[:-1].decode("ascii")


def sound(datagram):
    if len(datagram) != 1028:
        sys.exit(f"a block of {len(datagram)} bytes")
    number, padding = struct.unpack("<HH", datagram[1024:])
    if padding != 0:
        sys.exit(f"padding of {padding}")
    return f"sound {number}"


readers = {listen(58283): text, listen(58286): sound}
print("ready", flush=True)
while True:
    for heard in select.select(list(readers), [], [])[0]:
        print(readers[heard](heard.recv(65536)), flush=True)
