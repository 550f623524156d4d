#include "Peer.h"

// libdvbpsi decodes packets: a decoder is attached to the packets of a PID and gives each new version of its table to a
// callback. A section of these four fits in one packet, which is made beforehand; timed is, from that packet on, what a
// receiver would run for it: collecting the section, its CRC_32, its table, the descriptors, the callback that reads
// and deletes it.

// These headers have no guards of their own, and need this order.
// clang-format off
#include <sys/types.h>
#include <dvbpsi/dvbpsi.h>
#include <dvbpsi/demux.h>
#include <dvbpsi/descriptor.h>
#include <dvbpsi/psi.h>
#include <dvbpsi/pat.h>
#include <dvbpsi/pmt.h>
#include <dvbpsi/sdt.h>
#include <dvbpsi/nit.h>
#include <dvbpsi/dr.h>
// clang-format on

#include <algorithm>
#include <memory>

namespace {

constexpr std::size_t PACKET_SIZE = 188;
using Packet = std::array<QUOR_U8, PACKET_SIZE>;

/// A packet with one whole section in it.
Packet packetOf(const ByteVector& section, unsigned continuityCounter) {
    constexpr unsigned PID = 0x0100;
    const ByteVector header = join({{0x47}, u16(PID, 0x4000), {static_cast<QUOR_U8>(0x10U | continuityCounter), 0x00}});
    Packet packet;
    packet.fill(0xFF);
    std::copy(section.begin(), section.end(), std::copy(header.begin(), header.end(), packet.begin()));
    return packet;
}

void add(Readout& readout, dvbpsi_descriptor_t* descriptor) {
    switch (descriptor->i_tag) {
    case 0x40: {
        const dvbpsi_network_name_dr_t* const network = dvbpsi_DecodeNetworkNameDr(descriptor);
        readout.addDescriptor(Kind::NETWORK_NAME, name(network->i_name_byte, network->i_name_length));
        break;
    }
    case 0x41: {
        const dvbpsi_service_list_dr_t* const services = dvbpsi_DecodeServiceListDr(descriptor);
        QUOR_U32 sum = 0;
        for (unsigned i = 0; i < services->i_service_count; ++i) {
            sum += bytesOf(services->i_service[i].i_service_id) + services->i_service[i].i_service_type;
        }
        readout.addDescriptor(Kind::SERVICE_LIST, sum);
        break;
    }
    case 0x48: {
        const dvbpsi_service_dr_t* const service = dvbpsi_DecodeServiceDr(descriptor);
        readout.addDescriptor(Kind::SERVICE,
                              service->i_service_type +
                                  name(service->i_service_provider_name, service->i_service_provider_name_length) +
                                  name(service->i_service_name, service->i_service_name_length));
        break;
    }
    case 0x4A: {
        const dvbpsi_linkage_dr_t* const linkage = dvbpsi_DecodeLinkageDr(descriptor);
        const QUOR_U32 stream = QUOR_U32{linkage->i_transport_stream_id} + linkage->i_original_network_id;
        readout.addDescriptor(Kind::LINKAGE, stream + linkage->i_service_id + linkage->i_linkage_type);
        break;
    }
    case 0x50: {
        const dvbpsi_component_dr_t* const component = dvbpsi_DecodeComponentDr(descriptor);
        const QUOR_U32 content = QUOR_U32{component->i_stream_content} + component->i_component_type;
        readout.addDescriptor(Kind::COMPONENT,
                              content + component->i_component_tag + letters(component->i_iso_639_code));
        break;
    }
    case 0x52:
        readout.addDescriptor(Kind::STREAM_IDENTIFIER, dvbpsi_DecodeStreamIdentifierDr(descriptor)->i_component_tag);
        break;
    case 0x53: {
        const dvbpsi_ca_identifier_dr_t* const systems = dvbpsi_DecodeCAIdentifierDr(descriptor);
        QUOR_U32 sum = 0;
        for (unsigned i = 0; i < systems->i_number; ++i) {
            sum += systems->p_system[i].i_ca_system_id;
        }
        readout.addDescriptor(Kind::CA_IDENTIFIER, sum);
        break;
    }
    case 0x55: {
        const dvbpsi_parental_rating_dr_t* const ratings = dvbpsi_DecodeParentalRatingDr(descriptor);
        QUOR_U32 sum = 0;
        for (unsigned i = 0; i < ratings->i_ratings_number; ++i) {
            const dvbpsi_parental_rating_t& rating = ratings->p_parental_rating[i];
            sum += (rating.i_country_code >> 16 & 0xFFU) + bytesOf(rating.i_country_code & 0xFFFFU) +
                   rated(rating.i_rating);
        }
        readout.addDescriptor(Kind::PARENTAL_RATING, sum);
        break;
    }
    default:
        break;
    }
}

void addAll(Readout& readout, dvbpsi_descriptor_t* descriptors) {
    for (dvbpsi_descriptor_t* descriptor = descriptors; descriptor != nullptr; descriptor = descriptor->p_next) {
        add(readout, descriptor);
    }
}

// The callbacks. What they read goes to the readout that was given when the decoder was attached.

void readPat(void* data, dvbpsi_pat_t* pat) {
    Readout& readout = *static_cast<Readout*>(data);
    readout.table = pat->i_ts_id;
    for (const dvbpsi_pat_program_t* program = pat->p_first_program; program != nullptr; program = program->p_next) {
        readout.addEntry(QUOR_U32{program->i_number} + program->i_pid);
    }
    dvbpsi_pat_delete(pat);
}

void readPmt(void* data, dvbpsi_pmt_t* pmt) {
    Readout& readout = *static_cast<Readout*>(data);
    readout.table = QUOR_U32{pmt->i_program_number} + pmt->i_pcr_pid;
    addAll(readout, pmt->p_first_descriptor);
    for (const dvbpsi_pmt_es_t* stream = pmt->p_first_es; stream != nullptr; stream = stream->p_next) {
        readout.addEntry(QUOR_U32{stream->i_type} + stream->i_pid);
        addAll(readout, stream->p_first_descriptor);
    }
    dvbpsi_pmt_delete(pmt);
}

void readSdt(void* data, dvbpsi_sdt_t* sdt) {
    Readout& readout = *static_cast<Readout*>(data);
    readout.table = QUOR_U32{sdt->i_extension} + sdt->i_network_id;
    for (const dvbpsi_sdt_service_t* service = sdt->p_first_service; service != nullptr; service = service->p_next) {
        readout.addEntry(QUOR_U32{service->i_service_id} + service->i_running_status + (service->b_free_ca ? 1 : 0) +
                         (service->b_eit_schedule ? 1 : 0) + (service->b_eit_present ? 1 : 0));
        addAll(readout, service->p_first_descriptor);
    }
    dvbpsi_sdt_delete(sdt);
}

void readNit(void* data, dvbpsi_nit_t* nit) {
    Readout& readout = *static_cast<Readout*>(data);
    readout.table = nit->i_network_id;
    addAll(readout, nit->p_first_descriptor);
    for (const dvbpsi_nit_ts_t* stream = nit->p_first_ts; stream != nullptr; stream = stream->p_next) {
        readout.addEntry(QUOR_U32{stream->i_ts_id} + stream->i_orig_network_id);
        addAll(readout, stream->p_first_descriptor);
    }
    dvbpsi_nit_delete(nit);
}

// The SDT and the NIT share their PIDs with other tables, so that a decoder comes to be when a table is met first.

void attachSdt(dvbpsi_t* handle, uint8_t tableId, uint16_t extension, void* readout) {
    dvbpsi_sdt_attach(handle, tableId, extension, readSdt, readout);
}

void attachNit(dvbpsi_t* handle, uint8_t tableId, uint16_t extension, void* readout) {
    dvbpsi_nit_attach(handle, tableId, extension, readNit, readout);
}

/// The packets of one PID with their decoder.
class Packets {
public:
    using Attach = void (*)(dvbpsi_t*, const ByteVector& section, Readout*);
    using Detach = void (*)(dvbpsi_t*);

