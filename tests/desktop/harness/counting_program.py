"""Runs in a terminal: appends a dot to one file at every tick and each byte of its input to another."""

import os
import select
import signal
import sys
import tty

TICK = 0.02


def main():
    # A Ctrl+C that arrives is a byte like any other.
    tty.setraw(0)
    signal.signal(signal.SIGINT, signal.SIG_IGN)
    counted = os.open(sys.argv[1], os.O_WRONLY | os.O_CREAT | os.O_APPEND)
    received = os.open(sys.argv[2], os.O_WRONLY | os.O_CREAT | os.O_APPEND)
    while True:
        os.write(counted, b".")
        os.write(1, b".")
        if select.select([0], [], [], TICK)[0]:
            data = os.read(0, 1024)
            if not data:
                return
            os.write(received, data)


if __name__ == "__main__":
    main()
