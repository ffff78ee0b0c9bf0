"""Plants the faults of tests/mutants.tsv one at a time and says which of them no test notices.

All faults are built at once into a copy of the tree, each behind a switch that the environment variable
LUMOPLOT_MUTANT turns on, so that a fault costs no compilation. The copy has a build folder of its own, with
little optimisation. See docs/testing.md.
"""
import argparse
import concurrent.futures
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
SWITCH = """#pragma once
#include <cstdlib>
#include <type_traits>
inline int LumoplotActiveMutant() {
    static const int active = [] {
        const char* text = std::getenv("LUMOPLOT_MUTANT");
        return text ? std::atoi(text) : 0;
    }();
    return active;
}
constexpr bool LumoplotMutant(int id) {
    return !std::is_constant_evaluated() && LumoplotActiveMutant() == id;
}
"""


class Mutant:
    """A line of the table. `place` is text that occurs once in the file; the fault replaces the part of it between
    « and », or all of it where there are no such marks. ⏎ stands for a line end."""

    def __init__(self, line):
        number, self.file, place, fault, self.tests, self.remark = (line.split("\t") + [""])[:6]
        self.id = int(number)
        self.place, self.fault = place.replace("⏎", "\n"), fault.replace("⏎", "\n")
        before, opening, rest = self.place.partition("«")
        if opening:
            self.before, (self.original, _, self.behind) = before, rest.partition("»")
        else:
            self.before, self.original, self.behind = "", self.place, ""

    def switched(self):
        condition = f"LumoplotMutant({self.id})"
        if self.original.rstrip().endswith(";"):
            return f"if ({condition}) {{ {self.fault} }} else {{ {self.original} }}"
        return f"({condition} ? ({self.fault}) : ({self.original}))"

    def whole(self):
        return self.before + self.original + self.behind

    def edit(self, text):
        """Where the original begins and ends in `text`, and what comes there."""
        begin = text.index(self.whole()) + len(self.before)
        return begin, begin + len(self.original), self.switched()

    def misfit(self):
        """Why it can not be planted; empty where it can."""
        path = ROOT / self.file
        count = path.read_text(encoding="utf-8").count(self.whole()) if path.exists() else 0
        return "" if count == 1 else f"{self.id} {self.file}: '{self.whole()}' occurs {count} times"

    def __str__(self):
        return f"{self.id} {self.file}: {self.original.strip()} -> {self.fault.strip() or 'nothing'}"


def read_table(path):
    lines = [line for line in path.read_text(encoding="utf-8").splitlines() if line and not line.startswith("#")]
    mutants = [Mutant(line) for line in lines]
    assert len({mutant.id for mutant in mutants}) == len(mutants), "two mutants with one number"
    return mutants


def plant(mutants, tree, header):
    """Writes the files with the switches; files that stay as they are keep their time, so builds stay small."""
    for file in sorted({mutant.file for mutant in mutants}):
        text = (ROOT / file).read_text(encoding="utf-8")
        edits = sorted(m.edit(text) for m in mutants if m.file == file)
        assert all(a[1] <= b[0] for a, b in zip(edits, edits[1:])), f"two faults in one place of {file}"
        for begin, end, switched in reversed(edits):
            text = text[:begin] + switched + text[end:]
        write_if_changed(tree / file, f'#include "{header}"\n{text}')


def write_if_changed(path, text):
    if not path.exists() or path.read_text(encoding="utf-8") != text:
        path.write_text(text, encoding="utf-8")


def copy_tree(tree, mutated):
    """The tracked files and the new ones, without those that the faults are planted in."""
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, check=True, text=True,
                            stdout=subprocess.PIPE).stdout.splitlines()
    files = {file for file in listed if (ROOT / file).is_file()}
    for file in files - mutated:
        target = tree / file
        if target.exists() and target.read_bytes() == (ROOT / file).read_bytes():
            continue
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy2(ROOT / file, target)
        target.touch()
    for folder in ("src", "host", "cli", "tests"):
        for old in (tree / folder).rglob("*"):
            if old.is_file() and old.relative_to(tree).as_posix() not in files:
                old.unlink()


def build(tree, targets, jobs):
    output = tree / "build" / "faults"  # as deep as other builds, where the host looks for its examples
    subprocess.run(["cmake", "-S", tree, "-B", output, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=",
                    "-DCMAKE_CXX_FLAGS=-O1", "-DLUMOPLOT_UNITY=ON",
                    "--log-level=ERROR"], check=True,
                   stdout=subprocess.DEVNULL)
    result = subprocess.run(["ninja", "-k", "0", "-C", output, "-j", str(jobs), *targets], text=True, stdout=subprocess.PIPE)
    if result.returncode != 0:
        print("\n".join(line for line in result.stdout.splitlines() if re.search("error|FAILED", line)))
        raise SystemExit("the tree with the switches does not build")
    return output


