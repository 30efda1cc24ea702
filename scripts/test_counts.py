#!/usr/bin/env python3
"""Counts one ctest run's results for scripts/test.sh: prints "PASSED FAILED SKIPPED".

    test_counts.py CTEST_LOG RESULTS_DIR

A GoogleTest program runs whole as one ctest test and leaves a JSON report in RESULTS_DIR
named for it: its test cases are counted one by one. Any other test (an end-to-end script),
and a program that died before writing its report, counts as one.
"""
import json
import os
import re
import sys

LINE = re.compile(r"Test\s+#\d+: (\S+) \.+\s*(\*+)?(\w+)")


def program_counts(path):
    with open(path) as f:
        report = json.load(f)
    failed = report.get("failures", 0) + report.get("errors", 0)
    skipped = sum(1 for suite in report.get("testsuites", []) for case in suite.get("testsuite", [])
                  if case.get("result") == "SKIPPED")
    return report.get("tests", 0) - failed - skipped, failed, skipped


def main():
    log, results = sys.argv[1], sys.argv[2]
    passed = failed = skipped = 0
    for name, _, status in LINE.findall(open(log, errors="replace").read()):
        report = os.path.join(results, name + ".json")
        if status == "Passed" and os.path.exists(report):
            p, f, s = program_counts(report)
        elif status == "Passed":
            p, f, s = 1, 0, 0
        elif status in ("Skipped", "Not"):  # "Not Run" when a skip code is returned
            p, f, s = 0, 0, 1
        elif os.path.exists(report):
            p, f, s = program_counts(report)
            f = max(f, 1)
        else:
            p, f, s = 0, 1, 0
        passed, failed, skipped = passed + p, failed + f, skipped + s
    print(passed, failed, skipped)


if __name__ == "__main__":
    main()
