import contextlib
import functools
import http.server
import io
import os
import pathlib
import re
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import threading
import time
import unittest
import unittest.mock

import cloudpickle
import dask
import distributed
from quor_isdbt.archive import Progress, archive, take_lines
from quor_isdbt.archive.reading import read

MAKE_SAMPLE = os.environ["MAKE_SAMPLE"]
INSPECT = os.environ["INSPECT_PROGRAM"]
PAGE = pathlib.Path(__file__).parents[2] / "docs" / "archive.md"
COMMAND = [sys.executable, "-m", "quor_isdbt.archive"]

# All of a dataset that is of the recordings, whatever their number in it.
TABLES = ("recordings", "failures", "sections", "versions", "intervals", "faults", "alarms", "applications")


def make(path, *faults, seconds="5.5"):
    options = [word for fault in faults for word in ("--fault", fault)]
    subprocess.run([MAKE_SAMPLE, path, "--seconds", seconds, "--bit-rate", "600000", *options], check=True)


class WithFolder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.recordings = self.folder / "recordings"
        self.recordings.mkdir()
        self.dataset = self.folder / "archive.sqlite"

    def ask(self, query, dataset=None):
        with contextlib.closing(sqlite3.connect(dataset or self.dataset)) as connection:
            return connection.execute(query).fetchall()

    def content(self, dataset):
        return {table: self.ask(f"SELECT * FROM {table}", dataset) for table in TABLES}


