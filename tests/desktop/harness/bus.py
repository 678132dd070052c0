"""The session bus: nothing of the machine's own services can be started on it behind our back."""

import os

from .account import Account
from .processes import Child, Children
from .waiting import wait_until

CONFIGURATION = """<busconfig>
  <type>session</type>
  <listen>unix:path={socket}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
  <limit name="max_replies_per_connection">50000</limit>
</busconfig>
"""


def set_bus_address(children: Children, account: Account):
    """Names the bus in the environment of what follows, whether it will be there or not.

    With no address at all, programs would start a bus of their own.
    """
    children.environment["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={_socket(account)}"


def start_bus(children: Children, account: Account) -> Child:
    """Starts the bus and waits until it listens."""
    socket = _socket(account)
    configuration = account.base / "bus.conf"
    configuration.write_text(CONFIGURATION.format(socket=socket))
    bus = children.start("bus", ["dbus-daemon", "--nofork", "--nopidfile", f"--config-file={configuration}"])
    wait_until(lambda: os.path.exists(socket), "the session bus listens")
    return bus


def _socket(account: Account):
    return account.runtime / "bus"
