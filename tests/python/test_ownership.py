"""Each wrong order of giving, taking and forgetting. A build with AddressSanitizer sees what the others survive by luck."""

import gc
import resource
import unittest

from quor_isdbt import (AITTable, Application, ApplicationIconDescriptor, ApplicationNameDescriptor,
                        ApplicationNameDescriptorItem, CountryAvailabilityDescriptor, GingaNCLApplicationDescriptor,
                        IPSignalingDescriptor, ISDBTDataHolder, ISDBTMemory, PATTable, PMTTable, ProgramAssociation,
                        ProgramMap, Refused, ServiceListDescriptor, ServiceListDescriptorItem)

# Programs 0xE6A0 and 0xE6A8.
PAT = bytes.fromhex("00 B0 11 07 35 C5 00 00 E6 A0 E1 01 E6 A8 FF C8 00 00 00 00")

# A component_tag for the program, another for the first of its two streams.
PMT = bytes.fromhex("02 B0 1D E6 A0 C1 00 00 E1 00 F0 03 52 01 40 1B E1 11 F0 03 52 01 30 11 E1 12 F0 00 00 00 00 00")

# A platform for all applications, of which there is one.
AIT = bytes.fromhex("74 B0 1B 00 09 C1 00 00 F0 05 11 03 00 00 07 F0 09 00 00 00 0A 00 01 01 F0 00 00 00 00 00")

NAMES = bytes.fromhex("01 0E 70 6F 72 03 47 75 69 65 6E 67 04 45 50 47 21")


class Keeping(unittest.TestCase):
    def test_a_childs_child_keeps_the_table(self):
        descriptor = PMTTable.parse(PMT).elementary_streams[0].stream_identifier_descriptor
        gc.collect()
        self.assertEqual(descriptor.component_tag, 0x30)

    def test_the_bytes_that_a_descriptor_points_into_are_kept(self):
        section = bytearray(PMT)
        descriptor = PMTTable.parse(section).elementary_streams[0].stream_identifier_descriptor
        del section
        gc.collect()
        self.assertEqual(descriptor.data, bytes.fromhex("52 01 30"))

    def test_what_is_inherited_is_the_tables(self):
        table = PMTTable.parse(PMT)
        own, other = [each.effective_stream_identifier_descriptor for each in table.elementary_streams]
        self.assertEqual((own.component_tag, own.inherited), (0x30, False))
        self.assertEqual((other.component_tag, other.inherited), (0x40, True))
        self.assertIsNone(table.elementary_streams[1].stream_identifier_descriptor)
        self.assertEqual(other, table.stream_identifier_descriptor)
        table.remove_program_map(1)
        del table
        gc.collect()
        self.assertEqual(other.component_tag, 0x40)

    def test_a_list_of_some_of_them_is_pythons(self):
        streams = PMTTable.parse(PMT).program_maps_by_stream_type(0x1B)
        gc.collect()
        self.assertEqual([each.elementary_pid for each in streams], [0x0111])
        streams.clear()

    def test_the_same_object_is_equal_to_itself(self):
        table = PMTTable.parse(PMT)
        first, second = table.elementary_streams
        self.assertEqual(first, table.elementary_streams[0])
        self.assertEqual(len({first, second, table.elementary_streams[0]}), 2)
        self.assertNotEqual(first, second)
        self.assertNotEqual(first, None)

    def test_a_copy_needs_nothing_of_its_source(self):
        table = AITTable.parse(AIT)
        copy = Application(table.applications["0000000A0001"], True)
        del table
        gc.collect()
        self.assertEqual(copy.hash_id, "0000000A0001")
        self.assertEqual(copy.ip_signaling_descriptor.platform_id, 7)
        self.assertEqual(copy.data[:6], bytes.fromhex("00 00 00 0A 00 01"))

    def test_an_application_of_few_bytes_is_read_within_its_own(self):
        try:
            Application.parse(bytes.fromhex("00 00 00 0A 00 01"))
        except Refused as refused:
            self.assertNotEqual(refused.code, 0)


