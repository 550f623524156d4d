import gc
import unittest

import quor_isdbt
from quor_isdbt import Application, ISDBTTable, PATTable, PMTTable, ProgramAssociation, ProgramMap, Refused

# transport_stream_id 0x0735, version 2: network_PID 0x0010, and programs 0xE6A0 and 0xE6A8.
PAT = bytes.fromhex("00 B0 15 07 35 C5 00 00  00 00 E0 10  E6 A0 E1 01  E6 A8 FF C8  00 00 00 00")


class Tables(unittest.TestCase):
    def test_fields_are_properties(self):
        pat = PATTable.parse(PAT)
        self.assertEqual(pat.transport_stream_id, 0x0735)
        self.assertEqual(pat.version, 2)
        self.assertIs(pat.current_indicator, True)
        self.assertEqual(pat.network_pid, 0x0010)
        self.assertEqual(pat.data, PAT)

    def test_entries_are_a_mapping(self):
        pat = PATTable.parse(PAT)
        self.assertEqual({number: each.program_map_pid for number, each in pat.programs.items()},
                         {0xE6A0: 0x0101, 0xE6A8: 0x1FC8})
        self.assertEqual(pat.program_numbers, (0xE6A0, 0xE6A8))

    def test_the_table_id_says_which_table_it_is(self):
        pat = quor_isdbt.parse_section(PAT)
        self.assertIs(type(pat), PATTable)
        self.assertIs(pat.type, ISDBTTable.Type.PAT)

    def test_what_is_read_may_be_any_buffer(self):
        buffer = bytearray(PAT)
        pat = quor_isdbt.parse_section(memoryview(buffer))
        buffer[:] = bytes(len(buffer))
        self.assertEqual(pat.data, PAT)

    def test_a_refusal_has_code_name_and_log(self):
        with self.assertRaises(Refused) as caught:
            PATTable.parse(b"\x02" + PAT[1:])
        self.assertEqual(caught.exception.code, 0x0A04)
        self.assertEqual(caught.exception.name, "ERROR_INVALID_TABLE_ID")
        self.assertEqual(len(caught.exception.log), 1)
        self.assertIn("Aborting!", caught.exception.log[0])

    def test_the_same_version_is_refused_beside_the_previous_table(self):
        pat = PATTable.parse(PAT)
        with self.assertRaises(Refused) as caught:
            PATTable.parse(PAT, previous=pat)
        self.assertEqual(caught.exception.code, ISDBTTable.ERROR_TABLE_NOT_UPDATED)

    def test_nobody_parses_a_table_that_the_library_does_not_know(self):
        with self.assertRaisesRegex(ValueError, "no table of the library has the table_id 0x4E"):
            quor_isdbt.parse_section(b"\x4E\xF0\x00")
        with self.assertRaises(ValueError):
            quor_isdbt.parse_section(b"")


class Ownership(unittest.TestCase):
    def test_an_entry_keeps_its_table(self):
        entry = PATTable.parse(PAT).programs[0xE6A0]
        gc.collect()
        self.assertEqual(entry.program_map_pid, 0x0101)

    def test_what_is_added_is_the_tables(self):
        pat = PATTable.parse(PAT)
        entry = ProgramAssociation(1, 0x0123)
        pat.add(entry)
        self.assertEqual(pat.programs[1], entry)
        del pat
        gc.collect()
        self.assertEqual(entry.program_map_pid, 0x0123)

    def test_nothing_is_added_twice(self):
        pat, other = PATTable.parse(PAT), PATTable.parse(PAT)
        entry = ProgramAssociation(1, 0x0123)
        pat.add(entry)
        with self.assertRaises(ValueError):
            pat.add(entry)
        with self.assertRaises(ValueError):
            other.add(entry)
        with self.assertRaises(ValueError):
            other.add(pat.programs[0xE6A0])
        self.assertEqual(other.size, 2)

    def test_what_is_removed_is_gone(self):
        pat = PATTable.parse(PAT)
        entry = pat.programs[0xE6A0]
        self.assertIs(pat.remove(0xE6A0), True)
        self.assertIs(pat.remove(0xE6A0), False)
        with self.assertRaises(ReferenceError):
            entry.program_map_pid
        self.assertEqual(list(pat.programs), [0xE6A8])

    def test_what_is_displaced_is_pythons(self):
        pat = PATTable.parse(PAT)
        displaced = pat.programs[0xE6A0]
        pat.add(ProgramAssociation(0xE6A0, 0x0555))
        pat.add(ProgramAssociation(0xE6A0, 0x0666))
        self.assertEqual(pat.programs[0xE6A0].program_map_pid, 0x0666)
        del pat
        gc.collect()
        self.assertEqual(displaced.program_map_pid, 0x0101)

    def test_a_list_outlives_its_table(self):
        programs = PATTable.parse(PAT).programs
        gc.collect()
        self.assertEqual([each.program_map_pid for each in programs.values()], [0x0101, 0x1FC8])

    def test_what_was_never_constructed_is_nothing(self):
        with self.assertRaises(ReferenceError):
            PATTable.__new__(PATTable).network_pid

    def test_no_class_takes_another(self):
        with self.assertRaises(TypeError):
            PMTTable.__dict__["program_number"].__get__(PATTable.parse(PAT))
        with self.assertRaises(TypeError):
            PATTable.parse(PAT).add(ProgramMap())


class Described(unittest.TestCase):
    def test_as_the_tool_does(self):
        self.assertEqual(PATTable.parse(PAT).described["network_pid"], 16)

    def test_not_what_was_changed(self):
        pat = PATTable.parse(PAT)
        pat.remove(0xE6A0)
        with self.assertRaises(ValueError):
            pat.described


if __name__ == "__main__":
    unittest.main()