class OneProcess(WithFolder):
    def test_the_rows_of_a_recording(self):
        make(self.recordings / "a.ts", "pmt-changes=2..3", "pat-crc=4..5", "app-document-case")
        self.assertEqual(archive(self.dataset, [self.recordings], limits="dvb"), Progress(1, 1, 0, 412660))
        self.assertEqual(self.ask("SELECT size, first_time, last_time, duration, packets, packet_spacing, bit_rate, sections, "
                                  "crc_errors, packets_lost FROM recordings"),
                         [(412660, "2025-06-15T21:29:59.997Z", "2025-06-15T21:30:05.496Z", 5.502133, 2195, 188, 600000, 230, 4,
                           0)])
        self.assertEqual(self.ask("SELECT pid, table_id_extension, version, packet, offset, seconds, time, same_version, error, "
                                  "fields ->> 'pcr_pid' FROM sections WHERE table_name = 'PMT' ORDER BY packet"),
                         [(257, 59040, 0, 14, 2444, None, None, 0, None, 256),
                          (8136, 59064, 0, 22, 3948, 0.05264, "2025-06-15T21:30:00.049Z", 0, None, 512),
                          (257, 59040, 0, 809, 151904, 2.025387, "2025-06-15T21:30:02.021Z", 1, None, 256),
                          (257, 59040, 0, 1209, 227104, 3.028053, "2025-06-15T21:30:03.024Z", 1, None, 256)])
        self.assertEqual(self.ask("SELECT table_name, table_id_extension, version, former_version, same_version, seconds, time "
                                  "FROM versions WHERE pid IN (257, 16)"),
                         [("PMT", 59040, 0, None, 0, None, None),
                          ("NIT", 1845, 0, None, 0, 0.06768, "2025-06-15T21:30:00.064Z"),
                          ("PMT", 59040, 0, 0, 1, 2.025387, "2025-06-15T21:30:02.021Z"),
                          ("PMT", 59040, 0, 0, 1, 3.028053, "2025-06-15T21:30:03.024Z")])
        self.assertEqual(self.ask("SELECT pid, count, sum, minimum, maximum, longest_packet, longest_time, open_at_end, buckets "
                                  "FROM intervals WHERE what = 'PAT'"),
                         [(0, 50, 5.401869, 0.095253, 0.205547, 1999, "2025-06-15T21:30:05.005Z", 0.092747,
                           "[0,0,0,15,32,3,0,0,0,0,0,0,0,0,0,0,0]")])
        self.assertEqual(self.ask("SELECT what, count(*) FROM intervals GROUP BY what"),
                         [("0x3B", 1), ("0x3C", 1), ("AIT", 1), ("DSM-CC", 1), ("NIT", 1), ("PAT", 1), ("PCR", 2), ("PMT", 2),
                          ("PTS", 4), ("SDT", 1), ("TOT", 1)])
        self.assertEqual(self.ask("SELECT id, fault, severity, text, time FROM faults WHERE pid IN (0, 257) ORDER BY id"),
                         [("214352d41de34bf4", "crc_errors", "error", "4 CRC errors on PID 0x0000", "2025-06-15T21:30:03.999Z"),
                          ("2cc55d642b50fbab", "crc", "error",
                           "CRC_32 of PAT on PID 0x0000 is wrong (TR 101 290 2.2), 4 times", "2025-06-15T21:30:03.999Z"),
                          ("6c87eaf703ea3dc4", "silent_change", "error",
                           "PMT 0xE6A0 changes without a new version (ISO/IEC 13818-1 2.4.4), 2 times",
                           "2025-06-15T21:30:02.021Z")])
        self.assertEqual(self.ask("SELECT count(*) FROM alarms"), [(6,)])
        self.assertEqual(self.ask("SELECT service_id, application_id, verdict, text, json_array_length(steps) FROM applications"),
                         [(59040, 2, "not_by_itself", "is not started by itself: control code PRESENT", 24),
                          (59040, 1, "does_not_start", "does not start: initial class guia/principal.ncl is not in the "
                           "carousel; the nearest is guia/Principal.ncl", 25)])

    def test_an_alarm_from_its_begin_to_its_end_is_one_row(self):
        make(self.recordings / "a.ts", "pat-stops=2..4", seconds="12")
        archive(self.dataset, [self.recordings])
        self.assertEqual(self.ask("SELECT id, check_name, indicator, severity, text, packet, seconds, time, end_seconds, end_time, "
                                  "duration, limit_value, limit_source, count, worst FROM alarms"),
                         [("97dcae3ff73f5308", "pat_interval", "1.3.a", "error",
                           "no PAT for 0.539 s (limit 0.5 s, TR 101 290 1.3.a)", 860, 2.125653, "2025-06-15T21:30:02.122Z",
                           4.003147, "2025-06-15T21:30:03.999Z", 1.877493, 0.5, "TR 101 290 1.3.a", 1, 2.100587)])

    def test_what_cannot_be_read_is_a_failure(self):
        make(self.recordings / "good.ts")
        whole = (self.recordings / "good.ts").read_bytes()
        (self.recordings / "cut.ts").write_bytes(whole[:100100])
        (self.recordings / "text.ts").write_text("no packets")
        gone = self.folder / "gone.ts"
        self.assertEqual(archive(self.dataset, [gone, self.recordings]), Progress(4, 4, 3, 512770))
        self.assertEqual([(pathlib.Path(source).name, size, message.rpartition(": ")[2])
                          for source, size, message in self.ask("SELECT source, size, message FROM failures ORDER BY size")],
                         [("gone.ts", None, "No such file or directory"),
                          ("text.ts", 10, "no packets of 188, 192 or 204 bytes found"),
                          ("cut.ts", 100100, "cut off in its last packet (84 of 188 bytes)")])
        self.assertEqual(self.ask("SELECT packets FROM recordings ORDER BY packets"), [(532,), (2195,)])

    def test_only_what_is_new_or_changed_is_read_again(self):
        for name in ("a.ts", "b.ts", "c.ts"):
            make(self.recordings / name)
        (self.recordings / "text.ts").write_text("no packets")
        (self.recordings / "notes.txt").write_text("no recording")
        self.assertEqual(archive(self.dataset, [self.recordings]).read, 4)
        first = self.content(self.dataset)
        self.assertEqual(archive(self.dataset, [self.recordings]).read, 0)
        self.assertEqual(self.content(self.dataset), first)
        os.utime(self.recordings / "a.ts", (0, 0))
        make(self.recordings / "b.ts", "pmt-changes=2")
        make(self.recordings / "text.ts")
        (self.recordings / "deeper").mkdir()
        make(self.recordings / "deeper" / "D.TS")
        self.assertEqual(archive(self.dataset, [self.recordings]), Progress(4, 4, 0, 4 * 412660))
        again = self.content(self.dataset)
        self.assertEqual([len(again[table]) for table in ("recordings", "failures")], [5, 0])
        self.assertEqual(self.ask("SELECT source FROM faults JOIN recordings USING (recording)"),
                         [(str(self.recordings / "b.ts"),)])

    def test_nothing_is_there_twice_when_it_is_read_twice(self):
        make(self.recordings / "a.ts", "sdt-crc=2")
        archive(self.dataset, [self.recordings])
        first = self.content(self.dataset)
        with contextlib.closing(sqlite3.connect(self.dataset)) as connection, connection:
            connection.execute("UPDATE recordings SET size = 1")
        archive(self.dataset, [self.recordings])
        self.assertEqual(self.content(self.dataset), first)

    def test_what_one_recording_says_has_bounds(self):
        make(self.recordings / "a.ts", "pat-crc=2")
        with unittest.mock.patch("quor_isdbt.archive.rows.ROOM", 12000):
            archive(self.dataset, [self.recordings])
        (left_out, message), = self.ask("SELECT substr(message, 8, instr(message, ' rows') - 8), message FROM failures")
        self.assertEqual(message, f"it has {left_out} rows more than there is room for")
        self.assertGreater(int(left_out), 20)
        self.assertGreater(self.ask("SELECT count(*) FROM sections")[0][0], 2)
        self.assertLess(self.ask("SELECT sum(length(fields)) FROM sections")[0][0], 12000)

    def test_names_that_are_no_text(self):
        make(os.fsencode(self.recordings) + b"/\xff.ts")
        self.assertEqual(archive(self.dataset, [self.recordings]).failed, 0)
        self.assertEqual(archive(self.dataset, [self.recordings]).read, 0)
        self.assertEqual(self.ask("SELECT source FROM recordings"), [(str(self.recordings) + "/\\xff.ts",)])

    def test_objects_of_a_list(self):
        make(self.recordings / "a.ts", "pmt-changes=2")
        handler = functools.partial(Quiet, directory=self.recordings)
        with http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler) as server:
            threading.Thread(target=server.serve_forever, daemon=True).start()
            url = f"http://127.0.0.1:{server.server_port}/"
            (self.folder / "list").write_text(f"{url}a.ts\n\n{url}missing.ts\n")
            command = [*COMMAND, self.dataset, "--list", self.folder / "list"]
            self.assertEqual(subprocess.run(command, stderr=subprocess.DEVNULL).returncode, 1)
            self.assertEqual(self.ask("SELECT source, size FROM recordings"), [(url + "a.ts", 412660)])
            self.assertEqual(self.ask("SELECT * FROM failures"),
                             [(url + "missing.ts", None, None, "HTTP Error 404: File not found")])
            pending = subprocess.run([*command, "--pending"], stdout=subprocess.PIPE, text=True, check=True).stdout
            self.assertEqual(pending, url + "missing.ts\n")
            server.shutdown()

    def test_without_dask(self):
        make(self.recordings / "a.ts")
        program = "import sys; sys.modules.update(dask=None, distributed=None)\nfrom quor_isdbt.archive import archive\n" \
                  "archive(*sys.argv[1:2], sys.argv[2:])"
        subprocess.run([sys.executable, "-c", program, self.dataset, self.recordings], check=True)
        self.assertEqual(self.ask("SELECT packets FROM recordings"), [(2195,)])

    def test_a_dataset_of_another_version_is_not_touched(self):
        with contextlib.closing(sqlite3.connect(self.dataset)) as connection:
            connection.execute("PRAGMA user_version = 2")
        with self.assertRaisesRegex(ValueError, "archive.sqlite: a dataset of version 2, not 1"):
            archive(self.dataset, [self.recordings])