    Packets(const Versions& versions, Attach attach, Detach detach)
        : m_handle(dvbpsi_new(nullptr, DVBPSI_MSG_NONE)), m_detach(detach) {
        for (unsigned i = 0; i < versions.size(); ++i) {
            m_packets[i] = packetOf(versions[i], i);
        }
        attach(m_handle, versions[0], &m_readout);
    }
    ~Packets() {
        m_detach(m_handle);
        dvbpsi_delete(m_handle);
    }
    Packets(const Packets&) = delete;
    Packets& operator=(const Packets&) = delete;

    Readout readNext() {
        m_readout = Readout();
        dvbpsi_packet_push(m_handle, m_packets[m_next++ % m_packets.size()].data());
        return m_readout;
    }

private:
    dvbpsi_t* m_handle;
    Detach m_detach;
    std::array<Packet, std::tuple_size<Versions>::value> m_packets;
    std::size_t m_next = 0;
    Readout m_readout;
};

Reader readerOf(const Versions& versions, Packets::Attach attach, Packets::Detach detach) {
    return [packets = std::make_shared<Packets>(versions, attach, detach)] { return packets->readNext(); };
}

Reader patReader(const Versions& versions) {
    const auto attach = [](dvbpsi_t* handle, const ByteVector& /*section*/, Readout* readout) {
        dvbpsi_pat_attach(handle, readPat, readout);
    };
    return readerOf(versions, attach, dvbpsi_pat_detach);
}

Reader pmtReader(const Versions& versions) {
    const auto attach = [](dvbpsi_t* handle, const ByteVector& section, Readout* readout) {
        const auto program = static_cast<uint16_t>(section[3] << 8 | section[4]);
        dvbpsi_pmt_attach(handle, program, readPmt, readout);
    };
    return readerOf(versions, attach, dvbpsi_pmt_detach);
}

template <dvbpsi_demux_new_cb_t attachTable> Reader demuxedReader(const Versions& versions) {
    const auto attach = [](dvbpsi_t* handle, const ByteVector& /*section*/, Readout* readout) {
        dvbpsi_AttachDemux(handle, attachTable, readout);
    };
    return readerOf(versions, attach, dvbpsi_DetachDemux);
}

} // namespace

Peer libdvbpsi() {
    return {patReader, pmtReader, demuxedReader<attachSdt>, demuxedReader<attachNit>};
}
