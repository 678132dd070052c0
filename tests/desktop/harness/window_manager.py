"""The window manager, with a small configuration of its own."""

from .account import Account
from .processes import Child, Children
from .waiting import wait_until
from .windows import Windows

CONFIGURATION = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse><focusLast>yes</focusLast></focus>
  <resistance><strength>0</strength><screen_edge_strength>0</screen_edge_strength></resistance>
  <placement><policy>Smart</policy><center>yes</center></placement>
  <theme><name>Clearlooks</name><titleLayout>LMC</titleLayout><animateIconify>no</animateIconify></theme>
  <desktops><number>1</number><popupTime>0</popupTime></desktops>
  <resize><drawContents>yes</drawContents><popupShow>Never</popupShow></resize>
  <keyboard>
    <keybind key="A-F4"><action name="Close"/></keybind>
  </keyboard>
  <mouse>
    <dragThreshold>2</dragThreshold>
    <context name="Titlebar">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
      <mousebind button="Left" action="Drag"><action name="Move"/></mousebind>
    </context>
    <context name="Frame">
      <mousebind button="A-Right" action="Drag"><action name="Resize"/></mousebind>
    </context>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
      <mousebind button="Right" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
    <context name="Desktop">
      <mousebind button="Left" action="Press"><action name="Focus"/></mousebind>
    </context>
    <context name="Close">
      <mousebind button="Left" action="Click"><action name="Close"/></mousebind>
    </context>
  </mouse>
</openbox_config>
"""


def start_window_manager(children: Children, account: Account, windows: Windows) -> Child:
    """Starts openbox and waits until it manages the display."""
    configuration = account.base / "openbox.xml"
    configuration.write_text(CONFIGURATION)
    manager = children.start("openbox", ["openbox", "--config-file", configuration, "--sm-disable"])
    wait_until(windows.are_managed, "the window manager manages the display")
    return manager
