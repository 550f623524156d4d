#include "Peer.h"

// biTStream reads a section where it lies: inline functions for each field, no objects and no heap. To read a field is
// to decode it, so that the readout is what is timed, too.
//
// Used as its own printers (the headers *_print.h beside its others) and its example dvb_print_si.c use it, which are
// all the documentation that it has: psi_validate(), psi_check_crc() and the validation of the table, then the
// accessors by position for entries and descriptors, and the validation of each descriptor before its fields. Those
// accessors count from the beginning of their loop each time. What the example checks once all sections of a table are
// there, that no entry comes twice, is left out.
//
// A receiver may check the CRC_32 of all sections where it gathers them; that of a PMT then is checked twice.
//
// By hand, the loops are walked from each item to the next one by the library's sizes, as its validation does inside.

#include <bitstream/dvb/si.h>
#include <bitstream/mpeg/psi.h>

namespace {

void add(Readout& readout, QUOR_U8* descriptor) {
    switch (desc_get_tag(descriptor)) {
    case 0x40:
        if (desc40_validate(descriptor)) {
            QUOR_U8 length = 0;
            const QUOR_U8* const network = desc40_get_networkname(descriptor, &length);
            readout.addDescriptor(Kind::NETWORK_NAME, name(network, length));
        }
        break;
    case 0x41:
        if (desc41_validate(descriptor)) {
            QUOR_U32 sum = 0;
            const QUOR_U8* service = nullptr;
            for (QUOR_U8 i = 0; (service = desc41_get_service(descriptor, i)) != nullptr; ++i) {
                sum += bytesOf(desc41n_get_sid(service)) + desc41n_get_type(service);
            }
            readout.addDescriptor(Kind::SERVICE_LIST, sum);
        }
        break;
    case 0x48:
        if (desc48_validate(descriptor)) {
            QUOR_U8 providerLength = 0;
            QUOR_U8 serviceLength = 0;
            const QUOR_U8* const provider = desc48_get_provider(descriptor, &providerLength);
            const QUOR_U8* const service = desc48_get_service(descriptor, &serviceLength);
            readout.addDescriptor(Kind::SERVICE, desc48_get_type(descriptor) + name(provider, providerLength) +
                                                     name(service, serviceLength));
        }
        break;
    case 0x4A:
        if (desc4a_validate(descriptor)) {
            const QUOR_U32 stream = QUOR_U32{desc4a_get_tsid(descriptor)} + desc4a_get_onid(descriptor);
            readout.addDescriptor(Kind::LINKAGE, stream + desc4a_get_sid(descriptor) + desc4a_get_linkage(descriptor));
        }
        break;
    case 0x50:
        if (desc50_validate(descriptor)) {
            const QUOR_U32 content =
                QUOR_U32{desc50_get_stream_content(descriptor)} + desc50_get_component_type(descriptor);
            readout.addDescriptor(Kind::COMPONENT, content + desc50_get_component_tag(descriptor) +
                                                       letters(desc50_get_language(descriptor)));
        }
        break;
    case 0x52:
        if (desc52_validate(descriptor)) {
            readout.addDescriptor(Kind::STREAM_IDENTIFIER, desc52_get_component_tag(descriptor));
        }
        break;
    case 0x53:
        if (desc53_validate(descriptor)) {
            QUOR_U32 sum = 0;
            const QUOR_U8* system = nullptr;
            for (QUOR_U8 i = 0; (system = desc53_get_ca(descriptor, i)) != nullptr; ++i) {
                sum += desc53n_get_ca_sysid(system);
            }
            readout.addDescriptor(Kind::CA_IDENTIFIER, sum);
        }
        break;
    case 0x55:
        if (desc55_validate(descriptor)) {
            QUOR_U32 sum = 0;
            QUOR_U8* rating = nullptr;
            for (QUOR_U8 i = 0; (rating = desc55_get_rating(descriptor, i)) != nullptr; ++i) {
                sum += letters(desc55n_get_country_code(rating)) + rated(desc55n_get_rating(rating));
            }
            readout.addDescriptor(Kind::PARENTAL_RATING, sum);
        }
        break;
    default:
        break;
    }
}

QUOR_U8* endOf(QUOR_U8* section) {
    return section + PSI_HEADER_SIZE + psi_get_length(section) - PSI_CRC_SIZE;
}

/// Takes the items of a validated loop one by one.
/// @param at the accessor by position
template <bool byHand, class Position, class SizeOf, class Take>
void forEach(QUOR_U8* (*at)(QUOR_U8*, Position), QUOR_U8* holder, const QUOR_U8* end, SizeOf sizeOf, Take take) {
    QUOR_U8* item = at(holder, 0);
    for (Position next = 1; item != nullptr; ++next) {
        take(item);
        if constexpr (byHand) {
            item += sizeOf(item);
            item = item < end ? item : nullptr;
        } else {
            item = at(holder, next);
        }
    }
}

/// @param loop from its length on
template <bool byHand> void addAll(Readout& readout, QUOR_U8* loop) {
    forEach<byHand>(
        descs_get_desc, loop, loop + DESCS_HEADER_SIZE + descs_get_length(loop),
        [](const QUOR_U8* descriptor) { return DESC_HEADER_SIZE + desc_get_length(descriptor); },
        [&](QUOR_U8* descriptor) { add(readout, descriptor); });
}

QUOR_U32 versionOf(const QUOR_U8* section) {
    return versioned(psi_get_version(section), psi_get_current(section));
}

template <bool byHand> bool readPat(Readout& readout, QUOR_U8* pat, QUOR_U32 /*size*/) {
    if (!psi_validate(pat) || !psi_check_crc(pat) || !pat_validate(pat)) {
        return false;
    }
    readout.table = pat_get_tsid(pat) + versionOf(pat);
    forEach<byHand>(
        pat_get_program, pat, endOf(pat), [](const QUOR_U8* /*program*/) { return PAT_PROGRAM_SIZE; },
        [&](const QUOR_U8* program) { readout.addEntry(QUOR_U32{patn_get_program(program)} + patn_get_pid(program)); });
    return true;
}

template <bool byHand, bool checkedFirst = false> bool readPmt(Readout& readout, QUOR_U8* pmt, QUOR_U32 /*size*/) {
    if (!psi_validate(pmt) || (checkedFirst && !psi_check_crc(pmt)) ||
        !pmt_validate(pmt)) { // pmt_validate() verifies the CRC_32, unlike the others
        return false;
    }
    readout.table = QUOR_U32{pmt_get_program(pmt)} + pmt_get_pcrpid(pmt) + versionOf(pmt);
    addAll<byHand>(readout, pmt_get_descs(pmt));
    forEach<byHand>(
        pmt_get_es, pmt, endOf(pmt), [](const QUOR_U8* stream) { return PMT_ES_SIZE + pmtn_get_desclength(stream); },
        [&](QUOR_U8* stream) {
            readout.addEntry(QUOR_U32{pmtn_get_streamtype(stream)} + pmtn_get_pid(stream));
            addAll<byHand>(readout, pmtn_get_descs(stream));
        });
    return true;
}

template <bool byHand> bool readSdt(Readout& readout, QUOR_U8* sdt, QUOR_U32 /*size*/) {
    if (!psi_validate(sdt) || !psi_check_crc(sdt) || !sdt_validate(sdt)) {
        return false;
    }
    readout.table = QUOR_U32{sdt_get_tsid(sdt)} + sdt_get_onid(sdt) + versionOf(sdt);
    forEach<byHand>(
        sdt_get_service, sdt, endOf(sdt),
        [](const QUOR_U8* service) { return SDT_SERVICE_SIZE + sdtn_get_desclength(service); },
        [&](QUOR_U8* service) {
            readout.addEntry(QUOR_U32{sdtn_get_sid(service)} + sdtn_get_running(service) +
                             (sdtn_get_ca(service) ? 1 : 0) + (sdtn_get_eitschedule(service) ? 1 : 0) +
                             (sdtn_get_eitpresent(service) ? 1 : 0));
            addAll<byHand>(readout, sdtn_get_descs(service));
        });
    return true;
}

template <bool byHand> bool readNit(Readout& readout, QUOR_U8* nit, QUOR_U32 /*size*/) {
    if (!psi_validate(nit) || !psi_check_crc(nit) || !nit_validate(nit)) {
        return false;
    }
    readout.table = nit_get_nid(nit) + versionOf(nit);
    addAll<byHand>(readout, nit_get_descs(nit));
    forEach<byHand>(
        nit_get_ts, nit, endOf(nit), [](const QUOR_U8* stream) { return NIT_TS_SIZE + nitn_get_desclength(stream); },
        [&](QUOR_U8* stream) {
            readout.addEntry(QUOR_U32{nitn_get_tsid(stream)} + nitn_get_onid(stream));
            addAll<byHand>(readout, nitn_get_descs(stream));
        });
    return true;
}

template <bool byHand> Peer peer() {
    return {decoderOf<Readout, readPat<byHand>, readPat<byHand>>, decoderOf<Readout, readPmt<byHand>, readPmt<byHand>>,
            decoderOf<Readout, readSdt<byHand>, readSdt<byHand>>, decoderOf<Readout, readNit<byHand>, readNit<byHand>>};
}

} // namespace

Peer biTStream() {
    return peer<false>();
}

Peer biTStreamCheckedFirst() {
    Peer checkedFirst = peer<false>();
    checkedFirst[static_cast<std::size_t>(Table::PMT)] = decoderOf<Readout, readPmt<false, true>, readPmt<false, true>>;
    return checkedFirst;
}

Peer biTStreamByHand() {
    return peer<true>();
}