class Giving(unittest.TestCase):
    def test_what_was_handed_over_may_be_used_on(self):
        table = PMTTable.parse(PMT)
        stream = ProgramMap()
        table.add_program_map(stream)
        self.assertEqual(table.elementary_streams[2], stream)
        del table
        gc.collect()
        self.assertEqual(stream.elementary_pid, 0)

    def test_what_was_handed_over_may_be_forgotten(self):
        table = PATTable.parse(PAT)
        table.add(ProgramAssociation(7, 0x0123))
        gc.collect()
        self.assertEqual(table.programs[7].program_map_pid, 0x0123)

    def test_an_entry_inherits_from_the_table_that_got_it(self):
        table = PMTTable.parse(PMT)
        table.add_program_map(ProgramMap())
        self.assertEqual(table.elementary_streams[2].effective_stream_identifier_descriptor.component_tag, 0x40)

    def test_nothing_has_two_holders(self):
        first, second = PMTTable.parse(PMT), PMTTable.parse(PMT)
        stream = ProgramMap()
        first.add_program_map(stream)
        for table in (first, second):
            with self.assertRaisesRegex(ValueError, "it belongs to another object already; add a copy"):
                table.add_program_map(stream)
            with self.assertRaises(ValueError):
                table.add_program_map(first.elementary_streams[0])
        del first
        gc.collect()
        self.assertEqual(second.size, 2)
        self.assertEqual(stream.stream_type, 0)

    def test_what_was_displaced_goes_nowhere_else(self):
        table, other = PATTable.parse(PAT), PATTable.parse(PAT)
        displaced = table.programs[0xE6A0]
        table.add(ProgramAssociation(0xE6A0, 0x0555))
        for each in (table, other):
            with self.assertRaises(ValueError):
                each.add(displaced)
        del table
        gc.collect()
        self.assertEqual(displaced.program_map_pid, 0x0101)

    def test_what_python_made_and_displaced_lives_on(self):
        table = PATTable.parse(PAT)
        mine = ProgramAssociation(7, 0x0123)
        table.add(mine)
        table.add(ProgramAssociation(7, 0x0456))
        self.assertEqual((mine.program_map_pid, table.programs[7].program_map_pid), (0x0123, 0x0456))
        del table
        gc.collect()
        self.assertEqual(mine.program_map_pid, 0x0123)

    def test_a_tree_is_handed_over_as_a_whole(self):
        application = Application.parse(AIT[17:26])
        identifier = application.application_identifier
        table = AITTable.parse(AIT)
        table.add_application(application)
        del application
        gc.collect()
        self.assertEqual(identifier.organization_id, 10)
        self.assertEqual(table.applications["0000000A0001"].effective_ip_signaling_descriptor.platform_id, 7)
        self.assertEqual(table.applications["0000000A0001"].data[:4], bytes.fromhex("00 00 00 0A"))
        del table
        gc.collect()
        self.assertEqual(identifier.application_id, 1)

    def test_nothing_takes_what_it_does_not_hold(self):
        table = PATTable.parse(PAT)
        for wrong in (ProgramMap(), table, None, 7, "7"):
            with self.assertRaises(TypeError):
                table.add(wrong)
        self.assertEqual(table.size, 2)


class Removing(unittest.TestCase):
    def test_what_hangs_from_what_was_removed_is_gone(self):
        table = PMTTable.parse(PMT)
        stream, other = table.elementary_streams
        descriptor = stream.stream_identifier_descriptor
        del stream
        self.assertTrue(table.remove_program_map(0))
        for use in (lambda: descriptor.component_tag, lambda: descriptor.data, lambda: descriptor.described):
            with self.assertRaisesRegex(ReferenceError, "it was removed from what held it"):
                use()
        self.assertEqual(other.elementary_pid, 0x0112)

    def test_what_was_removed_is_given_to_nobody(self):
        table = PATTable.parse(PAT)
        entry = table.programs[0xE6A0]
        table.remove(0xE6A0)
        with self.assertRaises(ReferenceError):
            PATTable.parse(PAT).add(entry)

    def test_what_comes_to_lie_where_another_lay_is_not_that_one(self):
        table = PATTable.parse(PAT)
        removed = []
        for pid in range(100):
            table.add(ProgramAssociation(1, pid))
            removed.append(table.programs[1])
            self.assertEqual(removed[-1].program_map_pid, pid)
            table.remove(1)
        for each in removed:
            with self.assertRaises(ReferenceError):
                each.program_map_pid

    def test_a_position_beyond_the_end_removes_nothing(self):
        table = PMTTable.parse(PMT)
        self.assertFalse(table.remove_program_map(9))
        with self.assertRaises(TypeError):
            table.remove_program_map(-1)
        with self.assertRaises(TypeError):
            table.remove_program_map(256)

    def test_values_come_and_go(self):
        descriptor = CountryAvailabilityDescriptor(b"")
        descriptor.add(0x425241)
        descriptor.add(0x415247)
        self.assertTrue(descriptor.remove(0))
        self.assertEqual(descriptor.country_codes, (0x415247,))

    def test_texts_keep_their_bytes(self):
        descriptor = GingaNCLApplicationDescriptor(b"")
        every = bytes(range(256)).decode("iso8859-15")
        descriptor.add(every)
        self.assertEqual(descriptor.parameters, (every,))
        with self.assertRaises(UnicodeEncodeError):
            descriptor.add("\u65e5\u672c")

    def test_names_are_kept_by_language(self):
        descriptor = ApplicationNameDescriptor.parse(NAMES[:1] + b"\x0F" + NAMES[2:])
        self.assertEqual({code: each.name for code, each in descriptor.items.items()}, {"eng": "EPG!", "por": "Gui"})
        guide = descriptor.items["por"]
        descriptor.add(ApplicationNameDescriptorItem("por", "Programa\u00e7\u00e3o"))
        self.assertEqual(descriptor.items["por"].name, "Programa\u00e7\u00e3o")
        self.assertEqual(guide.name, "Gui")


