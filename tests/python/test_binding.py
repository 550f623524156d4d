"""Every class and every member of the public headers is in the package, and so is a class that comes tomorrow."""

import enum
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

import quor_isdbt

PROJECT = pathlib.Path(os.environ["PROJECT"])
LISTING = [line.split("\t") for line in pathlib.Path(os.environ["LISTING"]).read_text().splitlines()]

# What is not there under its own name, and what is there instead.
INSTEAD = {
    "TApplicationDescriptor.getProfiles": "profiles",
    "TTransportProtocolDescriptor.clone": "a constructor",
    "ParserUtils.parseByteArray": "slices",
    "ParserUtils.parseStr": "slices",
    "ISDBTUtils.setErrorCode": "exceptions",
    "TISDBTTable.setDebug": "it does nothing",
    "TApplication.setParentAITTable": "add_application",
    "TProgramMap.setParentPMTTable": "add_program_map",
    "TDownloadContent.setParentSDTTTable": "add_download_content",
}
INSIDE = {"parseCommonHeader", "parseData"}  # part of parse


def plain(name):
    return name.replace("_", "").lower()


def of_package(class_):
    return getattr(quor_isdbt, re.sub("^T(?=[A-Z])", "", class_))


class Listing(unittest.TestCase):
    def test_there_is_something_to_look_for(self):
        self.assertGreater(len(LISTING), 1000)

    def test_every_class_is_there_and_derives_as_in_the_headers(self):
        for _, class_, kind, base, _, _ in (line for line in LISTING if line[2] == "class"):
            with self.subTest(class_):
                bases = of_package(class_).__bases__
                if base:
                    self.assertEqual(bases, (of_package(base),))

    def test_every_getter_is_there(self):
        for _, class_, kind, _, name, parameters in (line for line in LISTING if line[2] == "const"):
            there = {plain(each) for each in dir(of_package(class_))}
            bare = plain(re.sub("^get", "", name))
            lists = {bare + "s", "items", "programs", "elementarystreams", "transportstreams", "services", "subitems",
                     "countrycodes", "modules", "parameters"}
            with self.subTest(f"{class_}.{name}"):
                if parameters and "inherited" in parameters:
                    self.assertLessEqual({bare, "effective" + bare}, there)
                elif bare not in there:
                    self.assertTrue(parameters and lists & there, "no such property, and no list of them")

    def test_every_method_is_there(self):
        for _, class_, kind, _, name, _ in (line for line in LISTING if line[2] in ("method", "static")):
            if name in INSIDE or f"{class_}.{name}" in INSTEAD:
                continue
            there = {plain(each) for each in dir(of_package(class_))}
            with self.subTest(f"{class_}.{name}"):
                self.assertIn(plain(re.sub("^(get|set)", "", name)), there)

    def test_every_constant_has_its_value(self):
        for _, class_, kind, type_, name, value in (line for line in LISTING if line[2] == "constant"):
            with self.subTest(f"{class_}.{name}"):
                if re.fullmatch(r"0[xX][0-9A-Fa-f]+|\d+", value):
                    self.assertEqual(getattr(of_package(class_), name), int(value, 0))
                else:
                    self.assertIsInstance(getattr(of_package(class_), name), int)

    def test_codes_are_enumerations(self):
        self.assertEqual(quor_isdbt.Application.ControlCode(1), quor_isdbt.Application.CONTROLCODE_AUTOSTART)
        self.assertTrue(issubclass(quor_isdbt.ServiceDescription.RunningStatus, enum.IntEnum))
        self.assertTrue(issubclass(quor_isdbt.ApplicationIconDescriptor.IconFlags, enum.IntFlag))

    def test_what_is_said_in_the_headers_is_said_here(self):
        self.assertEqual(quor_isdbt.PATTable.program_numbers.__doc__, "The program_numbers in ascending order.")
        self.assertEqual(quor_isdbt.ComponentDescriptor.component_type.__doc__,
                         "component_type, 0 to 255; its meaning depends on stream_content.")

    def test_what_is_said_names_things_as_they_are_called_here(self):
        for name in {line[1] for line in LISTING}:
            for each in (of_package(name), *vars(of_package(name)).values()):
                with self.subTest(f"{name}: {each}"):
                    self.assertNotRegex(getattr(each, "__doc__", None) or "", r"\b(get|is|has)[A-Z0-9]\w*\(\)")


class Tomorrow(unittest.TestCase):
    def test_a_new_class_is_bound_without_a_line(self):
        """A header beside the others, and a project in which there are no more of them."""
        with tempfile.TemporaryDirectory() as folder:
            project = pathlib.Path(folder)
            for part in ("include", "cmake/public-headers"):
                (project / part).parent.mkdir(exist_ok=True)
                subprocess.run(["cp", "-r", PROJECT / part, project / part], check=True)
            (project / "include/descriptors/TTomorrowDescriptor.h").write_text("""\
namespace Quor {

/// What comes tomorrow.
class QUOR_ISDBT_API TTomorrowDescriptor : public TISDBTDescriptor {
public:
    /// @name Values of getWeekDay()
    /// @{
    static constexpr QUOR_U8 WEEK_DAY_MONDAY = 1;
    /// @}

    TTomorrowDescriptor(QUOR_U8* data, QUOR_U32 length);

    static TTomorrowDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// The day of the week.
    QUOR_U8 getWeekDay() const { return m_iWeekDay; }

private:
    QUOR_U8 m_iWeekDay;
};

} // namespace Quor
""")
            listing = project / "public-headers.tsv"
            subprocess.run(["cmake", "-P", project / "cmake/public-headers/PublicHeaders.cmake", listing], check=True)
            subprocess.run([sys.executable, "-B", PROJECT / "python/bind-classes", project / "cmake/public-headers", listing,
                            project, "1"], check=True)
            source = (project / "Classes0.cpp").read_text()
            stub = (project / "_quor_isdbt.pyi").read_text()
        self.assertIn('Class made(module, "TomorrowDescriptor", typeid(Self), &typeid(Quor::TISDBTDescriptor), '
                      '"What comes tomorrow.");', source)
        self.assertIn("bindTTomorrowDescriptor(module);", source)
        self.assertIn("from.getWeekDay()", source)
        self.assertIn("""\
class TomorrowDescriptor(ISDBTDescriptor):
    "What comes tomorrow."

    class WeekDay(IntEnum):
        WEEK_DAY_MONDAY = 1
    WEEK_DAY_MONDAY = WeekDay.WEEK_DAY_MONDAY
    @property
    def week_day(self) -> WeekDay | int:
        "The day of the week."
    def __init__(self, data: bytes | bytearray | memoryview) -> None:
        ...
    @staticmethod
    def parse(data: bytes | bytearray | memoryview) -> TomorrowDescriptor:
""", stub)


if __name__ == "__main__":
    unittest.main()
