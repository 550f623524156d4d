import contextlib
import gc
import json
import os
import pathlib
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
import unittest
import warnings

import quor_isdbt

SAMPLE = os.environ["PROJECT"] + "/samples/isdbt-sample.ts"
PAT = "00 F0 15 07 35 C1 00 00 00 00 E0 10 E6 A0 E1 01 E6 B8 FF C8 E3 95 76 D7"
AT_ONCE = 1.0  # seconds: far less than what is waited for would take


def threads():
    return len(os.listdir("/proc/self/task"))


def descriptors():
    return len(os.listdir("/proc/self/fd"))


def soon(condition):
    """What ends in another thread, or the kernel, ends a moment later."""
    for _ in range(100):
        if condition():
            return True
        time.sleep(0.01)
    return False


class Items(unittest.TestCase):
    def test_sections_have_what_their_lines_have(self):
        (pat,) = quor_isdbt.inspect(SAMPLE, table="pat")
        self.assertEqual(pat["type"], "section")
        self.assertEqual((pat["packet"], pat["offset"], pat["seconds"]), (2, 188, None))
        self.assertIs(pat["current"], True)
        self.assertEqual(
            pat["fields"],
            {
                "transport_stream_id": 1845,
                "network_pid": 16,
                "programs": [
                    {"program_number": 59040, "program_map_pid": 257},
                    {"program_number": 59064, "program_map_pid": 8136},
                ],
            },
        )

    def test_texts_are_texts(self):
        (nit,) = quor_isdbt.inspect(SAMPLE, table="nit")
        self.assertEqual(nit["fields"]["network_name_descriptor"]["network_name"], "TV Maré-Açu")

    def test_every_view_gives_what_the_tool_prints(self):
        for view in ("tree", "tables", "stats", "diff", "applications", "carousels", "all"):
            with self.subTest(view=view):
                printed = subprocess.run(["isdbt-inspect", "--json", "--view", view, SAMPLE], stdout=subprocess.PIPE, check=True)
                lines = printed.stdout.splitlines()
                self.assertGreater(len(lines), 1)
                self.assertEqual(list(quor_isdbt.inspect(SAMPLE, view=view)), [json.loads(line) for line in lines])

    def test_applications_tell_why(self):
        verdicts = [(each["application_id"], each["verdict"]) for each in quor_isdbt.inspect(SAMPLE, view="applications")]
        self.assertEqual(verdicts, [(2, "not_by_itself"), (1, "starts")])

    def test_several_inputs_come_in_turn(self):
        sources = [item["source"] for item in quor_isdbt.inspect(SAMPLE, pathlib.Path(SAMPLE), table="pat")]
        self.assertEqual(sources, [SAMPLE, SAMPLE])

    def test_a_name_need_not_be_a_text(self):
        with tempfile.TemporaryDirectory() as folder:
            name = os.path.join(os.fsencode(folder), b"--\xff.ts")
            os.symlink(SAMPLE, name)
            (pat,) = quor_isdbt.inspect(os.fsdecode(name), table="pat")
        self.assertTrue(pat["source"].endswith("/--\N{REPLACEMENT CHARACTER}.ts"))


