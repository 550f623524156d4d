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

// What stands in their loops: a descriptor of each kind that the library knows there.
ByteVector componentDescriptors();
ByteVector networkDescriptors();
ByteVector serviceDescriptors();
ByteVector applicationDescriptors(); ///< of any application
ByteVector gingaJDescriptors();
ByteVector gingaNclDescriptors();