class Making(unittest.TestCase):
    def test_bases_are_made_by_what_derives_from_them(self):
        for base in (ISDBTMemory, ISDBTDataHolder):
            with self.assertRaises(TypeError):
                base()

    def test_what_was_never_constructed_has_nothing(self):
        bare = PATTable.__new__(PATTable)
        for use in (lambda: bare.network_pid, lambda: bare.add(ProgramAssociation(1, 2)), lambda: hash(bare),
                    lambda: PATTable.parse(PAT, bare), lambda: PATTable.parse(PAT).add(ProgramAssociation.__new__(ProgramAssociation))):
            with self.assertRaises(ReferenceError):
                use()

    def test_constructing_twice_changes_nothing(self):
        entry = ProgramAssociation(1, 2)
        entry.__init__(3, 4)
        self.assertEqual(entry.program_number, 1)

    def test_nobody_is_taken_for_somebody_else(self):
        entry = ProgramAssociation(1, 2)
        for of in (PMTTable.program_number, ISDBTDataHolder.data, PATTable.programs):
            with self.assertRaises(TypeError):
                of.fget(entry)
        with self.assertRaises(TypeError):
            PATTable.remove(entry, 1)
        with self.assertRaises(TypeError):
            ApplicationIconDescriptor(IPSignalingDescriptor(b""))

    def test_only_what_was_parsed_is_described(self):
        for made in (ServiceListDescriptor(b""), PATTable(PAT), PATTable(b"")):
            with self.assertRaises(ValueError):
                made.described

    def test_a_described_descriptor_has_the_standards_reading_beside_the_receivers(self):
        descriptor = ServiceListDescriptor.parse(bytes.fromhex("41 06 E6 A0 01 E6 A8 C0"))
        self.assertEqual(descriptor.kind, "service_list_descriptor")
        self.assertEqual({id: each.service_type for id, each in descriptor.items.items()},
                         {0x01: 0xE6, 0xA8: 0xC0, 0xE6: 0xA0})
        self.assertEqual([(each["service_id"], each["service_type"]) for each in descriptor.standard["services"]],
                         [(0xE6A0, 0x01), (0xE6A8, 0xC0)])
        descriptor.add(ServiceListDescriptorItem())
        with self.assertRaises(ValueError):
            descriptor.standard

    def test_nothing_stays(self):
        def turn():
            table = PMTTable.parse(PMT)
            stream = ProgramMap()
            table.add_program_map(stream)
            kept = [each.effective_stream_identifier_descriptor for each in table.elementary_streams]
            table.remove_program_map(0)
            programs = PATTable.parse(PAT)
            first = programs.programs[0xE6A0]
            programs.add(ProgramAssociation(0xE6A0, 1))
            for refused in (PMT[:20], b"\x02"):
                with self.assertRaises(Refused):
                    PMTTable.parse(refused)
            return kept, first

        def grown(turns):
            before = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
            for _ in range(turns):
                turn()
            return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss - before

        grown(500)
        self.assertLess(grown(3000), 1024)  # KiB, where each turn that stays takes one


if __name__ == "__main__":
    unittest.main()
