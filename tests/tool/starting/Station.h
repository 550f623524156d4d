#pragma once

#include "CarouselMessages.h"
#include "reports/Application.h"
#include "support/Bytes.h"

#include <string>
#include <vector>

/// A file or directory of a carousel, in a module of its own.
struct Carried {
    unsigned module;
    ByteVector object;
    ByteVector descriptors = {}; ///< of the module
};

/// A service with one application, on air for some turns of its carousel. Each section takes 20 ms.
struct Station {
    std::string ait = "F004 FD 02 00A3";                                ///< descriptors of its component in the PMT
    std::string carouselComponent = "0B E140 F009 52010B 130400000002"; ///< in the PMT
    std::string controlCode = "01";
    ByteVector descriptors = usual("/guia", "principal.ncl"); ///< of the application
    std::vector<ByteVector> carousel = sections(files());     ///< of a turn
    std::vector<ByteVector> events = {};                      ///< on PID 0x0150, of a turn
    unsigned turns = 3;
    bool isScrambled = false; ///< the carousel

    /// The descriptors of an NCL application.
    static ByteVector usual(const std::string& base, const std::string& initial);
    static ByteVector application();
    static ByteVector transport();
    static ByteVector location(QUOR_U8 tag, const std::string& base, const std::string& extension,
                               const std::string& initial);

    /// The service gateway in module 1, /guia in module 2, /guia/principal.ncl in module 3.
    static std::vector<Carried> files();

    /// DSI, DII, and the blocks of all modules.
    static std::vector<ByteVector> sections(const std::vector<Carried>& carried, unsigned version = 1);

    ByteVector bytes() const;
};

/// What is found out of its application.
/// @param receiver the profiles of a receiver; none if it is not known which it has
inspect::ApplicationReport reportOn(const Station& station, const inspect::ReceiverProfiles& receiver = {});

/// The steps of a name: "failed: no DSI came".
Lines stepsOf(const inspect::ApplicationReport& report, std::string_view name);
