import pytest

CHECK = "check-includes"


def include(path):
    return f'#include "{path}"\n'


@pytest.mark.parametrize(
    "upper, lower",
    [
        ("model", "platform/ports"),
        ("feedback", "model"),
        ("actions", "feedback"),
        ("hotkeys", "model"),
        ("update", "feedback"),
        ("picker", "hotkeys"),
        ("preferences", "picker"),
        ("app", "preferences"),
        ("app", "platform/linux/x11"),
        ("platform/linux/x11", "platform/ports"),
        ("platform/linux", "platform/linux/x11"),
    ],
)
def test_a_room_includes_what_lies_below_it_and_not_the_other_way_round(tree, upper, lower):
    tree.write(f"src/{lower}/Lower.h", "")
    tree.write(f"src/{upper}/Upper.cpp", "\n" + include(f"{lower}/Lower.h"))
    assert tree.check(CHECK) == []

    tree.write(f"src/{upper}/Upper.h", "")
    tree.write(f"src/{upper}/Upper.cpp", "")
    tree.write(f"src/{lower}/Lower.h", "\n" + include(f"{upper}/Upper.h"))
    found = tree.check(CHECK)
    if upper == "platform/linux":
        assert found == []
    else:
        assert len(found) == 1 and found[0].startswith(f"src/{lower}/Lower.h:2: ")


def test_rooms_of_one_floor_do_not_include_each_other(tree):
    tree.write("src/hotkeys/Keys.h", "")
    tree.write("src/actions/Action.h", include("hotkeys/Keys.h"))
    assert tree.check(CHECK) == ["src/actions/Action.h:1: actions may not include hotkeys"]


@pytest.mark.parametrize("room", ["model", "picker", "preferences"])
def test_only_the_program_itself_includes_the_platform(tree, room):
    tree.write("src/platform/linux/dbus/Bus.h", "")
    tree.write(f"src/{room}/User.h", include("platform/linux/dbus/Bus.h"))
    assert tree.check(CHECK) == [f"src/{room}/User.h:1: {room} may not include platform/linux"]


def test_the_platform_includes_nothing_but_the_ports(tree):
    tree.write("src/model/Mode.h", "")
    tree.write("src/platform/linux/x11/Keys.cpp", include("model/Mode.h"))
    assert tree.check(CHECK) == ["src/platform/linux/x11/Keys.cpp:1: platform/linux may not include model"]


def test_two_folders_do_not_include_each_other(tree):
    tree.write("src/platform/linux/a/A.h", include("platform/linux/b/B.h"))
    tree.write("src/platform/linux/b/B.h", "")
    tree.write("src/platform/linux/b/C.h", include("platform/linux/a/A.h"))
    assert tree.check(CHECK) == [
        "src/platform/linux/a/A.h:1: platform/linux/a and platform/linux/b include each other"
    ]


def test_folders_do_not_include_each_other_in_a_circle(tree):
    tree.write("src/platform/linux/a/A.h", include("platform/linux/b/B.h"))
    tree.write("src/platform/linux/b/B.h", include("platform/linux/c/C.h"))
    tree.write("src/platform/linux/c/C.h", include("platform/linux/a/A.h"))
    assert any("include each other" in line for line in tree.check(CHECK))


def test_the_core_does_not_see_qt(tree):
    tree.write("src/CMakeLists.txt", "brimwick_room_sources(core model)\n")
    tree.write("src/model/Model.h", "#include <string>\n#include <QString>\n")
    assert tree.check(CHECK) == ["src/model/Model.h:2: the core includes <QString>, and must not see Qt"]


def test_a_room_on_two_floors_is_core_as_far_as_the_core_compiles_it(tree):
    tree.write(
        "src/CMakeLists.txt",
        "brimwick_room_sources(core picker ONLY Geometry.cpp)\n"
        "brimwick_room_sources(core feedback EXCEPT Panel.cpp)\n"
        "brimwick_room_sources(ui picker EXCEPT Geometry.cpp)\n",
    )
    for path in ("picker/Geometry.h", "picker/Window.h", "feedback/Panel.cpp", "feedback/Sounds.cpp"):
        tree.write(f"src/{path}", "#include <QtGlobal>\n")
    assert [line.split(":")[0] for line in tree.check(CHECK)] == [
        "src/feedback/Sounds.cpp",
        "src/picker/Geometry.h",
    ]


def test_an_include_in_quotes_is_a_path_below_the_sources(tree):
    tree.write("src/model/Mode.h", "")
    tree.write("src/model/Model.cpp", '#include "Mode.h"\n')
    assert tree.check(CHECK) == ['src/model/Model.cpp:1: "Mode.h" is no path below src/']


def test_a_folder_that_is_no_room_is_refused(tree):
    tree.write("src/helpers/Helper.h", "")
    assert tree.check(CHECK) == ["src/helpers/Helper.h:1: stands in no known room"]
