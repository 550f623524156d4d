#include "Peer.h"

// libdvbpsi decodes packets: a decoder is attached to the packets of a PID and gives each new version of its table to a
// callback. A section of these four fits in one packet, which is made beforehand; timed is, from that packet on, what a
// receiver would run for it: collecting the section, its CRC_32, its table, and the callback that has the descriptors
// decoded and deletes all of it.

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

template <class Out> void decodeDescriptor(Out& out, dvbpsi_descriptor_t* descriptor) {
    switch (descriptor->i_tag) {
    case 0x40: {
        const dvbpsi_network_name_dr_t* const network = dvbpsi_DecodeNetworkNameDr(descriptor);
        out.read([&](Readout& readout) {
            readout.addDescriptor(Kind::NETWORK_NAME, name(network->i_name_byte, network->i_name_length));
        });
        break;
    }
    case 0x41: {
        const dvbpsi_service_list_dr_t* const services = dvbpsi_DecodeServiceListDr(descriptor);
        out.read([&](Readout& readout) {
            QUOR_U32 sum = 0;
            for (unsigned i = 0; i < services->i_service_count; ++i) {
                sum += bytesOf(services->i_service[i].i_service_id) + services->i_service[i].i_service_type;
            }
            readout.addDescriptor(Kind::SERVICE_LIST, sum);
        });
        break;
    }
    case 0x48: {
        const dvbpsi_service_dr_t* const service = dvbpsi_DecodeServiceDr(descriptor);
        out.read([&](Readout& readout) {
            readout.addDescriptor(Kind::SERVICE,
                                  service->i_service_type +
                                      name(service->i_service_provider_name, service->i_service_provider_name_length) +
                                      name(service->i_service_name, service->i_service_name_length));
        });
        break;
    }
    case 0x4A: {
        const dvbpsi_linkage_dr_t* const linkage = dvbpsi_DecodeLinkageDr(descriptor);
        out.read([&](Readout& readout) {
            const QUOR_U32 stream = QUOR_U32{linkage->i_transport_stream_id} + linkage->i_original_network_id;
            readout.addDescriptor(Kind::LINKAGE, stream + linkage->i_service_id + linkage->i_linkage_type);
        });
        break;
    }
    case 0x50: {
        const dvbpsi_component_dr_t* const component = dvbpsi_DecodeComponentDr(descriptor);
        out.read([&](Readout& readout) {
            const QUOR_U32 content = QUOR_U32{component->i_stream_content} + component->i_component_type;
            readout.addDescriptor(Kind::COMPONENT,
                                  content + component->i_component_tag + letters(component->i_iso_639_code));
        });
        break;
    }
    case 0x52: {
        const dvbpsi_stream_identifier_dr_t* const stream = dvbpsi_DecodeStreamIdentifierDr(descriptor);
        out.read([&](Readout& readout) { readout.addDescriptor(Kind::STREAM_IDENTIFIER, stream->i_component_tag); });
        break;
    }
    case 0x53: {
        const dvbpsi_ca_identifier_dr_t* const systems = dvbpsi_DecodeCAIdentifierDr(descriptor);
        out.read([&](Readout& readout) {
            QUOR_U32 sum = 0;
            for (unsigned i = 0; i < systems->i_number; ++i) {
                sum += systems->p_system[i].i_ca_system_id;
            }
            readout.addDescriptor(Kind::CA_IDENTIFIER, sum);
        });
        break;
    }
    case 0x55: {
        const dvbpsi_parental_rating_dr_t* const ratings = dvbpsi_DecodeParentalRatingDr(descriptor);
        out.read([&](Readout& readout) {
            QUOR_U32 sum = 0;
            for (unsigned i = 0; i < ratings->i_ratings_number; ++i) {
                const dvbpsi_parental_rating_t& rating = ratings->p_parental_rating[i];
                sum += (rating.i_country_code >> 16 & 0xFFU) + bytesOf(rating.i_country_code & 0xFFFFU) +
                       rated(rating.i_rating);
            }
            readout.addDescriptor(Kind::PARENTAL_RATING, sum);
        });
        break;
    }
    default:
        break;
    }
}

template <class Out> void decodeDescriptors(Out& out, dvbpsi_descriptor_t* descriptors) {
    for (dvbpsi_descriptor_t* descriptor = descriptors; descriptor != nullptr; descriptor = descriptor->p_next) {
        decodeDescriptor(out, descriptor);
    }
}

/// What a callback leaves.
template <class Out> struct Outcome {
    Out out;
    bool decoded = false;
};

template <class Table> QUOR_U32 versionOf(const Table& table) {
    return versioned(table.i_version, table.b_current_next);
}

// The callbacks. Their data is the outcome that was given when the decoder was attached.

template <class Out> void takePat(void* data, dvbpsi_pat_t* pat) {
    auto& [out, decoded] = *static_cast<Outcome<Out>*>(data);
    out.read([&](Readout& readout) {
        readout.table = pat->i_ts_id + versionOf(*pat);
        for (const dvbpsi_pat_program_t* program = pat->p_first_program; program != nullptr;
             program = program->p_next) {
            readout.addEntry(QUOR_U32{program->i_number} + program->i_pid);
        }
    });
    dvbpsi_pat_delete(pat);
    decoded = true;
}

