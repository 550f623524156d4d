#pragma once

#include "QuorDefs.h"

/// Whether the CRC_32 at the end of a section is right. Takes eight bytes at a time, with a table for each.
bool crc32IsRight(const QUOR_U8* section, QUOR_U32 size);
