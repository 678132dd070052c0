"""The picker by mouse, as a hand goes about it: what a click did is seen before the next one."""

from harness import wait_until
from harness.appearance import MapCounter
from harness.brimwick import WINDOW_CLASS
from harness.mouse import RIGHT
from harness.windows import Rectangle

# Of what a search for "resume" finds, the row that the tests click.
ROW = 2


def search(filing, mode):
    """The picker with what a search for "resume" finds, painted, and its first row selected."""
    filing.invoke(mode)
    places = filing.places(mode)
    act_and_see(filing, places.result(0), lambda: filing.choose("resume"))
    return places


def map_counter(filing):
    return MapCounter(filing.desktop.display, filing.desktop.brimwick.picker())


def click(filing, point):
    filing.desktop.mouse.click(*point)


def click_row(filing, places):
    point = places.result(ROW)
    act_and_see(filing, point, lambda: click(filing, point))


def act_and_see(filing, point, act):
    """Does something and waits until the screen looks different there: no hand is quicker."""
    area = Rectangle(point[0] - 50, point[1] - 20, 100, 40)
    before = filing.desktop.windows.pixels(area)
    act()
    wait_until(lambda: filing.desktop.windows.pixels(area) != before, "the screen has changed")


def menus(filing):
    return filing.desktop.windows.popups(WINDOW_CLASS)


def open_menu(filing, point):
    filing.desktop.mouse.click(*point, RIGHT)
    return wait_until(lambda: menus(filing), "the context menu is open")[-1].client


def choose_from_menu(filing, point, index, of):
    menu = open_menu(filing, point)
    click(filing, (menu.x + menu.width // 2, menu.y + menu.height * (2 * index + 1) // (2 * of)))
