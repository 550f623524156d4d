#include "Peer.h"

// GStreamer's library for MPEG-TS sections. A section object takes possession of its bytes, so that the copy that a
// caller makes for it belongs to what is timed; the CRC_32 is verified when the table is asked for.

#include <cstdlib>

#define GST_USE_UNSTABLE_API
#include <gst/mpegts/mpegts.h>

#include <memory>

namespace {

struct Unref {
    void operator()(GstMpegtsSection* section) const { gst_mpegts_section_unref(section); }
};
struct Free {
    void operator()(gchar* characters) const { g_free(characters); }
    void operator()(GPtrArray* items) const { g_ptr_array_unref(items); }
    void operator()(GArray* items) const { g_array_unref(items); }
    void operator()(GstMpegtsComponentDescriptor* component) const {
        gst_mpegts_dvb_component_descriptor_free(component);
    }
    void operator()(GstMpegtsDVBLinkageDescriptor* linkage) const { gst_mpegts_dvb_linkage_descriptor_free(linkage); }
};

using Section = std::unique_ptr<GstMpegtsSection, Unref>;
using Text = std::unique_ptr<gchar, Free>;
using Items = std::unique_ptr<GPtrArray, Free>;

Section sectionOf(guint16 pid, QUOR_U8* bytes, QUOR_U32 size) {
    return Section(gst_mpegts_section_new(pid, static_cast<guint8*>(g_memdup2(bytes, size)), size));
}

template <class Item> const Item& itemAt(const GPtrArray* items, guint index) {
    return *static_cast<const Item*>(g_ptr_array_index(items, index));
}

template <class Out> void decodeDescriptor(Out& out, const GstMpegtsDescriptor& descriptor) {
    switch (descriptor.tag) {
    case GST_MTS_DESC_DVB_NETWORK_NAME: {
        gchar* network = nullptr;
        if (gst_mpegts_descriptor_parse_dvb_network_name(&descriptor, &network) != FALSE) {
            const Text owner(network);
            out.read([&](Readout& readout) { readout.addDescriptor(Kind::NETWORK_NAME, name(network)); });
        }
        break;
    }
    case GST_MTS_DESC_DVB_SERVICE_LIST: {
        GPtrArray* services = nullptr;
        if (gst_mpegts_descriptor_parse_dvb_service_list(&descriptor, &services) != FALSE) {
            const Items owner(services);
            out.read([&](Readout& readout) {
                QUOR_U32 sum = 0;
                for (guint i = 0; i < services->len; ++i) {
                    const auto& service = itemAt<GstMpegtsDVBServiceListItem>(services, i);
                    sum += bytesOf(service.service_id) + static_cast<QUOR_U32>(service.type);
                }
                readout.addDescriptor(Kind::SERVICE_LIST, sum);
            });
        }
        break;
    }
    case GST_MTS_DESC_DVB_SERVICE: {
        GstMpegtsDVBServiceType type = GST_DVB_SERVICE_RESERVED_00;
        gchar* service = nullptr;
        gchar* provider = nullptr;
        if (gst_mpegts_descriptor_parse_dvb_service(&descriptor, &type, &service, &provider) != FALSE) {
            const Text owners[]{Text(service), Text(provider)};
            out.read([&](Readout& readout) {
                readout.addDescriptor(Kind::SERVICE, static_cast<QUOR_U32>(type) + name(provider) + name(service));
            });
        }
        break;
    }
    case GST_MTS_DESC_DVB_LINKAGE: {
        GstMpegtsDVBLinkageDescriptor* linkage = nullptr;
        if (gst_mpegts_descriptor_parse_dvb_linkage(&descriptor, &linkage) != FALSE) {
            const std::unique_ptr<GstMpegtsDVBLinkageDescriptor, Free> owner(linkage);
            out.read([&](Readout& readout) {
                const QUOR_U32 stream = QUOR_U32{linkage->transport_stream_id} + linkage->original_network_id;
                readout.addDescriptor(Kind::LINKAGE,
                                      stream + linkage->service_id + static_cast<QUOR_U32>(linkage->linkage_type));
            });
        }
        break;
    }
    case GST_MTS_DESC_DVB_COMPONENT: {
        GstMpegtsComponentDescriptor* component = nullptr;
        if (gst_mpegts_descriptor_parse_dvb_component(&descriptor, &component) != FALSE) {
            const std::unique_ptr<GstMpegtsComponentDescriptor, Free> owner(component);
            out.read([&](Readout& readout) {
                const QUOR_U32 content = QUOR_U32{component->stream_content} + component->component_type;
                readout.addDescriptor(Kind::COMPONENT,
                                      content + component->component_tag + letters(component->language_code));
            });
        }
        break;
    }
    case GST_MTS_DESC_DVB_STREAM_IDENTIFIER: {
        guint8 componentTag = 0;
        if (gst_mpegts_descriptor_parse_dvb_stream_identifier(&descriptor, &componentTag) != FALSE) {
            out.read([&](Readout& readout) { readout.addDescriptor(Kind::STREAM_IDENTIFIER, componentTag); });
        }
        break;
    }
    case GST_MTS_DESC_DVB_CA_IDENTIFIER: {
        GArray* systems = nullptr;
        if (gst_mpegts_descriptor_parse_dvb_ca_identifier(&descriptor, &systems) != FALSE) {
            const std::unique_ptr<GArray, Free> owner(systems);
            out.read([&](Readout& readout) {
                QUOR_U32 sum = 0;
                for (guint i = 0; i < systems->len; ++i) {
                    sum += g_array_index(systems, guint16, i);
                }
                readout.addDescriptor(Kind::CA_IDENTIFIER, sum);
            });
        }
        break;
    }
    case GST_MTS_DESC_DVB_PARENTAL_RATING: {
        GPtrArray* ratings = nullptr;
        if (gst_mpegts_descriptor_parse_dvb_parental_rating(&descriptor, &ratings) != FALSE) {
            const Items owner(ratings);
            out.read([&](Readout& readout) {
                QUOR_U32 sum = 0;
                for (guint i = 0; i < ratings->len; ++i) {
                    const auto& rating = itemAt<GstMpegtsDVBParentalRatingItem>(ratings, i);
                    sum += letters(rating.country_code) + rated(rating.rating);
                }
                readout.addDescriptor(Kind::PARENTAL_RATING, sum);
            });
        }
        break;
    }
    default:
        break;
    }
}

template <class Out> void decodeDescriptors(Out& out, const GPtrArray* descriptors) {
    for (guint i = 0; i < descriptors->len; ++i) {
        decodeDescriptor(out, itemAt<GstMpegtsDescriptor>(descriptors, i));
    }
}

QUOR_U32 versionOf(const Section& section) {
    return versioned(section->version_number, section->current_next_indicator != FALSE);
}

template <class Out> bool decodePat(Out& out, QUOR_U8* bytes, QUOR_U32 size) {
    const Section section = sectionOf(0x0000, bytes, size);
    const Items programs(gst_mpegts_section_get_pat(section.get()));
    if (!programs) {
        return false;
    }
    out.read([&](Readout& readout) {
        readout.table = section->subtable_extension + versionOf(section);
        for (guint i = 0; i < programs->len; ++i) {
            const auto& program = itemAt<GstMpegtsPatProgram>(programs.get(), i);
            readout.addEntry(QUOR_U32{program.program_number} + program.network_or_program_map_PID);
        }
    });
    return true;
}

template <class Out> bool decodePmt(Out& out, QUOR_U8* bytes, QUOR_U32 size) {
    const Section section = sectionOf(0x0100, bytes, size);
    const GstMpegtsPMT* const pmt = gst_mpegts_section_get_pmt(section.get());
    if (pmt == nullptr) {
        return false;
    }
    out.read(
        [&](Readout& readout) { readout.table = QUOR_U32{pmt->program_number} + pmt->pcr_pid + versionOf(section); });
    decodeDescriptors(out, pmt->descriptors);
    for (guint i = 0; i < pmt->streams->len; ++i) {
        const auto& stream = itemAt<GstMpegtsPMTStream>(pmt->streams, i);
        out.read([&](Readout& readout) { readout.addEntry(QUOR_U32{stream.stream_type} + stream.pid); });
        decodeDescriptors(out, stream.descriptors);
    }
    return true;
}

template <class Out> bool decodeSdt(Out& out, QUOR_U8* bytes, QUOR_U32 size) {
    const Section section = sectionOf(0x0011, bytes, size);
    const GstMpegtsSDT* const sdt = gst_mpegts_section_get_sdt(section.get());
    if (sdt == nullptr) {
        return false;
    }
    out.read([&](Readout& readout) {
        readout.table = QUOR_U32{sdt->transport_stream_id} + sdt->original_network_id + versionOf(section);
    });
    for (guint i = 0; i < sdt->services->len; ++i) {
        const auto& service = itemAt<GstMpegtsSDTService>(sdt->services, i);
        out.read([&](Readout& readout) {
            readout.addEntry(QUOR_U32{service.service_id} + static_cast<QUOR_U32>(service.running_status) +
                             (service.free_CA_mode != FALSE ? 1 : 0) + (service.EIT_schedule_flag != FALSE ? 1 : 0) +
                             (service.EIT_present_following_flag != FALSE ? 1 : 0));
        });
        decodeDescriptors(out, service.descriptors);
    }
    return true;
}

template <class Out> bool decodeNit(Out& out, QUOR_U8* bytes, QUOR_U32 size) {
    const Section section = sectionOf(0x0010, bytes, size);
    const GstMpegtsNIT* const nit = gst_mpegts_section_get_nit(section.get());
    if (nit == nullptr) {
        return false;
    }
    out.read([&](Readout& readout) { readout.table = nit->network_id + versionOf(section); });
    decodeDescriptors(out, nit->descriptors);
    for (guint i = 0; i < nit->streams->len; ++i) {
        const auto& stream = itemAt<GstMpegtsNITStream>(nit->streams, i);
        out.read([&](Readout& readout) {
            readout.addEntry(QUOR_U32{stream.transport_stream_id} + stream.original_network_id);
        });
        decodeDescriptors(out, stream.descriptors);
    }
    return true;
}

} // namespace

Peer gstreamer() {
    setenv("GST_REGISTRY_DISABLE", "yes", 1); // no plugin is needed, and none need be searched for
    gst_init(nullptr, nullptr);
    gst_mpegts_initialize();
    return {decoderOf<Unread, decodePat, decodePat>, decoderOf<Unread, decodePmt, decodePmt>,
            decoderOf<Unread, decodeSdt, decodeSdt>, decoderOf<Unread, decodeNit, decodeNit>};
}
