"""The window manager: openbox with a small configuration of its own, or another one as it comes."""

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


OPENBOX, XFWM4, KWIN = "openbox", "xfwm4", "kwin_x11"


def start_window_manager(name: str, children: Children, account: Account, windows: Windows) -> Child:
    """Starts one of the window managers above and waits until it manages the display."""
    configuration = account.base / "openbox.xml"
    configuration.write_text(CONFIGURATION)
    command = {
        OPENBOX: ["openbox", "--config-file", configuration, "--sm-disable"],
        XFWM4: ["xfwm4", "--compositor=off"],
        KWIN: ["kwin_x11", "--no-kactivities"],
    }[name]
    manager = children.start(name, command, {"KWIN_COMPOSE": "N"})
    wait_until(windows.are_managed, lambda: f"{name} manages the display; it wrote {manager.stderr()}", 30.0)
    return manager
