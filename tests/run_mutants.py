"""Plants the faults of tests/mutants.tsv one at a time and says which of them no test notices.

All faults are built at once into a copy of the tree, each behind a switch that the environment variable
LUMOPLOT_MUTANT turns on, so that a fault costs no compilation. See docs/testing.md.
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

    def apply(self, text, plain):
        whole = self.before + self.original + self.behind
        if text.count(whole) != 1:
            raise SystemExit(f"{self.file}: mutant {self.id}: '{whole}' occurs {text.count(whole)} times")
        return text.replace(whole, self.before + (self.fault if plain else self.switched()) + self.behind)

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
        for mutant in (m for m in mutants if m.file == file):
            text = mutant.apply(text, plain=False)
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


def build(tree, targets):
    output = tree / "build"
    subprocess.run(["cmake", "-S", tree, "-B", output, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=",
                    "-DLUMOPLOT_UNITY=ON", "-DLUMOPLOT_BENCH=OFF", "--log-level=ERROR"], check=True,
                   stdout=subprocess.DEVNULL)
    result = subprocess.run(["ninja", "-C", output, *targets], text=True, stdout=subprocess.PIPE)
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


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("numbers", nargs="*", type=int, help="only these faults")
    parser.add_argument("--scratch", type=pathlib.Path, default=ROOT / "build" / "mutants")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--limit", type=float, default=120, help="seconds for one run of a test program")
    parser.add_argument("--skip-clean", action="store_true", help="do not run the tests without a fault first")
    arguments = parser.parse_args()

    table = read_table(ROOT / "tests" / "mutants.tsv")
    tree = arguments.scratch
    tree.mkdir(parents=True, exist_ok=True)
    header = tree / "lumoplot_mutant.h"
    write_if_changed(header, SWITCH)
    copy_tree(tree, {mutant.file for mutant in table})
    plant(table, tree, header)
    programs = sorted({"test_" + test.partition(":")[0] for mutant in table for test in mutant.tests.split()})
    folder = build(tree, programs) / "bin"
    if not arguments.skip_clean:
        check_clean(folder, programs, arguments.jobs)

    chosen = [mutant for mutant in table if not arguments.numbers or mutant.id in arguments.numbers]
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
