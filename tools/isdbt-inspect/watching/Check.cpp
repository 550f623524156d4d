#include "watching/Check.h"

#include <algorithm>

namespace inspect {

namespace {

using Each = Check::Each;
using Limited = Check::Limited;

constexpr std::string_view NO_TIMES = "packets come without times that are exact enough";
constexpr std::string_view NO_MODEL = "a decoder's buffers need the time of each packet";

Check happening(std::string_view name, std::string_view indicator, std::string_view what,
                Limited limited = Limited::Never) {
    return {name, indicator, what, limited};
}

Check silence(std::string_view name, std::string_view indicator, std::string_view what) {
    return {name, indicator, what, Limited::Seconds, true};
}

Check table(std::string_view name, std::string_view indicator, std::string_view what, const Check::TableOf& table) {
    return {name, indicator, what, Limited::Seconds, true, table};
}

Check impossible(std::string_view name, std::string_view indicator, std::string_view what, std::string_view why) {
    return {name, indicator, what, Limited::Never, false, std::nullopt, why};
}

} // namespace

const std::vector<Check>& checks() {
    static const std::vector<Check> CHECKS{
        happening("sync_loss", "1.1", "lost sync"),
        happening("sync_byte", "1.2", "bytes that are no packets"),
        table("pat_interval", "1.3.a", "PAT", {0x00, 0x00, 0x0000, Each::OnPid}),
        happening("scrambled_table", "1.3.a, 1.5.a", "scrambled PAT or PMT"),
        happening("wrong_table_id", "1.3.a, 2.6, 3.x", "wrong table_id on a PID"),
        happening("continuity", "1.4", "wrong continuity_counter"),
        happening("loss", "1.4", "loss of packets of several PIDs at once"),
        silence("pmt_interval", "1.5.a", "PMT"),
        silence("pmt_one_seg_interval", "1.5.a", "PMT"),
        silence("pmt_engineering_interval", "1.5.a", "PMT"),
        silence("video_audio_pid", "1.6", "packet of video or audio"),
        silence("other_pid", "1.6", "packet"),
        happening("transport_error", "2.1", "transport_error_indicator"),
        happening("crc", "2.2", "wrong CRC_32"),
        silence("pcr_interval", "2.3.a", "PCR"),
        silence("pcr_one_seg_interval", "2.3.a", "PCR"),
        happening("pcr_jump", "2.3.b", "unannounced jump of the PCR"),
        happening("pcr_frozen", "", "frozen PCR"),
        happening("pcr_ceased", "", "end of the PCRs"),
        impossible("pcr_accuracy", "2.4", "accuracy of the PCR", NO_TIMES),
        silence("pts_interval", "2.5", "PTS"),
        table("cat_interval", "2.6", "CAT", {0x01, 0x01, 0x0001, Each::OnPid}),
        table("nit_interval", "3.1.a", "NIT", {0x40, 0x40, 0x0010, Each::OnPid}),
        table("nit_other_interval", "3.1.b", "NIT of another network", {0x41, 0x41, 0x0010, Each::Section}),
        happening("min_gap", "3.x", "gap between sections of a table", Limited::Seconds),
        happening("declared_cycle", "3.2", "cycles that the BIT declares", Limited::Times),
        table("bat_interval", "3.2", "BAT", {0x4A, 0x4A, 0x0011, Each::OfTable}),
        table("eit_mobile_interval", "3.2", "M-EIT p/f", {0x4E, 0x4E, 0x0026, Each::Section}),
        table("eit_one_seg_interval", "3.2", "L-EIT p/f", {0x4E, 0x4E, 0x0027, Each::Section}),
        table("eit_schedule_interval", "3.2", "EIT schedule", {0x50, 0x57, 0x0012, Each::OfTable}),
        table("eit_schedule_extended_interval", "3.2", "extended EIT schedule", {0x58, 0x5F, 0x0012, Each::OfTable}),
        table("eit_schedule_other_interval", "3.2", "EIT schedule of another stream",
              {0x60, 0x6F, 0x0012, Each::OfTable}),
        table("bit_interval", "3.2", "BIT", {0xC4, 0xC4, 0x0024, Each::OnPid}),
        table("cdt_interval", "3.2", "CDT", {0xC8, 0xC8, 0x0029, Each::OnPid}),
        table("sdtt_interval", "3.2", "SDTT", {0xC3, 0xC3, std::nullopt, Each::OnPid}),
        table("ait_interval", "3.2", "AIT", {0x74, 0x74, std::nullopt, Each::OfTable}),
        impossible("buffer", "3.3", "buffers of the decoder", NO_MODEL),
        happening("unreferenced_pid", "3.4.a", "PID that no table names", Limited::Seconds),
        happening("unreferenced_pid_isdb", "3.4.a", "PID that no table names", Limited::Seconds),
        table("sdt_interval", "3.5.a", "SDT", {0x42, 0x42, 0x0011, Each::OnPid}),
        table("sdt_other_interval", "3.5.b", "SDT of another stream", {0x46, 0x46, 0x0011, Each::Section}),
        table("eit_interval", "3.6.a, 3.6.c", "EIT p/f", {0x4E, 0x4E, 0x0012, Each::Section}),
        table("eit_other_interval", "3.6.b", "EIT p/f of another stream", {0x4F, 0x4F, 0x0012, Each::Section}),
        table("tdt_interval", "3.8", "TDT", {0x70, 0x70, 0x0014, Each::OnPid}),
        table("tot_interval", "3.8", "TOT", {0x73, 0x73, 0x0014, Each::OnPid}),
        impossible("empty_buffer", "3.9", "empty buffers of the decoder", NO_MODEL),
        impossible("data_delay", "3.10", "delay of data in the decoder", NO_MODEL),
        happening("time_runs_back", "", "time of day that runs back"),
        happening("version_flaps", "", "versions that go back and forth", Limited::Seconds),
        happening("silent_change", "", "change without a new version"),
        happening("original_network", "", "network that the NIT and the SDT disagree about"),
        happening("no_packets", "", "packets", Limited::Seconds),
        happening("pause", "", "pause of the sender"),
        happening("slow_clock", "", "clock that is slower than the arrival"),
        happening("new_stream", "", "new stream"),
        happening("looped", "", "stream that begins again"),
    };
    return CHECKS;
}

const Check* checkNamed(std::string_view name) {
    const auto& all = checks();
    const auto found = std::find_if(all.begin(), all.end(), [name](const Check& each) { return each.name == name; });
    return found == all.end() ? nullptr : &*found;
}

} // namespace inspect