class Keywords(unittest.TestCase):
    def tables(self, **options):
        return [item["table"] for item in quor_isdbt.inspect(SAMPLE, view="tables", **options)]

    def test_a_list_gives_an_option_again_and_again(self):
        self.assertEqual(self.tables(table=["pat", "NIT"]), ["PAT", "NIT"])
        self.assertEqual(self.tables(table="pat,nit"), ["PAT", "NIT"])

    def test_numbers_and_flags_are_given(self):
        self.assertEqual(self.tables(table="pmt", extension=59064), ["PMT"])
        (pat,) = quor_isdbt.inspect(SAMPLE, table="pat", since=0.5, until=1)
        self.assertEqual(pat["seconds"], 0.504167)
        self.assertEqual(self.tables(table="pat", rejected=True), [])

    def test_what_is_none_or_false_is_not_given(self):
        self.assertEqual(self.tables(table="pat", rejected=False, since=None, pid=[]), ["PAT"])

    def test_zero_is_given(self):
        self.assertEqual(self.tables(table="pat", version=0), ["PAT"])
        self.assertEqual(self.tables(table="pat", version=1), [])

    def test_bytes_are_sections(self):
        (pat,) = quor_isdbt.inspect(hex=bytes.fromhex(PAT))
        self.assertEqual(pat["fields"]["programs"][1], {"program_number": 59064, "program_map_pid": 8136})

    def test_a_dash_is_written_as_a_line_below(self):
        (tot, *_) = quor_isdbt.inspect(SAMPLE, table="tot", time_zone="UTC+9")
        self.assertEqual(tot["fields"]["unix_time_instant"], "2025-06-15T18:30:00+09:00")

    def test_a_line_below_behind_a_word_of_python_is_left_out(self):
        with self.assertRaisesRegex(quor_isdbt.UsageError, "--class"):
            quor_isdbt.inspect(SAMPLE, class_=1)

    def test_paths_are_given(self):
        with tempfile.TemporaryDirectory() as folder:
            (item,) = [
                item
                for item in quor_isdbt.inspect(SAMPLE, extract=pathlib.Path(folder))
                if item["type"] == "extraction"
            ]
            self.assertEqual(item["refused"], 0)
            written = [file for file in pathlib.Path(folder).rglob("*") if file.is_file()]
            self.assertEqual(len(written), item["files"])


class Errors(unittest.TestCase):
    def test_a_wrong_option_is_told_at_once(self):
        with self.assertRaises(quor_isdbt.UsageError) as raised:
            quor_isdbt.inspect(SAMPLE, view="trees")
        self.assertEqual(
            str(raised.exception), "--view: trees is none of all, applications, carousels, diff, stats, tables, tree"
        )
        self.assertIsInstance(raised.exception, ValueError)

    def test_options_that_do_not_fit_together_are_told(self):
        with self.assertRaisesRegex(quor_isdbt.UsageError, "^FILE is required$"):
            quor_isdbt.inspect()
        with self.assertRaisesRegex(quor_isdbt.UsageError, "^--until is before --since$"):
            quor_isdbt.inspect(SAMPLE, since=2, until=1)

    def test_a_log_is_for_the_tool(self):
        with self.assertRaisesRegex(quor_isdbt.UsageError, "^--log: what is found goes to the program$"):
            quor_isdbt.inspect(SAMPLE, log="lines.log")

    def test_a_missing_file_is_told_when_it_is_its_turn(self):
        inspection = quor_isdbt.inspect(SAMPLE, "/missing.ts", SAMPLE, table="pat")
        sources = []
        with self.assertRaises(quor_isdbt.InspectionError) as raised:
            for item in inspection:
                sources.append(item["source"])
        self.assertEqual(str(raised.exception), "/missing.ts: No such file or directory")
        self.assertIsInstance(raised.exception, OSError)
        self.assertEqual(sources, [SAMPLE, SAMPLE])
        self.assertEqual(inspection.status, 1)
        self.assertEqual(list(inspection), [])

    def test_a_remark_is_a_warning(self):
        with tempfile.TemporaryDirectory() as folder, warnings.catch_warnings(record=True) as caught:
            warnings.simplefilter("always")
            begin = pathlib.Path(folder, "begin.ts")
            begin.write_bytes(pathlib.Path(SAMPLE).read_bytes()[: 8 * 188])
            list(quor_isdbt.inspect(begin, extract=folder + "/files"))
        self.assertEqual(
            [str(each.message) for each in caught],
            [f"{begin}: nothing to extract, as no carousel came with its DII"],
        )

    def test_the_status_tells_faults(self):
        inspection = quor_isdbt.inspect(hex=PAT[:-2] + "00")
        self.assertIsNone(inspection.status)
        list(inspection)
        self.assertEqual(inspection.status, 3)


