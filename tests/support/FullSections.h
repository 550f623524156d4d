#pragma once

#include "support/Bytes.h"

// One section of each table, which holds every entry, descriptor and item that the library knows in it.
ByteVector fullPat();
ByteVector fullPmt();
ByteVector fullTot();
ByteVector fullNit();
ByteVector fullSdt();
ByteVector fullAit();
ByteVector fullSdtt();
ByteVector fullDsmccSection();

// The descriptors of an elementary stream, a transport stream and a service: each kind that such a loop may have.
ByteVector componentDescriptors();
ByteVector networkDescriptors();
ByteVector serviceDescriptors();
