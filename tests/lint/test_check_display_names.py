import pytest

CHECK = "check-display-names"


@pytest.mark.parametrize(
    "word", ["xcb_connection_t", "X11", "Xlib", "xkbcommon", "onWayland", "Xvfb", "libX11", "XTest", "EWMH"]
)
def test_no_file_outside_the_platform_names_a_display_system(tree, word):
    tree.write("src/picker/Window.cpp", f"// first\nauto window = {word};\n")
    found = tree.check(CHECK)
    assert len(found) == 1 and found[0].startswith("src/picker/Window.cpp:2: names a display system")


def test_the_platform_may_name_them(tree):
    tree.write("src/platform/linux/x11/XcbConnection.h", "xcb_connection_t* connection; // X11 and Wayland\n")
    tree.write("src/CMakeLists.txt", "target_link_libraries(brimwick_linux PRIVATE PkgConfig::XCB)\n")
    assert tree.check(CHECK) == []


def test_the_name_of_a_file_counts_too(tree):
    tree.write("src/picker/X11Window.h", "")
    assert len(tree.check(CHECK)) == 1


@pytest.mark.parametrize("text", ["constexpr int mask = 0x11;", "constexpr int page = 0x110000;", "int flexible;"])
def test_numbers_and_common_words_are_no_display_system(tree, text):
    tree.write("src/model/Keys.h", text + "\n")
    assert tree.check(CHECK) == []


@pytest.mark.parametrize("article", ["the ", "The "])
def test_no_source_cites_a_document(tree, article):
    tree.write("src/platform/linux/x11/Keys.h", f"// as {article}spec asks\n")
    assert len(tree.check(CHECK)) == 1