class Live(unittest.TestCase):
    """Of inputs that have not ended."""

    def setUp(self):
        gc.collect()
        self.before = threads(), descriptors()
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.pipe = folder.name + "/pipe.ts"
        os.mkfifo(self.pipe)

    def assertNothingIsLeft(self):
        gc.collect()
        self.assertTrue(soon(lambda: (threads(), descriptors()) == self.before))

    @contextlib.contextmanager
    def assertAtOnce(self):
        begin = time.monotonic()
        yield
        self.assertLess(time.monotonic() - begin, AT_ONCE)

    def writer(self):
        """Who has written the sample to the pipe, and may write more."""
        writer = os.open(self.pipe, os.O_RDWR)
        os.write(writer, pathlib.Path(SAMPLE).read_bytes()[:60000])
        return writer

    def test_items_come_before_the_end(self):
        writer = self.writer()
        with quor_isdbt.inspect(self.pipe, view="tables") as inspection:
            self.assertEqual([next(inspection)["table"] for _ in range(2)], ["PAT", "TOT"])
        os.close(writer)
        self.assertNothingIsLeft()

    def test_a_datagram_is_shown_when_it_comes(self):
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as free:
            free.bind(("127.0.0.1", 0))
            address = free.getsockname()
        inspection = quor_isdbt.inspect("udp://%s:%d" % address, table="pat", no_data=0.1)
        self.assertEqual(next(inspection)["type"], "no_data")
        packets = pathlib.Path(SAMPLE).read_bytes()[: 7 * 188]
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as sender:
            for _ in range(20):
                sender.sendto(packets, address)
        self.assertEqual({next(inspection)["type"] for _ in range(2)}, {"no_data", "section"})
        with self.assertAtOnce():
            inspection.close()
        self.assertNothingIsLeft()

    def test_several_at_once_do_not_wait_for_each_other(self):
        writer = self.writer()
        waiting = quor_isdbt.inspect(self.pipe, table="pat")
        next(waiting)
        results = [None] * 8

        def work(index):
            results[index] = [item["table"] for item in quor_isdbt.inspect(SAMPLE, table=["pat", "nit", "sdt"])]

        workers = [threading.Thread(target=work, args=(index,)) for index in range(8)]
        for worker in workers:
            worker.start()
        for worker in workers:
            worker.join()
        self.assertEqual(results, [["PAT", "NIT", "SDT"]] * 8)
        waiting.close()
        os.close(writer)
        self.assertNothingIsLeft()

    def test_close_ends_it_at_once(self):
        inspection = quor_isdbt.inspect(self.pipe)
        ended = threading.Timer(0.1, inspection.close)
        ended.start()
        with self.assertAtOnce():
            self.assertEqual(list(inspection), [])
        ended.join()
        inspection.close()
        self.assertEqual(list(inspection), [])
        self.assertIsNone(inspection.status)
        self.assertNothingIsLeft()

    def test_several_threads_may_take_and_close(self):
        inspection = quor_isdbt.inspect(*[SAMPLE] * 50, table="pat")
        taken = []
        takers = [threading.Thread(target=lambda: taken.extend(inspection)) for _ in range(4)]
        for taker in takers:
            taker.start()
        for taker in takers:
            taker.join()
        self.assertEqual(len(taken), 50)
        waiting = quor_isdbt.inspect(self.pipe)
        takers = [threading.Thread(target=lambda: taken.extend(waiting)) for _ in range(4)]
        closers = [threading.Thread(target=waiting.close) for _ in range(4)]
        for each in takers + closers:
            each.start()
        for each in takers + closers:
            each.join()
        self.assertNothingIsLeft()

    def test_what_is_forgotten_ends(self):
        writer = self.writer()
        for item in quor_isdbt.inspect(self.pipe):
            break
        self.assertEqual(item["table"], "PAT")
        os.close(writer)
        self.assertNothingIsLeft()

    def test_what_lies_in_a_cycle_ends_with_it(self):
        writer = self.writer()
        cycle = [quor_isdbt.inspect(self.pipe)]
        cycle.append(cycle)
        next(cycle[0])
        del cycle
        os.close(writer)
        self.assertNothingIsLeft()

    def test_what_is_not_asked_for_does_not_begin(self):
        inspection = quor_isdbt.inspect(self.pipe)
        self.assertNothingIsLeft()
        del inspection

    def test_it_waits_for_who_is_slow(self):
        inspection = quor_isdbt.inspect(*[SAMPLE] * 200, self.pipe, bytes=True)
        next(inspection)
        time.sleep(0.5)
        with self.assertRaises(OSError):  # nobody reads the pipe yet
            os.open(self.pipe, os.O_WRONLY | os.O_NONBLOCK)
        with self.assertAtOnce():
            inspection.close()
        self.assertNothingIsLeft()

    def test_others_go_on_while_one_waits(self):
        inspection = quor_isdbt.inspect(self.pipe)
        taker = threading.Thread(target=list, args=(inspection,))
        taker.start()
        with self.assertAtOnce():
            self.assertEqual(sum(range(100_000)), 4_999_950_000)
        self.assertTrue(taker.is_alive())
        inspection.close()
        taker.join()
        self.assertNothingIsLeft()


