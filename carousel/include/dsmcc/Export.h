#ifndef DSMCC_EXPORT_H
#define DSMCC_EXPORT_H

/// What the shared library lets out.
#define DSMCC_API __attribute__((visibility("default")))

#endif
