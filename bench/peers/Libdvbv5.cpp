#include "Peer.h"

// The tables of libdvbv5. Its functions for tables take a section whose CRC_32 its reading functions have verified with
// dvb_crc32(), so that the same is done and timed here. Names are converted to UTF-8.

#include <libdvbv5/crc32.h>
#include <libdvbv5/desc_ca_identifier.h>
#include <libdvbv5/desc_isdbt_delivery.h>
#include <libdvbv5/desc_network_name.h>
#include <libdvbv5/desc_partial_reception.h>
#include <libdvbv5/desc_service.h>
#include <libdvbv5/desc_ts_info.h>
#include <libdvbv5/descriptors.h>
#include <libdvbv5/dvb-fe.h>
#include <libdvbv5/nit.h>
#include <libdvbv5/pat.h>
#include <libdvbv5/pmt.h>
#include <libdvbv5/sdt.h>

#include <memory>

namespace {

dvb_v5_fe_parms* parameters = nullptr;

template <class Descriptor> const Descriptor& as(const dvb_desc& descriptor) {
    return reinterpret_cast<const Descriptor&>(descriptor);
}

void add(Readout& readout, const dvb_desc& descriptor) {
    switch (descriptor.type) {
    case network_name_descriptor:
        readout.addDescriptor(Kind::NETWORK_NAME, name(as<dvb_desc_network_name>(descriptor).network_name));
        break;
    case service_descriptor: {
        const auto& service = as<dvb_desc_service>(descriptor);
        readout.addDescriptor(Kind::SERVICE, service.service_type + name(service.provider) + name(service.name));
        break;
    }
    case CA_identifier_descriptor: {
        const auto& systems = as<dvb_desc_ca_identifier>(descriptor);
        QUOR_U32 sum = 0;
        for (unsigned i = 0; i < systems.caid_count; ++i) {
            sum += systems.caids[i];
        }
        readout.addDescriptor(Kind::CA_IDENTIFIER, sum);
        break;
    }
    case ISDBT_delivery_system_descriptor: {
        const auto& delivery = as<isdbt_desc_terrestrial_delivery_system>(descriptor);
        readout.addDescriptor(Kind::TERRESTRIAL_DELIVERY, QUOR_U32{delivery.area_code} + delivery.guard_interval +
                                                              delivery.transmission_mode + delivery.num_freqs);
        break;
    }
    case partial_reception_descriptor: {
        const auto& reception = as<isdb_desc_partial_reception>(descriptor);
        QUOR_U32 sum = 0;
        for (std::size_t i = 0; i < reception.length / sizeof *reception.partial_reception; ++i) {
            sum += reception.partial_reception[i].service_id;
        }
        readout.addDescriptor(Kind::PARTIAL_RECEPTION, sum);
        break;
    }
    case TS_Information_descriptor: {
        const auto& stream = as<dvb_desc_ts_info>(descriptor);
        QUOR_U32 sum = stream.remote_control_key_id + name(stream.ts_name);
        sum += stream.transmission_type.transmission_type_info;
        for (unsigned i = 0; i < stream.transmission_type.num_of_service; ++i) {
            sum += stream.service_id[i];
        }
        readout.addDescriptor(Kind::TS_INFORMATION, sum);
        break;
    }
    default:
        break;
    }
}

template <class Holder> void addAll(Readout& readout, const Holder& holder) {
    for (const dvb_desc* descriptor = holder.descriptor; descriptor != nullptr; descriptor = descriptor->next) {
        add(readout, *descriptor);
    }
}

struct Free {
    void operator()(dvb_table_pat* table) const { dvb_table_pat_free(table); }
    void operator()(dvb_table_pmt* table) const { dvb_table_pmt_free(table); }
    void operator()(dvb_table_sdt* table) const { dvb_table_sdt_free(table); }
    void operator()(dvb_table_nit* table) const { dvb_table_nit_free(table); }
};

template <class Table> QUOR_U32 versionOf(const Table& table) {
    return versioned(table.header.version, table.header.current_next != 0);
}

void add(Readout& readout, const dvb_table_pat& pat) {
    readout.table = pat.header.id + versionOf(pat);
    for (const dvb_table_pat_program* program = pat.program; program != nullptr; program = program->next) {
        readout.addEntry(QUOR_U32{program->service_id} + program->pid);
    }
}

void add(Readout& readout, const dvb_table_pmt& pmt) {
    readout.table = QUOR_U32{pmt.header.id} + pmt.pcr_pid + versionOf(pmt);
    addAll(readout, pmt);
    for (const dvb_table_pmt_stream* stream = pmt.stream; stream != nullptr; stream = stream->next) {
        readout.addEntry(QUOR_U32{stream->type} + stream->elementary_pid);
        addAll(readout, *stream);
    }
}

void add(Readout& readout, const dvb_table_sdt& sdt) {
    readout.table = QUOR_U32{sdt.header.id} + sdt.network_id + versionOf(sdt);
    for (const dvb_table_sdt_service* service = sdt.service; service != nullptr; service = service->next) {
        readout.addEntry(QUOR_U32{service->service_id} + service->running_status + service->free_CA_mode +
                         service->EIT_schedule + service->EIT_present_following);
        addAll(readout, *service);
    }
}

void add(Readout& readout, const dvb_table_nit& nit) {
    readout.table = nit.header.id + versionOf(nit);
    addAll(readout, nit);
    for (const dvb_table_nit_transport* stream = nit.transport; stream != nullptr; stream = stream->next) {
        readout.addEntry(QUOR_U32{stream->transport_id} + stream->network_id);
        addAll(readout, *stream);
    }
}

template <class Table> using Init = ssize_t (*)(dvb_v5_fe_parms*, const uint8_t*, ssize_t, Table**);

// The function that makes a table decodes its descriptors, too.
template <class Table, Init<Table> init, class Out> bool decode(Out& out, QUOR_U8* section, QUOR_U32 size) {
    if (dvb_crc32(section, size, 0xFFFFFFFF) != 0) {
        return false;
    }
    Table* made = nullptr;
    init(parameters, section, static_cast<ssize_t>(size) - DVB_CRC_SIZE, &made);
    const std::unique_ptr<Table, Free> table(made);
    if (!table) {
        return false;
    }
    out.read([&](Readout& readout) { add(readout, *table); });
    return true;
}

template <class Table, Init<Table> init>
constexpr auto decoder = decoderOf<Unread, decode<Table, init>, decode<Table, init>>;

} // namespace

Peer libdvbv5() {
    // The one charset that is converted without a call of iconv_open() for each name.
    static char charset[] = "iso-6937";
    parameters = dvb_fe_dummy();
    parameters->default_charset = charset;
    return {decoder<dvb_table_pat, dvb_table_pat_init>, decoder<dvb_table_pmt, dvb_table_pmt_init>,
            decoder<dvb_table_sdt, dvb_table_sdt_init>, decoder<dvb_table_nit, dvb_table_nit_init>};
}
