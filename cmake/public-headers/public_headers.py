"""What the public headers declare, for programs in Python: read(LISTING) takes it from what PublicHeaders.cmake lists. What
the comments of members say is read when it is asked for."""

import re
from dataclasses import dataclass, field
from pathlib import Path

INCLUDE = Path(__file__).resolve().parents[2] / "include"

# Names that run words together, or whose capitals are no words.
SPELLINGS = {"PCRPID": "PcrPid", "CAPID": "CaPid", "NPTH": "NptH", "NPTL": "NptL", "AVC24": "Avc_24", "90kHz": "90khz",
             "IDs": "Ids"}
# Lists that are called otherwise than what gives their elements.
LISTS = {"TPATTable.get": "programs", "TPMTTable.getProgramMap": "elementary_streams",
         "TNITTable.getTransportStreamInfo": "transport_streams", "TSDTTable.getServiceDescription": "services",
         "TCompatibilityDescriptor.getCompatibilityDescriptorItem": "items",
         "TCompatibilityDescriptorItem.getCompatibilityDescriptorSubItem": "sub_items",
         "TCountryAvailabilityDescriptor.get": "country_codes",
         "TDownloadContentDescriptor.getDownloadContentDescriptorItem": "modules",
         "TGingaApplicationDescriptor.get": "parameters"}


def snake_case(name):
    for run, apart in SPELLINGS.items():
        name = name.replace(run, apart)
    return re.sub(r"(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])", "_", name).lower()


@dataclass
class Member:
    """One that everybody may use. PublicHeaders.cmake says what the fields of each kind are."""

    kind: str
    type: str
    name: str
    text: str

    @property
    def is_getter(self):
        return self.kind == "const" and re.fullmatch(r"(get|is|has)([A-Z0-9].*)?|size", self.name) is not None

    @property
    def is_element(self):
        """Whether it gives an element of a list, by key or by position."""
        return len(self.parameter_types) == 1 and self.name != "getDescriptor" and "std::list" not in self.type

    @property
    def parameter_types(self):
        """ "QUOR_U8 streamType, QUOR_U8 componentID" are ["QUOR_U8", "QUOR_U8"]. """
        return [re.sub(r"\s*\b\w+$", "", each) for each in self.text.split(", ") if each]


    @property
    def values(self):
        """The names of an enumeration with their values: [("ObjectCarousel", 1), ...]."""
        return [(name, int(value, 0)) for name, value in (each.split(" = ") for each in self.text.split(", "))]


@dataclass
class Class:
    header: str
    name: str
    base: str  # empty without one
    comment: str
    members: list = field(default_factory=list)

    @property
    def getters(self):
        return [each for each in self.members if each.is_getter]

    def list_of(self, element):
        """How the list is called, what gives its keys, and what its size; without keys it goes by position."""
        by = element.parameter_types[0]
        names = [each.name for each in self.getters]
        name = LISTS.get(f"{self.name}.{element.name}") or snake_case(element.name[3:] or "Item") + "s"
        keys = [each for each in self.getters if each.type[:-1] == f"std::list<{by}>" and not each.text
                and (each.name == "getDescriptorTags") == (element.name == "getDescriptor")]
        sizes = [each for each in (f"{element.name}Size", f"{element.name}Count", "size") if each in names]
        return name, (keys or [None])[0], (sizes or [None])[0]

    def comment_of(self, member):
        """What stands above its declaration, line by line; empty when nothing does, or when it is said of several."""
        text = (INCLUDE / self.header).read_text()
        body = text[text.index(f" QUOR_ISDBT_API {self.name} "):].split("\n};")[0]
        declared = re.findall(rf"((?:^ {{4}}///.*\n)*)^ {{4}}(?![ /])[^;{{}}]*?\b{member.name}(?=\(| =| :)", body, re.M)
        comment = declared[[each.name for each in self.members[:self.members.index(member)]].count(member.name)]
        return "" if "@{" in comment else re.sub(r"^ *///(?: |$)", "", comment, flags=re.M).strip()


def read(listing):
    """The classes by name, in the order of the headers, with their members in the order in which they are declared."""
    classes = {}
    for line in Path(listing).read_text().splitlines():
        header, name, *member = line.split("\t")
        if name not in classes:
            classes[name] = Class(header, name, base=member[1], comment=member[3])
        else:
            classes[name].members.append(Member(*member))
    return classes
