"""Sections of ISDB-T streams as typed objects, and what isdbt-inspect says of streams."""

from quor_isdbt import _quor_isdbt
from quor_isdbt._quor_isdbt import *
from quor_isdbt.inspecting import Inspection as Inspection, inspect as inspect
from quor_isdbt.refusal import Refused as Refused
