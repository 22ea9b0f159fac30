#!/usr/bin/env python3
"""Mutation runs: how many small faults in a module do its tests notice?

Each mutant changes one spot of one product source file (a comparison flipped, && and ||
swapped, true and false swapped, a +1 or -1 turned round, a negation dropped, a call statement
deleted). The script applies one mutant at a time, rebuilds only the test executables of the
module (ninja, in an already configured build folder), runs them with a time limit, and puts
the file back. A mutant is killed when a test fails, crashes or runs out of time; one that
does not compile is left out of the score. Each mutant's line names the tests that failed,
so a run also shows which tests are the only ones to notice a fault. docs/testing.md says how
to compare the tests of two commits.

The mutants of a module are all candidate spots, sorted, then sampled with a fixed seed: the
same module, count and seed give the same list as long as the product sources stay the same,
so a run before and after changing the tests compares like with like.

    nice scripts/mutate.py --module adm --count 40            # build/native, seed 15
    nice scripts/mutate.py --module adm --list                # only print the sampled mutants
    nice scripts/mutate.py --module adm --build build/before  # another build folder

Run it on a clean checkout (the script writes the product file and restores it, also on
Ctrl-C); the results go to stdout, one line per mutant and a summary line at the end.
"""

import argparse
import glob
import os
import random
import re
import subprocess
import sys
import time

# module: (product sources, test executables that exercise them)
MODULES = {
    "adm": (["core/adm/*.cpp"], ["adm_tests", "template_load_tests", "control_tests"]),
    "registry": (["core/registry/*.cpp"], ["registry_tests", "adm_tests", "control_tests"]),
    "engine": (["engine/*.cpp"], ["engine_tests", "template_load_tests"]),
    "loader": (["loader/*.cpp"], ["loader_tests", "loader_action_tests", "template_load_tests"]),
    "reg": (["profiles/reg/*.cpp"], ["reg_profile_tests", "profile_save_tests", "control_tests"]),
    "pol": (["profiles/pol/*.cpp"], ["pol_profile_tests", "profile_save_tests", "control_tests"]),
    "platform": (["platform/posix/ozHiveRegistry.cpp", "platform/posix/ozPrivateProfile.cpp"],
                 ["platform_tests", "profile_tests", "registry_tests"]),
    "tree": (["core/tree/*.cpp"], ["tree_tests", "registry_tests", "adm_tests"]),
    "control": (["control/*.cpp"], ["control_tests", "profile_save_tests"]),
    "hosts": (["hosts/ozadm/*.cpp"], ["ozadm_host_tests", "ozadm_command_tests"]),
}
# Libraries loaded at run time, which a mutant in their sources must rebuild as well.
LOADED_LIBRARIES = {"reg": ["ozRegREG"], "pol": ["ozRegPOL"]}

# (name, pattern, replacement); patterns see one code line without its comment.
OPERATORS = [
    ("==", r"==", "!="),
    ("!=", r"!=", "=="),
    ("<=", r"<=", "<"),
    (">=", r">=", ">"),
    ("<", r"(?<=\s)<(?=\s)", "<="),
    (">", r"(?<=\s)>(?=\s)", ">="),
    ("&&", r"&&", "||"),
    ("||", r"\|\|", "&&"),
    ("true", r"\btrue\b", "false"),
    ("false", r"\bfalse\b", "true"),
    ("+1", r"\+ 1\b", "- 1"),
    ("-1", r"(?<=\w|\)) - 1\b", " + 1"),
    ("!", r"(?<=\()!(?=[\w(])", ""),
]
CALL_STATEMENT = re.compile(r"^\s*[\w:.\->\[\]]+\(.*\);\s*$")


def code_part(line):
    """The line without a trailing // comment and without string literals' insides."""
    cut = line.split("//", 1)[0]
    return re.sub(r'"(?:[^"\\]|\\.)*"', lambda m: '"' + "_" * (len(m.group(0)) - 2) + '"', cut)