template <class Out> void takePmt(void* data, dvbpsi_pmt_t* pmt) {
    auto& [out, decoded] = *static_cast<Outcome<Out>*>(data);
    out.read(
        [&](Readout& readout) { readout.table = QUOR_U32{pmt->i_program_number} + pmt->i_pcr_pid + versionOf(*pmt); });
    decodeDescriptors(out, pmt->p_first_descriptor);
    for (const dvbpsi_pmt_es_t* stream = pmt->p_first_es; stream != nullptr; stream = stream->p_next) {
        out.read([&](Readout& readout) { readout.addEntry(QUOR_U32{stream->i_type} + stream->i_pid); });
        decodeDescriptors(out, stream->p_first_descriptor);
    }
    dvbpsi_pmt_delete(pmt);
    decoded = true;
}

template <class Out> void takeSdt(void* data, dvbpsi_sdt_t* sdt) {
    auto& [out, decoded] = *static_cast<Outcome<Out>*>(data);
    out.read(
        [&](Readout& readout) { readout.table = QUOR_U32{sdt->i_extension} + sdt->i_network_id + versionOf(*sdt); });
    for (const dvbpsi_sdt_service_t* service = sdt->p_first_service; service != nullptr; service = service->p_next) {
        out.read([&](Readout& readout) {
            readout.addEntry(QUOR_U32{service->i_service_id} + service->i_running_status +
                             (service->b_free_ca ? 1 : 0) + (service->b_eit_schedule ? 1 : 0) +
                             (service->b_eit_present ? 1 : 0));
        });
        decodeDescriptors(out, service->p_first_descriptor);
    }
    dvbpsi_sdt_delete(sdt);
    decoded = true;
}

template <class Out> void takeNit(void* data, dvbpsi_nit_t* nit) {
    auto& [out, decoded] = *static_cast<Outcome<Out>*>(data);
    out.read([&](Readout& readout) { readout.table = nit->i_network_id + versionOf(*nit); });
    decodeDescriptors(out, nit->p_first_descriptor);
    for (const dvbpsi_nit_ts_t* stream = nit->p_first_ts; stream != nullptr; stream = stream->p_next) {
        out.read([&](Readout& readout) { readout.addEntry(QUOR_U32{stream->i_ts_id} + stream->i_orig_network_id); });
        decodeDescriptors(out, stream->p_first_descriptor);
    }
    dvbpsi_nit_delete(nit);
    decoded = true;
}

template <class Out> void attachPat(dvbpsi_t* handle, const ByteVector& /*section*/, Outcome<Out>* outcome) {
    dvbpsi_pat_attach(handle, takePat<Out>, outcome);
}

template <class Out> void attachPmt(dvbpsi_t* handle, const ByteVector& section, Outcome<Out>* outcome) {
    const auto program = static_cast<uint16_t>(section[3] << 8 | section[4]);
    dvbpsi_pmt_attach(handle, program, takePmt<Out>, outcome);
}

// The SDT and the NIT share their PIDs with other tables, so that a decoder comes to be when a table is met first.

template <class Out> void attachSdt(dvbpsi_t* handle, const ByteVector& /*section*/, Outcome<Out>* outcome) {
    const auto attach = [](dvbpsi_t* demux, uint8_t tableId, uint16_t extension, void* data) {
        dvbpsi_sdt_attach(demux, tableId, extension, takeSdt<Out>, data);
    };
    dvbpsi_AttachDemux(handle, attach, outcome);
}

template <class Out> void attachNit(dvbpsi_t* handle, const ByteVector& /*section*/, Outcome<Out>* outcome) {
    const auto attach = [](dvbpsi_t* demux, uint8_t tableId, uint16_t extension, void* data) {
        dvbpsi_nit_attach(demux, tableId, extension, takeNit<Out>, data);
    };
    dvbpsi_AttachDemux(handle, attach, outcome);
}

template <class Out> using Attach = void (*)(dvbpsi_t*, const ByteVector& section, Outcome<Out>*);
using Detach = void (*)(dvbpsi_t*);

/// The packets of one PID with their decoder.
template <class Out> class Packets {
public:
    Packets(const Versions& versions, Attach<Out> attach, Detach detach)
        : m_handle(dvbpsi_new(nullptr, DVBPSI_MSG_NONE)), m_detach(detach) {
        for (unsigned i = 0; i < versions.size(); ++i) {
            m_packets[i] = packetOf(versions[i], i);
        }
        attach(m_handle, versions[0], &m_outcome);
    }
    ~Packets() {
        m_detach(m_handle);
        dvbpsi_delete(m_handle);
    }
    Packets(const Packets&) = delete;
    Packets& operator=(const Packets&) = delete;

    const Outcome<Out>& decodeNext() {
        m_outcome = Outcome<Out>();
        dvbpsi_packet_push(m_handle, m_packets[m_next++ % m_packets.size()].data());
        return m_outcome;
    }

private:
    dvbpsi_t* m_handle;
    Detach m_detach;
    std::array<Packet, std::tuple_size<Versions>::value> m_packets;
    std::size_t m_next = 0;
    Outcome<Out> m_outcome;
};

template <Attach<Unread> attach, Attach<Readout> attachToRead, Detach detach>
Decoder decoderOfPackets(const Versions& versions) {
    return {[packets = std::make_shared<Packets<Unread>>(versions, attach, detach)] {
                return packets->decodeNext().decoded;
            },
            [packets = std::make_shared<Packets<Readout>>(versions, attachToRead, detach)] {
                return packets->decodeNext().out;
            }};
}

} // namespace

Peer libdvbpsi() {
    return {decoderOfPackets<attachPat, attachPat, dvbpsi_pat_detach>,
            decoderOfPackets<attachPmt, attachPmt, dvbpsi_pmt_detach>,
            decoderOfPackets<attachSdt, attachSdt, dvbpsi_DetachDemux>,
            decoderOfPackets<attachNit, attachNit, dvbpsi_DetachDemux>};
}
