#pragma once

#include "Inspector.h"
#include "Views.h"
#include "describing/Conventions.h"
#include "extracting/CarouselFolder.h"
#include "inputs/Timetable.h"
#include "terminal/Output.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace inspect {

/// What the user asks for.
struct Options {
    std::vector<std::string> inputs;              ///< files, "-", or addresses: "udp://239.1.1.1:5000"
    bool sections = false;                        ///< the files hold sections, no packets
    std::optional<std::vector<std::uint8_t>> hex; ///< sections, packets or descriptors, in place of the inputs
    std::optional<double> bitRate;                ///< of streams without PCR
    std::optional<std::uint8_t> descriptorOf;     ///< the bytes are descriptors of this table_id
    Interest interest;
    Range range;
    bool merge = false;                  ///< the files are lines of ranges
    unsigned jobs = 1;                   ///< files that are read at once
    std::optional<std::string> exportTo; ///< FILE.sec, FILE.hex or a folder
    std::optional<std::string> report;   ///< the file of a page
    std::optional<std::string> serve;    ///< where it is served: "8080", "[::]:8080"
    std::optional<ExtractionWishes> extraction;
    TimeZone zone;
    std::string charset = Charset::AUTO;
    const View* view = &views().front();
    bool full = false; ///< the tree has all that the tables say
    bool json = false;
    Colour colour = Colour::Auto;
    std::optional<std::size_t> width; ///< of the lines; that of the terminal if not given
    Times times;
    std::optional<std::string> log;     ///< file to which all is written
    std::optional<std::string> metrics; ///< where they are served: "9464", "[::]:9464"
    bool lenient = false;               ///< faults are no failure
};

/// The command line cannot be understood. The text says why.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Reads the words of the command line.
/// @return nothing when they asked for help or the version, which then have been printed.
/// @throws UsageError
std::optional<Options> readOptions(std::vector<std::string> words);

} // namespace inspect
