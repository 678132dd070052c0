import subprocess

from conftest import SCRIPTS


def count(*arguments):
    return subprocess.run([SCRIPTS / "count-results", *arguments], capture_output=True, text=True, check=True).stdout


def results(tmp_path, cases):
    file = tmp_path / "results.xml"
    file.write_text(f"<testsuites><testsuite>{cases}</testsuite></testsuites>")
    return file


def test_each_kind_of_result_is_counted_once(tmp_path):
    file = results(
        tmp_path,
        '<testcase name="a" status="run" result="completed"/>'
        '<testcase name="b"><failure message="no"/><failure message="neither"/></testcase>'
        '<testcase name="c"><error/></testcase>'
        '<testcase name="d"><skipped/></testcase>'
        '<testcase name="e" status="notrun" result="suppressed"/>',
    )
    assert count(file) == "1 2 2\n"


def test_results_of_several_files_are_added_up(tmp_path):
    file = results(tmp_path, '<testcase name="a"/>')
    assert count(file, file) == "2 0 0\n"


def test_a_program_that_died_before_writing_its_results_is_a_failure(tmp_path):
    cut_short = tmp_path / "cut.xml"
    cut_short.write_text("<testsuites><testsuite><testcase name='a'/>")
    assert count(tmp_path / "missing.xml", cut_short) == "0 2 0\n"


def test_a_failure_is_told_with_its_reason(tmp_path):
    file = results(tmp_path, '<testcase classname="Box" name="Opens"><failure message="m">it stuck</failure></testcase>')
    told = count("--failures", file)
    assert "Box.Opens" in told and "it stuck" in told