class Processes(unittest.TestCase):
    """How the interpreter ends while one waits for a pipe that nobody writes to."""

    def run_program(self, text, *, interrupt=False):
        with tempfile.TemporaryDirectory() as folder:
            os.mkfifo(folder + "/pipe.ts")
            program = subprocess.Popen(
                [sys.executable, "-X", "faulthandler", "-c", "import os, sys, threading, time, quor_isdbt\n" + text, folder + "/pipe.ts"],
                stdout=subprocess.PIPE,
                stderr=subprocess.PIPE,
                text=True,
            )
            if interrupt:
                self.assertEqual(program.stdout.readline(), "waits\n")
                time.sleep(0.2)
                program.send_signal(signal.SIGINT)
            try:
                out, err = program.communicate(timeout=10)
            finally:
                program.kill()
            return program.returncode, out, err

    def test_ctrl_c_ends_it(self):
        status, out, _ = self.run_program(
            "inspection = quor_isdbt.inspect(sys.argv[1])\n"
            "print('waits', flush=True)\n"
            "try:\n"
            "    next(inspection)\n"
            "except KeyboardInterrupt:\n"
            "    print(len(os.listdir('/proc/self/task')), list(inspection))\n",
            interrupt=True,
        )
        self.assertEqual((status, out), (0, "1 []\n"))

    def test_ctrl_c_elsewhere_is_pythons(self):
        status, _, err = self.run_program(
            "inspection = quor_isdbt.inspect(sys.argv[1])\n"
            "threading.Thread(target=list, args=(inspection,)).start()\n"
            "print('waits', flush=True)\n"
            "try:\n"
            "    time.sleep(60)\n"
            "finally:\n"
            "    inspection.close()\n",
            interrupt=True,
        )
        self.assertTrue(err.endswith("KeyboardInterrupt\n"), err)
        self.assertEqual(status, -signal.SIGINT)

    def test_the_interpreter_may_end_before_it(self):
        for rest in ("", "sys.exit(0)\n", "del sys.modules['quor_isdbt']\n"):
            with self.subTest(rest=rest):
                status, _, err = self.run_program(
                    "inspection = quor_isdbt.inspect(sys.argv[1])\n"
                    "threading.Thread(target=list, args=(inspection,), daemon=True).start()\n"
                    "time.sleep(0.1)\n" + rest
                )
                self.assertEqual((status, err), (0, ""))

    def test_a_child_that_is_forked_off_may_end(self):
        status, out, err = self.run_program(
            "inspection = quor_isdbt.inspect(sys.argv[1])\n"
            "threading.Thread(target=list, args=(inspection,), daemon=True).start()\n"
            "time.sleep(0.1)\n"
            "child = os.fork()\n"
            "if child == 0:\n"
            "    sys.exit(7)\n"
            "print(os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]))\n"
        )
        self.assertEqual((status, out, err), (0, "7\n", ""))


if __name__ == "__main__":
    unittest.main()
