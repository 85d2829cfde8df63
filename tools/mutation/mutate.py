#!/usr/bin/env python3
"""Mutation run: do the suites notice the faults a user or a driver writer would meet?

Applies the faults of faults.txt to the product one at a time, rebuilds the product libraries and
programs incrementally, runs the test programs the fault names and restores the file. A fault is
"caught" when one of those programs fails (or crashes, or hangs past the time limit), "missed" when
all of them pass, "build-error" when the faulty code does not compile.

The test programs are built once, from the unchanged tree, before the first fault; during the run
only the product is rebuilt (the suites link the product's shared libraries and start parvex-sim
and parvex-cli from the build tree), and the fault's test programs are linked again, which takes
in a fault of the application's static library (app/). Their sources do not change during the
run, so the suites under test are exactly the ones of the tree the run started on.

Not part of CI: it takes a while, and it is meant to be run before and after a change to the suites.

  nice -n 10 tools/mutation/mutate.py --report mutation-before.md
  tools/mutation/mutate.py --compare mutation-before.md mutation-after.md

Builds use one job (-j1): the run shares the machine with people who are compiling.
"""

import argparse
import os
import re
import signal
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
# Everything a fault can reach: the shared libraries the suites link and the programs they start.
PRODUCT_TARGETS = ["ParvexTech", "Parvex", "ParvexSimDriver", "parvex-sim", "parvex-cli"]


class Fault:
    def __init__(self, aId, aWhat):
        self.id = aId
        self.what = aWhat
        self.file = None
        self.tests = []
        self.original = None
        self.replacement = None


def Unescape(aText):
    return aText.replace("\\n", "\n").replace("\\t", "\t")


def ParseFaults(aPath):
    lFaults = []
    lCurrent = None
    for lNumber, lLine in enumerate(Path(aPath).read_text().splitlines(), 1):
        if not lLine.strip() or lLine.startswith("#"):
            continue
        lHeader = re.match(r"^\[([\w-]+)\]\s*(.*)$", lLine)
        if lHeader:
            lCurrent = Fault(lHeader.group(1), lHeader.group(2))
            lFaults.append(lCurrent)
        elif lCurrent is None:
            sys.exit(f"{aPath}:{lNumber}: text before the first [id]")
        elif lLine.startswith("file:"):
            lCurrent.file = lLine[5:].strip()
        elif lLine.startswith("tests:"):
            lCurrent.tests = lLine[6:].split()
        elif lLine.startswith("- "):
            lCurrent.original = Unescape(lLine[2:])
        elif lLine.startswith("+ "):
            lCurrent.replacement = Unescape(lLine[2:])
        else:
            sys.exit(f"{aPath}:{lNumber}: cannot read: {lLine}")
    lSeen = set()
    for f in lFaults:
        if f.id in lSeen:
            sys.exit(f"fault {f.id} is listed twice")
        lSeen.add(f.id)
        if not (f.file and f.tests and f.original is not None and f.replacement is not None):
            sys.exit(f"fault {f.id} lacks file, tests, original or replacement")
        if f.file.startswith("tests/") or not f.file.endswith(".cpp"):
            sys.exit(f"fault {f.id}: faults go into product .cpp files, not {f.file}")
        lText = (ROOT / f.file).read_text()
        lCount = lText.count(f.original)
        if lCount != 1:
            sys.exit(f"fault {f.id}: the original text occurs {lCount} times in {f.file}, not once")
    return lFaults


def FindTestPrograms(aBuild):
    lPrograms = {}
    for lPath in (aBuild / "tests").rglob("*"):
        if lPath.is_file() and os.access(lPath, os.X_OK) and lPath.name.startswith("test_"):
            lPrograms[lPath.name] = lPath
    return lPrograms