class Quiet(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *_):
        pass


def read_or_die(recording, limits):
    if recording.path.endswith("/9.ts"):
        os._exit(1)
    return read(recording, limits)


class ManyProcesses(WithFolder):
    RECORDINGS = 60

    def setUp(self):
        super().setUp()
        faults = ("pmt-changes", "sdt-crc", "nit-stops", "version-flaps", "pcr-forward", "app-block")
        for fault in faults:
            make(self.recordings / f"{fault}.ts", fault + "=2")
        for number in range(len(faults), self.RECORDINGS):
            shutil.copy(self.recordings / f"{faults[number % len(faults)]}.ts", self.recordings / f"{number}.ts")
        (self.recordings / "text.ts").write_text("no packets")

    def dask(self, program, *arguments):
        process = subprocess.Popen([sys.executable, "-m", f"distributed.cli.dask_{program}", *arguments],
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process

    def test_one_is_killed_and_nothing_is_lost_or_there_twice(self):
        alone = self.folder / "alone.sqlite"
        self.assertEqual(archive(alone, [self.recordings]).read, self.RECORDINGS + 1)
        found = self.folder / "scheduler.json"
        self.dask("scheduler", "--host", "127.0.0.1", "--port", "0", "--no-dashboard", "--scheduler-file", found)
        while not found.exists():
            time.sleep(0.05)
        address = re.search('"address": "([^"]+)"', found.read_text())[1]
        workers = [self.dask("worker", address, "--no-nanny", "--nthreads", "1", "--no-dashboard", "--local-directory",
                             self.folder) for _ in range(2)]
        at_kill = []

        def kill(progress):
            if not at_kill:
                at_kill.append(progress.read)
                workers[0].send_signal(signal.SIGKILL)
                workers[0].wait()

        with distributed.Client(address) as client:
            client.wait_for_workers(2)
        progress = archive(self.dataset, [self.recordings], scheduler=address, tell=kill)
        self.assertEqual(at_kill, [1])
        self.assertEqual((progress.expected, progress.read, progress.failed), (61, 61, 1))
        self.assertEqual(self.content(self.dataset), self.content(alone))
        self.assertEqual(len(self.content(alone)["recordings"]), self.RECORDINGS)

    def test_a_recording_that_takes_workers_with_it_has_failed_and_no_other(self):
        cloudpickle.register_pickle_by_value(sys.modules[__name__])
        with dask.config.set({"distributed.scheduler.allowed-failures": 1}), \
                unittest.mock.patch("quor_isdbt.archive.running.read", read_or_die):
            progress = archive(self.dataset, [self.recordings], workers=2)
        self.assertEqual((progress.read, progress.failed), (61, 2))
        self.assertEqual(self.ask("SELECT size, message LIKE '%died%' FROM failures WHERE source LIKE '%/9.ts'"), [(None, 1)])
        self.assertEqual(len(self.content(self.dataset)["recordings"]), self.RECORDINGS - 1)
        self.assertEqual(archive(self.dataset, [self.recordings]), Progress(1, 1, 0, 412660))

    def test_those_of_this_machine(self):
        alone = self.folder / "alone.sqlite"
        archive(alone, [self.recordings])
        finished = subprocess.run([*COMMAND, self.dataset, self.recordings, "--workers", "2"], stderr=subprocess.PIPE, text=True)
        self.assertRegex(finished.stderr, "^61 of 61 recordings, 1 not read to the end, 0.02 GB in [0-9.]+ s\n$")
        self.assertEqual(finished.returncode, 1)
        self.assertEqual(self.content(self.dataset), self.content(alone))


class Lines(WithFolder):
    def test_a_reading_that_broke_off_is_a_failure(self):
        lines = '/nowhere/a.ts\t{"type":"check"}\n/nowhere/b.ts\tisdbt-inspect: /nowhere/b.ts: No such file or directory\n'
        self.assertEqual(take_lines(self.dataset, io.StringIO(lines)), Progress(0, 2, 2, 0))
        self.assertEqual(self.ask("SELECT source, message FROM failures"),
                         [("/nowhere/a.ts", "it was not read to its end"),
                          ("/nowhere/b.ts", "/nowhere/b.ts: No such file or directory")])
        self.assertEqual(self.ask("SELECT count(*) FROM recordings"), [(0,)])


class Page(WithFolder):
    """Does what the page says, in order."""

    def blocks(self, language):
        return re.findall(rf"```{language}\n(.*?)```\n(?:\n```\n(.*?)```\n)?", PAGE.read_text(), re.DOTALL)

    def run_shell(self, command):
        programs = {"PATH": f"{os.path.dirname(sys.executable)}:{os.path.dirname(INSPECT)}:{os.environ['PATH']}",
                    "PYTHONDONTWRITEBYTECODE": "1"}
        return subprocess.run(["bash", "-c", command], cwd=self.folder, env={**os.environ, **programs}, text=True,
                              stdout=subprocess.PIPE, check=True).stdout

    def test_queries_answer_what_it_says(self):
        make(self.recordings / "monday.ts")
        make(self.recordings / "tuesday.ts", "pmt-changes=2..3")
        make(self.recordings / "wednesday.ts", "nit-stops=1", "app-block")
        archive(self.dataset, [self.recordings])
        with contextlib.closing(sqlite3.connect(self.dataset)) as connection, connection:
            connection.execute("UPDATE recordings SET source = replace(source, ?, '/archive')", (str(self.recordings),))
        queries = self.blocks("sql")
        self.assertEqual(len(queries), 6)
        for query, answer in queries:
            with self.subTest(query):
                command = ["sqlite3", "-box", self.dataset]
                self.assertEqual(subprocess.run(command, input=query, stdout=subprocess.PIPE, text=True).stdout, answer)

    def test_the_program_works(self):
        make(self.recordings / "a.ts")
        (program, _), = self.blocks("python")
        (self.folder / "program.py").write_text(program.replace("/archive", "recordings"))
        self.assertEqual(self.run_shell("python3 program.py"), "1 1\n1 0 412660\n")

    def test_parallel_gives_the_same_as_one_process(self):
        for number in range(6):
            make(self.recordings / f"{number} of 6.ts", f"pmt-changes={number / 2}")
        (self.recordings / "text.ts").write_text("no packets")
        alone = self.folder / "alone.sqlite"
        archive(alone, [self.recordings])
        (recipe, _), = self.blocks("sh")
        local = recipe.replace("one.example,two.example", ":").replace("/archive", "recordings")
        self.assertNotEqual(local, recipe)
        self.run_shell(f"{local.strip()} || true")
        self.assertEqual(self.content(self.dataset), self.content(alone))
        self.assertEqual(self.run_shell("python3 -m quor_isdbt.archive archive.sqlite recordings --pending"), "")


if __name__ == "__main__":
    unittest.main()