def run_tests(folder, program, pattern, mutant, limit):
    """What became of the run: 'passed', 'failed' or 'hung'."""
    home = pathlib.Path(tempfile.mkdtemp())
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8", LUMOPLOT_MUTANT=str(mutant),
                       HOME=str(home), XDG_CONFIG_HOME=str(home))
    try:
        result = subprocess.run([folder / program, "--gtest_fail_fast", "--gtest_brief=1",
                                 f"--gtest_filter={pattern or '*'}"], cwd=home, env=environment, timeout=limit,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    except subprocess.TimeoutExpired:
        return "hung"
    finally:
        shutil.rmtree(home, ignore_errors=True)
    return "passed" if result.returncode == 0 else "failed"


def try_mutant(folder, mutant, limit):
    for test in mutant.tests.split():
        program, _, pattern = test.partition(":")
        outcome = run_tests(folder, "test_" + program, pattern, mutant.id, limit)
        if outcome != "passed":
            return mutant, f"{outcome} {test}"
    return mutant, "survived"


def check_clean(folder, programs, jobs):
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        outcomes = pool.map(lambda program: run_tests(folder, program, "", 0, 900), programs)
        broken = [program for program, outcome in zip(programs, outcomes) if outcome != "passed"]
    if broken:
        raise SystemExit(f"without any fault these fail already: {', '.join(broken)}")


def parsed_numbers(text):
    """The numbers of '1-40,55'."""
    numbers = set()
    for part in text.split(","):
        first, _, last = part.partition("-")
        numbers.update(range(int(first), int(last or first) + 1))
    return numbers


def chosen_of(table, arguments):
    """Those with a number that was asked for and in a folder that was; all where nothing was."""
    numbers = set().union(*(parsed_numbers(text) for text in [*arguments.numbers, *arguments.only]))
    folders = tuple(f"{prefix}{layer}/" for layer in arguments.layer for prefix in ("", "src/"))
    return [mutant for mutant in table
            if (not numbers or mutant.id in numbers) and (not folders or mutant.file.startswith(folders))]


def parsed_arguments():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("numbers", nargs="*", help="only these faults: 12, 1-40 or 1-40,55")
    parser.add_argument("--only", action="append", default=[], metavar="NUMBERS", help="the same")
    parser.add_argument("--layer", action="append", default=[], metavar="FOLDER",
                        help="only faults in this folder: expr, graph/model, host")
    parser.add_argument("--check", action="store_true", help="see that every fault can be planted, and no more")
    parser.add_argument("--scratch", type=pathlib.Path, default=ROOT / "build" / "mutants")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--limit", type=float, default=120, help="seconds for one run of a test program")
    parser.add_argument("--skip-clean", action="store_true", help="do not run the tests without a fault first")
    return parser.parse_args()


def built_programs(table, chosen, arguments):
    """The folder with the test programs that the chosen faults name; every fault of the table is in them, so that
    choosing others does not compile anything again."""
    tree = arguments.scratch.resolve()
    tree.mkdir(parents=True, exist_ok=True)
    header = tree / "lumoplot_mutant.h"
    write_if_changed(header, SWITCH)
    copy_tree(tree, {mutant.file for mutant in table})
    plant(table, tree, header)
    programs = sorted({"test_" + test.partition(":")[0] for mutant in chosen for test in mutant.tests.split()})
    folder = build(tree, programs, arguments.jobs) / "bin"
    if not arguments.skip_clean:
        check_clean(folder, programs, arguments.jobs)
    return folder


def main():
    arguments = parsed_arguments()
    table = read_table(ROOT / "tests" / "mutants.tsv")
    misfits = [misfit for misfit in (mutant.misfit() for mutant in table) if misfit]
    if misfits or arguments.check:
        print("\n".join([*misfits, f"{len(table)} faults, {len(misfits)} can not be planted"]))
        return 1 if misfits else 0
    chosen = chosen_of(table, arguments)
    folder = built_programs(table, chosen, arguments)
    start = time.time()
    survivors = []
    with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as pool:
        for mutant, outcome in pool.map(lambda m: try_mutant(folder, m, arguments.limit), chosen):
            if outcome == "survived":
                survivors.append(mutant)
            print(f"{outcome:<40} {mutant}", flush=True)
    print(f"{len(chosen)} faults, {len(survivors)} survived, {time.time() - start:.0f} s")
    for mutant in survivors:
        print(f"  {mutant}  [{mutant.remark or 'no reason given'}]")
    allowed = len(chosen) * 0.05
    return 0 if len(survivors) <= allowed and all(mutant.remark for mutant in survivors) else 1


if __name__ == "__main__":
    sys.exit(main())
