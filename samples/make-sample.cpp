#include "ApplicationFiles.h"
#include "Broadcast.h"
#include "Sample.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>

namespace {

using sample::Broadcast;
using sample::Bytes;
using sample::FaultAt;
using sample::Ticks;

constexpr int WRONG_USAGE = 2;

struct Options {
    std::string output;
    double seconds = 0; ///< 0: the sample that is kept
    unsigned bitRate = Broadcast::USUAL_BIT_RATE;
    std::vector<FaultAt> faults;
    std::string files; ///< of the carousel; none: those of the applications
    double turn = 2;
    bool isUncompressed = false; ///< these files
};

Ticks ticks(double seconds) {
    return static_cast<Ticks>(seconds * static_cast<double>(sample::SECOND));
}

Ticks ticks(const std::string& seconds) {
    char* end = nullptr;
    const double number = std::strtod(seconds.c_str(), &end);
    if (seconds.empty() || *end != '\0' || !(number >= 0)) {
        throw std::invalid_argument(seconds + " is no time");
    }
    return ticks(number);
}

/// @param words NAME, NAME=AT or NAME=AT..UNTIL
FaultAt parse(const std::string& words) {
    const std::size_t times = words.find('=');
    const std::string name = words.substr(0, times);
    if (times == std::string::npos) {
        return sample::faultAt(name);
    }
    const std::size_t dots = words.find("..", times);
    const Ticks begin = ticks(words.substr(times + 1, dots - times - 1));
    return dots == std::string::npos ? sample::faultAt(name, begin)
                                     : sample::faultAt(name, begin, ticks(words.substr(dots + 2)));
}

std::string faultsHelp() {
    std::string help = "Faults, and how long they last unless UNTIL is given:\n";
    for (const sample::Fault& each : sample::faults()) {
        const std::string lasts = each.seconds == 0 ? "" : std::to_string(each.seconds) + " s";
        std::string line = "  " + each.name;
        line.resize(26, ' ');
        line += lasts;
        line.resize(32, ' ');
        help += line + each.help + (each.indicator.empty() ? "" : " (" + each.indicator + ")") + "\n";
    }
    return help;
}

const char* wordOf(sample::Reported reported) {
    switch (reported) {
    case sample::Reported::No:
        return "no";
    case sample::Reported::Live:
        return "live";
    default:
        return "yes";
    }
}

/// A line for each fault, with tabs between: name, indicator, seconds, whether it is to be reported, explanation.
void listFaults() {
    for (const sample::Fault& each : sample::faults()) {
        std::printf("%s\t%s\t%u\t%s\t%s\n", each.name.c_str(), each.indicator.c_str(), each.seconds,
                    wordOf(each.reported), each.help.c_str());
    }
}

bool write(const Bytes& bytes, std::FILE* file) {
    return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
}

sample::CarouselOnAir carouselOf(const Options& options) {
    if (options.files.empty()) {
        return sample::applicationsOnAir();
    }
    sample::CarouselPlan plan = sample::applicationPlan();
    plan.blockSize = sample::CarouselPlan().blockSize;
    plan.compressed = !options.isUncompressed;
    plan.parts.clear();
    return {{plan, sample::filesIn(options.files)}, ticks(options.turn)};
}

bool writeStream(const Options& options, std::FILE* file) {
    if (options.seconds == 0) {
        return write(sample::shortSample(), file);
    }
    Broadcast broadcast(options.bitRate, options.faults, carouselOf(options));
    for (const Ticks end = ticks(options.seconds); broadcast.now() < end;) {
        if (!write(broadcast.next(), file)) {
            return false;
        }
    }
    return true;
}

bool writeOutput(const Options& options) {
    if (options.output == "-") {
        return writeStream(options, stdout) && std::fflush(stdout) == 0;
    }
    std::FILE* const file = std::fopen(options.output.c_str(), "wb");
    if (file == nullptr) {
        return false;
    }
    const bool isWritten = writeStream(options, file);
    return std::fclose(file) == 0 && isWritten;
}

void addOptions(CLI::App& app, Options& options) {
    app.add_option("FILE", options.output, "where it is written; - is standard output")->required();
    CLI::Option* const seconds =
        app.add_option("--seconds", options.seconds,
                       "a stream of this length, as it is on air; without, the two seconds that are kept as the sample")
            ->check(CLI::PositiveNumber);
    app.add_option("--bit-rate", options.bitRate, "of this stream, in bit/s")
        ->capture_default_str()
        ->check(CLI::Range(Broadcast::LOWEST_BIT_RATE, 1000000000U))
        ->needs(seconds);
    app.add_option_function<std::vector<std::string>>(
           "--fault",
           [&options](const std::vector<std::string>& all) {
               for (const std::string& each : all) {
                   try {
                       options.faults.push_back(parse(each));
                   } catch (const std::exception& error) {
                       throw CLI::ValidationError("--fault " + each, error.what());
                   }
               }
           },
           "what goes wrong with it from second AT on, unless given 20, or 0 for those of applications (app-); may "
           "be given several times")
        ->type_name("NAME[=AT[..UNTIL]]")
        ->needs(seconds);
    CLI::Option* const files =
        app.add_option("--files", options.files,
                       "a folder whose files the carousel has, in the place of the applications'")
            ->check(CLI::ExistingDirectory)
            ->needs(seconds);
    app.add_flag("--uncompressed", options.isUncompressed, "leave the modules of these files as they are")
        ->needs(files);
    app.add_option("--turn", options.turn, "seconds that all blocks of these files take")
        ->capture_default_str()
        ->check(CLI::PositiveNumber)
        ->needs(files);
    app.add_flag_callback(
        "--list-faults",
        [] {
            listFaults();
            throw CLI::Success();
        },
        "print the faults, a line each with tabs between");
    app.footer(faultsHelp());
}

int run(int argc, char** argv) {
    CLI::App app("Writes a transport stream, the same bytes each time.");
    Options options;
    addOptions(app, options);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : WRONG_USAGE;
    }
    if (!writeOutput(options)) {
        std::fprintf(stderr, "make-sample: %s: cannot be written\n", options.output.c_str());
        return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make-sample: %s\n", error.what());
        return 1;
    }
}