def Build(aBuild, aTargets, aLog):
    lCommand = ["nice", "-n", "10", "cmake", "--build", str(aBuild), "-j1", "--target", *aTargets]
    lResult = subprocess.run(lCommand, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    aLog.write(lResult.stdout[-4000:])
    return lResult.returncode == 0


def RunTests(aPrograms, aNames, aTimeout, aLog):
    """The names of the programs that failed; a missing program stops the run."""
    lEnvironment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    lFailed = []
    for lName in aNames:
        lProgram = aPrograms.get(lName)
        if lProgram is None:
            sys.exit(f"no test program {lName} in the build")
        try:
            lResult = subprocess.run([str(lProgram), "--gtest_brief=1"], cwd=lProgram.parent, env=lEnvironment,
                                     stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                                     errors="replace", timeout=aTimeout, start_new_session=True)
            lOk = lResult.returncode == 0
            lOutput = lResult.stdout
        except subprocess.TimeoutExpired as e:
            lOk = False
            lOutput = (e.stdout or b"").decode(errors="replace") if isinstance(e.stdout, bytes) else (e.stdout or "")
            lOutput += f"\n(time limit of {aTimeout} s reached)\n"
        lFailures = [l for l in lOutput.splitlines() if "[  FAILED  ]" in l][:60]
        aLog.write(f"--- {lName}: {'pass' if lOk else 'FAIL'}\n" + "\n".join(lFailures) + "\n")
        if not lOk:
            lFailed.append(lName)
            # One suite noticing is enough: the others need not run.
            break
    return lFailed


def WriteReport(aPath, aRows, aTitle):
    lCaught = sum(1 for r in aRows if r[1] == "caught")
    lMissed = [r for r in aRows if r[1] == "missed"]
    lBroken = [r for r in aRows if r[1] == "build-error"]
    with open(aPath, "w") as lOut:
        lOut.write(f"# {aTitle}\n\n")
        lOut.write(f"{len(aRows)} faults: {lCaught} caught, {len(lMissed)} missed, {len(lBroken)} did not build.\n\n")
        lOut.write("| fault | result | noticed by | seconds | what |\n|---|---|---|---|---|\n")
        for r in aRows:
            lOut.write(f"| {r[0]} | {r[1]} | {r[2]} | {r[3]:.0f} | {r[4]} |\n")
        if lMissed:
            lOut.write("\nMissed:\n\n")
            for r in lMissed:
                lOut.write(f"- {r[0]}: {r[4]}\n")


def ReadReport(aPath):
    lRows = {}
    for lLine in Path(aPath).read_text().splitlines():
        lCells = [c.strip() for c in lLine.strip().strip("|").split("|")]
        if len(lCells) == 5 and lCells[1] in ("caught", "missed", "build-error"):
            lRows[lCells[0]] = lCells[1]
    return lRows


def Compare(aBefore, aAfter):
    lBefore = ReadReport(aBefore)
    lAfter = ReadReport(aAfter)
    lLost = [f for f, r in lBefore.items() if r == "caught" and lAfter.get(f) != "caught"]
    lGained = [f for f, r in lAfter.items() if r == "caught" and lBefore.get(f) == "missed"]
    print(f"caught before: {sum(r == 'caught' for r in lBefore.values())} of {len(lBefore)}")
    print(f"caught after:  {sum(r == 'caught' for r in lAfter.values())} of {len(lAfter)}")
    for f in lLost:
        print(f"no longer caught: {f} ({lAfter.get(f, 'not run')})")
    for f in lGained:
        print(f"newly caught: {f}")
    return 1 if lLost else 0


def main():
    lParser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    lParser.add_argument("--faults", default=str(Path(__file__).with_name("faults.txt")))
    lParser.add_argument("--build", default=str(ROOT / "build" / "default"))
    lParser.add_argument("--report", default="mutation-report.md")
    lParser.add_argument("--only", nargs="*", help="run these fault ids only")
    lParser.add_argument("--timeout", type=int, default=120, help="seconds one test program may take")
    lParser.add_argument("--check", action="store_true", help="only check that every fault applies")
    lParser.add_argument("--no-baseline", action="store_true",
                         help="skip running the suites on the unchanged product (when ctest just passed)")
    lParser.add_argument("--compare", nargs=2, metavar=("BEFORE", "AFTER"),
                         help="list the faults a BEFORE report caught and an AFTER report did not")
    lArguments = lParser.parse_args()

    if lArguments.compare:
        sys.exit(Compare(*lArguments.compare))

    lFaults = ParseFaults(lArguments.faults)
    if lArguments.only:
        # In the order given: a run cut short then has touched every subsystem.
        lById = {f.id: f for f in lFaults}
        lUnknown = [i for i in lArguments.only if i not in lById]
        if lUnknown:
            sys.exit(f"unknown faults: {' '.join(lUnknown)}")
        lFaults = [lById[i] for i in lArguments.only]
    print(f"{len(lFaults)} faults in {len(set(f.file for f in lFaults))} files")
    if lArguments.check:
        return

    lBuild = Path(lArguments.build)
    lLog = open(Path(lArguments.report).with_suffix(".log"), "w", buffering=1)
    lSuites = sorted(set(t for f in lFaults for t in f.tests))
    lLog.write("== building the suites and the unchanged product\n")
    if not Build(lBuild, PRODUCT_TARGETS + lSuites, lLog):
        sys.exit("the unchanged tree does not build")
    lPrograms = FindTestPrograms(lBuild)
    lLog.write("== the suites on the unchanged product\n")
    for lName in [] if lArguments.no_baseline else lSuites:
        if RunTests(lPrograms, [lName], lArguments.timeout, lLog):
            sys.exit(f"{lName} fails on the unchanged product; a mutation run would mean nothing")

    lRows = []
    lRestore = {}

    def Restore(*_):
        for lPath, lText in lRestore.items():
            lPath.write_text(lText)
        lRestore.clear()

    signal.signal(signal.SIGTERM, lambda *a: (Restore(), sys.exit(1)))
    try:
        for lIndex, f in enumerate(lFaults, 1):
            lPath = ROOT / f.file
            lText = lPath.read_text()
            lRestore[lPath] = lText
            lPath.write_text(lText.replace(f.original, f.replacement, 1))
            lStart = time.monotonic()
            lLog.write(f"== {f.id}\n")
            lNoticed = ""
            # The fault's suites too: those linking the application's static library must be linked
            # again to take in a fault of it (their own sources are unchanged: nothing compiles).
            if not Build(lBuild, PRODUCT_TARGETS + f.tests, lLog):
                lResult = "build-error"
            else:
                lFailed = RunTests(lPrograms, f.tests, lArguments.timeout, lLog)
                lResult = "caught" if lFailed else "missed"
                lNoticed = " ".join(lFailed)
            Restore()
            lRows.append((f.id, lResult, lNoticed, time.monotonic() - lStart, f.what))
            print(f"[{lIndex}/{len(lFaults)}] {f.id}: {lResult} {lNoticed}", flush=True)
            lLog.flush()
            WriteReport(lArguments.report, lRows, "Mutation run (in progress)")
    finally:
        Restore()
        # Leaves the build as the unchanged tree has it.
        Build(lBuild, PRODUCT_TARGETS + lSuites, lLog)
    WriteReport(lArguments.report, lRows, f"Mutation run of {time.strftime('%Y-%m-%d %H:%M')}")


if __name__ == "__main__":
    main()