def candidates(root, module):
    spots = []
    for pattern in MODULES[module][0]:
        for path in sorted(glob.glob(os.path.join(root, pattern))):
            rel = os.path.relpath(path, root)
            with open(path, encoding="utf-8", errors="surrogateescape") as f:
                lines = f.read().split("\n")
            for number, line in enumerate(lines):
                stripped = line.strip()
                if not stripped or stripped.startswith(("#", "//", "*", "/*")):
                    continue
                code = code_part(line)
                if "template <" in code or "template<" in code:
                    continue
                for name, regex, replacement in OPERATORS:
                    for match in re.finditer(regex, code):
                        spots.append((rel, number, match.start(), match.end(), name, replacement))
                if CALL_STATEMENT.match(code) and not stripped.startswith("return"):
                    spots.append((rel, number, 0, len(line), "delete call", ";"))
    return spots


def apply(lines, spot):
    _, number, start, end, _, replacement = spot
    mutated = list(lines)
    line = lines[number]
    mutated[number] = line[:start] + replacement + line[end:] if replacement != ";" else ";"
    return mutated


def find_executable(build, name):
    hits = glob.glob(os.path.join(build, "**", name), recursive=True)
    hits = [h for h in hits if os.path.isfile(h) and os.access(h, os.X_OK)]
    if not hits:
        sys.exit(f"no executable {name} in {build}: build it first")
    return os.path.abspath(hits[0])


def run_tests(executables, timeout):
    """'survived', or 'killed' followed by the failing tests (or executables) in brackets."""
    failed = []
    for exe in executables:
        name = os.path.basename(exe)
        try:
            result = subprocess.run([exe, "--gtest_brief=1"], cwd=os.path.dirname(exe),
                                    stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                    timeout=timeout, text=True, errors="replace")
        except subprocess.TimeoutExpired:
            failed.append(f"{name}: timeout")
            break  # killed already; the other executables would likely hang as well
        if result.returncode != 0:
            tests = sorted(set(re.findall(r"^\[  FAILED  \] (\w+\.\w+)", result.stdout, re.M)))
            failed.append(f"{name}: " + (" ".join(tests) if tests else f"exit {result.returncode}"))
    return f"killed [{'; '.join(failed)}]" if failed else "survived"


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--module", required=True, choices=sorted(MODULES))
    parser.add_argument("--count", type=int, default=40)
    parser.add_argument("--seed", type=int, default=15)
    parser.add_argument("--build", default="build/native")
    parser.add_argument("--source", default=".", help="source folder of that build")
    parser.add_argument("--timeout", type=int, default=30, help="seconds per test executable")
    parser.add_argument("--list", action="store_true")
    args = parser.parse_args()

    spots = candidates(args.source, args.module)
    chosen = sorted(random.Random(args.seed).sample(spots, min(args.count, len(spots))))
    if args.list:
        for rel, number, start, _, name, _ in chosen:
            print(f"{rel}:{number + 1}:{start + 1} {name}")
        return

    targets = MODULES[args.module][1] + LOADED_LIBRARIES.get(args.module, [])
    subprocess.run(["ninja", "-C", args.build] + targets, check=True, stdout=subprocess.DEVNULL)
    executables = [find_executable(args.build, name) for name in MODULES[args.module][1]]
    if run_tests(executables, args.timeout) != "survived":
        sys.exit("the unmutated tests fail: nothing to measure")

    killed = survived = invalid = 0
    for spot in chosen:
        rel, number, start, _, name, _ = spot
        path = os.path.join(args.source, rel)
        with open(path, encoding="utf-8", errors="surrogateescape") as f:
            original = f.read()
        try:
            with open(path, "w", encoding="utf-8", errors="surrogateescape") as f:
                f.write("\n".join(apply(original.split("\n"), spot)))
            began = time.time()
            build = subprocess.run(["ninja", "-C", args.build] + targets,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            if build.returncode != 0:
                outcome = "does not compile"
                invalid += 1
            else:
                outcome = run_tests(executables, args.timeout)
                if outcome == "survived":
                    survived += 1
                else:
                    killed += 1
        finally:
            with open(path, "w", encoding="utf-8", errors="surrogateescape") as f:
                f.write(original)
        print(f"{rel}:{number + 1}:{start + 1} {name}: {outcome} ({time.time() - began:.0f} s)",
              flush=True)

    subprocess.run(["ninja", "-C", args.build] + targets, stdout=subprocess.DEVNULL)
    scored = killed + survived
    score = 100.0 * killed / scored if scored else 0.0
    print(f"{args.module}: {killed} killed, {survived} survived, {invalid} not compiling; "
          f"score {score:.0f}% of {scored}")


if __name__ == "__main__":
    main()
