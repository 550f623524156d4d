#include "Peer.h"

// biTStream reads a section where it lies: inline functions for each field, no objects and no heap. To read a field is
// to decode it, so that the readout is what is timed, too. Verified, with its own functions, is what keeps those inside
// the section: the CRC_32, the loops and the fields of each descriptor. Loops are walked with the library's sizes of
// their entries, as its own validation does, and not with its accessors by position, which count from the beginning
// each time.

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

/// @param loop from its length on; validated
void addAll(Readout& readout, QUOR_U8* loop) {
    QUOR_U8* descriptor = loop + DESCS_HEADER_SIZE;
    const QUOR_U8* const end = descriptor + descs_get_length(loop);
    while (descriptor < end) {
        add(readout, descriptor);
        descriptor += DESC_HEADER_SIZE + desc_get_length(descriptor);
    }
}

QUOR_U32 versionOf(const QUOR_U8* section) {
    return versioned(psi_get_version(section), psi_get_current(section));
}

QUOR_U8* endOf(QUOR_U8* section) {
    return section + PSI_HEADER_SIZE + psi_get_length(section) - PSI_CRC_SIZE;
}

bool readPat(Readout& readout, QUOR_U8* pat, QUOR_U32 /*size*/) {
    if (!psi_validate(pat) || !psi_check_crc(pat) || !pat_validate(pat)) {
        return false;
    }
    readout.table = pat_get_tsid(pat) + versionOf(pat);
    const QUOR_U8* const end = endOf(pat);
    for (const QUOR_U8* program = pat + PAT_HEADER_SIZE; program < end; program += PAT_PROGRAM_SIZE) {
        readout.addEntry(QUOR_U32{patn_get_program(program)} + patn_get_pid(program));
    }
    return true;
}

bool readPmt(Readout& readout, QUOR_U8* pmt, QUOR_U32 /*size*/) {
    if (!psi_validate(pmt) || !pmt_validate(pmt)) { // pmt_validate() verifies the CRC_32, unlike the others
        return false;
    }
    readout.table = QUOR_U32{pmt_get_program(pmt)} + pmt_get_pcrpid(pmt) + versionOf(pmt);
    addAll(readout, pmt_get_descs(pmt));
    const QUOR_U8* const end = endOf(pmt);
    for (QUOR_U8* stream = pmt + PMT_HEADER_SIZE + pmt_get_desclength(pmt); stream < end;
         stream += PMT_ES_SIZE + pmtn_get_desclength(stream)) {
        readout.addEntry(QUOR_U32{pmtn_get_streamtype(stream)} + pmtn_get_pid(stream));
        addAll(readout, pmtn_get_descs(stream));
    }
    return true;
}

bool readSdt(Readout& readout, QUOR_U8* sdt, QUOR_U32 /*size*/) {
    if (!psi_validate(sdt) || !psi_check_crc(sdt) || !sdt_validate(sdt)) {
        return false;
    }
    readout.table = QUOR_U32{sdt_get_tsid(sdt)} + sdt_get_onid(sdt) + versionOf(sdt);
    const QUOR_U8* const end = endOf(sdt);
    for (QUOR_U8* service = sdt + SDT_HEADER_SIZE; service < end;
         service += SDT_SERVICE_SIZE + sdtn_get_desclength(service)) {
        readout.addEntry(QUOR_U32{sdtn_get_sid(service)} + sdtn_get_running(service) + (sdtn_get_ca(service) ? 1 : 0) +
                         (sdtn_get_eitschedule(service) ? 1 : 0) + (sdtn_get_eitpresent(service) ? 1 : 0));
        addAll(readout, sdtn_get_descs(service));
    }
    return true;
}

bool readNit(Readout& readout, QUOR_U8* nit, QUOR_U32 /*size*/) {
    if (!psi_validate(nit) || !psi_check_crc(nit) || !nit_validate(nit)) {
        return false;
    }
    readout.table = nit_get_nid(nit) + versionOf(nit);
    addAll(readout, nit_get_descs(nit));
    const QUOR_U8* const end = endOf(nit);
    for (QUOR_U8* stream = nit_get_header2(nit) + NIT_HEADER2_SIZE; stream < end;
         stream += NIT_TS_SIZE + nitn_get_desclength(stream)) {
        readout.addEntry(QUOR_U32{nitn_get_tsid(stream)} + nitn_get_onid(stream));
        addAll(readout, nitn_get_descs(stream));
    }
    return true;
}

} // namespace

Peer biTStream() {
    return {decoderOf<Readout, readPat, readPat>, decoderOf<Readout, readPmt, readPmt>,
            decoderOf<Readout, readSdt, readSdt>, decoderOf<Readout, readNit, readNit>};
}
