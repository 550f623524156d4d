"""speed.py FOLDER: prints how many of the sections in the folder's files become objects in a second, a row for each table."""

import subprocess
import sys
import time
from pathlib import Path

import quor_isdbt

SECONDS = 0.5
AT_ONCE = 2000  # an inspection has a beginning and an end, too


def inspected(section):
    """How many a second, of so many that come one after the other."""
    begin, count = time.perf_counter(), 0
    while time.perf_counter() - begin < SECONDS:
        count += sum(item["type"] == "section" for item in quor_isdbt.inspect(hex=section * AT_ONCE))
    return f"{count / (time.perf_counter() - begin):,.0f}"


def parsed(section):
    """The same as objects of the library's classes."""
    begin, count = time.perf_counter(), 0
    while time.perf_counter() - begin < SECONDS:
        for _ in range(AT_ONCE):
            quor_isdbt.parse_section(section)
        count += AT_ONCE
    return f"{count / (time.perf_counter() - begin):,.0f}"


def by_aribts(file):
    answer = subprocess.run(["node", Path(__file__).with_name("aribts.js"), file, str(SECONDS)], stdout=subprocess.PIPE,
                            stderr=subprocess.DEVNULL, text=True)
    return answer.stdout.strip() if answer.returncode == 0 else "-"


def main():
    longest = {}
    for file in Path(sys.argv[1]).glob("*.sec"):
        section = file.read_bytes()
        table = next(quor_isdbt.inspect(hex=section))["table"]
        longest[table] = max(longest.get(table, (b"", file)), (section, file), key=lambda each: (len(each[0]), each[1]))
    print("sections a second   bytes   parse_section()   inspect()    aribts")
    for table, (section, file) in sorted(longest.items()):
        print(f"{table:17} {len(section):7} {parsed(section):>17} {inspected(section):>11} {by_aribts(file):>9}")


main()
